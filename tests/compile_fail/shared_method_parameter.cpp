// expect: declaration and function disagree in the type of a parameter
// SPDX-License-Identifier: MIT
#include "script_types.h"

namespace quillbar {

Integer Twice(Integer number) { return 2 * number; }

#ifdef RIGHT_LINE
template struct SharedMethod<"Twice(number as Integer) as Integer", Twice>;
#else
template struct SharedMethod<"Twice(number as Single) as Integer", Twice>;
#endif

}  // namespace quillbar
