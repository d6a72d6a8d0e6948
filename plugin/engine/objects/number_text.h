// SPDX-License-Identifier: MIT
#pragma once

#include <hpdf.h>

#include <cstddef>

namespace quillbar::engine {

/// Bytes that must be there for `WriteReal`.
inline constexpr std::size_t kRoomForReal = 24;

/// Writes a real number as it stands in a file, see numbers.cpp, to `end`, where there must be `kRoomForReal` bytes.
/// Returns where the text ends; up to five bytes after it are overwritten.
char *WriteReal(char *end, HPDF_REAL value);

}  // namespace quillbar::engine
