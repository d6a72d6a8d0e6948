// SPDX-License-Identifier: MIT
// TrueType font definitions, in place of libharu's hpdf_fontdef_tt.c.
//
// libharu's file trusts the numbers in a font, keeps the file open until the document is written, and embeds
// the glyphs used up to the first save only. Here the file is read and checked at once, and the embedded font
// is made anew for each save in which there is more to show.
#include "plugin/engine/fonts/truetype/truetype_definition.h"

#include <algorithm>
#include <cstring>
#include <new>

#include "plugin/engine/fonts/encodings/glyph_name.h"
#include "plugin/engine/fonts/truetype/truetype_name.h"
#include "plugin/engine/fonts/truetype/truetype_subset.h"
#include "plugin/engine/streams/read_stream.h"

namespace quillbar::engine {

namespace {

// The bits of `OS/2`'s embedding rights that forbid what a save does: embedding at all, a subset, outlines.
constexpr unsigned kForbiddenRights = 0x0002 | 0x0100 | 0x0200;

// StemV, which the descriptor must have and a TrueType file does not tell.
constexpr HPDF_UINT16 kUsualStem = 80;
constexpr HPDF_UINT16 kUsualBoldStem = 140;

HPDF_INT16 Per1000(long long units, unsigned unitsPerEm) {
  return static_cast<HPDF_INT16>(std::clamp(units * 1000 / static_cast<long long>(unitsPerEm), -32768LL, 32767LL));
}

// The height of a character's outline above the baseline, in 1/1000 em.
HPDF_INT16 HeightOf(const TrueTypeFile &font, char32_t character) {
  const std::uint16_t glyph = font.GlyphOf(character);
  const Bytes outline = glyph == 0 ? Bytes() : font.OutlineOf(glyph);
  return outline.size() < 10 ? HPDF_INT16{0} : Per1000(S16(outline, 8), font.UnitsPerEm());
}

void CopyName(char (&to)[HPDF_LIMIT_MAX_NAME_LEN + 1], const std::string &from) {
  std::memset(to, 0, sizeof to);
  from.copy(to, HPDF_LIMIT_MAX_NAME_LEN);
}

void Clean(HPDF_FontDef definition) {
  TrueTypeAttributes &own = TrueTypeOf(definition);
  own.used.Clear();
  own.program = nullptr;
  own.programRevision = 0;
}

void Free(HPDF_FontDef definition) {
  if (definition->attr != nullptr) delete &TrueTypeOf(definition);
}

// Fills in what the rest of the library reads from a definition.
void Describe(HPDF_FontDef_Rec &definition, TrueTypeAttributes &own) {
  const TrueTypeFile &font = own.font;
  const unsigned em = font.UnitsPerEm();
  const auto [left, bottom, right, top] = font.BoundingBox();
  definition.font_bbox = HPDF_ToBox(Per1000(left, em), Per1000(bottom, em), Per1000(right, em), Per1000(top, em));
  definition.ascent = Per1000(font.Ascent(), em);
  definition.descent = Per1000(font.Descent(), em);
  definition.cap_height = static_cast<HPDF_UINT16>(HeightOf(font, U'H'));
  definition.x_height = static_cast<HPDF_UINT16>(HeightOf(font, U'x'));
  definition.italic_angle = static_cast<HPDF_INT16>(font.ItalicAngle());
  definition.missing_width = WidthOf(font, 0);

  // Always nonsymbolic: text in a one-byte encoding is found through the embedded font's Unicode map.
  definition.flags = HPDF_FONT_STD_CHARSET;
  const unsigned family = font.FamilyClass();
  if ((family >= 1 && family <= 5) || family == 7) definition.flags |= HPDF_FONT_SERIF;
  if (family == 10) definition.flags |= HPDF_FONT_SCRIPT;
  if (font.IsFixedPitch()) definition.flags |= HPDF_FONT_FIXED_WIDTH;
  const std::string style = font.SubfamilyName();
  const bool isBold = style.find("Bold") != std::string::npos;
  if (isBold) definition.flags |= HPDF_FONT_FOURCE_BOLD;
  if (style.find("Italic") != std::string::npos || style.find("Oblique") != std::string::npos)
    definition.flags |= HPDF_FONT_ITALIC;
  definition.stemv = isBold ? kUsualBoldStem : kUsualStem;

  own.num_glyphs = static_cast<HPDF_UINT16>(font.GlyphCount());
  own.fs_type = static_cast<HPDF_UINT16>(font.EmbeddingRights());
  own.embedding = HPDF_TRUE;
}

HPDF_FontDef NewDefinition(HPDF_MMgr memory, TrueTypeFile font) {
  auto *definition = static_cast<HPDF_FontDef>(HPDF_GetMem(memory, sizeof(HPDF_FontDef_Rec)));
  if (definition == nullptr) return nullptr;
  std::memset(definition, 0, sizeof *definition);
  auto *own = new (std::nothrow) TrueTypeAttributes(std::move(font));
  if (own == nullptr) {
    HPDF_FreeMem(memory, definition);
    HPDF_SetError(memory->error, HPDF_FAILD_TO_ALLOC_MEM, 0);
    return nullptr;
  }
  definition->sig_bytes = HPDF_FONTDEF_SIG_BYTES;
  definition->mmgr = memory;
  definition->error = memory->error;
  definition->type = HPDF_FONTDEF_TYPE_TRUETYPE;
  definition->clean_fn = Clean;
  definition->free_fn = Free;
  definition->attr = static_cast<HPDF_TTFontDefAttr>(own);
  Describe(*definition, *own);
  try {
    SetName(definition, LibraryNameOf(own->font, kLongestTrueTypeName));
  } catch (const std::bad_alloc &) {
    HPDF_FontDef_Free(definition);
    throw;
  }
  return definition;
}

// The embedded font's own character map: the characters shown in one-byte encodings, and their namesakes,
// which viewers may look for instead.
std::map<std::uint16_t, std::uint16_t> CharacterMapOf(const UsedCharacters &used) {
  std::map<std::uint16_t, std::uint16_t> characters = used.Narrow();
  for (const auto &[one, other] : kNamesakes) {
    if (const auto found = characters.find(one); found != characters.end()) characters.emplace(other, found->second);
    if (const auto found = characters.find(other); found != characters.end()) characters.emplace(one, found->second);
  }
  return characters;
}

// The font program that the document embeds.
std::vector<std::uint8_t> ProgramOf(const TrueTypeAttributes &own) {
  return SubsetTrueType(own.font, own.used.Glyphs(), CharacterMapOf(own.used));
}

HPDF_FontDef Load(HPDF_MMgr memory, HPDF_Stream stream) {
  std::vector<std::uint8_t> bytes;
  if (ReadStream(stream, kMaxFontFileBytes, bytes) != HPDF_OK) return nullptr;
  auto result = TrueTypeFile::Read(std::move(bytes));
  if (const auto *fault = std::get_if<FontFault>(&result)) {
    HPDF_SetError(memory->error, HPDF_TTF_INVALID_FOMAT, static_cast<HPDF_STATUS>(*fault));
    return nullptr;
  }
  auto &font = std::get<TrueTypeFile>(result);
  if ((font.EmbeddingRights() & kForbiddenRights) != 0) {
    HPDF_SetError(memory->error, HPDF_TTF_CANNOT_EMBEDDING_FONT, 0);
    return nullptr;
  }
  return NewDefinition(memory, std::move(font));
}

}  // namespace

void SetName(HPDF_FontDef definition, const std::string &name) {
  CopyName(definition->base_font, name);
  CopyName(TrueTypeOf(definition).base_font, name);
}

HPDF_INT16 WidthOf(const TrueTypeFile &font, std::uint16_t glyph) {
  return Per1000(font.AdvanceOf(glyph), font.UnitsPerEm());
}

HPDF_STATUS CreateDescriptor(HPDF_FontDef definition, HPDF_Xref xref) {
  if (definition->descriptor != nullptr) return HPDF_OK;
  TrueTypeAttributes &own = TrueTypeOf(definition);
  HPDF_Dict descriptor = HPDF_Dict_New(definition->mmgr);
  if (descriptor == nullptr) return HPDF_Error_GetCode(definition->error);
  HPDF_STATUS status = HPDF_Xref_Add(xref, descriptor);
  if (status != HPDF_OK) return status;
  HPDF_Dict program = HPDF_DictStream_New(definition->mmgr, xref);
  if (program == nullptr) return HPDF_Error_GetCode(definition->error);

  status |= HPDF_Dict_AddName(descriptor, "Type", "FontDescriptor");
  status |= HPDF_Dict_AddName(descriptor, "FontName", own.base_font);
  status |= HPDF_Dict_AddNumber(descriptor, "Flags", static_cast<HPDF_INT32>(definition->flags));
  status |= HPDF_Dict_Add(descriptor, "FontBBox", HPDF_Box_Array_New(definition->mmgr, definition->font_bbox));
  status |= HPDF_Dict_AddNumber(descriptor, "Ascent", definition->ascent);
  status |= HPDF_Dict_AddNumber(descriptor, "Descent", definition->descent);
  status |= HPDF_Dict_AddNumber(descriptor, "CapHeight", definition->cap_height);
  status |= HPDF_Dict_AddNumber(descriptor, "XHeight", definition->x_height);
  status |= HPDF_Dict_AddNumber(descriptor, "ItalicAngle", definition->italic_angle);
  status |= HPDF_Dict_AddNumber(descriptor, "StemV", definition->stemv);
  status |= HPDF_Dict_Add(descriptor, "FontFile2", program);
  if (status != HPDF_OK) return HPDF_Error_GetCode(definition->error);
  own.program = program;
  definition->descriptor = descriptor;
  return HPDF_OK;
}

HPDF_STATUS RefreshProgram(HPDF_FontDef definition, HPDF_UINT filter) {
  TrueTypeAttributes &own = TrueTypeOf(definition);
  if (own.program == nullptr) return HPDF_SetError(definition->error, HPDF_INVALID_FONTDEF_DATA, 0);
  own.program->filter = filter;
  if (own.programRevision == own.used.Revision()) return HPDF_OK;
  HPDF_MemStream_FreeData(own.program->stream);
  const std::vector<std::uint8_t> program = ProgramOf(own);
  own.length1 = static_cast<HPDF_UINT>(program.size());
  HPDF_STATUS status = HPDF_Stream_Write(own.program->stream, program.data(), own.length1);
  if (status == HPDF_OK) status = HPDF_Dict_AddNumber(own.program, "Length1", static_cast<HPDF_INT32>(own.length1));
  if (status != HPDF_OK) return status;
  CopyName(own.base_font, SubsetTag(program) + "+" + definition->base_font);
  status = HPDF_Dict_AddName(definition->descriptor, "FontName", own.base_font);
  if (status == HPDF_OK) own.programRevision = own.used.Revision();
  return status;
}

}  // namespace quillbar::engine

