// expect: declaration and function disagree in the type of a parameter
// SPDX-License-Identifier: MIT
#include "script_types.h"

namespace quillbar {

#ifdef RIGHT_LINE
template struct Method<"GetPosition(ByRef x as Single, Byref y as Single)", GetPosition>;
#else
template struct Method<"GetPosition(ByRef x as Single, y as Single)", GetPosition>;
#endif

}  // namespace quillbar
