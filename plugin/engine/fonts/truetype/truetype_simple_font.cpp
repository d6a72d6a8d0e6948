// SPDX-License-Identifier: MIT
// TrueType fonts for texts in a one-byte encoding: the embedded font and a map back to text are brought up to
// date before each save. libharu makes the font once, so characters shown later are blank, and leaves the
// text to the glyph names, which tell Greek letters and mathematical signs not apart.
#include <hpdf.h>
#include <hpdf_encoder.h>

#include <new>
#include <string>
#include <vector>

#include "plugin/engine/fonts/to_unicode_map.h"
#include "plugin/engine/fonts/truetype/truetype_definition.h"

extern "C" HPDF_Font Libharu_HPDF_TTFont_New(HPDF_MMgr memory, HPDF_FontDef definition, HPDF_Encoder encoder,
                                             HPDF_Xref xref);

namespace quillbar::engine {

namespace {

HPDF_Dict_BeforeWriteFunc theirBeforeWrite = nullptr;

HPDF_STATUS RefreshMap(HPDF_FontAttr font, HPDF_UINT filter) {
  HPDF_Dict map = font->cmap_stream;
  map->filter = filter;
  std::vector<char32_t> characters(256);
  for (HPDF_UINT16 code = 0; code < 256; ++code) {
    if (font->used[code] != 0) characters[code] = HPDF_Encoder_ToUnicode(font->encoder, code);
  }
  const std::string text = ToUnicodeMap(characters, CodeLength::kOneByte);
  HPDF_MemStream_FreeData(map->stream);
  return HPDF_Stream_Write(map->stream, reinterpret_cast<const HPDF_BYTE *>(text.data()),
                           static_cast<HPDF_UINT>(text.size()));
}

HPDF_STATUS BeforeWrite(HPDF_Dict font) {
  auto *own = static_cast<HPDF_FontAttr>(font->attr);
  HPDF_STATUS status = HPDF_OK;
  try {
    status = RefreshProgram(own->fontdef, font->filter);
    if (status == HPDF_OK) status = HPDF_Dict_AddName(font, "BaseFont", TrueTypeOf(own->fontdef).base_font);
    if (status == HPDF_OK) status = RefreshMap(own, font->filter);
  } catch (const std::bad_alloc &) {
    return HPDF_SetError(font->error, HPDF_FAILD_TO_ALLOC_MEM, 0);
  }
  return status == HPDF_OK ? theirBeforeWrite(font) : status;
}

}  // namespace

}  // namespace quillbar::engine

extern "C" HPDF_Font HPDF_TTFont_New(HPDF_MMgr memory, HPDF_FontDef definition, HPDF_Encoder encoder, HPDF_Xref xref) {
  using namespace quillbar::engine;
  HPDF_Font font = Libharu_HPDF_TTFont_New(memory, definition, encoder, xref);
  if (font == nullptr || CreateDescriptor(definition, xref) != HPDF_OK) return nullptr;
  HPDF_Dict map = HPDF_DictStream_New(memory, xref);
  if (map == nullptr || HPDF_Dict_Add(font, "ToUnicode", map) != HPDF_OK) return nullptr;
  static_cast<HPDF_FontAttr>(font->attr)->cmap_stream = map;
  theirBeforeWrite = font->before_write_fn;
  font->before_write_fn = BeforeWrite;
  return font;
}
