// expect: getter and setter get instances of different classes
// SPDX-License-Identifier: MIT
#include "script_types.h"

namespace quillbar {

#ifdef RIGHT_LINE
template struct Property<"Height", "Single", GetHeight, SetHeight>;
#else
template struct Property<"Height", "Single", GetHeight, SetFontHeight>;
#endif

}  // namespace quillbar
