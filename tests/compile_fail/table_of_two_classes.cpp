// expect: the functions of a table get instances of different classes
// SPDX-License-Identifier: MIT
#include "script_types.h"

namespace quillbar {

#ifdef RIGHT_LINE
template struct Methods<Method<"MoveTo(x as Single,y as Single)", MoveTo>>;
#else
template struct Methods<Method<"MoveTo(x as Single,y as Single)", MoveTo>, Method<"Constructor()", FontConstructor>>;
#endif

}  // namespace quillbar
