// SPDX-License-Identifier: MIT
#include "host/language/platform/monotonic_clock.h"

#include <chrono>

namespace quillbar::language::platform {

double MonotonicMicroseconds() {
  return std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

}  // namespace quillbar::language::platform
