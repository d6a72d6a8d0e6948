// SPDX-License-Identifier: MIT
// Numbers of font files: unsigned bytes, the most significant first, at any address.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace quillbar::engine {

/// The bytes of a file or of a part of it.
using Bytes = std::span<const std::uint8_t>;

/// The number at `offset`; the caller has checked that it is inside.
inline std::uint16_t U16(Bytes bytes, std::size_t offset) {
  return static_cast<std::uint16_t>(bytes[offset] << 8 | bytes[offset + 1]);
}
inline std::int16_t S16(Bytes bytes, std::size_t offset) { return static_cast<std::int16_t>(U16(bytes, offset)); }
inline std::uint32_t U32(Bytes bytes, std::size_t offset) {
  return static_cast<std::uint32_t>(U16(bytes, offset)) << 16 | U16(bytes, offset + 2);
}

/// Appends a number, or overwrites the one at `offset`.
inline void Append16(std::vector<std::uint8_t> &bytes, std::uint32_t value) {
  bytes.push_back(static_cast<std::uint8_t>(value >> 8));
  bytes.push_back(static_cast<std::uint8_t>(value));
}
inline void Append32(std::vector<std::uint8_t> &bytes, std::uint32_t value) {
  Append16(bytes, value >> 16);
  Append16(bytes, value & 0xFFFF);
}
inline void Write16(std::vector<std::uint8_t> &bytes, std::size_t offset, std::uint32_t value) {
  bytes[offset] = static_cast<std::uint8_t>(value >> 8);
  bytes[offset + 1] = static_cast<std::uint8_t>(value);
}
inline void Write32(std::vector<std::uint8_t> &bytes, std::size_t offset, std::uint32_t value) {
  Write16(bytes, offset, value >> 16);
  Write16(bytes, offset + 2, value & 0xFFFF);
}

}  // namespace quillbar::engine
