// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

namespace quillbar::engine {

/// Why a font file was refused. The number is the detail of the error that the document records.
enum class FontFault : unsigned {
  kTooShort = 1,            // shorter than the tables that it lists
  kTooLarge = 2,            // longer than 256 MiB, which no font is
  kNotTrueType = 3,         // another kind of file
  kCffOutlines = 4,         // CFF outlines are announced, and there are none, or none that can be read
  kCollection = 5,          // a collection whose first font is not inside it
  kWebFont = 6,             // WOFF or WOFF 2
  kMissingTable = 7,        // a required table is not there
  kTableOutsideFile = 8,    // a table is not inside the file
  kHeader = 9,              // `head` is malformed, or has no usable units per em
  kNoGlyphs = 10,           // `maxp` counts no glyphs
  kMetrics = 11,            // `hhea` and `hmtx` disagree with the glyph count
  kGlyphPositions = 12,     // `loca` is short, decreases, or points outside `glyf`
  kOutline = 13,            // an outline is cut off or uses a glyph that is not there
  kCharacterMap = 14,       // `cmap` has no usable Unicode map, or the map's parts are outside it
  kMetricsFileHeader = 15,  // an AFM file does not begin as one
  kMetricsFileLine = 16,    // a line of an AFM file cannot be read
  kMetricsFileCount = 17,   // an AFM file does not hold as many metrics as it says
  kProgramForm = 18,        // a Type 1 font program has no clear or no encrypted portion
};

/// A font file of more bytes is refused.
inline constexpr std::size_t kMaxFontFileBytes = std::size_t{256} << 20;

}  // namespace quillbar::engine
