// expect: property and getter disagree in the type
// SPDX-License-Identifier: MIT
#include "script_types.h"

namespace quillbar {

#ifdef RIGHT_LINE
template struct Property<"Height", "Single", GetHeight, SetHeight>;
#else
template struct Property<"Height", "Integer", GetHeight, SetHeight>;
#endif

}  // namespace quillbar
