// expect: declaration and function disagree in the type of a parameter
// SPDX-License-Identifier: MIT
#include "script_types.h"

namespace quillbar {

#ifdef RIGHT_LINE
template struct Event<"ErrorLog(errorNumber as UInt32)", void(Page *, std::uint32_t)>;
#else
template struct Event<"ErrorLog(errorNumber as Int32)", void(Page *, std::uint32_t)>;
#endif

}  // namespace quillbar
