// SPDX-License-Identifier: MIT
#include "companion/pixel_raster/exif_orientation.h"

#include <cstddef>

namespace quillbar::companion {

namespace {

/// Reads the numbers of a TIFF directory, in the byte order that its header names; zero past the end.
class TiffBytes {
 public:
  explicit TiffBytes(std::span<const std::uint8_t> bytes)
      : bytes_(bytes), bigEndian_(!bytes.empty() && bytes[0] == 'M') {}

  std::uint32_t Number(std::size_t offset, std::size_t size) const {
    if (offset > bytes_.size() || size > bytes_.size() - offset) return 0;
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < size; ++i) value = value << 8 | bytes_[offset + (bigEndian_ ? i : size - 1 - i)];
    return value;
  }

 private:
  std::span<const std::uint8_t> bytes_;
  bool bigEndian_;
};

}  // namespace

int ExifOrientation(std::span<const std::uint8_t> exif) {
  constexpr std::size_t kPrefixSize = 6, kEntrySize = 12;
  constexpr std::uint32_t kOrientationTag = 0x0112, kShort = 3;
  if (exif.size() < kPrefixSize + 8) return 1;
  const TiffBytes tiff(exif.subspan(kPrefixSize));
  if (tiff.Number(2, 2) != 42) return 1;
  const std::size_t directory = tiff.Number(4, 4);
  const std::uint32_t entries = tiff.Number(directory, 2);
  for (std::uint32_t i = 0; i < entries; ++i) {
    const std::size_t entry = directory + 2 + i * kEntrySize;
    if (tiff.Number(entry, 2) != kOrientationTag || tiff.Number(entry + 2, 2) != kShort) continue;
    const std::uint32_t value = tiff.Number(entry + 8, 2);
    return value >= 1 && value <= 8 ? static_cast<int>(value) : 1;
  }
  return 1;
}

}  // namespace quillbar::companion
