// SPDX-License-Identifier: MIT
// Fonts of all kinds, in place of libharu's hpdf_font.c.
#include "plugin/engine/fonts/font_object.h"

#include "plugin/engine/errors/out_of_memory.h"
#include "plugin/engine/streams/write_bytes.h"

namespace quillbar::engine {

namespace {

HPDF_STATUS Refresh(HPDF_Dict font) {
  return OrOutOfMemory(font->error, [&] { return FontObjectOf(font).Refresh(font); });
}

HPDF_STATUS WriteFurtherEntries(HPDF_Dict font, HPDF_Stream stream) {
  return OrOutOfMemory(font->error, [&] { return WriteText(stream, FontObjectOf(font).FurtherEntries()); });
}

void Free(HPDF_Dict font) { delete &FontObjectOf(font); }

const HPDF_FontDef_Rec *DefinitionOf(HPDF_Font font) {
  return HPDF_Font_Validate(font) ? FontObjectOf(font).fontdef : nullptr;
}

// Whether `length` bytes of text can be measured; otherwise the failure is raised.
bool CanMeasure(HPDF_Font font, std::size_t length) {
  if (!HPDF_Font_Validate(font)) return false;
  if (length <= HPDF_LIMIT_MAX_STRING_LEN) return true;
  HPDF_RaiseError(font->error, HPDF_STRING_OUT_OF_RANGE, 0);
  return false;
}

}  // namespace

FontObject::FontObject(HPDF_FontType kind, HPDF_FontDef itsDefinition, HPDF_Encoder itsEncoder, HPDF_Xref itsXref)
    : HPDF_FontAttr_Rec() {
  type = kind;
  writing_mode = HPDF_WMODE_HORIZONTAL;
  fontdef = itsDefinition;
  encoder = itsEncoder;
  xref = itsXref;
}

std::optional<DirectedText> DirectedTextOf(HPDF_Font font, std::span<const HPDF_BYTE> text) {
  // Most fonts' texts have none, which is told without a look at the text.
  if (!FontObjectOf(font).CanBeDirected()) return std::nullopt;
  std::optional<DecodedText> decoded = FontObjectOf(font).DecodeDirected(text);
  if (!decoded || !HasDirectionalMark(decoded->characters)) return std::nullopt;
  return DirectedText(text, std::move(*decoded));
}

namespace {

// Calls `measure` with the order of the text. An empty result if memory runs out.
template <typename Measure>
auto Measured(HPDF_Font font, std::span<const HPDF_BYTE> text, const DirectedText *whole, Measure measure) {
  decltype(measure(FontObjectOf(font), whole)) result{};
  if (!CanMeasure(font, text.size())) return result;
  OrOutOfMemory(font->error, [&] {
    FontObject &object = FontObjectOf(font);
    if (whole != nullptr) {
      result = measure(object, whole);
    } else {
      const std::optional<DirectedText> own = DirectedTextOf(font, text);
      result = measure(object, own ? &*own : nullptr);
    }
    return HPDF_STATUS{HPDF_OK};
  });
  return result;
}

}  // namespace

HPDF_TextWidth WidthOfText(HPDF_Font font, std::span<const HPDF_BYTE> text, const DirectedText *whole) {
  return Measured(font, text, whole,
                  [&](FontObject &object, const DirectedText *order) { return object.TextWidth(text, order); });
}

HPDF_UINT FittingLengthOfText(HPDF_Font font, std::span<const HPDF_BYTE> text, const LineSettings &line,
                              HPDF_REAL *reached, const DirectedText *whole) {
  return Measured(font, text, whole, [&](FontObject &object, const DirectedText *order) {
    return object.FittingLength(text, line, reached, order);
  });
}

HPDF_Dict NewFontDictionary(HPDF_MMgr memory, std::unique_ptr<FontObject> object) {
  HPDF_Dict font = HPDF_Dict_New(memory);
  if (font == nullptr) return nullptr;
  font->header.obj_class |= HPDF_OSUBCLASS_FONT;
  font->attr = static_cast<HPDF_FontAttr>(object.release());
  font->before_write_fn = Refresh;
  font->write_fn = WriteFurtherEntries;
  font->free_fn = Free;
  return font;
}

}  // namespace quillbar::engine

using namespace quillbar::engine;

extern "C" {

HPDF_BOOL HPDF_Font_Validate(HPDF_Font font) {
  return font != nullptr && font->attr != nullptr && font->header.obj_class == (HPDF_OSUBCLASS_FONT | HPDF_OCLASS_DICT);
}

HPDF_TextWidth HPDF_Font_TextWidth(HPDF_Font font, const HPDF_BYTE *text, HPDF_UINT length) {
  return WidthOfText(font, {text, length}, nullptr);
}

HPDF_UINT HPDF_Font_MeasureText(HPDF_Font font, const HPDF_BYTE *text, HPDF_UINT length, HPDF_REAL width,
                                HPDF_REAL fontSize, HPDF_REAL characterSpace, HPDF_REAL wordSpace, HPDF_BOOL wordWrap,
                                HPDF_REAL *reached) {
  const LineSettings line{width, fontSize, characterSpace, wordSpace, wordWrap != HPDF_FALSE};
  return FittingLengthOfText(font, {text, length}, line, reached, nullptr);
}

const char *HPDF_Font_GetFontName(HPDF_Font font) {
  const HPDF_FontDef_Rec *definition = DefinitionOf(font);
  return definition == nullptr ? nullptr : definition->base_font;
}

const char *HPDF_Font_GetEncodingName(HPDF_Font font) {
  return HPDF_Font_Validate(font) ? FontObjectOf(font).encoder->name : nullptr;
}

HPDF_Box HPDF_Font_GetBBox(HPDF_Font font) {
  const HPDF_FontDef_Rec *definition = DefinitionOf(font);
  return definition == nullptr ? HPDF_Box{} : definition->font_bbox;
}

HPDF_INT HPDF_Font_GetAscent(HPDF_Font font) {
  const HPDF_FontDef_Rec *definition = DefinitionOf(font);
  return definition == nullptr ? 0 : definition->ascent;
}

HPDF_INT HPDF_Font_GetDescent(HPDF_Font font) {
  const HPDF_FontDef_Rec *definition = DefinitionOf(font);
  return definition == nullptr ? 0 : definition->descent;
}

}  // extern "C"
