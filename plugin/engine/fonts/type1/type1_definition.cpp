// SPDX-License-Identifier: MIT
// HPDF_Type1FontDef_Load: a Type 1 font from its metrics and its program, both checked in memory first
// (afm_file.cpp, type1_program.cpp).
#include "plugin/engine/fonts/type1/type1_definition.h"

#include <hpdf_conf.h>
#include <hpdf_utils.h>

#include <cstring>
#include <new>

#include "plugin/engine/fonts/encodings/glyph_name.h"
#include "plugin/engine/fonts/type1/afm_file.h"
#include "plugin/engine/fonts/type1/type1_program.h"
#include "plugin/engine/streams/read_stream.h"

namespace quillbar::engine {

namespace {

// Far above what a metrics file can need.
constexpr std::size_t kMaxAfmBytes = std::size_t{16} << 20;

Type1Attributes *AttributesOf(HPDF_FontDef definition) {
  return static_cast<Type1Attributes *>(static_cast<HPDF_Type1FontDefAttr>(definition->attr));
}

void Free(HPDF_FontDef definition) {
  Type1Attributes *own = AttributesOf(definition);
  HPDF_FreeMem(definition->mmgr, own->char_set);
  if (own->font_data != nullptr) HPDF_Stream_Free(own->font_data);
  HPDF_FreeMem(definition->mmgr, own->widths);
  delete own;
}

HPDF_FontDef NewDefinition(HPDF_MMgr memory) {
  HPDF_FontDef definition = HPDF_Type1FontDef_New(memory);
  if (definition == nullptr) return nullptr;
  auto *theirs = static_cast<HPDF_Type1FontDefAttr>(definition->attr);
  auto *own = new (std::nothrow) Type1Attributes(*theirs);
  if (own == nullptr) {
    HPDF_FontDef_Free(definition);
    HPDF_SetError(memory->error, HPDF_FAILD_TO_ALLOC_MEM, 0);
    return nullptr;
  }
  HPDF_FreeMem(memory, theirs);
  definition->attr = static_cast<HPDF_Type1FontDefAttr>(own);
  definition->free_fn = Free;
  return definition;
}

HPDF_STATUS Describe(HPDF_FontDef definition, const AfmFile &afm) {
  Type1Attributes *own = AttributesOf(definition);
  afm.fontName.copy(definition->base_font, HPDF_LIMIT_MAX_NAME_LEN);
  afm.encodingScheme.copy(own->encoding_scheme, HPDF_LIMIT_MAX_NAME_LEN);
  const auto [left, bottom, right, top] = afm.boundingBox;
  definition->font_bbox = HPDF_ToBox(static_cast<HPDF_INT16>(left), static_cast<HPDF_INT16>(bottom),
                                     static_cast<HPDF_INT16>(right), static_cast<HPDF_INT16>(top));
  definition->ascent = static_cast<HPDF_INT16>(afm.ascender);
  definition->descent = static_cast<HPDF_INT16>(afm.descender);
  definition->cap_height = static_cast<HPDF_UINT16>(afm.capHeight);
  definition->x_height = static_cast<HPDF_UINT16>(afm.xHeight);
  definition->italic_angle = static_cast<HPDF_INT16>(afm.italicAngle);
  definition->stemh = static_cast<HPDF_UINT16>(afm.horizontalStem);
  definition->stemv = static_cast<HPDF_UINT16>(afm.verticalStem);
  if (afm.isBold) definition->flags |= HPDF_FONT_FOURCE_BOLD;
  if (afm.isFixedPitch) definition->flags |= HPDF_FONT_FIXED_WIDTH;
  if (afm.italicAngle != 0) definition->flags |= HPDF_FONT_ITALIC;

  const std::size_t bytes = sizeof(HPDF_CharData) * (afm.glyphs.empty() ? 1 : afm.glyphs.size());
  own->widths = static_cast<HPDF_CharData *>(HPDF_GetMem(definition->mmgr, static_cast<HPDF_UINT>(bytes)));
  if (own->widths == nullptr) return HPDF_Error_GetCode(definition->error);
  for (const AfmFile::Glyph &glyph : afm.glyphs) {
    HPDF_CharData &entry = own->widths[own->widths_count++];
    entry.char_cd = static_cast<HPDF_INT16>(glyph.code);
    entry.width = static_cast<HPDF_INT16>(glyph.width);
    entry.unicode = CharacterOfGlyphName(glyph.name);
    if (glyph.code >= 0) own->glyphsByCode.emplace(glyph.code, glyph.name);
    if (entry.unicode != 0) own->glyphs.emplace(entry.unicode, glyph.name);
    if (entry.unicode == 0x0020) definition->missing_width = entry.width;
  }
  return HPDF_OK;
}

HPDF_STATUS Embed(HPDF_FontDef definition, HPDF_Stream stream) {
  std::vector<std::uint8_t> file;
  if (const HPDF_STATUS status = ReadStream(stream, kMaxFontFileBytes, file); status != HPDF_OK) return status;
  const std::optional<Type1Program> program = file.size() > kMaxFontFileBytes ? std::nullopt : Type1Program::Read(file);
  if (!program) {
    return HPDF_SetError(definition->error, HPDF_UNSUPPORTED_TYPE1_FONT,
                         static_cast<HPDF_STATUS>(FontFault::kProgramForm));
  }
  auto *own = static_cast<HPDF_Type1FontDefAttr>(definition->attr);
  own->font_data = HPDF_MemStream_New(definition->mmgr, HPDF_STREAM_BUF_SIZ);
  if (own->font_data == nullptr) return HPDF_Error_GetCode(definition->error);
  own->length1 = static_cast<HPDF_UINT>(program->clear.size());
  own->length2 = static_cast<HPDF_UINT>(program->encrypted.size());
  own->length3 = static_cast<HPDF_UINT>(program->trailer.size());
  for (const auto *portion : {&program->clear, &program->encrypted, &program->trailer}) {
    const HPDF_STATUS status =
        HPDF_Stream_Write(own->font_data, portion->data(), static_cast<HPDF_UINT>(portion->size()));
    if (status != HPDF_OK) return status;
  }
  return HPDF_OK;
}

HPDF_STATUS Load(HPDF_FontDef definition, HPDF_Stream metrics, HPDF_Stream program) {
  std::vector<std::uint8_t> file;
  if (const HPDF_STATUS status = ReadStream(metrics, kMaxAfmBytes, file); status != HPDF_OK) return status;
  const auto result =
      file.size() > kMaxAfmBytes ? std::variant<AfmFile, FontFault>(FontFault::kTooLarge) : AfmFile::Read(file);
  if (const auto *fault = std::get_if<FontFault>(&result))
    return HPDF_SetError(definition->error, HPDF_INVALID_AFM_HEADER, static_cast<HPDF_STATUS>(*fault));
  const HPDF_STATUS status = Describe(definition, std::get<AfmFile>(result));
  return status == HPDF_OK && program != nullptr ? Embed(definition, program) : status;
}

}  // namespace

const Type1Attributes *Type1FileOf(const HPDF_FontDef_Rec &definition) {
  const HPDF_Type1FontDefAttr_Rec &metrics = Type1MetricsOf(definition);
  return metrics.is_base14font != HPDF_FALSE ? nullptr : &static_cast<const Type1Attributes &>(metrics);
}

HPDF_UNICODE GlyphCharacterOf(const Type1Attributes &font, HPDF_UNICODE character) {
  if (font.glyphs.contains(character)) return character;
  for (const auto &[one, other] : kNamesakes) {
    if (character == one && font.glyphs.contains(other)) return other;
    if (character == other && font.glyphs.contains(one)) return one;
  }
  return 0;
}

}  // namespace quillbar::engine

// The streams stay the caller's.
extern "C" HPDF_FontDef HPDF_Type1FontDef_Load(HPDF_MMgr memory, HPDF_Stream metrics, HPDF_Stream program) {
  if (metrics == nullptr) return nullptr;
  HPDF_FontDef definition = quillbar::engine::NewDefinition(memory);
  if (definition == nullptr) return nullptr;
  HPDF_STATUS status = HPDF_OK;
  try {
    status = quillbar::engine::Load(definition, metrics, program);
  } catch (const std::bad_alloc &) {
    status = HPDF_SetError(memory->error, HPDF_FAILD_TO_ALLOC_MEM, 0);
  }
  if (status == HPDF_OK) return definition;
  HPDF_FontDef_Free(definition);
  return nullptr;
}
