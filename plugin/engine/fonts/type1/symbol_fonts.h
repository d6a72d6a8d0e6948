// SPDX-License-Identifier: MIT
// Fonts of signs: Symbol, ZapfDingbats, and Type 1 files of their kind.
#pragma once

#include <hpdf.h>

#include "plugin/engine/fonts/type1/type1_definition.h"

namespace quillbar::engine {

/// Whether a byte of the font's text is the code of a glyph, in whatever encoding the text was asked for: in Symbol
/// and ZapfDingbats (ISO 32000-1, Annex D.5 and D.6), and in Type 1 files that say so and have hardly any of the
/// encoding's letters.
bool HasOwnCodes(const Type1Definition &font, HPDF_Encoder encoder);

/// What a code of such a font shows, as one character; 0 where it shows nothing. `definition` must be of type
/// HPDF_FONTDEF_TYPE_TYPE1.
char32_t CharacterOfOwnCode(const HPDF_FontDef_Rec &definition, HPDF_BYTE code);

}  // namespace quillbar::engine
