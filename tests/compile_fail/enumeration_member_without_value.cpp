// expect: a member doesn.t read as
// SPDX-License-Identifier: MIT
#include "script_types.h"

namespace quillbar {

#ifdef RIGHT_LINE
template struct Enumeration<LineCapType, "LineCapTypeEnum", "Integer", "BUTT_END = 0">;
#else
template struct Enumeration<LineCapType, "LineCapTypeEnum", "Integer", "BUTT_END">;
#endif

}  // namespace quillbar
