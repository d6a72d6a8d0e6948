// expect: a getter gets the instance and gives the value
// SPDX-License-Identifier: MIT
#include "script_types.h"

namespace quillbar {

#ifdef RIGHT_LINE
template struct ReadOnlyProperty<"Ascent", "Integer", GetFontAscent>;
#else
template struct ReadOnlyProperty<"Ascent", "Integer", MoveTo>;
#endif

}  // namespace quillbar
