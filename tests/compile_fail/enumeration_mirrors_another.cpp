// expect: the enumeration mirrors another one
// SPDX-License-Identifier: MIT
#include "script_types.h"

namespace quillbar {

#ifdef RIGHT_LINE
template struct Enumeration<LineCapType, "LineCapTypeEnum", "Integer", "BUTT_END = 0">;
#else
template struct Enumeration<LineJoinType, "LineCapTypeEnum", "Integer", "BUTT_END = 0">;
#endif

}  // namespace quillbar
