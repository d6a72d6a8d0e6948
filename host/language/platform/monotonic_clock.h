// SPDX-License-Identifier: MIT
#pragma once

namespace quillbar::language::platform {

/// Microseconds from some moment on; never runs backwards.
double MonotonicMicroseconds();

}  // namespace quillbar::language::platform
