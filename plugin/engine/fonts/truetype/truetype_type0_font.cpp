// SPDX-License-Identifier: MIT
// TrueType fonts for text in UTF-8 or another multi-byte encoding, in place of that half of libharu's hpdf_font_cid.c.
//
// There, codes are UTF-16 units: code points above U+FFFF have none, the widths and the map from codes to glyphs span
// the whole plane in every document (and crash the save of a font with more than 32,767 wide characters in a row), and
// measured text counts as shown. Here a code belongs to a character that the document shows (used_characters.h); the
// embedded font, the widths and the map back to text are made from those at each save.
#include "plugin/engine/fonts/truetype/truetype_type0_font.h"

#include <hpdf_utils.h>

#include "plugin/engine/fonts/encodings/utf8_encoder.h"
#include "plugin/engine/fonts/encodings/utf8_text.h"
#include "plugin/engine/fonts/font_object.h"
#include "plugin/engine/fonts/to_unicode_map.h"
#include "plugin/engine/fonts/truetype/truetype_definition.h"
#include "plugin/engine/fonts/type0_font.h"
#include "plugin/engine/objects/new_entry.h"

namespace quillbar::engine {

namespace {

// The library's limit for arrays is 32,767 elements; widths are listed in runs of this many codes.
constexpr std::size_t kWidthsInRun = 1000;

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

class TrueTypeType0Font : public FontObject {
 public:
  TrueTypeType0Font(HPDF_FontDef itsDefinition, HPDF_Encoder itsEncoder, HPDF_Xref itsXref)
      : FontObject(HPDF_FONT_TYPE0_TT, itsDefinition, itsEncoder, itsXref) {
    writing_mode = static_cast<HPDF_CMapEncoderAttr>(encoder->attr)->writing_mode;
  }

  HPDF_TextWidth TextWidth(std::span<const HPDF_BYTE> text) override;
  HPDF_UINT FittingLength(std::span<const HPDF_BYTE> text, const LineSettings &line, HPDF_REAL *reached) override;
  HPDF_STATUS Refresh(HPDF_Dict font) override;

  // Fills in the font's dictionary and makes the objects that it refers to.
  HPDF_STATUS Complete(HPDF_Dict font);

 private:
  HPDF_UINT AdvanceOf(char32_t character) const;  // in 1/1000 of the font size
  HPDF_STATUS RefreshWidths();

