// expect: a function gets the instance of its class first
// SPDX-License-Identifier: MIT
#include "script_types.h"

namespace quillbar {

#ifdef RIGHT_LINE
template struct Method<"MoveTo(x as Single,y as Single)", MoveTo>;
#else
template struct Method<"MoveTo(x as Single,y as Single)", MoveAnywhere>;
#endif

}  // namespace quillbar
