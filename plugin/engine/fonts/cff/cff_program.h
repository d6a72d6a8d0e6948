// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "plugin/engine/fonts/truetype/shown_glyphs.h"
#include "plugin/engine/fonts/truetype/truetype_file.h"

namespace quillbar::engine {

/// The font program that a document embeds for a font with CFF outlines: a CID-keyed CFF font (Adobe technical note
/// 5176) whose character i is `glyphs[i]`. The first must be the missing glyph. Its outlines are drawn anew, in
/// thousandths of an em and without hints, so that every kind of source makes the same kind of program: CFF and CFF2,
/// keyed by name or by number. Throws std::bad_alloc.
std::vector<std::uint8_t> CffProgram(const TrueTypeFile &font, std::span<const EmbeddedGlyph> glyphs);

}  // namespace quillbar::engine
