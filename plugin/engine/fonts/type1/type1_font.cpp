// SPDX-License-Identifier: MIT
// Fonts of Type 1, the standard ones among them, in place of libharu's hpdf_font_type1.c.
//
// libharu leaves the text to the names of the glyphs, which don't tell Greek letters from mathematical signs, and asks
// Symbol for letters.
#include "plugin/engine/fonts/type1/type1_font.h"

#include <hpdf_encoder.h>

#include <optional>

#include "plugin/engine/fonts/encodings/glyph_name.h"
#include "plugin/engine/fonts/encodings/single_byte_encoding.h"
#include "plugin/engine/fonts/simple_font.h"
#include "plugin/engine/fonts/type1/stand_in_widths.h"
#include "plugin/engine/fonts/type1/symbol_fonts.h"
#include "plugin/engine/fonts/type1/type1_definition.h"

namespace quillbar::engine {

namespace {

class Type1Font : public SimpleFont {
 public:
  Type1Font(HPDF_FontDef itsDefinition, HPDF_Encoder itsEncoder, HPDF_Xref itsXref)
      : SimpleFont(HPDF_FONT_TYPE1, itsDefinition, itsEncoder, itsXref),
        definition_(Type1Of(*itsDefinition)),
        hasOwnCodes_(HasOwnCodes(definition_, itsEncoder)) {
    for (int code = 0; code < kOneByteCodes; ++code) widthOfCode_[static_cast<std::size_t>(code)] = WidthOf(code);
  }

  HPDF_STATUS AddEntries(HPDF_Dict font) const {
    HPDF_STATUS status = HPDF_Dict_AddName(font, "Type", "Font");
    status |= HPDF_Dict_AddName(font, "BaseFont", fontdef->base_font);
    status |= HPDF_Dict_AddName(font, "Subtype", "Type1");
    if (status != HPDF_OK || !definition_.IsFile()) return status;
    if (fontdef->missing_width != 0) status |= HPDF_Dict_AddNumber(font, "MissingWidth", fontdef->missing_width);
    if (status == HPDF_OK) status = CreateType1Descriptor(fontdef, xref);
    return status == HPDF_OK ? HPDF_Dict_Add(font, "FontDescriptor", fontdef->descriptor) : status;
  }

  HPDF_TextWidth TextWidth(std::span<const HPDF_BYTE> text, const DirectedText *) override { return SumOfWidths(text); }

  HPDF_UINT FittingLength(std::span<const HPDF_BYTE> text, const LineSettings &line, HPDF_REAL *reached,
                          const DirectedText *) override {
    return FittingCodes<HPDF_REAL>(text, line, reached, [this](HPDF_BYTE code) { return widthOfCode_[code]; });
  }

  void NoteShown(HPDF_BYTE code) override {
    isShown_[code] = true;
    if (!hasOwnCodes_) NoteShownByte(encoder, code);
  }

  // A font has a map back to text from the moment on when it needs it.
  HPDF_STATUS Refresh(HPDF_Dict font) override {
    if (!HasToUnicodeMap() && !NamesTellTheText()) {
      if (const HPDF_STATUS status = CreateToUnicodeMap(font); status != HPDF_OK) return status;
    }
    return SimpleFont::Refresh(font);
  }

  // Widths and encoding. Viewers know the widths of the standard fonts in the encodings that PDF itself has, and both
  // of Symbol and ZapfDingbats.
  std::string FurtherEntries() const override {
    if (hasOwnCodes_ && !definition_.IsFile()) return {};
    const auto &encoding = *static_cast<HPDF_BasicEncoderAttr>(encoder->attr);
    std::string entries;
    if (hasOwnCodes_) {
      AppendRangeAndWidths(0, kOneByteCodes - 1, entries);
    } else if (definition_.IsFile() || encoding.has_differences != HPDF_FALSE) {
      AppendRangeAndWidths(encoding.first_char, encoding.last_char, entries);
    }
    return entries + EncodingEntry(encoder, Differences());
  }

 private:
  bool CanBeDirected() const override { return !hasOwnCodes_ && SimpleFont::CanBeDirected(); }

  std::vector<char32_t> ShownCharacters() const override {
    std::vector<char32_t> characters = SimpleFont::ShownCharacters();
    for (int code = 0; code < kOneByteCodes; ++code) {
      const auto index = static_cast<std::size_t>(code);
      if (isShown_[index] && IsOwnCode(code))
        characters[index] = CharacterOfOwnCode(*fontdef, static_cast<HPDF_BYTE>(code));
    }
    return characters;
  }

  // Whether a byte is the code of a glyph. A file of signs keeps the few characters of the encoding that it has.
  bool IsOwnCode(int code) const {
    return hasOwnCodes_ && (!definition_.IsFile() || !definition_.glyphs.contains(EncodedCharacter(code)));
  }

