// expect: the declaration can't be read
// SPDX-License-Identifier: MIT
#include "script_types.h"

namespace quillbar {

#ifdef RIGHT_LINE
template struct Method<"MoveTo(x as Single,y as Single)", MoveTo>;
#else
template struct Method<"MoveTo(x Single,y as Single)", MoveTo>;
#endif

}  // namespace quillbar
