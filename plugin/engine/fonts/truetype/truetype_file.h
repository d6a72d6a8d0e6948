// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "plugin/engine/fonts/big_endian.h"
#include "plugin/engine/fonts/font_fault.h"
#include "plugin/engine/fonts/shaping/shaper.h"

namespace quillbar::engine {

/// A TrueType or OpenType font file in memory, checked whole before anything of it is used.
///
/// The rules are those of the OpenType specification. Of a collection it is the first font, of a variable font the
/// default instance. What a reader of the tables relies on is checked once, in `Read`; the accessors then need no
/// checks of their own. Outlines in a `CFF ` or `CFF2` table are read by the shaper, which takes what is wrong there
/// for a blank.
class TrueTypeFile {
 public:
  /// Takes the file's bytes; gives the font, or what is wrong with it. Throws std::bad_alloc only.
  static std::variant<TrueTypeFile, FontFault> Read(std::vector<std::uint8_t> bytes);

  unsigned UnitsPerEm() const { return unitsPerEm_; }
  unsigned GlyphCount() const { return glyphCount_; }
  /// Left, bottom, right, top of all outlines, in font units.
  std::array<int, 4> BoundingBox() const;
  int Ascent() const;   // font units, above the baseline
  int Descent() const;  // font units, negative below the baseline

  /// The glyph for a character; 0, the missing glyph, if the font has none.
  std::uint16_t GlyphOf(char32_t character) const {
    if (character < basicPlane_.size()) return basicPlane_[character];
    const auto found = otherPlanes_.find(character);
    return found == otherPlanes_.end() ? std::uint16_t{0} : found->second;
  }
  unsigned AdvanceOf(std::uint16_t glyph) const;  // font units
  int WidthOf(std::uint16_t glyph) const;         // the same in 1/1000 of the font size
  int LeftBearingOf(std::uint16_t glyph) const;   // font units
  /// Whether the outlines are in a `CFF ` or `CFF2` table; otherwise they are in `glyf`.
  bool HasCffOutlines() const { return hasCffOutlines_; }
  /// A glyph's part of `glyf`; empty for a blank glyph.
  Bytes OutlineOf(std::uint16_t glyph) const;
  bool IsBlank(std::uint16_t glyph) const;
  const engine::Shaper &Shaper() const { return *shaper_; }
  /// The file's bytes.
  Bytes Whole() const { return bytes_; }

  /// A table's bytes; empty if the font has none of that name.
  Bytes Table(std::string_view tag) const;

  unsigned FamilyClass() const;  // `OS/2`'s family class, 0 if unknown
  int ItalicAngle() const;       // whole degrees, negative for a slant to the right
  bool IsFixedPitch() const;

  /// Name records as printable ASCII and blanks, other characters left out; empty if the font has no such name. Throws
  /// std::bad_alloc.
  std::string PostScriptName() const { return Name(6); }
  std::string SubfamilyName() const { return Name(2); }

 private:
  struct Extent {
    std::size_t offset = 0;
    std::size_t length = 0;
  };

  Bytes Part(Extent extent) const { return Bytes(bytes_).subspan(extent.offset, extent.length); }
  std::variant<std::monostate, FontFault> ReadDirectory();
  bool ReadHeader();
  bool ReadMetrics();
  bool ReadGlyphPositions();
  bool CheckOutlines() const;
  bool HasAnyOutline() const;
  bool ReadCharacterMap();
  bool ReadSegments(Bytes map, bool isSymbol);  // format 4
  bool ReadGroups(Bytes map);                   // format 12
  bool ReadByteTable(Bytes map);                // format 0
  std::string Name(unsigned id) const;

  std::vector<std::uint8_t> bytes_;
  std::optional<engine::Shaper> shaper_;
  bool hasCffOutlines_ = false;
  std::map<std::string, Extent, std::less<>> tables_;
  std::vector<std::uint32_t> positions_;  // of each outline inside `glyf`, and the end of the last one
  std::vector<std::uint16_t> basicPlane_;
  std::map<char32_t, std::uint16_t> otherPlanes_;
  unsigned unitsPerEm_ = 0;
  unsigned glyphCount_ = 0;
  unsigned metricCount_ = 0;
  Extent metrics_;   // `hmtx`
  Extent outlines_;  // `glyf`
};

/// One component of a composite glyph.
struct GlyphComponent {
  std::size_t glyphOffset;  // of its glyph number in the outline, in bytes
  std::uint16_t glyph;
};

/// The components of a composite glyph's outline, in order; none for a simple or blank outline. `isWhole` tells
/// whether every component is inside the outline. Throws std::bad_alloc.
std::vector<GlyphComponent> ComponentsOf(Bytes outline, bool &isWhole);

}  // namespace quillbar::engine
