// expect: property and getter disagree in the type
// SPDX-License-Identifier: MIT
#include "script_types.h"

namespace quillbar {

#ifdef RIGHT_LINE
template struct ReadOnlyProperty<"Ascent", "Integer", GetFontAscent>;
#else
template struct ReadOnlyProperty<"Ascent", "Single", GetFontAscent>;
#endif

}  // namespace quillbar
