// HPDF_Type1Font_New: fonts of Type 1, the standard ones among them.
//
// libharu leaves the text to the names of the glyphs, which don't tell Greek letters from mathematical signs;
// asks Symbol for letters; and puts six questions to tables for each byte that it measures.
#include "plugin/pdflib-changes/type1_simple_font.h"

#include <hpdf_encoder.h>
#include <hpdf_fontdef.h>
#include <hpdf_utils.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <new>
#include <span>
#include <string>
#include <vector>

#include "plugin/pdflib-changes/single_byte_encoding.h"
#include "plugin/pdflib-changes/stand_in_widths.h"
#include "plugin/pdflib-changes/symbol_fonts.h"
#include "plugin/pdflib-changes/to_unicode_map.h"

extern "C" HPDF_Font Libharu_HPDF_Type1Font_New(HPDF_MMgr memory, HPDF_FontDef definition,
                                                HPDF_Encoder encoder, HPDF_Xref xref);

namespace quillbar::pdflib {

namespace {

constexpr std::array<HPDF_BYTE, 256> kIsWhiteSpace = [] {
  std::array<HPDF_BYTE, 256> table{};
  for (unsigned byte = 0; byte < table.size(); ++byte) table[byte] = HPDF_IS_WHITE_SPACE(byte) ? 1 : 0;
  return table;
}();

HPDF_TextWidth TextWidth(HPDF_Font font, const HPDF_BYTE *text, HPDF_UINT length) {
  const HPDF_INT16 *widths = static_cast<HPDF_FontAttr>(font->attr)->widths;
  HPDF_UINT width = 0, spaces = 0;
  const auto add = [&](HPDF_BYTE byte) {
    width += static_cast<HPDF_UINT>(widths[byte]);
    spaces += kIsWhiteSpace[byte];
  };
  HPDF_UINT i = 0;
  for (; length - i >= 4; i += 4) {
    add(text[i]);
    add(text[i + 1]);
    add(text[i + 2]);
    add(text[i + 3]);
  }
  for (; i < length; ++i) add(text[i]);
  HPDF_TextWidth result{};
  result.numchars = length;
  result.width = width;
  result.numspace = spaces;
  result.numwords = spaces + (length != 0 && kIsWhiteSpace[text[length - 1]] == 0 ? 1 : 0);
  return result;
}

constexpr int kCodes = 256;

bool HasMetricsOf(const HPDF_Type1FontDefAttr_Rec &definition, HPDF_UNICODE character) {
  return std::any_of(definition.widths, definition.widths + definition.widths_count,
                     [&](const HPDF_CharData &entry) { return entry.unicode == character; });
}

// What libharu can't tell: it has the widths of Adobe's metrics, one for each character.
void CompleteWidths(HPDF_FontAttr_Rec &font) {
  const HPDF_FontDef_Rec &definition = *font.fontdef;
  const auto &metrics = *static_cast<const HPDF_Type1FontDefAttr_Rec *>(definition.attr);
  if (metrics.is_base14font == HPDF_FALSE) return;
  for (int code = 0; code < kCodes; ++code) {
    if (HasOwnCodes(definition)) {
      font.widths[code] = WidthOfOwnCode(definition, static_cast<HPDF_BYTE>(code));
      continue;
    }
    const HPDF_UNICODE character = HPDF_Encoder_ToUnicode(font.encoder, static_cast<HPDF_UINT16>(code));
    if (HasMetricsOf(metrics, character)) continue;
    if (const auto width = StandInWidth(definition.base_font, character)) font.widths[code] = *width;
  }
}

HPDF_FontAttr CommonOf(HPDF_Dict font) { return static_cast<HPDF_FontAttr>(font->attr); }

char32_t CharacterOf(const HPDF_FontAttr_Rec &font, int code) {
  return HasOwnCodes(*font.fontdef)
             ? CharacterOfOwnCode(*font.fontdef, static_cast<HPDF_BYTE>(code))
             : char32_t{HPDF_Encoder_ToUnicode(font.encoder, static_cast<HPDF_UINT16>(code))};
}

// What the bytes shown so far mean, by their codes.
std::vector<char32_t> ShownCharacters(const HPDF_FontAttr_Rec &font) {
  std::vector<char32_t> characters(kCodes);
  for (int code = 0; code < kCodes; ++code) {
    if (font.used[code] != 0) characters[static_cast<std::size_t>(code)] = CharacterOf(font, code);
  }
  return characters;
}

// Whether viewers can be left to read the text by the names of its glyphs.
bool NamesTellTheText(const HPDF_FontAttr_Rec &font, std::span<const char32_t> characters) {
  if (HasOwnCodes(*font.fontdef)) return false;
  for (const char32_t character : characters) {
    if (character != 0 && !HasPlainName(character)) return false;
  }
  return true;
}

// Brings the map back to text up to date, before the document is written; a font has one from the moment on
// when it needs it.
HPDF_STATUS RefreshMap(HPDF_Dict font) {
  HPDF_FontAttr_Rec &own = *CommonOf(font);
  const std::vector<char32_t> characters = ShownCharacters(own);
  if (own.cmap_stream == nullptr) {
    if (NamesTellTheText(own, characters)) return HPDF_OK;
    HPDF_Dict map = HPDF_DictStream_New(font->mmgr, own.xref);
    if (map == nullptr) return HPDF_Error_GetCode(font->error);
    if (const HPDF_STATUS status = HPDF_Dict_Add(font, "ToUnicode", map); status != HPDF_OK) return status;
    own.cmap_stream = map;
  }
  const std::string text = ToUnicodeMap(characters, CodeLength::kOneByte);
  own.cmap_stream->filter = font->filter;
  HPDF_MemStream_FreeData(own.cmap_stream->stream);
  return HPDF_Stream_Write(own.cmap_stream->stream, reinterpret_cast<const HPDF_BYTE *>(text.data()),
                           static_cast<HPDF_UINT>(text.size()));
}

HPDF_STATUS BeforeWrite(HPDF_Dict font) {
  try {
    return RefreshMap(font);
  } catch (const std::bad_alloc &) {
    return HPDF_SetError(font->error, HPDF_FAILD_TO_ALLOC_MEM, 0);
  }
}

HPDF_STATUS (*theirWrite)(HPDF_Dict font, HPDF_Stream stream) = nullptr;
void (*theirFree)(HPDF_Dict font) = nullptr;

// Widths and encoding. A font with codes of its own needs neither: viewers know both.
HPDF_STATUS Write(HPDF_Dict font, HPDF_Stream stream) {
  return HasOwnCodes(*CommonOf(font)->fontdef) ? HPDF_OK : theirWrite(font, stream);
}

void Free(HPDF_Dict font) {
  if (CommonOf(font) != nullptr) HPDF_FreeMem(font->mmgr, CommonOf(font)->used);
  theirFree(font);
}

}  // namespace

void NoteShownCodes(HPDF_Font font, std::string_view bytes) {
  HPDF_BYTE *used = CommonOf(font)->used;
  for (const char byte : bytes) used[static_cast<HPDF_BYTE>(byte)] = 1;
}

}  // namespace quillbar::pdflib

extern "C" HPDF_Font HPDF_Type1Font_New(HPDF_MMgr memory, HPDF_FontDef definition, HPDF_Encoder encoder,
                                        HPDF_Xref xref) {
  using namespace quillbar::pdflib;
  auto *used = static_cast<HPDF_BYTE *>(HPDF_GetMem(memory, kCodes));
  if (used == nullptr) return nullptr;
  std::memset(used, 0, kCodes);
  HPDF_Font font = Libharu_HPDF_Type1Font_New(memory, definition, encoder, xref);
  if (font == nullptr) {
    HPDF_FreeMem(memory, used);
    return nullptr;
  }
  HPDF_FontAttr_Rec &own = *CommonOf(font);
  own.used = used;
  own.text_width_fn = TextWidth;
  theirWrite = font->write_fn;
  theirFree = font->free_fn;
  font->write_fn = Write;
  font->free_fn = Free;
  font->before_write_fn = BeforeWrite;
  CompleteWidths(own);
  return font;
}