  // The width of a code in 1/1000 of the font size; that of the space where the font has no other.
  HPDF_INT16 WidthOf(int code) const {
    if (IsOwnCode(code)) {
      const HPDF_CharData *glyph = definition_.MetricsOfCode(static_cast<HPDF_BYTE>(code));
      return glyph == nullptr ? fontdef->missing_width : glyph->width;
    }
    const auto &encoding = *static_cast<HPDF_BasicEncoderAttr>(encoder->attr);
    if (code < encoding.first_char || code > encoding.last_char || IsMarkCode(code)) return 0;
    const HPDF_UNICODE character = EncodedCharacter(code);
    if (const HPDF_CharData *glyph = definition_.MetricsOf(character)) return glyph->width;
    const std::optional<HPDF_INT16> other = character == 0 ? std::nullopt : WidthWithoutMetrics(character);
    return other.value_or(fontdef->missing_width);
  }

  // The width of a character that has no metrics of its own.
  std::optional<HPDF_INT16> WidthWithoutMetrics(HPDF_UNICODE character) const {
    if (!definition_.IsFile()) return StandInWidth(fontdef->base_font, character);
    // These are as wide as the space in every font of libharu's.
    constexpr HPDF_UNICODE kNoBreakSpace = 0x00A0, kSoftHyphen = 0x00AD;
    if (character == kNoBreakSpace || character == kSoftHyphen) return std::nullopt;
    const HPDF_UNICODE shown = definition_.GlyphCharacterOf(character);
    const HPDF_CharData *glyph = shown == 0 ? nullptr : definition_.MetricsOf(shown);
    return glyph == nullptr ? std::nullopt : std::optional(glyph->width);
  }

  // The name of the glyph that a file's font shows for a code: where it has none, the one of the space. MuPDF takes
  // ".notdef", like every name that it doesn't find, for what the font's own encoding has at the code.
  std::string GlyphNameOf(int code) const {
    if (IsOwnCode(code)) {
      if (const auto glyph = definition_.glyphsByCode.find(code); glyph != definition_.glyphsByCode.end())
        return glyph->second;
    } else if (const auto glyph = definition_.glyphs.find(definition_.GlyphCharacterOf(EncodedCharacter(code)));
               glyph != definition_.glyphs.end()) {
      return glyph->second;
    }
    const auto space = definition_.glyphs.find(HPDF_UNICODE{' '});
    return space == definition_.glyphs.end() ? GlyphName(0) : space->second;
  }

  // Whether viewers can be left to read the text by the names of its glyphs.
  bool NamesTellTheText() const {
    if (hasOwnCodes_) return false;
    for (int code = 0; code < kOneByteCodes; ++code) {
      const HPDF_UNICODE character =
          isShown_[static_cast<std::size_t>(code)] ? EncodedCharacter(code) : HPDF_UNICODE{0};
      if (character == 0) continue;
      if (!HasPlainName(character)) return false;
      if (definition_.IsFile() && GlyphNameOf(code) != GlyphName(character)) return false;
    }
    return true;
  }

  // What the file says beside the encoding's name: the names of glyphs where it differs from the one of PDF's that it
  // is based on, and where what was shown is under another name in the font, or nowhere. Viewers that are asked for a
  // name that a font lacks may show what else the font has at the code.
  GlyphNames Differences() const {
    GlyphNames names = NamesOfDifferences(encoder);
    if (!definition_.IsFile()) return names;
    for (int code = 0; code < kOneByteCodes; ++code) {
      const HPDF_UNICODE character = EncodedCharacter(code);
      if (character == 0 && !IsOwnCode(code)) continue;
      const bool isShown = isShown_[static_cast<std::size_t>(code)];
      const std::string name = GlyphNameOf(code);
      if (names.contains(code) || (isShown && name != GlyphName(character))) names[code] = name;
    }
    return names;
  }

  void AppendRangeAndWidths(int first, int last, std::string &entries) const {
    entries += "/FirstChar " + std::to_string(first) + "\n/LastChar " + std::to_string(last) + "\n";
    AppendWidths(first, last, entries);
  }

  const Type1Definition &definition_;
  const bool hasOwnCodes_;
};

}  // namespace

HPDF_Font NewType1Font(HPDF_MMgr memory, HPDF_FontDef definition, HPDF_Encoder encoder, HPDF_Xref xref) {
  auto object = std::make_unique<Type1Font>(definition, encoder, xref);
  const Type1Font &own = *object;
  HPDF_Dict font = NewFontDictionary(memory, std::move(object));
  if (font == nullptr) return nullptr;
  if (own.AddEntries(font) != HPDF_OK) {
    HPDF_Dict_Free(font);
    return nullptr;
  }
  return HPDF_Xref_Add(xref, font) == HPDF_OK ? font : nullptr;
}

}  // namespace quillbar::engine
