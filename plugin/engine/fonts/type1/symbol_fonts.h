// SPDX-License-Identifier: MIT
// Fonts of signs: Symbol, ZapfDingbats, and Type 1 files of their kind (symbol_fonts.cpp).
#pragma once

#include <hpdf.h>
#include <hpdf_font.h>

namespace quillbar::engine {

// Whether a byte of the font's text is the code of a glyph, in whatever encoding the text was asked for: in
// Symbol and ZapfDingbats (ISO 32000-1, Annex D.5 and D.6), and in Type 1 files that say so and have hardly
// any of the encoding's letters.
bool HasOwnCodes(const HPDF_FontAttr_Rec &font);

// What a code of such a font shows, as one character; 0 where it shows nothing.
char32_t CharacterOfOwnCode(const HPDF_FontDef_Rec &definition, HPDF_BYTE code);

// The width of a code in 1/1000 of the font size; that of the space where the code shows nothing.
HPDF_INT16 WidthOfOwnCode(const HPDF_FontDef_Rec &definition, HPDF_BYTE code);

}  // namespace quillbar::engine
