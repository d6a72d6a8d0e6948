// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>

namespace quillbar::companion {

/// The orientation tag of EXIF data, which begins with "Exif" and two nul bytes: 1 to 8, or 1 when there is
/// none or the data is damaged.
int ExifOrientation(std::span<const std::uint8_t> exif);

}  // namespace quillbar::companion
