// SPDX-License-Identifier: MIT
// TrueType fonts for texts in UTF-8 or another multi-byte encoding, in place of that half of libharu's
// hpdf_font_cid.c.
//
// There, codes are UTF-16 units: code points above U+FFFF have none, the widths and the map from codes to
// glyphs span the whole plane in every document (and crash the save of a font with more than 32,767 wide
// characters in a row), and measured text counts as shown. Here a code belongs to a character that the
// document shows (used_characters.h); the embedded font, the widths and the map back to text are made from
// those at each save.
#include "plugin/engine/fonts/truetype/truetype_type0_font.h"

#include <hpdf_utils.h>

#include <new>

#include "plugin/engine/fonts/encodings/utf8_encoder.h"
#include "plugin/engine/fonts/encodings/utf8_text.h"
#include "plugin/engine/fonts/to_unicode_map.h"
#include "plugin/engine/fonts/truetype/truetype_definition.h"
#include "plugin/engine/objects/new_entry.h"

extern "C" HPDF_Font Libharu_HPDF_Type0Font_New(HPDF_MMgr memory, HPDF_FontDef definition, HPDF_Encoder encoder,
                                                HPDF_Xref xref);

namespace quillbar::engine {

namespace {

// The library's limit for arrays is 32,767 elements; widths are listed in runs of this many codes.
constexpr std::size_t kWidthsInRun = 1000;

struct Type0Attributes : HPDF_FontAttr_Rec {
  std::size_t revision;  // of the characters used, when widths and map were last made
};

HPDF_FontAttr CommonOf(HPDF_Font font) { return static_cast<HPDF_FontAttr>(font->attr); }

// Takes a text apart into characters.
class CharacterReader {
 public:
  CharacterReader(HPDF_Encoder encoder, std::span<const HPDF_BYTE> text)
      : encoder_(encoder), text_(text), isUtf8_(IsUtf8Encoder(encoder)) {
    HPDF_Encoder_SetParseText(encoder, &state_, text.data(), static_cast<HPDF_UINT>(text.size()));
  }

  // Moves to the next character; false at the end.
  bool Next() {
    start_ = end_;
    if (start_ >= text_.size()) return false;
    if (isUtf8_) {
      const Utf8Character next = DecodeUtf8(text_.subspan(start_));
      character_ = next.character;
      end_ += next.length;
      return true;
    }
    HPDF_UINT16 code = text_[start_];
    end_ = start_ + 1;
    if (HPDF_Encoder_ByteType(encoder_, &state_) == HPDF_BYTE_TYPE_LEAD && end_ < text_.size()) {
      code = static_cast<HPDF_UINT16>(code << 8 | text_[end_]);
      HPDF_Encoder_ByteType(encoder_, &state_);
      ++end_;
    }
    character_ = HPDF_Encoder_ToUnicode(encoder_, code);
    return true;
  }

  char32_t Character() const { return character_; }
  std::size_t Start() const { return start_; }  // of the character, in bytes
  std::size_t End() const { return end_; }
  bool IsWhiteSpace() const { return HPDF_IS_WHITE_SPACE(character_); }

