// SPDX-License-Identifier: MIT
// The operator of external objects: Do (ISO 32000-1, table 87), for images.
#include "plugin/engine/pages/graphics_state_record.h"
#include "plugin/engine/pages/page_operator.h"

using namespace quillbar::engine;

/// q, cm, Do and Q: `image`, of the same document, with its lower left corner in (x, y) and `width` by `height` user
/// space units large. An image fills the unit square, which the matrix makes that. The page's own state stays as it is.
extern "C" HPDF_STATUS HPDF_Page_DrawImage(HPDF_Page page, HPDF_Image image, HPDF_REAL x, HPDF_REAL y, HPDF_REAL width,
                                           HPDF_REAL height) {
  constexpr HPDF_REAL kNone = 0;
  const bool isImage = image != nullptr && image->header.obj_class == (HPDF_OSUBCLASS_XOBJECT | HPDF_OCLASS_DICT);
  PageOperator draw(page, kInPage);
  draw.RefuseIf(!isImage, HPDF_INVALID_OBJECT)
      .RefuseIf([&](const PageAttributes &) { return page->mmgr != image->mmgr; }, HPDF_PAGE_INVALID_XOBJECT)
      .RefuseIf([](const PageAttributes &now) { return IsDeepest(*now.gstate); }, HPDF_EXCEED_GSTATE_LIMIT);
  const ResourceName name = draw.NameOf(kXObjects, image, HPDF_PAGE_INVALID_XOBJECT);
  return draw.Write("q", width, kNone, kNone, height, x, y, "cm", name, "Do", "Q").Status();
}
