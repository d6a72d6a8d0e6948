// SPDX-License-Identifier: MIT
// TrueType fonts for text in a one-byte encoding, in place of libharu's hpdf_font_tt.c.
//
// libharu makes the embedded font once, so characters shown after a save are blank, and leaves the text to the names
// of glyphs, which don't tell Greek letters from mathematical signs. Here the embedded font and a map back to text are
// brought up to date before each save.
#include "plugin/engine/fonts/truetype/truetype_simple_font.h"

#include <hpdf_encoder.h>

#include "plugin/engine/errors/out_of_memory.h"
#include "plugin/engine/fonts/encodings/single_byte_encoding.h"
#include "plugin/engine/fonts/simple_font.h"
#include "plugin/engine/fonts/truetype/truetype_definition.h"

namespace quillbar::engine {

namespace {

class TrueTypeSimpleFont : public SimpleFont {
 public:
  TrueTypeSimpleFont(HPDF_FontDef itsDefinition, HPDF_Encoder itsEncoder, HPDF_Xref itsXref)
      : SimpleFont(HPDF_FONT_TRUETYPE, itsDefinition, itsEncoder, itsXref) {}

  HPDF_STATUS AddEntries(HPDF_Dict font) const {
    const auto &encoding = *static_cast<HPDF_BasicEncoderAttr>(encoder->attr);
    HPDF_STATUS status = HPDF_Dict_AddName(font, "Type", "Font");
    status |= HPDF_Dict_AddName(font, "BaseFont", fontdef->base_font);
    status |= HPDF_Dict_AddName(font, "Subtype", "TrueType");
    status |= HPDF_Dict_AddNumber(font, "FirstChar", encoding.first_char);
    status |= HPDF_Dict_AddNumber(font, "LastChar", encoding.last_char);
    if (fontdef->missing_width != 0) status |= HPDF_Dict_AddNumber(font, "MissingWidth", fontdef->missing_width);
    return status;
  }

  // What the document's other objects hold.
  HPDF_STATUS AddObjects(HPDF_Dict font) {
    HPDF_STATUS status = CreateDescriptor(fontdef, xref);
    if (status == HPDF_OK) status = CreateToUnicodeMap(font);
    if (status == HPDF_OK) status = HPDF_Dict_Add(font, "FontDescriptor", fontdef->descriptor);
    return status;
  }

  HPDF_TextWidth TextWidth(std::span<const HPDF_BYTE> text, const DirectedText *) override {
    for (const HPDF_BYTE code : text) UsedWidthOf(code);
    return SumOfWidths(text);
  }

  HPDF_UINT FittingLength(std::span<const HPDF_BYTE> text, const LineSettings &line, HPDF_REAL *reached,
                          const DirectedText *) override {
    return FittingCodes<HPDF_DOUBLE>(text, line, reached, [this](HPDF_BYTE code) { return UsedWidthOf(code); });
  }

  void NoteShown(HPDF_BYTE code) override {
    UsedWidthOf(code);
    NoteShownByte(encoder, code);
  }

  HPDF_STATUS Refresh(HPDF_Dict font) override {
    // A font that could not be completed is on no page.
    if (!HasToUnicodeMap()) return HPDF_OK;
    HPDF_STATUS status = RefreshProgram(fontdef, font->filter);
    if (status == HPDF_OK) status = HPDF_Dict_AddName(font, "BaseFont", TrueTypeOf(fontdef).subsetName.c_str());
    return status == HPDF_OK ? SimpleFont::Refresh(font) : status;
  }

  std::string FurtherEntries() const override {
    const auto &encoding = *static_cast<HPDF_BasicEncoderAttr>(encoder->attr);
    std::string entries;
    AppendWidths(encoding.first_char, encoding.last_char, entries);
    return entries + EncodingEntry(encoder, NamesOfDifferences(encoder));
  }

 private:
  // The width of a byte that is shown or measured, whose glyph is embedded from then on.
  HPDF_INT16 UsedWidthOf(HPDF_BYTE code) {
    if (!isShown_[code]) Use(code);
    return widthOfCode_[code];
  }

  void Use(HPDF_BYTE code) {
    const HPDF_UNICODE character = EncodedCharacter(code);
    TrueTypeDefinition &definition = TrueTypeOf(fontdef);
    isShown_[code] = true;
    const int width = IsDirectionalMark(character) ? 0 : definition.file.WidthOf(definition.file.GlyphOf(character));
    widthOfCode_[code] = static_cast<HPDF_INT16>(width);
    OrOutOfMemory(fontdef->error, [&] {
      definition.shown.AddEncoded(definition.file, character);
      return HPDF_STATUS{HPDF_OK};
    });
  }
};

}  // namespace

HPDF_Font NewTrueTypeSimpleFont(HPDF_MMgr memory, HPDF_FontDef definition, HPDF_Encoder encoder, HPDF_Xref xref) {
  auto object = std::make_unique<TrueTypeSimpleFont>(definition, encoder, xref);
  TrueTypeSimpleFont &own = *object;
  HPDF_Dict font = NewFontDictionary(memory, std::move(object));
  if (font == nullptr) return nullptr;
  if (own.AddEntries(font) != HPDF_OK) {
    HPDF_Dict_Free(font);
    return nullptr;
  }
  // From here on the document owns the font, whether it becomes complete or not.
  if (HPDF_Xref_Add(xref, font) != HPDF_OK) return nullptr;
  return own.AddObjects(font) == HPDF_OK ? font : nullptr;
}

}  // namespace quillbar::engine
