// expect: declaration and function disagree in the type of a parameter
// SPDX-License-Identifier: MIT
#include "script_types.h"

namespace quillbar {

#ifdef RIGHT_LINE
template struct Method<"SetDash(pattern() as UInt16,phase as UInt32)", SetDash>;
#else
template struct Method<"SetDash(pattern as UInt16,phase as UInt32)", SetDash>;
#endif

}  // namespace quillbar
