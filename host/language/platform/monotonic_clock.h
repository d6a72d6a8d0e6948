// SPDX-License-Identifier: MIT
#pragma once

namespace quillbar::language::platform {

/// Microseconds since some fixed moment; never runs backwards.
double MonotonicMicroseconds();

}  // namespace quillbar::language::platform
