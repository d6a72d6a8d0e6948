// SPDX-License-Identifier: MIT
// Type 1 font definitions, in place of libharu's hpdf_fontdef_type1.c: standard fonts, whose metrics libharu has, and
// fonts from a metrics file and a program, both checked in memory first (afm_file.cpp, type1_program.cpp).
#include "plugin/engine/fonts/type1/type1_definition.h"

#include <hpdf_utils.h>

#include <algorithm>
#include <memory>

#include "plugin/engine/errors/out_of_memory.h"
#include "plugin/engine/fonts/encodings/glyph_name.h"
#include "plugin/engine/fonts/font_definition.h"
#include "plugin/engine/fonts/font_fault.h"
#include "plugin/engine/fonts/type1/afm_file.h"
#include "plugin/engine/streams/read_stream.h"
#include "plugin/engine/streams/write_bytes.h"

namespace quillbar::engine {

namespace {

// Far above what a metrics file can need.
constexpr std::size_t kMaxAfmBytes = std::size_t{16} << 20;

Type1Definition &AttributesOf(HPDF_FontDef definition) {
  return *static_cast<Type1Definition *>(static_cast<HPDF_Type1FontDefAttr>(definition->attr));
}

void Free(HPDF_FontDef definition) { delete &AttributesOf(definition); }

// Null when memory ran out; may throw std::bad_alloc instead.
OwnedFontDefinition NewDefinition(HPDF_MMgr memory) {
  auto own = std::make_unique<Type1Definition>();
  auto *attr = static_cast<HPDF_Type1FontDefAttr>(own.get());
  OwnedFontDefinition definition = NewFontDefinition(memory, HPDF_FONTDEF_TYPE_TYPE1, attr, Free);
  if (definition == nullptr) return nullptr;
  static_cast<void>(own.release());
  definition->flags = HPDF_FONT_STD_CHARSET;
  return definition;
}

// Takes the metrics of a glyph; those of the space are the width of what a font lacks.
void AddMetrics(HPDF_FontDef definition, const HPDF_CharData &glyph) {
  AttributesOf(definition).metrics.push_back(glyph);
  if (glyph.unicode == 0x0020) definition->missing_width = glyph.width;
}

void Describe(HPDF_FontDef definition, const AfmFile &afm) {
  Type1Definition &own = AttributesOf(definition);
  SetBaseFont(definition, afm.fontName);
  afm.encodingScheme.copy(own.encoding_scheme, HPDF_LIMIT_MAX_NAME_LEN);
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

  own.metrics.reserve(afm.glyphs.size());
  for (const AfmFile::Glyph &glyph : afm.glyphs) {
    const HPDF_UNICODE character = CharacterOfGlyphName(glyph.name);
    AddMetrics(definition, {static_cast<HPDF_INT16>(glyph.code), character, static_cast<HPDF_INT16>(glyph.width)});
    if (glyph.code >= 0) own.glyphsByCode.emplace(glyph.code, glyph.name);
    if (character != 0) own.glyphs.emplace(character, glyph.name);
  }
}

HPDF_STATUS LoadMetrics(HPDF_FontDef definition, HPDF_Stream stream) {
  std::vector<std::uint8_t> file;
  if (const HPDF_STATUS status = ReadStream(stream, kMaxAfmBytes, file); status != HPDF_OK) return status;
  const auto result =
      file.size() > kMaxAfmBytes ? std::variant<AfmFile, FontFault>(FontFault::kTooLarge) : AfmFile::Read(file);
  if (const auto *fault = std::get_if<FontFault>(&result))
    return HPDF_SetError(definition->error, HPDF_INVALID_AFM_HEADER, static_cast<HPDF_STATUS>(*fault));
  Describe(definition, std::get<AfmFile>(result));
  return HPDF_OK;
}

HPDF_STATUS LoadProgram(HPDF_FontDef definition, HPDF_Stream stream) {
  std::vector<std::uint8_t> file;
  if (const HPDF_STATUS status = ReadStream(stream, kMaxFontFileBytes, file); status != HPDF_OK) return status;
  std::optional<Type1Program> program = file.size() > kMaxFontFileBytes ? std::nullopt : Type1Program::Read(file);
  if (!program) {
    return HPDF_SetError(definition->error, HPDF_UNSUPPORTED_TYPE1_FONT,
                         static_cast<HPDF_STATUS>(FontFault::kProgramForm));
  }
  AttributesOf(definition).program = std::move(program);
  return HPDF_OK;
}

// The program as a stream object of the document; null for a failure.
HPDF_Dict NewProgramStream(const Type1Program &program, HPDF_MMgr memory, HPDF_Xref xref) {
  HPDF_Dict object = HPDF_DictStream_New(memory, xref);
  if (object == nullptr) return nullptr;
  struct Portion {
    const char *lengthKey;
    const std::vector<std::uint8_t> &bytes;
  };
  for (const auto &[lengthKey, bytes] : {Portion{"Length1", program.clear}, Portion{"Length2", program.encrypted},
                                         Portion{"Length3", program.trailer}}) {
    if (WriteBytes(object->stream, bytes) != HPDF_OK ||
        HPDF_Dict_AddNumber(object, lengthKey, static_cast<HPDF_INT32>(bytes.size())) != HPDF_OK)
      return nullptr;
  }
  return object;
}

}  // namespace

const HPDF_CharData *Type1Definition::MetricsOf(HPDF_UNICODE character) const {
  const auto found = std::ranges::find(metrics, character, &HPDF_CharData::unicode);
  return found == metrics.end() ? nullptr : &*found;
}

const HPDF_CharData *Type1Definition::MetricsOfCode(HPDF_BYTE code) const {
  const auto found = std::ranges::find(metrics, code, &HPDF_CharData::char_cd);
  return found == metrics.end() ? nullptr : &*found;
}

HPDF_UNICODE Type1Definition::GlyphCharacterOf(HPDF_UNICODE character) const {
  if (glyphs.contains(character)) return character;
  for (const auto &[one, other] : kNamesakes) {
    if (character == one && glyphs.contains(other)) return other;
    if (character == other && glyphs.contains(one)) return one;
  }
  return 0;
}

OwnedFontDefinition LoadType1Definition(HPDF_MMgr memory, HPDF_Stream metrics, HPDF_Stream program) {
  return OwnedFontDefinition(OrOutOfMemory(memory->error, [&]() -> HPDF_FontDef {
    OwnedFontDefinition definition = NewDefinition(memory);
    if (definition == nullptr || LoadMetrics(definition.get(), metrics) != HPDF_OK) return nullptr;
    return program == nullptr || LoadProgram(definition.get(), program) == HPDF_OK ? definition.release() : nullptr;
  }));
}

HPDF_STATUS CreateType1Descriptor(HPDF_FontDef definition, HPDF_Xref xref) {
  if (definition->descriptor != nullptr) return HPDF_OK;
  using enum DescriptorEntry;
  HPDF_Dict descriptor = NewFontDescriptor(
      *definition, xref, {kAscent, kDescent, kFlags, kFontBBox, kFontName, kItalicAngle, kStemV, kXHeight});
  if (descriptor == nullptr) return HPDF_Error_GetCode(definition->error);
  if (const auto &program = AttributesOf(definition).program) {
    HPDF_Dict stream = NewProgramStream(*program, definition->mmgr, xref);
    if (stream == nullptr) return HPDF_Error_GetCode(definition->error);
    if (const HPDF_STATUS status = HPDF_Dict_Add(descriptor, "FontFile", stream); status != HPDF_OK) return status;
  }
  definition->descriptor = descriptor;
  return HPDF_OK;
}

}  // namespace quillbar::engine

using namespace quillbar::engine;

extern "C" {

HPDF_FontDef HPDF_Type1FontDef_New(HPDF_MMgr memory) {
  return OrOutOfMemory(memory->error, [&] { return NewDefinition(memory).release(); });
}

// Takes a standard font's metrics over, which end with U+FFFF.
HPDF_STATUS HPDF_Type1FontDef_SetWidths(HPDF_FontDef definition, const HPDF_CharData *widths) {
  return OrOutOfMemory(definition->error, [&] {
    for (; widths->unicode != 0xFFFF; ++widths) AddMetrics(definition, *widths);
    return HPDF_STATUS{HPDF_OK};
  });
}

}  // extern "C"
