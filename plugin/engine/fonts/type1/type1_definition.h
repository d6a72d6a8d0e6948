// SPDX-License-Identifier: MIT
// What libharu's font definition carries for a Type 1 file (type1_definition.cpp).
#pragma once

#include <hpdf.h>
#include <hpdf_fontdef.h>

#include <map>
#include <span>
#include <string>

namespace quillbar::engine {

struct Type1Attributes : HPDF_Type1FontDefAttr_Rec {
  explicit Type1Attributes(const HPDF_Type1FontDefAttr_Rec &theirs) : HPDF_Type1FontDefAttr_Rec(theirs) {}

  // The glyphs that show characters, by the font's own names for them.
  std::map<HPDF_UNICODE, std::string> glyphs;
  // All glyphs that the font's own encoding has.
  std::map<int, std::string> glyphsByCode;
};

inline const HPDF_Type1FontDefAttr_Rec &Type1MetricsOf(const HPDF_FontDef_Rec &definition) {
  return *static_cast<const HPDF_Type1FontDefAttr_Rec *>(definition.attr);
}

// The glyphs of a font's metrics, each with its code in the font's own encoding and its character, if any.
inline std::span<const HPDF_CharData> Type1GlyphsOf(const HPDF_FontDef_Rec &definition) {
  return {Type1MetricsOf(definition).widths, Type1MetricsOf(definition).widths_count};
}

// The font of a file; null for a standard font. `definition` must be of type HPDF_FONTDEF_TYPE_TYPE1.
const Type1Attributes *Type1FileOf(const HPDF_FontDef_Rec &definition);

// The character by which a Type 1 font has the glyph for `character`: itself, or another one that shares its
// glyph name; 0 if the font has none.
HPDF_UNICODE GlyphCharacterOf(const Type1Attributes &font, HPDF_UNICODE character);

}  // namespace quillbar::engine
