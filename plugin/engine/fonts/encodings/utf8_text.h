// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>

namespace quillbar::engine {

/// A character read from text.
struct Utf8Character {
  char32_t character;    // U+FFFD for bytes that are not a character
  std::uint32_t length;  // bytes taken, at least 1
};

/// The character at the beginning of `bytes`, which must not be empty. Of malformed text, as much as could have begun
/// a character is taken as one U+FFFD (the Unicode Standard, 3.9, "maximal subpart"), so that a broken lead byte
/// swallows nothing after it.
inline Utf8Character DecodeUtf8(std::span<const std::uint8_t> bytes) {
  constexpr char32_t kReplacement = 0xFFFD;
  const std::uint8_t lead = bytes[0];
  if (lead < 0x80) return {lead, 1};
  // The second byte's range rules out overlong forms, surrogates and code points above U+10FFFF.
  std::uint8_t low = 0x80, high = 0xBF;
  std::uint32_t length = 0;
  char32_t character = 0;
  if (lead >= 0xC2 && lead <= 0xDF) {
    length = 2;
    character = lead & 0x1Fu;
  } else if (lead >= 0xE0 && lead <= 0xEF) {
    length = 3;
    character = lead & 0x0Fu;
    if (lead == 0xE0) low = 0xA0;
    if (lead == 0xED) high = 0x9F;
  } else if (lead >= 0xF0 && lead <= 0xF4) {
    length = 4;
    character = lead & 0x07u;
    if (lead == 0xF0) low = 0x90;
    if (lead == 0xF4) high = 0x8F;
  } else {
    return {kReplacement, 1};
  }
  for (std::uint32_t i = 1; i < length; ++i) {
    if (i >= bytes.size() || bytes[i] < low || bytes[i] > high) return {kReplacement, i};
    character = character << 6 | (bytes[i] & 0x3Fu);
    low = 0x80;
    high = 0xBF;
  }
  return {character, length};
}

}  // namespace quillbar::engine
