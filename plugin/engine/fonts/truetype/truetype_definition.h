// SPDX-License-Identifier: MIT
#pragma once

#include <hpdf.h>
#include <hpdf_fontdef.h>

#include <string>

#include "plugin/engine/fonts/font_definition.h"
#include "plugin/engine/fonts/truetype/shown_glyphs.h"
#include "plugin/engine/fonts/truetype/truetype_file.h"

namespace quillbar::engine {

/// What the font definition of a TrueType file carries.
struct TrueTypeDefinition {
  explicit TrueTypeDefinition(TrueTypeFile source) : file(std::move(source)) {}

  TrueTypeFile file;
  ShownGlyphs shown;
  HPDF_Dict program = nullptr;      // the embedded font's stream; belongs to the document
  std::size_t programRevision = 0;  // of `shown`, when the program was last made
  std::string subsetName;           // the name in the document, with the tag of that program
};

/// `definition` must be of type HPDF_FONTDEF_TYPE_TRUETYPE.
inline TrueTypeDefinition &TrueTypeOf(HPDF_FontDef definition) {
  return *static_cast<TrueTypeDefinition *>(definition->attr);
}

/// A definition of the TrueType file that `stream` holds, which stays the caller's. Null for a failure, which is
/// marked in the error record: a file is refused as HPDF_TTF_INVALID_FOMAT with a FontFault as its detail. What `OS/2`
/// says of embedding is for the application to heed: the font is embedded all the same.
OwnedFontDefinition LoadTrueTypeDefinition(HPDF_MMgr memory, HPDF_Stream stream);

/// How long the name of a definition may be: the tag of a subset is put before it.
inline constexpr std::size_t kLongestTrueTypeName = HPDF_LIMIT_MAX_NAME_LEN - HPDF_TTF_FONT_TAG_LEN - 1;

/// Gives the font its descriptor and its embedded program, empty at first, unless it has them. The objects belong to
/// the document that `xref` numbers.
HPDF_STATUS CreateDescriptor(HPDF_FontDef definition, HPDF_Xref xref);

/// Brings the embedded program up to date with the characters used, and the subset's name with it, before a save.
/// `filter` says how the program is compressed. Throws std::bad_alloc.
HPDF_STATUS RefreshProgram(HPDF_FontDef definition, HPDF_UINT filter);

}  // namespace quillbar::engine
