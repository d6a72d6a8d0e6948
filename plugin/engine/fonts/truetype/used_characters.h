// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <unordered_map>
#include <vector>

#include "plugin/engine/fonts/truetype/truetype_file.h"

namespace quillbar::engine {

/// The characters that a document shows with one TrueType font, and the codes under which its pages name them.
///
/// A character gets the next free two-byte code when it is first shown, and keeps it: pages already written stay valid
/// when text is added after a save. Code and glyph number in the embedded font are the same. Two characters that share
/// a glyph have two codes, and so has a character that the font lacks (its glyph is the missing one), so that text
/// copied from a viewer is always the text that was shown. Code 0 belongs to no character.
class UsedCharacters {
 public:
  /// The character's code, new if need be; 0 when the embedded font has no room for another glyph. Throws
  /// std::bad_alloc.
  std::uint16_t CodeOf(const TrueTypeFile &font, char32_t character) {
    if (basicPlane_.empty()) basicPlane_.resize(0x10000);
    std::uint16_t &code = character < basicPlane_.size() ? basicPlane_[character] : otherPlanes_[character];
    if (code == 0) code = Add(font, character);
    return code;
  }

  /// Takes note of a character shown in a one-byte encoding, which needs it in the embedded font's own character map.
  /// Throws std::bad_alloc.
  void AddEncoded(const TrueTypeFile &font, std::uint16_t character) {
    if (font.GlyphOf(character) == 0 || character == 0xFFFF) return;
    if (const std::uint16_t code = CodeOf(font, character); code != 0) encoded_.emplace(character, code);
  }

  void Clear() { *this = UsedCharacters(); }

  /// Characters by code, and glyphs of the font file by code; the first entry belongs to code 0.
  const std::vector<char32_t> &Characters() const { return characters_; }
  const std::vector<std::uint16_t> &Glyphs() const { return glyphs_; }
  /// The codes of the characters shown in one-byte encodings.
  const std::map<std::uint16_t, std::uint16_t> &Encoded() const { return encoded_; }
  /// Grows whenever something was added.
  std::size_t Revision() const { return characters_.size() + encoded_.size(); }

 private:
  std::uint16_t Add(const TrueTypeFile &font, char32_t character);

  std::vector<char32_t> characters_{0};
  std::vector<std::uint16_t> glyphs_{0};
  std::set<std::uint16_t> components_;  // of the composite glyphs used
  std::vector<std::uint16_t> basicPlane_;
  std::unordered_map<char32_t, std::uint16_t> otherPlanes_;
  std::map<std::uint16_t, std::uint16_t> encoded_;
};

}  // namespace quillbar::engine
