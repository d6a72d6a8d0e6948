// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <tuple>
#include <unordered_map>
#include <vector>

#include "plugin/engine/fonts/shaping/text_layout.h"
#include "plugin/engine/fonts/truetype/truetype_file.h"

namespace quillbar::engine {

/// A glyph of the font file inside another glyph, moved by font units.
struct GlyphPart {
  std::uint16_t glyph;
  std::int32_t x, y;

  auto operator<=>(const GlyphPart &) const = default;
};

/// A glyph of the embedded font.
struct EmbeddedGlyph {
  bool isComposed;  // of `parts`, as wide as `width`; otherwise it is `glyph` of the font file
  std::uint16_t glyph = 0;
  std::vector<GlyphPart> parts;  // none for a blank
  std::int32_t width = 0;        // in 1/1000 of the font size
};

/// What a document shows of one font file, and the codes under which its pages name it.
///
/// A code has one character and one glyph, its own: code and glyph number in the embedded font are the same. It is the
/// next free two-byte code when it is first needed, and stays: pages already written stay valid when text is added
/// after a save. Two characters that share a glyph have two codes, and so has a character that the font lacks (its
/// glyph is the missing one), so that text copied from a viewer is always the text that was shown.
///
/// A cluster of m characters, drawn by n glyphs, has m codes, so that each code is one character to every reader of
/// the text. One of them draws the n glyphs as one; the others are blank. They share the cluster's advance. Readers
/// lose characters of no width, and count a mark's width as none; so marks have a little of it. Code 0 belongs to no
/// character.
class ShownGlyphs {
 public:
  /// The character's code, new if need be; 0 when the embedded font has no room for another glyph. Throws
  /// std::bad_alloc.
  std::uint16_t CodeOf(const TrueTypeFile &font, char32_t character) {
    if (basicPlane_.empty()) basicPlane_.resize(0x10000);
    std::uint16_t &code = character < basicPlane_.size() ? basicPlane_[character] : otherPlanes_[character];
    if (code == 0) code = AddCharacter(font, character);
    return code;
  }

  /// The code of a character that is not seen and takes no room. Throws std::bad_alloc.
  std::uint16_t BlankCodeOf(const TrueTypeFile &font, char32_t character);

  /// Appends a cluster's codes to `codes`, from left to right. What is returned is left of its advance after them, in
  /// 1/1000 of the font size. Throws std::bad_alloc.
  std::int32_t AppendCodes(const TrueTypeFile &font, const TextLayout &layout, const GlyphCluster &cluster,
                           std::vector<std::uint16_t> &codes);

  /// Takes note of a character shown in a one-byte encoding, which needs it in the embedded font's own character map.
  /// Throws std::bad_alloc.
  void AddEncoded(const TrueTypeFile &font, std::uint16_t character) {
    if (font.GlyphOf(character) == 0 || character == 0xFFFF) return;
    if (const std::uint16_t code = CodeOf(font, character); code != 0) encoded_.emplace(character, code);
  }

  void Clear() { *this = ShownGlyphs(); }

  /// Characters and glyphs by code; the first entry belongs to code 0.
  const std::vector<char32_t> &Characters() const { return characters_; }
  const std::vector<EmbeddedGlyph> &Glyphs() const { return glyphs_; }
  /// The width of a code's glyph, in 1/1000 of the font size.
  std::int32_t WidthOf(const TrueTypeFile &font, std::size_t code) const {
    const EmbeddedGlyph &glyph = glyphs_[code];
    return glyph.isComposed ? glyph.width : font.WidthOf(glyph.glyph);
  }
  /// The codes of the characters shown in one-byte encodings.
  const std::map<std::uint16_t, std::uint16_t> &Encoded() const { return encoded_; }
  /// Grows whenever something was added.
  std::size_t Revision() const { return characters_.size() + encoded_.size(); }

 private:
  struct ClusterCodes {
    std::vector<std::uint16_t> codes;
    std::int32_t rest;
  };
  // A character whose only glyph is not the one that the font has for it, or is.
  struct Alternate {
    char32_t character = 0;
    std::uint16_t glyph = 0, code = 0;
  };

  std::uint16_t AddCharacter(const TrueTypeFile &font, char32_t character);
  std::uint16_t AlternateCodeOf(const TrueTypeFile &font, char32_t character, std::uint16_t glyph);
  std::uint16_t AddGlyph(const TrueTypeFile &font, char32_t character, std::uint16_t glyph);
  std::uint16_t AddComposed(const TrueTypeFile &font, char32_t character, std::vector<GlyphPart> parts,
                            std::int32_t width);
  std::uint16_t Add(char32_t character, EmbeddedGlyph glyph);
  ClusterCodes CodesOf(const TrueTypeFile &font, const TextLayout &layout, const GlyphCluster &cluster);

  std::vector<char32_t> characters_{0};
  std::vector<EmbeddedGlyph> glyphs_{{false, 0, {}, 0}};
  std::set<std::uint16_t> components_;  // further glyphs of the font file that are embedded
  std::vector<std::uint16_t> basicPlane_;
  std::unordered_map<char32_t, std::uint16_t> otherPlanes_;
  std::map<std::uint16_t, std::uint16_t> encoded_;
  std::map<std::pair<char32_t, std::uint16_t>, std::uint16_t> alternates_;
  std::vector<Alternate> recentAlternates_;  // each at a place of its own: what most text of joined letters needs
  std::map<std::tuple<char32_t, std::int32_t, std::vector<GlyphPart>>, std::uint16_t> composed_;
  std::unordered_map<std::u32string, ClusterCodes> clusters_;  // by what they consist of
  std::u32string key_;
};

}  // namespace quillbar::engine
