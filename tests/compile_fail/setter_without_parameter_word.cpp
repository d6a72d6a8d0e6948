// expect: a setter gets the instance, the parameter word and the value
// SPDX-License-Identifier: MIT
#include "script_types.h"

namespace quillbar {

#ifdef RIGHT_LINE
template struct Property<"Height", "Single", GetHeight, SetHeight>;
#else
template struct Property<"Height", "Single", GetHeight, SetHeightWithoutParameter>;
#endif

}  // namespace quillbar
