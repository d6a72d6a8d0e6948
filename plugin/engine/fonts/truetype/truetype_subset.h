// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <span>
#include <vector>

#include "plugin/engine/fonts/truetype/shown_glyphs.h"
#include "plugin/engine/fonts/truetype/truetype_file.h"

namespace quillbar::engine {

/// The font program that a document embeds: a TrueType font whose glyph i is `glyphs[i]`, of `font`'s outlines; the
/// components of composite glyphs, of any depth, follow them. `glyphs` begins with 0, the missing glyph, and may name a
/// glyph several times; glyphs and components together must not exceed 65,535.
///
/// `characters` maps code points below U+FFFF to the new glyph numbers; it becomes the font's Unicode map, which
/// viewers use for text in one-byte encodings. The font has the tables that PDF asks for (ISO 32000-1, 9.9) and no
/// others: names, PostScript names, layout and metrics of the whole family are left out. Throws std::bad_alloc.
std::vector<std::uint8_t> SubsetTrueType(const TrueTypeFile &font, std::span<const EmbeddedGlyph> glyphs,
                                         const std::map<std::uint16_t, std::uint16_t> &characters);

}  // namespace quillbar::engine
