// expect: declaration and function disagree in the type of a parameter
// SPDX-License-Identifier: MIT
#include "script_types.h"

namespace quillbar {

#ifdef RIGHT_LINE
template struct Method<"SetFont(fontType as Demo.Font, size as Single)", SetFont>;
#else
template struct Method<"SetFont(fontType as Image, size as Single)", SetFont>;
#endif

}  // namespace quillbar
