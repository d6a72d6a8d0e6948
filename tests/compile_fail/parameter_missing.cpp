// expect: declaration and function disagree in the number of parameters
// SPDX-License-Identifier: MIT
#include "script_types.h"

namespace quillbar {

#ifdef RIGHT_LINE
template struct Method<"MoveTo(x as Single,y as Single)", MoveTo>;
#else
template struct Method<"MoveTo(x as Single)", MoveTo>;
#endif

}  // namespace quillbar
