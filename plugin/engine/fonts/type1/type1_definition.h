// SPDX-License-Identifier: MIT
#pragma once

#include <hpdf.h>
#include <hpdf_fontdef.h>

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "plugin/engine/fonts/font_definition.h"
#include "plugin/engine/fonts/type1/type1_program.h"

namespace quillbar::engine {

/// What the font definition of a standard font or a Type 1 file carries. libharu, which has the metrics of the
/// standard fonts, fills in `is_base14font` and `encoding_scheme` of the base.
struct Type1Definition : HPDF_Type1FontDefAttr_Rec {
  Type1Definition() : HPDF_Type1FontDefAttr_Rec() {}

  /// Whether the font was loaded from a file; otherwise it is a standard one.
  bool IsFile() const { return is_base14font == HPDF_FALSE; }

  /// The metrics of a character; null if the font has none.
  const HPDF_CharData *MetricsOf(HPDF_UNICODE character) const;

  /// The metrics of a code in the font's own encoding; null if it shows nothing.
  const HPDF_CharData *MetricsOfCode(HPDF_BYTE code) const;

  /// The character by which a file has the glyph for `character`: itself, or another one that shares its glyph name; 0
  /// if the font has none.
  HPDF_UNICODE GlyphCharacterOf(HPDF_UNICODE character) const;

  /// Each glyph with its code in the font's own encoding, its character, if any, and its width in 1/1000 of the font
  /// size.
  std::vector<HPDF_CharData> metrics;

  /// Of a file: the glyphs that show characters, and all that its own encoding has, by the font's own names for them.
  std::map<HPDF_UNICODE, std::string> glyphs;
  std::map<int, std::string> glyphsByCode;

  /// Of a file: what is embedded, if a program was given.
  std::optional<Type1Program> program;
};

/// `definition` must be of type HPDF_FONTDEF_TYPE_TYPE1.
inline const Type1Definition &Type1Of(const HPDF_FontDef_Rec &definition) {
  return *static_cast<const Type1Definition *>(static_cast<const HPDF_Type1FontDefAttr_Rec *>(definition.attr));
}

/// A definition of the Type 1 font with these metrics and, unless `program` is null, this program, which is then
/// embedded. The streams stay the caller's. Null for a failure, which is marked in the error record: metrics that are
/// refused as HPDF_INVALID_AFM_HEADER, a program as HPDF_UNSUPPORTED_TYPE1_FONT, both with a FontFault as the detail.
OwnedFontDefinition LoadType1Definition(HPDF_MMgr memory, HPDF_Stream metrics, HPDF_Stream program);

/// Gives the font of a file its descriptor and its embedded program, unless it has them. The objects belong to the
/// document that `xref` numbers.
HPDF_STATUS CreateType1Descriptor(HPDF_FontDef definition, HPDF_Xref xref);

}  // namespace quillbar::engine
