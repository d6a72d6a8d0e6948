// expect: declaration and function disagree in the type of a parameter
// SPDX-License-Identifier: MIT
#include "script_types.h"

namespace quillbar {

#ifdef RIGHT_LINE
template struct Method<"SetLineCap(cap as Page.LineCapTypeEnum)", SetLineCap>;
#else
template struct Method<"SetLineCap(cap as Image.LineCapTypeEnum)", SetLineCap>;
#endif

}  // namespace quillbar
