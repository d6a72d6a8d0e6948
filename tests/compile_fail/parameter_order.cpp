// expect: declaration and function disagree in the type of a parameter
// SPDX-License-Identifier: MIT
#include "script_types.h"

namespace quillbar {

#ifdef RIGHT_LINE
template struct Method<"SetFont(fontType as Font, size as Single)", SetFont>;
#else
template struct Method<"SetFont(size as Single, fontType as Font)", SetFont>;
#endif

}  // namespace quillbar
