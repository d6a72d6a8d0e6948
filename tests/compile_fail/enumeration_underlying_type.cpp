// expect: the enumeration has another underlying type
// SPDX-License-Identifier: MIT
#include "script_types.h"

namespace quillbar {

#ifdef RIGHT_LINE
template struct Enumeration<LineCapType, "LineCapTypeEnum", "Integer", "BUTT_END = 0">;
#else
template struct Enumeration<LineCapType, "LineCapTypeEnum", "UInt16", "BUTT_END = 0">;
#endif

}  // namespace quillbar
