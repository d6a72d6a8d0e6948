// SPDX-License-Identifier: MIT
// The font program that a document embeds: the glyphs it uses and nothing else.
#pragma once

#include <map>
#include <span>
#include <vector>

#include "plugin/engine/fonts/truetype/truetype_file.h"

namespace quillbar::engine {

// A TrueType font whose glyph i looks and measures like `font`'s glyph `glyphs[i]`; the parts of composite
// glyphs, of any depth, follow behind. `glyphs` begins with 0, the missing glyph, and may name a glyph
// several times; glyphs and their parts together must not exceed 65,535.
//
// `characters` maps code points below U+FFFF to the new glyph numbers; it becomes the font's Unicode map,
// which viewers use for text in one-byte encodings. The font has the tables that PDF asks for (ISO
// 32000-1, 9.9) and no others: names, PostScript names, layout and metrics of the whole family stay behind.
std::vector<std::uint8_t> SubsetTrueType(const TrueTypeFile &font, std::span<const std::uint16_t> glyphs,
                                         const std::map<std::uint16_t, std::uint16_t> &characters);

}  // namespace quillbar::engine
