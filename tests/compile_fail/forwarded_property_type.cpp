// expect: property and getter disagree in the type
// SPDX-License-Identifier: MIT
#include "plugin/page/page_data.h"
#include "plugin/script/forward.h"

namespace quillbar {

#ifdef RIGHT_LINE
using Line = ForwardedProperty<Page, "LineWidth", "Single", HPDF_Page_GetLineWidth, HPDF_Page_SetLineWidth>;
#else
using Line = ForwardedProperty<Page, "LineWidth", "Integer", HPDF_Page_GetLineWidth, HPDF_Page_SetLineWidth>;
#endif
static_assert(sizeof(Line) == 1);

}  // namespace quillbar
