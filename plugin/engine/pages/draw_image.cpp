// SPDX-License-Identifier: MIT
// HPDF_Page_DrawImage, in place of libharu's: everything that can be refused is refused before the first
// operator.
//
// libharu saves the state, sets the matrix and only then looks at the image. When it refuses the image, the
// page keeps a saved state that nobody restores.
#include <hpdf.h>
#include <hpdf_pages.h>

extern "C" HPDF_STATUS HPDF_Page_DrawImage(HPDF_Page page, HPDF_Image image, HPDF_REAL x, HPDF_REAL y, HPDF_REAL width,
                                           HPDF_REAL height) {
  HPDF_STATUS status = HPDF_Page_CheckState(page, HPDF_GMODE_PAGE_DESCRIPTION);
  if (status != HPDF_OK) return status;
  if (image == nullptr || image->header.obj_class != (HPDF_OSUBCLASS_XOBJECT | HPDF_OCLASS_DICT)) {
    return HPDF_RaiseError(page->error, HPDF_INVALID_OBJECT, 0);
  }
  if (page->mmgr != image->mmgr) return HPDF_RaiseError(page->error, HPDF_PAGE_INVALID_XOBJECT, 0);
  if (static_cast<HPDF_PageAttr>(page->attr)->gstate->depth >= HPDF_LIMIT_MAX_GSTATE) {
    return HPDF_RaiseError(page->error, HPDF_EXCEED_GSTATE_LIMIT, 0);
  }
  // Registers the image in the page's resources, where the operator finds it.
  if (HPDF_Page_GetXObjectName(page, image) == nullptr) {
    return HPDF_RaiseError(page->error, HPDF_PAGE_INVALID_XOBJECT, 0);
  }

  status = HPDF_Page_GSave(page);
  if (status == HPDF_OK) status = HPDF_Page_Concat(page, width, 0, 0, height, x, y);
  if (status == HPDF_OK) status = HPDF_Page_ExecuteXObject(page, image);
  if (status == HPDF_OK) status = HPDF_Page_GRestore(page);
  return status;
}
