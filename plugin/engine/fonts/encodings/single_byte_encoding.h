// SPDX-License-Identifier: MIT
// Encodings of one byte for each character, as fonts write them into the file.
#pragma once

#include <hpdf.h>

#include <map>
#include <string>
#include <string_view>

namespace quillbar::engine {

/// Takes note of a code shown in an encoding: some are listed in the file only once a page uses them.
void NoteShownByte(HPDF_Encoder encoder, HPDF_BYTE code);

/// Names of glyphs by the codes that show them.
using GlyphNames = std::map<int, std::string>;

/// The customary names of the characters in which an encoding differs from the one of PDF's that it is based on.
/// Throws std::bad_alloc.
GlyphNames NamesOfDifferences(HPDF_Encoder encoder);

/// The entry Encoding of a font's dictionary, with these differences; empty where the font's own encoding is meant.
/// Throws std::bad_alloc.
std::string EncodingEntry(HPDF_Encoder encoder, const GlyphNames &differences);

}  // namespace quillbar::engine
