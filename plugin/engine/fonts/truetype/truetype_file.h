// SPDX-License-Identifier: MIT
// A TrueType font file in memory, checked whole before anything of it is used.
//
// The rules are those of the OpenType specification for fonts with outlines in a `glyf` table. What a reader
// of the tables relies on is checked once, in `Read`; the accessors then need no checks of their own.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "plugin/engine/fonts/big_endian.h"

namespace quillbar::engine {

// Why a font file was refused. The number is the detail of the error that the document records.
enum class FontFault : unsigned {
  kTooShort = 1,            // shorter than the tables that it lists
  kTooLarge = 2,            // longer than 256 MiB, which no font is
  kNotTrueType = 3,         // another kind of file
  kCompactOutlines = 4,     // OpenType with CFF outlines
  kCollection = 5,          // several fonts in one file
  kWebFont = 6,             // WOFF or WOFF 2
  kMissingTable = 7,        // a required table is not there
  kTableOutsideFile = 8,    // a table does not lie inside the file
  kHeader = 9,              // `head` is malformed, or has no usable units per em
  kNoGlyphs = 10,           // `maxp` counts no glyphs
  kMetrics = 11,            // `hhea` and `hmtx` disagree with the glyph count
  kGlyphPositions = 12,     // `loca` is short, decreases, or points outside `glyf`
  kOutline = 13,            // an outline is cut off or uses a glyph that is not there
  kCharacterMap = 14,       // `cmap` has no usable Unicode map, or the map's parts lie outside it
  kMetricsFileHeader = 15,  // an AFM file does not begin as one
  kMetricsFileLine = 16,    // a line of an AFM file cannot be read
  kMetricsFileCount = 17,   // an AFM file does not hold as many metrics as it says
  kProgramForm = 18,        // a Type 1 font program has no clear or no encrypted portion
};

inline constexpr std::size_t kMaxFontFileBytes = std::size_t{256} << 20;

class TrueTypeFile {
 public:
  // Takes the file's bytes; gives the font, or what is wrong with it. Throws std::bad_alloc only.
  static std::variant<TrueTypeFile, FontFault> Read(std::vector<std::uint8_t> bytes);

  unsigned UnitsPerEm() const { return unitsPerEm_; }
  unsigned GlyphCount() const { return glyphCount_; }
  // Left, bottom, right, top of all outlines, in font units.
  std::array<int, 4> BoundingBox() const;
  int Ascent() const;   // font units, above the baseline
  int Descent() const;  // font units, negative below the baseline

  // The glyph for a character; 0, the missing glyph, if the font has none.
  std::uint16_t GlyphOf(char32_t character) const {
    if (character < basicPlane_.size()) return basicPlane_[character];
    const auto found = otherPlanes_.find(character);
    return found == otherPlanes_.end() ? std::uint16_t{0} : found->second;
  }
  unsigned AdvanceOf(std::uint16_t glyph) const;  // font units
  int LeftBearingOf(std::uint16_t glyph) const;   // font units
  Bytes OutlineOf(std::uint16_t glyph) const;     // empty for a blank glyph
  // The file's bytes.
  Bytes Whole() const { return bytes_; }

  // A table's bytes; empty if the font has none of that name.
  Bytes Table(std::string_view tag) const;

  // `OS/2`'s embedding rights; 0, no restriction, if the font does not say.
  unsigned EmbeddingRights() const;
  unsigned FamilyClass() const;  // `OS/2`'s family class, 0 if unknown
  int ItalicAngle() const;       // whole degrees, negative for a slant to the right
  bool IsFixedPitch() const;

  // Name records as printable ASCII and blanks, other characters left out; empty if the font has no such
  // name.
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
  bool ReadCharacterMap();
  bool ReadSegments(Bytes map, bool isSymbol);  // format 4
  bool ReadGroups(Bytes map);                   // format 12
  bool ReadByteTable(Bytes map);                // format 0
  std::string Name(unsigned id) const;

  std::vector<std::uint8_t> bytes_;
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

// One part of a composite outline.
struct OutlinePart {
  std::size_t glyphOffset;  // where in the outline the part's glyph number stands
  std::uint16_t glyph;
};

// The parts of a composite outline, in order; none for a simple or blank outline. `isWhole` tells whether
// every part lies inside the outline.
std::vector<OutlinePart> PartsOf(Bytes outline, bool &isWhole);

}  // namespace quillbar::engine
