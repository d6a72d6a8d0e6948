// SPDX-License-Identifier: MIT
#include "host/language/platform/monotonic_clock.h"

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

namespace quillbar::language::platform {

// With the win32 thread model std::chrono::steady_clock is the time of day, which may be set back and moves
// in steps of up to 16 ms.
double MonotonicMicroseconds() {
  LARGE_INTEGER count, frequency;
  QueryPerformanceCounter(&count);
  QueryPerformanceFrequency(&frequency);
  return static_cast<double>(count.QuadPart) * 1e6 / static_cast<double>(frequency.QuadPart);
}

}  // namespace quillbar::language::platform
