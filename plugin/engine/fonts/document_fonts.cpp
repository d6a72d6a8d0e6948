// SPDX-License-Identifier: MIT
// The fonts of a document, in place of what libharu's hpdf_doc.c has of them; that takes two TrueType files of one
// name for one font, whatever is in them.
#include "plugin/engine/fonts/document_fonts.h"

#include <hpdf_doc.h>

#include <cstring>
#include <memory>
#include <string_view>

#include "plugin/engine/errors/out_of_memory.h"
#include "plugin/engine/fonts/cid/cid_font.h"
#include "plugin/engine/fonts/font_definition.h"
#include "plugin/engine/fonts/font_index.h"
#include "plugin/engine/fonts/font_object.h"
#include "plugin/engine/fonts/truetype/truetype_definition.h"
#include "plugin/engine/fonts/truetype/truetype_name.h"
#include "plugin/engine/fonts/truetype/truetype_simple_font.h"
#include "plugin/engine/fonts/truetype/truetype_type0_font.h"
#include "plugin/engine/fonts/type1/type1_definition.h"
#include "plugin/engine/fonts/type1/type1_font.h"

namespace quillbar::engine {

namespace {

struct StreamDeleter {
  void operator()(HPDF_Stream stream) const { HPDF_Stream_Free(stream); }
};
using OwnedStream = std::unique_ptr<HPDF_Stream_Rec, StreamDeleter>;

// The definition of that name; null if there is none. Throws std::bad_alloc.
HPDF_FontDef FindName(HPDF_Doc document, std::string_view name) { return FontIndex::Of(document).FindDefinition(name); }

// Gives the definition to the document; its name there, or null for a failure.
const char *Register(HPDF_Doc document, OwnedFontDefinition definition) {
  if (HPDF_List_Add(document->fontdef_list, definition.get()) != HPDF_OK) return nullptr;
  return definition.release()->base_font;
}

const char *RegisterTrueType(HPDF_Doc document, OwnedFontDefinition definition) {
  const TrueTypeFile &file = TrueTypeOf(definition.get()).file;
  const HPDF_FontDef same = FontIndex::Of(document).FindTrueTypeFile(file.Whole());
  if (same != nullptr) return same->base_font;
  for (unsigned attempt = 0; FindName(document, definition->base_font) != nullptr; ++attempt)
    SetBaseFont(definition.get(), LibraryNameWithSuffix(file, kLongestTrueTypeName, attempt));
  return Register(document, std::move(definition));
}

const char *LoadTrueType(HPDF_Doc document, const char *path) {
  const OwnedStream stream(HPDF_FileReader_New(document->mmgr, path));
  if (stream == nullptr) return nullptr;
  OwnedFontDefinition definition = LoadTrueTypeDefinition(document->mmgr, stream.get());
  if (definition == nullptr) return nullptr;
  return OrOutOfMemory(&document->error, [&] { return RegisterTrueType(document, std::move(definition)); });
}

const char *LoadType1(HPDF_Doc document, const char *metricsPath, const char *programPath) {
  const OwnedStream metrics(HPDF_FileReader_New(document->mmgr, metricsPath));
  const OwnedStream program(programPath == nullptr ? nullptr : HPDF_FileReader_New(document->mmgr, programPath));
  if (metrics == nullptr || (programPath != nullptr && program == nullptr)) return nullptr;
  OwnedFontDefinition definition = LoadType1Definition(document->mmgr, metrics.get(), program.get());
  if (definition == nullptr) return nullptr;
  return OrOutOfMemory(&document->error, [&]() -> const char * {
    if (FindName(document, definition->base_font) == nullptr) return Register(document, std::move(definition));
    HPDF_SetError(&document->error, HPDF_FONT_EXISTS, 0);
    return nullptr;
  });
}

// What a failed call marked in the error record is raised.
template <typename Result>
Result *OrRaise(HPDF_Doc document, Result *result) {
  if (result == nullptr) HPDF_CheckError(&document->error);
  return result;
}

// The definition that `name` means: the one of that name, one of libharu's, or the first TrueType font that has it as its
// PostScript name. Null, with the reason marked, for none. Throws std::bad_alloc.
HPDF_FontDef DefinitionOf(HPDF_Doc document, const char *name) {
  const HPDF_FontDef named = FindName(document, name);
  // libharu makes some of its own whole at their first use.
  if (named != nullptr) return named->type == HPDF_FONTDEF_TYPE_UNINITIALIZED ? HPDF_GetFontDef(document, name) : named;
  const HPDF_FontDef own = FontIndex::Of(document).FindOwnName(name);
  return own != nullptr ? own : HPDF_GetFontDef(document, name);
}

bool IsFontOfSigns(const HPDF_FontDef_Rec &definition) {
  return definition.type == HPDF_FONTDEF_TYPE_TYPE1 &&
         std::strcmp(Type1Of(definition).encoding_scheme, HPDF_ENCODING_FONT_SPECIFIC) == 0;
}

// The function that makes fonts of this kind; null where a face has none in such an encoding.
auto *ConstructorOf(HPDF_FontDef_Rec &definition, const HPDF_Encoder_Rec &encoder) {
  const bool isOneByte = encoder.type == HPDF_ENCODER_TYPE_SINGLE_BYTE;
  if (definition.type == HPDF_FONTDEF_TYPE_TYPE1) return isOneByte ? NewType1Font : nullptr;
  if (definition.type == HPDF_FONTDEF_TYPE_CID) return isOneByte ? nullptr : NewCidFont;
  // Glyphs of CFF outlines have no names here by which codes of one byte could find them.
  if (isOneByte && !TrueTypeOf(&definition).file.HasCffOutlines()) return NewTrueTypeSimpleFont;
  return NewTrueTypeType0Font;
}

HPDF_Font NewFont(HPDF_Doc document, HPDF_FontDef definition, HPDF_Encoder encoder) {
  auto *const newFont = ConstructorOf(*definition, *encoder);
  // Before anything is made: libharu loses the object that it has begun.
  if (newFont == nullptr) {
    HPDF_SetError(&document->error, HPDF_INVALID_ENCODER_TYPE, 0);
    return nullptr;
  }
  HPDF_Font font =
      OrOutOfMemory(&document->error, [&] { return newFont(document->mmgr, definition, encoder, document->xref); });
  if (font == nullptr) return nullptr;
  HPDF_List_Add(document->font_mgr, font);
  if ((document->compression_mode & HPDF_COMP_METADATA) != 0) font->filter = HPDF_STREAM_FILTER_FLATE_DECODE;
  return font;
}

}  // namespace

const char *LoadTrueTypeFont(HPDF_Doc document, const char *path) {
  return HPDF_HasDoc(document) ? OrRaise(document, LoadTrueType(document, path)) : nullptr;
}

const char *LoadType1Font(HPDF_Doc document, const char *metricsPath, const char *programPath) {
  return HPDF_HasDoc(document) ? OrRaise(document, LoadType1(document, metricsPath, programPath)) : nullptr;
}

HPDF_Font GetFont(HPDF_Doc document, const char *name, const char *encoding) {
  if (!HPDF_HasDoc(document)) return nullptr;
  if (name == nullptr) {
    HPDF_RaiseError(&document->error, HPDF_INVALID_FONT_NAME, 0);
    return nullptr;
  }
  const HPDF_FontDef definition =
      OrRaise(document, OrOutOfMemory(&document->error, [&] { return DefinitionOf(document, name); }));
  if (definition == nullptr) return nullptr;
  if (encoding == nullptr) encoding = IsFontOfSigns(*definition) ? HPDF_ENCODING_FONT_SPECIFIC : HPDF_ENCODING_STANDARD;
  HPDF_Font known = nullptr;
  const HPDF_STATUS status = OrOutOfMemory(&document->error, [&] {
    known = FontIndex::Of(document).FindFont(definition, encoding);
    return HPDF_STATUS{HPDF_OK};
  });
  if (status != HPDF_OK) HPDF_CheckError(&document->error);
  if (status != HPDF_OK || known != nullptr) return known;
  HPDF_Encoder encoder = HPDF_GetEncoder(document, encoding);
  return encoder == nullptr ? nullptr : OrRaise(document, NewFont(document, definition, encoder));
}

}  // namespace quillbar::engine
