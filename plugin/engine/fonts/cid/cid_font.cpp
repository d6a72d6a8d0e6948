// SPDX-License-Identifier: MIT
// Fonts of the built-in Chinese, Japanese and Korean faces, in place of that half of libharu's hpdf_font_cid.c.
// Viewers have the faces and the encodings (ISO 32000-1, 9.7.5.2); the file names them and tells the widths.
#include "plugin/engine/fonts/cid/cid_font.h"

#include <hpdf_encoder.h>
#include <hpdf_utils.h>

#include "plugin/engine/fonts/cid/cid_definition.h"
#include "plugin/engine/fonts/font_definition.h"
#include "plugin/engine/fonts/font_object.h"
#include "plugin/engine/fonts/type0_font.h"
#include "plugin/engine/objects/new_entry.h"

namespace quillbar::engine {

namespace {

// Takes a text of one-byte and two-byte codes apart. In malformed text a first byte without a second one counts as a
// character, and so does the byte after it, as libharu has it.
class CodeReader {
 public:
  CodeReader(HPDF_Encoder encoder, std::span<const HPDF_BYTE> text) : encoder_(encoder), text_(text) {
    HPDF_Encoder_SetParseText(encoder, &state_, text.data(), static_cast<HPDF_UINT>(text.size()));
  }

  // Moves to the next code; false at the end.
  bool Next() {
    do {
      start_ = end_;
      if (start_ >= text_.size()) return false;
      ++end_;
      type_ = HPDF_Encoder_ByteType(encoder_, &state_);
    } while (type_ == HPDF_BYTE_TYPE_TRIAL);
    return true;
  }

  HPDF_BYTE FirstByte() const { return text_[start_]; }
  HPDF_UINT16 Code() const {
    if (type_ != HPDF_BYTE_TYPE_LEAD) return FirstByte();
    return static_cast<HPDF_UINT16>(FirstByte() << 8 | (end_ < text_.size() ? text_[end_] : 0));
  }
  // What the code stands for. Codes of two bytes that Unicode doesn't have are a user's own ideographs: libharu's maps
  // have nothing, a white square or a character for private use there. A square itself is as wide as an ideograph, and
  // lines are broken beside it too.
  char32_t Character() const {
    constexpr char32_t kIdeograph = 0x4E00, kWhiteSquare = 0x25A1, kFirstPrivate = 0xE000, kLastPrivate = 0xF8FF;
    const char32_t character = HPDF_Encoder_ToUnicode(encoder_, Code());
    if (type_ != HPDF_BYTE_TYPE_LEAD) return character != 0 ? character : FirstByte();
    const bool isPrivate = character >= kFirstPrivate && character <= kLastPrivate;
    return character == 0 || character == kWhiteSquare || isPrivate ? kIdeograph : character;
  }
  bool IsWhiteSpace() const { return HPDF_IS_WHITE_SPACE(FirstByte()); }
  bool IsAfterBrokenCode() const { return type_ == HPDF_BYTE_TYPE_UNKNOWN; }
  std::size_t Start() const { return start_; }  // of the code, in bytes

 private:
  HPDF_Encoder encoder_;
  std::span<const HPDF_BYTE> text_;
  HPDF_ParseText_Rec state_;
  HPDF_ByteType type_ = HPDF_BYTE_TYPE_UNKNOWN;
  std::size_t start_ = 0;
  std::size_t end_ = 0;
};

class CidFont : public FontObject {
 public:
  CidFont(HPDF_FontDef itsDefinition, HPDF_Encoder itsEncoder, HPDF_Xref itsXref)
      : FontObject(HPDF_FONT_TYPE0_CID, itsDefinition, itsEncoder, itsXref), definition_(CidOf(*itsDefinition)) {
    writing_mode = static_cast<HPDF_CMapEncoderAttr>(encoder->attr)->writing_mode;
  }

  HPDF_TextWidth TextWidth(std::span<const HPDF_BYTE> text, const DirectedText *) override {
    HPDF_TextWidth total = {};
    for (CodeReader reader(encoder, text); reader.Next();) {
      ++total.numchars;
      total.width += AdvanceOf(reader.Code());
      if (reader.IsWhiteSpace()) ++total.numspace;
    }
    const bool endsInWord = !text.empty() && !HPDF_IS_WHITE_SPACE(text.back());
    total.numwords = total.numspace + (endsInWord ? 1 : 0);
    return total;
  }

