// expect: getter and setter disagree in the type
// SPDX-License-Identifier: MIT
#include "plugin/page/page_data.h"
#include "plugin/script/forward.h"

namespace quillbar {

#ifdef RIGHT_LINE
using Line = ForwardedProperty<Page, "LineCapType", "Page.LineCapTypeEnum", HPDF_Page_GetLineCap, HPDF_Page_SetLineCap>;
#else
using Line =
    ForwardedProperty<Page, "LineCapType", "Page.LineCapTypeEnum", HPDF_Page_GetLineCap, HPDF_Page_SetLineJoin>;
#endif
static_assert(sizeof(Line) == 1);

}  // namespace quillbar
