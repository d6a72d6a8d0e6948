// expect: declaration and function disagree in the type of the result
// SPDX-License-Identifier: MIT
#include "script_types.h"

namespace quillbar {

#ifdef RIGHT_LINE
template struct Method<"MeasureText(text as String, width as Single) as Integer", MeasureText>;
#else
template struct Method<"MeasureText(text as String, width as Single) as Single", MeasureText>;
#endif

}  // namespace quillbar