  HPDF_UINT FittingLength(std::span<const HPDF_BYTE> text, const LineSettings &line, HPDF_REAL *reached,
                          const DirectedText *) override {
    LineFit<HPDF_REAL> fit(line, reached);
    LineBreaker breaker;
    for (CodeReader reader(encoder, text); reader.Next();) {
      const LineBreak itsBreak = line.breaksAtWords ? breaker.Before(reader.Character()) : LineBreak::kNone;
      if (reader.IsWhiteSpace()) {
        fit.BeginWhiteSpace(reader.Start() + 1);
      } else if (!reader.IsAfterBrokenCode()) {
        fit.BeginCharacter(reader.Start(), itsBreak);
      }
      if (reader.Start() > 0) fit.AddCharacterSpace();
      const HPDF_DOUBLE advance = AdvanceOf(reader.Code());
      const bool fits = fit.Add(static_cast<HPDF_REAL>(advance * line.fontSize / 1000));
      if (!fits || reader.FirstByte() == '\n') return fit.Fitting();
    }
    return fit.FittingWhole(text.size());
  }

  // Fills in the font's dictionary and makes the objects that it refers to.
  HPDF_STATUS Complete(HPDF_Dict font) const {
    HPDF_STATUS status = HPDF_Dict_AddName(font, "Type", "Font");
    status |= HPDF_Dict_AddName(font, "BaseFont", fontdef->base_font);
    status |= HPDF_Dict_AddName(font, "Subtype", "Type0");
    status |= HPDF_Dict_AddName(font, "Encoding", encoder->name);
    if (status != HPDF_OK) return status;
    HPDF_Dict descendant = NewDescendant();
    return descendant == nullptr ? HPDF_Error_GetCode(font->error) : AddDescendant(font, descendant);
  }

 private:
  // In 1/1000 of the font size.
  HPDF_UINT AdvanceOf(HPDF_UINT16 code) const {
    const HPDF_INT16 advance = writing_mode == HPDF_WMODE_HORIZONTAL
                                   ? definition_.WidthOf(HPDF_CMapEncoder_ToCID(encoder, code))
                                   : static_cast<HPDF_INT16>(-definition_.verticalAdvance);
    return static_cast<HPDF_UINT>(advance);
  }

  // The CIDFont, which describes the glyphs; null for a failure.
  HPDF_Dict NewDescendant() const {
    HPDF_Dict font = HPDF_Dict_New(fontdef->mmgr);
    if (font == nullptr || HPDF_Xref_Add(xref, font) != HPDF_OK) return nullptr;
    HPDF_STATUS status = HPDF_Dict_AddName(font, "Type", "Font");
    status |= HPDF_Dict_AddName(font, "Subtype", "CIDFontType0");
    status |= HPDF_Dict_AddNumber(font, "DW", definition_.defaultWidth);
    status |= HPDF_Dict_AddName(font, "BaseFont", fontdef->base_font);
    status |= AddVerticalMetrics(font, definition_.verticalHeight, definition_.verticalAdvance);
    if (status == HPDF_OK) status = AddWidths(font);
    if (status != HPDF_OK) return nullptr;

    using enum DescriptorEntry;
    HPDF_Dict descriptor = NewFontDescriptor(
        *fontdef, xref,
        {kFontName, kAscent, kDescent, kCapHeight, kMissingWidth, kFlags, kFontBBox, kItalicAngle, kStemV});
    if (descriptor == nullptr || HPDF_Dict_Add(font, "FontDescriptor", descriptor) != HPDF_OK) return nullptr;
    const auto &collection = *static_cast<HPDF_CMapEncoderAttr>(encoder->attr);
    status = AddCharacterCollection(font, collection.registry, collection.ordering, collection.suppliment);
    return status == HPDF_OK ? font : nullptr;
  }

  // Widths by CID: the first of a run of characters, and their widths.
  HPDF_STATUS AddWidths(HPDF_Dict font) const {
    HPDF_Array all = NewArrayIn(font, "W");
    if (all == nullptr) return HPDF_Error_GetCode(font->error);
    HPDF_Array run = nullptr;
    HPDF_UINT16 last = 0;
    for (const HPDF_CID_Width &entry : definition_.widths) {
      HPDF_STATUS status = HPDF_OK;
      if (run == nullptr || entry.cid != last + 1) {
        run = HPDF_Array_New(font->mmgr);
        status |= HPDF_Array_AddNumber(all, entry.cid);
        status |= HPDF_Array_Add(all, run);
      }
      if (status == HPDF_OK) status = HPDF_Array_AddNumber(run, entry.width);
      if (status != HPDF_OK) return status;
      last = entry.cid;
    }
    return HPDF_OK;
  }

  const CidDefinition &definition_;
};

}  // namespace

HPDF_Font NewCidFont(HPDF_MMgr memory, HPDF_FontDef definition, HPDF_Encoder encoder, HPDF_Xref xref) {
  auto object = std::make_unique<CidFont>(definition, encoder, xref);
  const CidFont &own = *object;
  HPDF_Dict font = NewFontDictionary(memory, std::move(object));
  // From here on the document owns the font, whether it becomes complete or not.
  if (font == nullptr || HPDF_Xref_Add(xref, font) != HPDF_OK) return nullptr;
  return own.Complete(font) == HPDF_OK ? font : nullptr;
}

}  // namespace quillbar::engine
