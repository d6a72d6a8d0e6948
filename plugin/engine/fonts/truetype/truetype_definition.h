// SPDX-License-Identifier: MIT
// What libharu's font definition carries for a TrueType font (truetype_definition.cpp).
#pragma once

#include <hpdf.h>
#include <hpdf_fontdef.h>
#include <hpdf_utils.h>

#include "plugin/engine/fonts/truetype/truetype_file.h"
#include "plugin/engine/fonts/truetype/used_characters.h"

namespace quillbar::engine {

struct TrueTypeAttributes : HPDF_TTFontDefAttr_Rec {
  explicit TrueTypeAttributes(TrueTypeFile source) : HPDF_TTFontDefAttr_Rec(), font(std::move(source)) {}

  TrueTypeFile font;
  UsedCharacters used;
  HPDF_Dict program = nullptr;      // the embedded font; belongs to the document
  std::size_t programRevision = 0;  // of `used`, when the program was last made
};

inline TrueTypeAttributes &TrueTypeOf(HPDF_FontDef definition) {
  return *static_cast<TrueTypeAttributes *>(static_cast<HPDF_TTFontDefAttr>(definition->attr));
}

// Leaves room for the tag of an embedded font.
inline constexpr std::size_t kLongestTrueTypeName = HPDF_LIMIT_MAX_NAME_LEN - HPDF_TTF_FONT_TAG_LEN - 1;

// Names the font, before it gets a descriptor; at most kLongestTrueTypeName characters.
void SetName(HPDF_FontDef definition, const std::string &name);

// A glyph's width in 1/1000 of the font size.
HPDF_INT16 WidthOf(const TrueTypeFile &font, std::uint16_t glyph);

// Gives the font its descriptor, once; the objects belong to the document that `xref` numbers.
HPDF_STATUS CreateDescriptor(HPDF_FontDef definition, HPDF_Xref xref);

// Brings the embedded font up to date with the characters used, and its name with the tag of the subset,
// before the document is written; `filter` says how it is compressed. Throws std::bad_alloc.
HPDF_STATUS RefreshProgram(HPDF_FontDef definition, HPDF_UINT filter);

}  // namespace quillbar::engine
