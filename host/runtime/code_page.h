// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

#include "interface/values.h"

namespace quillbar::host::platform {
class Charset;
}

namespace quillbar::host {

/// A character set of one or two bytes for each character, as tables. Only characters that decode back to themselves
/// are encoded, so that a conversion which loses something is always noticed.
class CodePage {
 public:
  /// The tables of a set, built on first use; null when the code means no such set.
  static const CodePage *Find(TextEncoding encoding);

  /// Decodes one character at `offset` and moves `offset` past it. An invalid byte gives the marker of that byte.
  char32_t DecodeNext(std::string_view bytes, std::size_t &offset) const {
    const std::int32_t character = single_[static_cast<unsigned char>(bytes[offset])];
    if (character == kUndefined) return DecodePair(bytes, offset);
    ++offset;
    return static_cast<char32_t>(character);
  }
  /// Writes the one or two bytes of `character` at `end` and moves `end` past them. When the set lacks the character,
  /// writes "?" and returns false.
  bool Append(char32_t character, char *&end) const {
    const std::uint16_t code = character < encoded_.size() ? encoded_[character] : kLacking;
    if (code == kLacking) {
      *end++ = '?';
      return false;
    }
    if (code > 0xFF) *end++ = static_cast<char>(code >> 8);
    *end++ = static_cast<char>(code & 0xFF);
    return true;
  }

 private:
  static constexpr std::int32_t kUndefined = -1;
  static constexpr std::uint16_t kLacking = 0xFFFF;

  char32_t DecodePair(std::string_view bytes, std::size_t &offset) const;

  explicit CodePage(platform::Charset &charset);

  std::array<std::int32_t, 256> single_;
  std::array<bool, 256> isLead_{};
  std::vector<char16_t> pair_;          // by first byte << 8 | second; 0: undefined; empty: no pairs
  std::vector<std::uint16_t> encoded_;  // by character; above 0xFF: two bytes
};

}  // namespace quillbar::host