  HPDF_Dict descendant_ = nullptr;
  HPDF_Dict toUnicode_ = nullptr;
  std::size_t revision_ = 0;  // of the characters used, when widths and map were last made
};

HPDF_UINT TrueTypeType0Font::AdvanceOf(char32_t character) const {
  const TrueTypeFile &file = TrueTypeOf(fontdef).file;
  if (writing_mode == HPDF_WMODE_HORIZONTAL) return static_cast<HPDF_UINT>(WidthOf(file, file.GlyphOf(character)));
  return static_cast<HPDF_UINT>(fontdef->font_bbox.top - fontdef->font_bbox.bottom);
}

HPDF_TextWidth TrueTypeType0Font::TextWidth(std::span<const HPDF_BYTE> text) {
  HPDF_TextWidth total = {};
  bool endsInSpace = false;
  for (CharacterReader reader(encoder, text); reader.Next();) {
    ++total.numchars;
    total.width += AdvanceOf(reader.Character());
    endsInSpace = reader.IsWhiteSpace();
    if (endsInSpace) {
      ++total.numspace;
      ++total.numwords;
    }
  }
  if (!endsInSpace) ++total.numwords;
  return total;
}

HPDF_UINT TrueTypeType0Font::FittingLength(std::span<const HPDF_BYTE> text, const LineSettings &line,
                                           HPDF_REAL *reached) {
  LineFit<HPDF_REAL> fit(line, reached);
  LineBreaker breaker;
  for (CharacterReader reader(encoder, text); reader.Next();) {
    const LineBreak itsBreak = line.breaksAtWords ? breaker.Before(reader.Character()) : LineBreak::kNone;
    if (reader.IsWhiteSpace()) {
      fit.BeginWhiteSpace(reader.End());
    } else {
      fit.BeginCharacter(reader.Start(), itsBreak);
    }
    if (reader.Start() > 0) fit.AddCharacterSpace();
    const double advance = AdvanceOf(reader.Character());
    const bool fits = fit.Add(static_cast<HPDF_REAL>(advance * line.fontSize / 1000));
    if (!fits || reader.Character() == U'\n') return fit.Fitting();
  }
  return fit.FittingWhole(text.size());
}

// Widths by code, for the descendant font: code [width width …] code [ …
HPDF_STATUS TrueTypeType0Font::RefreshWidths() {
  HPDF_Array all = NewArrayIn(descendant_, "W");
  if (all == nullptr) return HPDF_Error_GetCode(fontdef->error);
  HPDF_STATUS status = HPDF_OK;
  const TrueTypeDefinition &definition = TrueTypeOf(fontdef);
  const auto &glyphs = definition.used.Glyphs();
  HPDF_Array run = nullptr;
  for (std::size_t code = 0; code < glyphs.size() && status == HPDF_OK; ++code) {
    if (code % kWidthsInRun == 0) {
      run = HPDF_Array_New(descendant_->mmgr);
      status |= HPDF_Array_AddNumber(all, static_cast<HPDF_INT32>(code));
      status |= HPDF_Array_Add(all, run);
    }
    if (status == HPDF_OK) status = HPDF_Array_AddNumber(run, WidthOf(definition.file, glyphs[code]));
  }
  return status;
}

HPDF_STATUS TrueTypeType0Font::Refresh(HPDF_Dict font) {
  // A font that could not be completed is on no page.
  if (toUnicode_ == nullptr) return HPDF_OK;
  const TrueTypeDefinition &definition = TrueTypeOf(fontdef);
  toUnicode_->filter = font->filter;
  HPDF_STATUS status = RefreshProgram(fontdef, font->filter);
  if (status != HPDF_OK || revision_ == definition.used.Revision()) return status;
  const char *name = definition.subsetName.c_str();
  status = HPDF_Dict_AddName(font, "BaseFont", name);
  if (status == HPDF_OK) status = HPDF_Dict_AddName(descendant_, "BaseFont", name);
  if (status == HPDF_OK) status = RefreshWidths();
  if (status == HPDF_OK) status = ReplaceToUnicodeMap(toUnicode_, definition.used.Characters(), CodeLength::kTwoBytes);
  if (status == HPDF_OK) revision_ = definition.used.Revision();
  return status;
}

// The part that carries the glyphs; a code is the number of a glyph in the embedded font.
HPDF_Font NewDescendant(HPDF_FontDef definition, HPDF_MMgr memory, HPDF_Xref xref) {
  HPDF_Dict font = HPDF_Dict_New(memory);
  if (font == nullptr || HPDF_Xref_Add(xref, font) != HPDF_OK) return nullptr;
  HPDF_STATUS status = HPDF_Dict_AddName(font, "Type", "Font");
  status |= HPDF_Dict_AddName(font, "Subtype", "CIDFontType2");
  status |= HPDF_Dict_AddName(font, "BaseFont", definition->base_font);
  status |= HPDF_Dict_AddName(font, "CIDToGIDMap", "Identity");
  status |= HPDF_Dict_AddNumber(font, "DW", definition->missing_width);
  const auto bottom = static_cast<HPDF_INT32>(definition->font_bbox.bottom);
  const auto top = static_cast<HPDF_INT32>(definition->font_bbox.top);
  status |= AddVerticalMetrics(font, bottom, bottom - top);
  status |= AddCharacterCollection(font, "Adobe", "Identity", 0);
  status |= HPDF_Dict_Add(font, "FontDescriptor", definition->descriptor);
  return status == HPDF_OK ? font : nullptr;
}

HPDF_STATUS TrueTypeType0Font::Complete(HPDF_Dict font) {
  if (const HPDF_STATUS status = CreateDescriptor(fontdef, xref); status != HPDF_OK) return status;
  descendant_ = NewDescendant(fontdef, font->mmgr, xref);
  HPDF_Dict map = descendant_ == nullptr ? nullptr : HPDF_DictStream_New(font->mmgr, xref);
  if (map == nullptr) return HPDF_Error_GetCode(font->error);
  HPDF_STATUS status = HPDF_Dict_AddName(font, "Type", "Font");
  status |= HPDF_Dict_AddName(font, "Subtype", "Type0");
  status |= HPDF_Dict_AddName(font, "BaseFont", fontdef->base_font);
  status |= HPDF_Dict_AddName(font, "Encoding", writing_mode == HPDF_WMODE_HORIZONTAL ? "Identity-H" : "Identity-V");
  status |= AddDescendant(font, descendant_);
  status |= HPDF_Dict_Add(font, "ToUnicode", map);
  if (status == HPDF_OK) toUnicode_ = map;
  return status;
}

}  // namespace

HPDF_Font NewTrueTypeType0Font(HPDF_MMgr memory, HPDF_FontDef definition, HPDF_Encoder encoder, HPDF_Xref xref) {
  auto object = std::make_unique<TrueTypeType0Font>(definition, encoder, xref);
  TrueTypeType0Font &own = *object;
  HPDF_Dict font = NewFontDictionary(memory, std::move(object));
  // From here on the document owns the font, whether it becomes complete or not.
  if (font == nullptr || HPDF_Xref_Add(xref, font) != HPDF_OK) return nullptr;
  return own.Complete(font) == HPDF_OK ? font : nullptr;
}

void AppendCodesInHex(HPDF_Font font, std::span<const HPDF_BYTE> text, std::string_view afterSpace, std::string &hex) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  const FontObject &own = FontObjectOf(font);
  TrueTypeDefinition &definition = TrueTypeOf(own.fontdef);
  hex.reserve(hex.size() + 4 * text.size());
  for (CharacterReader reader(own.encoder, text); reader.Next();) {
    const unsigned code = definition.used.CodeOf(definition.file, reader.Character());
    for (const int shift : {12, 8, 4, 0}) hex.push_back(kDigits[code >> shift & 0xF]);
    if (reader.IsWhiteSpace()) hex += afterSpace;
  }
}

}  // namespace quillbar::engine
