// The standard fonts whose glyphs are no letters: Symbol and ZapfDingbats (symbol_fonts.cpp).
#pragma once

#include <hpdf.h>
#include <hpdf_fontdef.h>

namespace quillbar::pdflib {

// Whether the font is Symbol or ZapfDingbats: a byte of its text is the code of a glyph (ISO 32000-1, Annex
// D.5 and D.6), in whatever encoding the text was asked for.
bool HasOwnCodes(const HPDF_FontDef_Rec &definition);

// What a code of such a font shows, as one character; 0 where it shows nothing.
char32_t CharacterOfOwnCode(const HPDF_FontDef_Rec &definition, HPDF_BYTE code);

// The width of a code in 1/1000 of the font size; that of the space where the code shows nothing.
HPDF_INT16 WidthOfOwnCode(const HPDF_FontDef_Rec &definition, HPDF_BYTE code);

}  // namespace quillbar::pdflib
