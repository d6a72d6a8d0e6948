// expect: declaration and function disagree in the number of parameters
// SPDX-License-Identifier: MIT
#include "plugin/page/page_data.h"
#include "plugin/script/forward.h"

namespace quillbar {

#ifdef RIGHT_LINE
using Line = ForwardedMethod<Page, "SetRGBFill(r as Single, g as Single, b as Single)", HPDF_Page_SetRGBFill>;
#else
using Line = ForwardedMethod<Page, "SetRGBFill(r as Single, g as Single)", HPDF_Page_SetRGBFill>;
#endif
static_assert(sizeof(Line) == 1);

}  // namespace quillbar