using namespace quillbar::engine;

extern "C" {

// Takes the stream over.
HPDF_FontDef HPDF_TTFontDef_Load(HPDF_MMgr memory, HPDF_Stream stream, HPDF_BOOL) {
  HPDF_FontDef definition = nullptr;
  try {
    definition = Load(memory, stream);
  } catch (const std::bad_alloc &) {
    HPDF_SetError(memory->error, HPDF_FAILD_TO_ALLOC_MEM, 0);
  }
  HPDF_Stream_Free(stream);
  return definition;
}

// A font of a collection: collections are refused as a whole, so no index leads to one.
HPDF_FontDef HPDF_TTFontDef_Load2(HPDF_MMgr memory, HPDF_Stream stream, HPDF_UINT, HPDF_BOOL embedding) {
  return HPDF_TTFontDef_Load(memory, stream, embedding);
}

HPDF_UINT16 HPDF_TTFontDef_GetGlyphid(HPDF_FontDef definition, HPDF_UINT16 character) {
  return TrueTypeOf(definition).font.GlyphOf(character);
}

// Called by fonts with a one-byte encoding, for each character that they show.
HPDF_INT16 HPDF_TTFontDef_GetCharWidth(HPDF_FontDef definition, HPDF_UINT16 character) {
  TrueTypeAttributes &own = TrueTypeOf(definition);
  try {
    own.used.AddNarrow(own.font, character);
  } catch (const std::bad_alloc &) {
    HPDF_SetError(definition->error, HPDF_FAILD_TO_ALLOC_MEM, 0);
  }
  return WidthOf(own.font, own.font.GlyphOf(character));
}

HPDF_INT16 HPDF_TTFontDef_GetGidWidth(HPDF_FontDef definition, HPDF_UINT16 glyph) {
  return WidthOf(TrueTypeOf(definition).font, glyph);
}

HPDF_STATUS HPDF_TTFontDef_SaveFontData(HPDF_FontDef definition, HPDF_Stream stream) {
  try {
    const std::vector<std::uint8_t> program = ProgramOf(TrueTypeOf(definition));
    TrueTypeOf(definition).length1 = static_cast<HPDF_UINT>(program.size());
    return HPDF_Stream_Write(stream, program.data(), static_cast<HPDF_UINT>(program.size()));
  } catch (const std::bad_alloc &) {
    return HPDF_SetError(definition->error, HPDF_FAILD_TO_ALLOC_MEM, 0);
  }
}

// The library's tags count its fonts. Ours tell subsets apart; they are made with the subset
// (RefreshProgram).
void HPDF_TTFontDef_SetTagName(HPDF_FontDef, char *) {}

}  // extern "C"