 private:
  HPDF_Encoder encoder_;
  std::span<const HPDF_BYTE> text_;
  HPDF_ParseText_Rec state_;
  bool isUtf8_;
  std::size_t start_ = 0;
  std::size_t end_ = 0;
  char32_t character_ = 0;
};

// In 1/1000 of the font size.
HPDF_UINT AdvanceOf(const HPDF_FontAttr_Rec &font, char32_t character) {
  const TrueTypeFile &file = TrueTypeOf(font.fontdef).font;
  if (font.writing_mode == HPDF_WMODE_HORIZONTAL) return static_cast<HPDF_UINT>(WidthOf(file, file.GlyphOf(character)));
  return static_cast<HPDF_UINT>(font.fontdef->font_bbox.top - font.fontdef->font_bbox.bottom);
}

HPDF_TextWidth TextWidth(HPDF_Font font, const HPDF_BYTE *text, HPDF_UINT length) {
  const HPDF_FontAttr_Rec &own = *CommonOf(font);
  HPDF_TextWidth total = {};
  bool endsInSpace = false;
  for (CharacterReader reader(own.encoder, {text, length}); reader.Next();) {
    ++total.numchars;
    total.width += AdvanceOf(own, reader.Character());
    endsInSpace = reader.IsWhiteSpace();
    if (endsInSpace) {
      ++total.numspace;
      ++total.numwords;
    }
  }
  if (!endsInSpace) ++total.numwords;
  return total;
}

// How many bytes of `text` fit into `width`; up to the last white space with `wordWrap`, and never beyond a
// line feed. `realWidth`, if given, receives their width without that white space. The library's fonts all
// break this way.
HPDF_UINT MeasureText(HPDF_Font font, const HPDF_BYTE *text, HPDF_UINT length, HPDF_REAL width, HPDF_REAL size,
                      HPDF_REAL characterSpace, HPDF_REAL wordSpace, HPDF_BOOL wordWrap, HPDF_REAL *realWidth) {
  const HPDF_FontAttr_Rec &own = *CommonOf(font);
  HPDF_REAL reached = 0;
  std::size_t fits = 0;
  for (CharacterReader reader(own.encoder, {text, length}); reader.Next();) {
    const bool isSpace = reader.IsWhiteSpace();
    if (isSpace || !wordWrap) {
      fits = isSpace ? reader.End() : reader.Start();
      if (realWidth != nullptr) *realWidth = reached;
    }
    if (isSpace) reached += wordSpace;
    if (reader.Start() > 0) reached += characterSpace;
    reached += static_cast<HPDF_REAL>(static_cast<double>(AdvanceOf(own, reader.Character())) * size / 1000);
    if (reached > width || reader.Character() == U'\n') return static_cast<HPDF_UINT>(fits);
  }
  if (realWidth != nullptr) *realWidth = reached;
  return length;
}

// Widths by code, for the descendant font: code [width width …] code [ …
HPDF_STATUS RefreshWidths(HPDF_Font font, const TrueTypeAttributes &definition) {
  HPDF_Array all = NewArrayIn(CommonOf(font)->descendant_font, "W");
  if (all == nullptr) return HPDF_Error_GetCode(font->error);
  HPDF_STATUS status = HPDF_OK;
  const auto &glyphs = definition.used.Glyphs();
  HPDF_Array run = nullptr;
  for (std::size_t code = 0; code < glyphs.size() && status == HPDF_OK; ++code) {
    if (code % kWidthsInRun == 0) {
      run = HPDF_Array_New(font->mmgr);
      status |= HPDF_Array_AddNumber(all, static_cast<HPDF_INT32>(code));
      status |= HPDF_Array_Add(all, run);
    }
    if (status == HPDF_OK) status = HPDF_Array_AddNumber(run, WidthOf(definition.font, glyphs[code]));
  }
  return status;
}

HPDF_STATUS RefreshMap(HPDF_Font font, const TrueTypeAttributes &definition) {
  HPDF_Stream stream = CommonOf(font)->cmap_stream->stream;
  HPDF_MemStream_FreeData(stream);
  const std::string map = ToUnicodeMap(definition.used.Characters(), CodeLength::kTwoBytes);
  return HPDF_Stream_Write(stream, reinterpret_cast<const HPDF_BYTE *>(map.data()), static_cast<HPDF_UINT>(map.size()));
}

HPDF_STATUS BeforeWrite(HPDF_Dict font) {
  auto &own = *static_cast<Type0Attributes *>(CommonOf(font));
  const TrueTypeAttributes &definition = TrueTypeOf(own.fontdef);
  own.cmap_stream->filter = font->filter;
  HPDF_STATUS status = HPDF_OK;
  try {
    status = RefreshProgram(own.fontdef, font->filter);
    if (status != HPDF_OK || own.revision == definition.used.Revision()) return status;
    status = HPDF_Dict_AddName(font, "BaseFont", definition.base_font);
    if (status == HPDF_OK) status = HPDF_Dict_AddName(own.descendant_font, "BaseFont", definition.base_font);
    if (status == HPDF_OK) status = RefreshWidths(font, definition);
    if (status == HPDF_OK) status = RefreshMap(font, definition);
  } catch (const std::bad_alloc &) {
    return HPDF_SetError(font->error, HPDF_FAILD_TO_ALLOC_MEM, 0);
  }
  if (status == HPDF_OK) own.revision = definition.used.Revision();
  return status;
}

void Free(HPDF_Dict font) {
  if (font->attr != nullptr) HPDF_FreeMem(font->mmgr, font->attr);
}

// The part that carries the glyphs; a code is the number of a glyph in the embedded font.
HPDF_Font NewDescendant(HPDF_FontDef definition, HPDF_MMgr memory, HPDF_Xref xref) {
  HPDF_Dict font = HPDF_Dict_New(memory);
  if (font == nullptr || HPDF_Xref_Add(xref, font) != HPDF_OK) return nullptr;
  HPDF_STATUS status = HPDF_Dict_AddName(font, "Type", "Font");
  status |= HPDF_Dict_AddName(font, "Subtype", "CIDFontType2");
  status |= HPDF_Dict_AddName(font, "BaseFont", TrueTypeOf(definition).base_font);
  status |= HPDF_Dict_AddName(font, "CIDToGIDMap", "Identity");
  status |= HPDF_Dict_AddNumber(font, "DW", definition->missing_width);
  HPDF_Array vertical = NewArrayIn(font, "DW2");
  HPDF_Dict system = NewDictionaryIn(font, "CIDSystemInfo");
  if (vertical == nullptr || system == nullptr) return nullptr;
  const auto bottom = static_cast<HPDF_INT32>(definition->font_bbox.bottom);
  const auto top = static_cast<HPDF_INT32>(definition->font_bbox.top);
  status |= HPDF_Array_AddNumber(vertical, bottom);
  status |= HPDF_Array_AddNumber(vertical, bottom - top);
  status |= HPDF_Dict_Add(system, "Registry", HPDF_String_New(memory, "Adobe", nullptr));
  status |= HPDF_Dict_Add(system, "Ordering", HPDF_String_New(memory, "Identity", nullptr));
  status |= HPDF_Dict_AddNumber(system, "Supplement", 0);
  status |= HPDF_Dict_Add(font, "FontDescriptor", definition->descriptor);
  return status == HPDF_OK ? font : nullptr;
}

HPDF_Font NewFont(HPDF_MMgr memory, HPDF_FontDef definition, HPDF_Encoder encoder, HPDF_Xref xref) {
  HPDF_Dict font = HPDF_Dict_New(memory);
  if (font == nullptr) return nullptr;
  auto *own = static_cast<Type0Attributes *>(HPDF_GetMem(memory, sizeof(Type0Attributes)));
  if (own == nullptr) {
    HPDF_Dict_Free(font);
    return nullptr;
  }
  *own = {};
  own->type = HPDF_FONT_TYPE0_TT;
  own->writing_mode = static_cast<HPDF_CMapEncoderAttr>(encoder->attr)->writing_mode;
  own->text_width_fn = TextWidth;
  own->measure_text_fn = MeasureText;
  own->fontdef = definition;
  own->encoder = encoder;
  own->xref = xref;
  font->header.obj_class |= HPDF_OSUBCLASS_FONT;
  font->attr = static_cast<HPDF_FontAttr>(own);
  font->free_fn = Free;
  font->before_write_fn = BeforeWrite;
  // From here on the document owns the font, whether it becomes complete or not.
  if (HPDF_Xref_Add(xref, font) != HPDF_OK) return nullptr;

  if (CreateDescriptor(definition, xref) != HPDF_OK) return nullptr;
  own->descendant_font = NewDescendant(definition, memory, xref);
  own->cmap_stream = HPDF_DictStream_New(memory, xref);
  if (own->descendant_font == nullptr || own->cmap_stream == nullptr) return nullptr;

  HPDF_STATUS status = HPDF_Dict_AddName(font, "Type", "Font");
  status |= HPDF_Dict_AddName(font, "Subtype", "Type0");
  status |= HPDF_Dict_AddName(font, "BaseFont", TrueTypeOf(definition).base_font);
  status |=
      HPDF_Dict_AddName(font, "Encoding", own->writing_mode == HPDF_WMODE_HORIZONTAL ? "Identity-H" : "Identity-V");
  HPDF_Array descendants = NewArrayIn(font, "DescendantFonts");
  if (descendants == nullptr) return nullptr;
  status |= HPDF_Array_Add(descendants, own->descendant_font);
  status |= HPDF_Dict_Add(font, "ToUnicode", own->cmap_stream);
  return status == HPDF_OK ? font : nullptr;
}

}  // namespace

void AppendCodesInHex(HPDF_Font font, std::span<const HPDF_BYTE> text, std::string_view behindSpace, std::string &hex) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  const HPDF_FontAttr_Rec &own = *CommonOf(font);
  TrueTypeAttributes &definition = TrueTypeOf(own.fontdef);
  hex.reserve(hex.size() + 4 * text.size());
  for (CharacterReader reader(own.encoder, text); reader.Next();) {
    const unsigned code = definition.used.CodeOf(definition.font, reader.Character());
    for (const int shift : {12, 8, 4, 0}) hex.push_back(kDigits[code >> shift & 0xF]);
    if (reader.IsWhiteSpace()) hex += behindSpace;
  }
}

}  // namespace quillbar::engine

extern "C" HPDF_Font HPDF_Type0Font_New(HPDF_MMgr memory, HPDF_FontDef definition, HPDF_Encoder encoder,
                                        HPDF_Xref xref) {
  // Before anything is made: libharu refuses the encoder too, and loses the object that it has begun.
  if (encoder->type != HPDF_ENCODER_TYPE_DOUBLE_BYTE) {
    HPDF_SetError(memory->error, HPDF_INVALID_ENCODER_TYPE, 0);
    return nullptr;
  }
  if (definition->type != HPDF_FONTDEF_TYPE_TRUETYPE)
    return Libharu_HPDF_Type0Font_New(memory, definition, encoder, xref);
  return quillbar::engine::NewFont(memory, definition, encoder, xref);
}
