// SPDX-License-Identifier: MIT
// HPDF_Type1Font_New: fonts of Type 1, the standard ones among them.
//
// libharu leaves the text to the names of the glyphs, which don't tell Greek letters from mathematical signs;
// asks Symbol for letters; and puts six questions to tables for each byte that it measures.
#include "plugin/engine/fonts/type1/type1_font.h"

#include <hpdf_encoder.h>

#include <algorithm>
#include <cstring>
#include <new>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "plugin/engine/fonts/encodings/glyph_name.h"
#include "plugin/engine/fonts/encodings/single_byte_encoding.h"
#include "plugin/engine/fonts/to_unicode_map.h"
#include "plugin/engine/fonts/type1/stand_in_widths.h"
#include "plugin/engine/fonts/type1/symbol_fonts.h"
#include "plugin/engine/fonts/type1/type1_definition.h"
#include "plugin/engine/fonts/type1/type1_text_width.h"

extern "C" HPDF_Font Libharu_HPDF_Type1Font_New(HPDF_MMgr memory, HPDF_FontDef definition, HPDF_Encoder encoder,
                                                HPDF_Xref xref);

namespace quillbar::engine {

namespace {

constexpr int kCodes = 256;

HPDF_FontAttr CommonOf(HPDF_Dict font) { return static_cast<HPDF_FontAttr>(font->attr); }

HPDF_UNICODE EncodedCharacter(const HPDF_FontAttr_Rec &font, int code) {
  return HPDF_Encoder_ToUnicode(font.encoder, static_cast<HPDF_UINT16>(code));
}

// Whether a byte is the code of a glyph. A file of signs keeps the few characters of the encoding that it
// has.
bool IsOwnCode(const HPDF_FontAttr_Rec &font, int code) {
  if (!HasOwnCodes(font)) return false;
  const Type1Attributes *file = Type1FileOf(*font.fontdef);
  return file == nullptr || !file->glyphs.contains(EncodedCharacter(font, code));
}

char32_t CharacterOf(const HPDF_FontAttr_Rec &font, int code) {
  return IsOwnCode(font, code) ? CharacterOfOwnCode(*font.fontdef, static_cast<HPDF_BYTE>(code))
                               : char32_t{EncodedCharacter(font, code)};
}

// What the bytes shown so far mean, by their codes.
std::vector<char32_t> ShownCharacters(const HPDF_FontAttr_Rec &font) {
  std::vector<char32_t> characters(kCodes);
  for (int code = 0; code < kCodes; ++code) {
    if (font.used[code] != 0) characters[static_cast<std::size_t>(code)] = CharacterOf(font, code);
  }
  return characters;
}

// The name of the glyph that a file's font shows for a code: where it has none, the one of the space. MuPDF
// takes
// ".notdef", like every name that it doesn't find, for what the font's own encoding has at the code.
std::string NameIn(const HPDF_FontAttr_Rec &font, const Type1Attributes &file, int code) {
  if (IsOwnCode(font, code)) {
    if (const auto glyph = file.glyphsByCode.find(code); glyph != file.glyphsByCode.end()) return glyph->second;
  } else if (const auto glyph = file.glyphs.find(GlyphCharacterOf(file, EncodedCharacter(font, code)));
             glyph != file.glyphs.end()) {
    return glyph->second;
  }
  const auto space = file.glyphs.find(HPDF_UNICODE{' '});
  return space == file.glyphs.end() ? GlyphName(0) : space->second;
}

// Whether viewers can be left to read the text by the names of its glyphs.
bool NamesTellTheText(const HPDF_FontAttr_Rec &font, std::span<const char32_t> characters) {
  const Type1Attributes *file = Type1FileOf(*font.fontdef);
  if (HasOwnCodes(font)) return false;
  for (int code = 0; code < kCodes; ++code) {
    const char32_t character = characters[static_cast<std::size_t>(code)];
    if (character == 0) continue;
    if (!HasPlainName(character)) return false;
    if (file != nullptr && NameIn(font, *file, code) != GlyphName(static_cast<HPDF_UNICODE>(character))) return false;
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

// What the file says beside the encoding's name: the names of glyphs where it differs from the one of PDF's
// that it is based on, and where what was shown is under another name in the font, or nowhere. Viewers that
// are asked for a name that a font lacks may show what else the font has at the code.
GlyphNames Differences(const HPDF_FontAttr_Rec &font) {
  GlyphNames names = NamesOfDifferences(font.encoder);
  const Type1Attributes *file = Type1FileOf(*font.fontdef);
  if (file == nullptr) return names;
  for (int code = 0; code < kCodes; ++code) {
    const HPDF_UNICODE character = EncodedCharacter(font, code);
    if (character == 0 && !IsOwnCode(font, code)) continue;
    const std::string name = NameIn(font, *file, code);
    if (names.contains(code) || (font.used[code] != 0 && name != GlyphName(character))) names[code] = name;
  }
  return names;
}

void AppendWidths(const HPDF_FontAttr_Rec &font, int first, int last, std::string &text) {
  text += "/FirstChar " + std::to_string(first) + "\n/LastChar " + std::to_string(last) + "\n/Widths [\n";
  for (int code = first; code <= last; ++code) {
    text += std::to_string(font.widths[code]) + ' ';
    if ((code + 1) % 16 == 0) text += '\n';
  }
  text += "]\n";
}

// Widths and encoding. Viewers know the widths of the standard fonts in the encodings that PDF itself has,
// and both of Symbol and ZapfDingbats.
std::string Entries(const HPDF_FontAttr_Rec &font) {
  const bool isFile = Type1FileOf(*font.fontdef) != nullptr, hasOwnCodes = HasOwnCodes(font);
  if (hasOwnCodes && !isFile) return {};
  const auto &encoding = *static_cast<HPDF_BasicEncoderAttr>(font.encoder->attr);
  std::string text;
  if (hasOwnCodes) {
    AppendWidths(font, 0, kCodes - 1, text);
  } else if (isFile || encoding.has_differences != HPDF_FALSE) {
    AppendWidths(font, encoding.first_char, encoding.last_char, text);
  }
  return text + EncodingEntry(font.encoder, Differences(font));
}

HPDF_STATUS Write(HPDF_Dict font, HPDF_Stream stream) {
  try {
    const std::string text = Entries(*CommonOf(font));
    return HPDF_Stream_Write(stream, reinterpret_cast<const HPDF_BYTE *>(text.data()),
                             static_cast<HPDF_UINT>(text.size()));
  } catch (const std::bad_alloc &) {
    return HPDF_SetError(font->error, HPDF_FAILD_TO_ALLOC_MEM, 0);
  }
}

bool HasMetricsOf(const HPDF_FontDef_Rec &definition, HPDF_UNICODE character) {
  const std::span glyphs = Type1GlyphsOf(definition);
  return std::ranges::find(glyphs, character, &HPDF_CharData::unicode) != glyphs.end();
}

// The width of a character where libharu, which looks for the character alone, has none.
std::optional<HPDF_INT16> WidthBeyondLibrary(const HPDF_FontDef_Rec &definition, HPDF_UNICODE character) {
  const Type1Attributes *file = Type1FileOf(definition);
  if (file == nullptr) return StandInWidth(definition.base_font, character);
  // These keep the width that the library gives them in every font.
  constexpr HPDF_UNICODE kNoBreakSpace = 0x00A0, kSoftHyphen = 0x00AD;
  if (character == kNoBreakSpace || character == kSoftHyphen) return std::nullopt;
  const HPDF_UNICODE shown = GlyphCharacterOf(*file, character);
  if (shown == 0) return std::nullopt;
  return HPDF_Type1FontDef_GetWidth(const_cast<HPDF_FontDef_Rec *>(&definition), shown);
}

void CompleteWidths(HPDF_FontAttr_Rec &font) {
  const HPDF_FontDef_Rec &definition = *font.fontdef;
  for (int code = 0; code < kCodes; ++code) {
    if (IsOwnCode(font, code)) {
      font.widths[code] = WidthOfOwnCode(definition, static_cast<HPDF_BYTE>(code));
      continue;
    }
    const HPDF_UNICODE character = EncodedCharacter(font, code);
    if (character == 0 || HasMetricsOf(definition, character)) continue;
    if (const auto width = WidthBeyondLibrary(definition, character)) font.widths[code] = *width;
  }
}

void (*theirFree)(HPDF_Dict font) = nullptr;

void Free(HPDF_Dict font) {
  if (CommonOf(font) != nullptr) HPDF_FreeMem(font->mmgr, CommonOf(font)->used);
  theirFree(font);
}

}  // namespace

void NoteShownCodes(HPDF_Font font, std::string_view bytes) {
  HPDF_BYTE *used = CommonOf(font)->used;
  for (const char byte : bytes) used[static_cast<HPDF_BYTE>(byte)] = 1;
}

}  // namespace quillbar::engine

extern "C" HPDF_Font HPDF_Type1Font_New(HPDF_MMgr memory, HPDF_FontDef definition, HPDF_Encoder encoder,
                                        HPDF_Xref xref) {
  using namespace quillbar::engine;
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
  own.text_width_fn = Type1TextWidth;
  theirFree = font->free_fn;
  font->write_fn = Write;
  font->free_fn = Free;
  font->before_write_fn = BeforeWrite;
  CompleteWidths(own);
  return font;
}
