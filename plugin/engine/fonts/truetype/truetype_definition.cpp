// SPDX-License-Identifier: MIT
// TrueType font definitions, in place of libharu's hpdf_fontdef_tt.c.
//
// libharu's file trusts the numbers in a font, keeps the file open until the document is written, and embeds the
// glyphs used up to the first save only. Here the file is read and checked at once, and the embedded font is made anew
// for each save in which there is more to show.
#include "plugin/engine/fonts/truetype/truetype_definition.h"

#include <hpdf_utils.h>

#include <algorithm>
#include <memory>

#include "plugin/engine/errors/out_of_memory.h"
#include "plugin/engine/fonts/cff/cff_program.h"
#include "plugin/engine/fonts/encodings/glyph_name.h"
#include "plugin/engine/fonts/font_definition.h"
#include "plugin/engine/fonts/truetype/truetype_name.h"
#include "plugin/engine/fonts/truetype/truetype_subset.h"
#include "plugin/engine/streams/read_stream.h"
#include "plugin/engine/streams/write_bytes.h"

namespace quillbar::engine {

namespace {

// StemV, which the descriptor must have and a TrueType file does not tell.
constexpr HPDF_UINT16 kUsualStem = 80;
constexpr HPDF_UINT16 kUsualBoldStem = 140;

HPDF_INT16 Per1000(long long units, unsigned unitsPerEm) {
  return static_cast<HPDF_INT16>(std::clamp(units * 1000 / static_cast<long long>(unitsPerEm), -32768LL, 32767LL));
}

// The height of a character's outline above the baseline, in 1/1000 em.
HPDF_INT16 HeightOf(const TrueTypeFile &font, char32_t character) {
  const std::uint16_t glyph = font.GlyphOf(character);
  if (glyph == 0) return 0;
  if (font.HasCffOutlines()) return Per1000(font.Shaper().ExtentsOf(glyph).top, font.UnitsPerEm());
  const Bytes outline = font.OutlineOf(glyph);
  return outline.size() < 10 ? HPDF_INT16{0} : Per1000(S16(outline, 8), font.UnitsPerEm());
}

// The document in which characters were shown is gone.
void Clean(HPDF_FontDef definition) {
  TrueTypeDefinition &own = TrueTypeOf(definition);
  own.shown.Clear();
  own.program = nullptr;
  own.programRevision = 0;
}

void Free(HPDF_FontDef definition) { delete &TrueTypeOf(definition); }

// Fills in what the rest of the library reads from a definition.
void Describe(HPDF_FontDef_Rec &definition, const TrueTypeFile &font) {
  const unsigned em = font.UnitsPerEm();
  const auto [left, bottom, right, top] = font.BoundingBox();
  definition.font_bbox = HPDF_ToBox(Per1000(left, em), Per1000(bottom, em), Per1000(right, em), Per1000(top, em));
  definition.ascent = Per1000(font.Ascent(), em);
  definition.descent = Per1000(font.Descent(), em);
  definition.cap_height = static_cast<HPDF_UINT16>(HeightOf(font, U'H'));
  definition.x_height = static_cast<HPDF_UINT16>(HeightOf(font, U'x'));
  definition.italic_angle = static_cast<HPDF_INT16>(font.ItalicAngle());
  definition.missing_width = static_cast<HPDF_INT16>(font.WidthOf(0));

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
}

HPDF_FontDef NewDefinition(HPDF_MMgr memory, TrueTypeFile file) {
  auto own = std::make_unique<TrueTypeDefinition>(std::move(file));
  OwnedFontDefinition definition = NewFontDefinition(memory, HPDF_FONTDEF_TYPE_TRUETYPE, own.get(), Free);
  if (definition == nullptr) return nullptr;
  const TrueTypeDefinition &carried = *own.release();
  definition->clean_fn = Clean;
  SetBaseFont(definition.get(), LibraryNameOf(carried.file, kLongestTrueTypeName));
  Describe(*definition, carried.file);
  return definition.release();
}

// The embedded font's own character map: the characters shown in one-byte encodings, and their namesakes,
// which viewers may look for instead.
std::map<std::uint16_t, std::uint16_t> CharacterMapOf(const ShownGlyphs &shown) {
  std::map<std::uint16_t, std::uint16_t> characters = shown.Encoded();
  for (const auto &[one, other] : kNamesakes) {
    if (const auto found = characters.find(one); found != characters.end()) characters.emplace(other, found->second);
    if (const auto found = characters.find(other); found != characters.end()) characters.emplace(one, found->second);
  }
  return characters;
}

// The font program that the document embeds.
std::vector<std::uint8_t> ProgramOf(const TrueTypeDefinition &own) {
  if (own.file.HasCffOutlines()) return CffProgram(own.file, own.shown.Glyphs());
  return SubsetTrueType(own.file, own.shown.Glyphs(), CharacterMapOf(own.shown));
}

HPDF_FontDef Load(HPDF_MMgr memory, HPDF_Stream stream) {
  std::vector<std::uint8_t> bytes;
  if (ReadStream(stream, kMaxFontFileBytes, bytes) != HPDF_OK) return nullptr;
  auto result = TrueTypeFile::Read(std::move(bytes));
  if (const auto *fault = std::get_if<FontFault>(&result)) {
    HPDF_SetError(memory->error, HPDF_TTF_INVALID_FOMAT, static_cast<HPDF_STATUS>(*fault));
    return nullptr;
  }
  return NewDefinition(memory, std::move(std::get<TrueTypeFile>(result)));
}

}  // namespace

OwnedFontDefinition LoadTrueTypeDefinition(HPDF_MMgr memory, HPDF_Stream stream) {
  return OwnedFontDefinition(OrOutOfMemory(memory->error, [&] { return Load(memory, stream); }));
}

HPDF_STATUS CreateDescriptor(HPDF_FontDef definition, HPDF_Xref xref) {
  if (definition->descriptor != nullptr) return HPDF_OK;
  using enum DescriptorEntry;
  HPDF_Dict descriptor = NewFontDescriptor(
      *definition, xref, {kFontName, kFlags, kFontBBox, kAscent, kDescent, kCapHeight, kXHeight, kItalicAngle, kStemV});
  HPDF_Dict program = descriptor == nullptr ? nullptr : HPDF_DictStream_New(definition->mmgr, xref);
  if (program == nullptr) return HPDF_Error_GetCode(definition->error);
  HPDF_STATUS status = HPDF_OK;
  if (TrueTypeOf(definition).file.HasCffOutlines()) {
    status = HPDF_Dict_AddName(program, "Subtype", "CIDFontType0C");
    if (status == HPDF_OK) status = HPDF_Dict_Add(descriptor, "FontFile3", program);
  } else {
    status = HPDF_Dict_Add(descriptor, "FontFile2", program);
  }
  if (status != HPDF_OK) return status;
  TrueTypeOf(definition).program = program;
  definition->descriptor = descriptor;
  return HPDF_OK;
}

HPDF_STATUS RefreshProgram(HPDF_FontDef definition, HPDF_UINT filter) {
  TrueTypeDefinition &own = TrueTypeOf(definition);
  if (own.program == nullptr) return HPDF_SetError(definition->error, HPDF_INVALID_FONTDEF_DATA, 0);
  own.program->filter = filter;
  if (own.programRevision == own.shown.Revision()) return HPDF_OK;
  HPDF_MemStream_FreeData(own.program->stream);
  const std::vector<std::uint8_t> program = ProgramOf(own);
  HPDF_STATUS status = WriteBytes(own.program->stream, program);
  if (status == HPDF_OK && !own.file.HasCffOutlines())
    status = HPDF_Dict_AddNumber(own.program, "Length1", static_cast<HPDF_INT32>(program.size()));
  if (status != HPDF_OK) return status;
  own.subsetName = SubsetTag(program) + "+" + definition->base_font;
  status = HPDF_Dict_AddName(definition->descriptor, "FontName", own.subsetName.c_str());
  if (status == HPDF_OK) own.programRevision = own.shown.Revision();
  return status;
}

}  // namespace quillbar::engine
