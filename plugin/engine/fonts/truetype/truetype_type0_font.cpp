// SPDX-License-Identifier: MIT
// TrueType fonts for text in UTF-8 or another multi-byte encoding, in place of that half of libharu's hpdf_font_cid.c.
//
// There, codes are UTF-16 units: code points above U+FFFF have none, the widths and the map from codes to glyphs span
// the whole plane in every document (and crash the save of a font with more than 32,767 wide characters in a row), and
// measured text counts as shown. Here a code belongs to a character that the document shows (shown_glyphs.h); the
// embedded font, the widths and the map back to text are made from those at each save. Text that needs it is shaped and
// ordered first (shaping/); all other text has one glyph a character.
#include "plugin/engine/fonts/truetype/truetype_type0_font.h"

#include <hpdf_utils.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>

#include "plugin/engine/fonts/encodings/utf8_encoder.h"
#include "plugin/engine/fonts/encodings/utf8_text.h"
#include "plugin/engine/fonts/font_object.h"
#include "plugin/engine/fonts/shaping/script_runs.h"
#include "plugin/engine/fonts/shaping/text_layout.h"
#include "plugin/engine/fonts/to_unicode_map.h"
#include "plugin/engine/fonts/truetype/truetype_definition.h"
#include "plugin/engine/fonts/type0_font.h"
#include "plugin/engine/objects/new_entry.h"
#include "plugin/engine/streams/escaped_text.h"

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

bool IsWhiteSpace(char32_t character) { return HPDF_IS_WHITE_SPACE(character); }

// Writes codes and distances as the operand of Tj or TJ.
class CodeWriter {
 public:
  CodeWriter(std::string &operand, std::size_t codes) : operand_(operand), start_(operand.size()) {
    operand_.reserve(operand_.size() + 4 * codes + 8);
    operand_ += "[<";
  }

  void Add(std::uint16_t code) {
    constexpr char kDigits[] = "0123456789ABCDEF";
    if (!isOpen_) operand_.push_back('<');
    isOpen_ = true;
    const char digits[] = {kDigits[code >> 12], kDigits[code >> 8 & 0xF], kDigits[code >> 4 & 0xF],
                           kDigits[code & 0xF]};
    operand_.append(digits, sizeof digits);
  }

  // A number that is taken off the position, in 1/1000 of the font size.
  void AddDistance(std::string_view number) {
    operand_.push_back(isOpen_ ? '>' : ' ');
    isOpen_ = false;
    hasDistances_ = true;
    operand_ += number;
  }
  void AddDistance(std::int32_t distance) { AddDistance(std::to_string(distance)); }

  // Whether it is an array.
  bool Finish() {
    if (isOpen_) operand_.push_back('>');
    if (hasDistances_) {
      operand_.push_back(']');
    } else {
      operand_.erase(start_, 1);
    }
    operand_.push_back(' ');
    return hasDistances_;
  }

 private:
  std::string &operand_;
  std::size_t start_;
  bool isOpen_ = true;
  bool hasDistances_ = false;
};

class TrueTypeType0Font : public FontObject {
 public:
  TrueTypeType0Font(HPDF_FontDef itsDefinition, HPDF_Encoder itsEncoder, HPDF_Xref itsXref)
      : FontObject(HPDF_FONT_TYPE0_TT, itsDefinition, itsEncoder, itsXref) {
    if (encoder->type == HPDF_ENCODER_TYPE_DOUBLE_BYTE)
      writing_mode = static_cast<HPDF_CMapEncoderAttr>(encoder->attr)->writing_mode;
    isPlainUtf8_ = IsHorizontal() && IsUtf8Encoder(encoder);
  }

  HPDF_TextWidth TextWidth(std::span<const HPDF_BYTE> text, const DirectedText *whole) override;
  HPDF_UINT FittingLength(std::span<const HPDF_BYTE> text, const LineSettings &line, HPDF_REAL *reached,
                          const DirectedText *whole) override;
  bool HoldsTogether(std::span<const HPDF_BYTE> text, const DirectedText *whole) const override;
  bool CanBeDirected() const override { return true; }
  std::optional<DecodedText> DecodeDirected(std::span<const HPDF_BYTE> text) const override;
  HPDF_STATUS Refresh(HPDF_Dict font) override;

  // Fills in the font's dictionary and makes the objects that it refers to.
  HPDF_STATUS Complete(HPDF_Dict font);

  // See IsPlain and WritePlainCodes.
  bool IsPlain(std::string_view text) const {
    return isPlainUtf8_ &&
           std::ranges::all_of(text, [](char byte) { return static_cast<HPDF_BYTE>(byte) < kPlainCodes; });
  }
  char *WritePlain(std::string_view text, char *end, HPDF_TextWidth &width);

  // See AppendShownText.
  ShownText AppendShown(std::span<const HPDF_BYTE> text, const DirectedText *whole, const TextGaps &gaps,
                        std::string &operand);

 private:
  bool IsHorizontal() const { return writing_mode == HPDF_WMODE_HORIZONTAL; }
  HPDF_UINT AdvanceOf(char32_t character) const;  // in 1/1000 of the font size
  bool NeedsLayout(std::span<const HPDF_BYTE> text) const;
  bool IsLaidOut(std::span<const HPDF_BYTE> text, const DirectedText *whole) const {
    return whole != nullptr || NeedsLayout(text);
  }
  DecodedText Decode(std::span<const HPDF_BYTE> text, std::size_t most) const;
  std::u32string CharactersOf(std::span<const HPDF_BYTE> text, const DirectedText *whole) const {
    return whole != nullptr ? whole->CharactersOf(text)
                            : Decode(text, std::numeric_limits<std::size_t>::max()).characters;
  }
  TextLayout LayOutText(std::span<const HPDF_BYTE> text, std::u32string characters, const DirectedText *whole) const;
  HPDF_UINT FittingLayout(std::span<const HPDF_BYTE> text, const LineSettings &line, HPDF_REAL *reached,
                          const DirectedText *whole);
  HPDF_REAL WidthOnLine(std::span<const HPDF_BYTE> text, const LineSettings &line, const DirectedText *whole);
  HPDF_STATUS RefreshWidths();

  // What showing an ASCII character needs, once it has been shown.
  struct PlainCode {
    char digits[4];
    HPDF_UINT16 width;
    bool isKnown, isSpace;
  };
  static constexpr std::size_t kPlainCodes = 128;
  const PlainCode &PlainCodeOf(HPDF_BYTE character);

  std::array<PlainCode, kPlainCodes> plainCodes_{};
  bool isPlainUtf8_ = false;
  HPDF_Dict descendant_ = nullptr;
  HPDF_Dict toUnicode_ = nullptr;
  std::size_t revision_ = 0;  // of what is shown, when widths and map were last made
};

HPDF_UINT TrueTypeType0Font::AdvanceOf(char32_t character) const {
  const TrueTypeFile &file = TrueTypeOf(fontdef).file;
  if (IsHorizontal()) return static_cast<HPDF_UINT>(file.WidthOf(file.GlyphOf(character)));
  return static_cast<HPDF_UINT>(fontdef->font_bbox.top - fontdef->font_bbox.bottom);
}

bool TrueTypeType0Font::NeedsLayout(std::span<const HPDF_BYTE> text) const {
  if (!IsHorizontal()) return false;
  if (IsUtf8Encoder(encoder) && IsBelowCombiningMarks({reinterpret_cast<const char *>(text.data()), text.size()}))
    return false;
  for (CharacterReader reader(encoder, text); reader.Next();) {
    if (MayNeedShaping(reader.Character())) return true;
  }
  return false;
}

// About `most` characters from the beginning of the text, up to a white space if there is one soon.
DecodedText TrueTypeType0Font::Decode(std::span<const HPDF_BYTE> text, std::size_t most) const {
  constexpr std::size_t kLongestExtension = 32;
  DecodedText decoded;
  for (CharacterReader reader(encoder, text); reader.Next();) {
    decoded.characters.push_back(reader.Character());
    decoded.ends.push_back(static_cast<std::uint32_t>(reader.End()));
    const std::size_t count = decoded.characters.size();
    if (count >= most && (reader.IsWhiteSpace() || count - most >= kLongestExtension)) break;
  }
  return decoded;
}

std::optional<DecodedText> TrueTypeType0Font::DecodeDirected(std::span<const HPDF_BYTE> text) const {
  if (!NeedsLayout(text)) return std::nullopt;
  return Decode(text, std::numeric_limits<std::size_t>::max());
}

bool TrueTypeType0Font::HoldsTogether(std::span<const HPDF_BYTE> text, const DirectedText *whole) const {
  if (whole != nullptr) return true;
  if (!NeedsLayout(text)) return false;
  const std::u32string characters = CharactersOf(text, nullptr);
  std::vector<ScriptRun> runs;
  AppendScriptRuns(characters, 0, static_cast<std::uint32_t>(characters.size()), false, false, runs);
  return std::ranges::any_of(runs, [](const ScriptRun &run) { return run.layout == RunLayout::kScript; });
}

TextLayout TrueTypeType0Font::LayOutText(std::span<const HPDF_BYTE> text, std::u32string characters,
                                         const DirectedText *whole) const {
  const TrueTypeFile &file = TrueTypeOf(fontdef).file;
  const CharacterMetrics metrics{file.UnitsPerEm(),
                                 [&](char32_t character) { return file.WidthOf(file.GlyphOf(character)); }};
  TextLayout layout;
  layout.text = std::move(characters);
  if (whole == nullptr) {
    LayOut(file.Shaper(), metrics, layout);
  } else {
    const DirectedText::Order order = whole->OrderOf(text);
    LayOutInOrder(file.Shaper(), metrics, order.runs, order.isRightToLeft, layout);
  }
  return layout;
}

// What a layout counts: like text that is laid out character by character, with the advances of its clusters.
HPDF_TextWidth CountOf(const TextLayout &layout) {
  HPDF_TextWidth total = {};
  bool endsInSpace = false;
  for (const GlyphCluster &cluster : layout.clusters) {
    total.numchars += cluster.count;
    total.width += static_cast<HPDF_UINT>(cluster.advance);
    endsInSpace = cluster.count == 1 && IsWhiteSpace(layout.text[cluster.first]);
    if (endsInSpace) {
      ++total.numspace;
      ++total.numwords;
    }
  }
  if (!endsInSpace) ++total.numwords;
  return total;
}

HPDF_TextWidth TrueTypeType0Font::TextWidth(std::span<const HPDF_BYTE> text, const DirectedText *whole) {
  if (IsLaidOut(text, whole)) {
    return CountOf(LayOutText(text, CharactersOf(text, whole), whole));
  }
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
                                           HPDF_REAL *reached, const DirectedText *whole) {
  if (whole != nullptr) return FittingLayout(text, line, reached, whole);
  LineFit<HPDF_REAL> fit(line, reached);
  LineBreaker breaker;
  for (CharacterReader reader(encoder, text); reader.Next();) {
    if (MayNeedShaping(reader.Character()) && IsHorizontal()) return FittingLayout(text, line, reached, nullptr);
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

// The same for text that must be laid out to be measured: as much of it as a line may hold, which is not known
// beforehand.
HPDF_UINT TrueTypeType0Font::FittingLayout(std::span<const HPDF_BYTE> text, const LineSettings &line,
                                           HPDF_REAL *reached, const DirectedText *whole) {
  constexpr std::size_t kFirstGuess = 96;
  // So near to where the text was cut, what follows may change how it is laid out.
  constexpr std::size_t kUncertain = 16;
  for (std::size_t most = kFirstGuess;; most *= 2) {
    const DecodedText decoded = Decode(text, most);
    const std::size_t length = decoded.ends.empty() ? 0 : decoded.ends.back();
    const TextLayout layout = LayOutText(text.first(length), decoded.characters, whole);
    const auto startOf = [&](const GlyphCluster &cluster) {
      return cluster.first == 0 ? 0 : decoded.ends[cluster.first - 1];
    };
    LineFit<HPDF_REAL> fit(line, reached);
    LineBreaker breaker;
    auto cluster = layout.clusters.begin();
    for (bool isFull = false; cluster != layout.clusters.end() && !isFull; ++cluster) {
      const char32_t character = layout.text[cluster->first];
      LineBreak itsBreak = LineBreak::kNone;
      for (std::uint32_t i = 0; line.breaksAtWords && i < cluster->count; ++i) {
        const LineBreak found = breaker.Before(layout.text[cluster->first + i]);
        if (i == 0) itsBreak = found;
      }
      const bool isSpace = cluster->count == 1 && IsWhiteSpace(character);
      if (isSpace) {
        fit.BeginWhiteSpace(decoded.ends[cluster->first]);
      } else {
        fit.BeginCharacter(startOf(*cluster), itsBreak);
      }
      for (std::uint32_t i = cluster->first == 0 ? 1 : 0; i < cluster->count; ++i) fit.AddCharacterSpace();
      const bool fits = fit.Add(static_cast<HPDF_REAL>(static_cast<double>(cluster->advance) * line.fontSize / 1000));
      isFull = !fits || character == U'\n';
      if (!isFull || (length < text.size() && cluster->first + kUncertain > layout.text.size() && !fits)) continue;
      if (line.breaksAtWords || fits || isSpace) return fit.Fitting();
      // A word that is cut in two may be wider than it was in one.
      for (; cluster != layout.clusters.begin() && WidthOnLine(text.first(startOf(*cluster)), line, whole) > line.width;
           --cluster) {
      }
      if (reached != nullptr) *reached = WidthOnLine(text.first(startOf(*cluster)), line, whole);
      return startOf(*cluster);
    }
    if (cluster == layout.clusters.end() && length == text.size()) return fit.FittingWhole(length);
  }
}

// The width of a text that begins a line, in text space units.
HPDF_REAL TrueTypeType0Font::WidthOnLine(std::span<const HPDF_BYTE> text, const LineSettings &line,
                                         const DirectedText *whole) {
  const HPDF_TextWidth width = TextWidth(text, whole);
  return static_cast<HPDF_REAL>(width.width) * line.fontSize / 1000 +
         line.wordSpace * static_cast<HPDF_REAL>(width.numspace) +
         line.characterSpace * static_cast<HPDF_REAL>(width.numchars > 0 ? width.numchars - 1 : 0);
}

const TrueTypeType0Font::PlainCode &TrueTypeType0Font::PlainCodeOf(HPDF_BYTE character) {
  PlainCode &plain = plainCodes_.data()[character];  // IsPlain has looked at every byte
  if (plain.isKnown) [[likely]]
    return plain;
  TrueTypeDefinition &definition = TrueTypeOf(fontdef);
  const std::uint16_t code = definition.shown.CodeOf(definition.file, character);
  const char bytes[] = {static_cast<char>(code >> 8), static_cast<char>(code & 0xFF)};
  WriteHexDigits({bytes, sizeof bytes}, plain.digits);
  plain.width = static_cast<HPDF_UINT16>(AdvanceOf(character));
  plain.isSpace = IsWhiteSpace(character);
  // The first code is what a font that is full shows.
  plain.isKnown = code != 0;
  return plain;
}

char *TrueTypeType0Font::WritePlain(std::string_view text, char *end, HPDF_TextWidth &width) {
  HPDF_UINT sum = 0, spaces = 0;
  for (const char byte : text) {
    const PlainCode &plain = PlainCodeOf(static_cast<HPDF_BYTE>(byte));
    std::memcpy(end, plain.digits, sizeof plain.digits);
    end += sizeof plain.digits;
    sum += plain.width;
    spaces += plain.isSpace ? 1 : 0;
  }
  width.numchars += static_cast<HPDF_UINT>(text.size());
  width.width += sum;
  width.numspace += spaces;
  return end;
}

ShownText TrueTypeType0Font::AppendShown(std::span<const HPDF_BYTE> text, const DirectedText *whole,
                                         const TextGaps &gaps, std::string &operand) {
  TrueTypeDefinition &definition = TrueTypeOf(fontdef);
  CodeWriter codes(operand, text.size());
  if (!IsLaidOut(text, whole)) {
    HPDF_TextWidth total = {};
    for (CharacterReader reader(encoder, text); reader.Next();) {
      codes.Add(definition.shown.CodeOf(definition.file, reader.Character()));
      ++total.numchars;
      total.width += AdvanceOf(reader.Character());
      if (!reader.IsWhiteSpace()) continue;
      ++total.numspace;
      if (!gaps.afterSpace.empty()) codes.AddDistance(gaps.afterSpace);
    }
    return {codes.Finish(), total};
  }

  const TextLayout layout = LayOutText(text, CharactersOf(text, whole), whole);
  std::vector<std::uint16_t> clusterCodes;
  const auto show = [&](const GlyphCluster &cluster) {
    clusterCodes.clear();
    const std::int32_t rest = definition.shown.AppendCodes(definition.file, layout, cluster, clusterCodes);
    for (const std::uint16_t code : clusterCodes) codes.Add(code);
    if (rest != 0) codes.AddDistance(-rest);
    if (cluster.count == 1 && IsWhiteSpace(layout.text[cluster.first]) && !gaps.afterSpace.empty())
      codes.AddDistance(gaps.afterSpace);
  };
  if (!layout.isOrdered) {
    for (const GlyphCluster &cluster : layout.clusters) show(cluster);
  } else {
    for (const std::int32_t item : layout.visual) {
      if (item < 0) {
        codes.Add(definition.shown.BlankCodeOf(definition.file, static_cast<char32_t>(-item)));
      } else {
        show(layout.clusters[static_cast<std::size_t>(item)]);
      }
    }
  }
  return {codes.Finish(), CountOf(layout)};
}

// Widths by code, for the descendant font: code [width width …] code [ …
HPDF_STATUS TrueTypeType0Font::RefreshWidths() {
  HPDF_Array all = NewArrayIn(descendant_, "W");
  if (all == nullptr) return HPDF_Error_GetCode(fontdef->error);
  HPDF_STATUS status = HPDF_OK;
  const TrueTypeDefinition &definition = TrueTypeOf(fontdef);
  const auto &glyphs = definition.shown.Glyphs();
  HPDF_Array run = nullptr;
  for (std::size_t code = 0; code < glyphs.size() && status == HPDF_OK; ++code) {
    if (code % kWidthsInRun == 0) {
      run = HPDF_Array_New(descendant_->mmgr);
      status |= HPDF_Array_AddNumber(all, static_cast<HPDF_INT32>(code));
      status |= HPDF_Array_Add(all, run);
    }
    if (status == HPDF_OK) status = HPDF_Array_AddNumber(run, definition.shown.WidthOf(definition.file, code));
  }
  return status;
}

HPDF_STATUS TrueTypeType0Font::Refresh(HPDF_Dict font) {
  // A font that could not be completed is on no page.
  if (toUnicode_ == nullptr) return HPDF_OK;
  const TrueTypeDefinition &definition = TrueTypeOf(fontdef);
  toUnicode_->filter = font->filter;
  HPDF_STATUS status = RefreshProgram(fontdef, font->filter);
  if (status != HPDF_OK || revision_ == definition.shown.Revision()) return status;
  const char *name = definition.subsetName.c_str();
  status = HPDF_Dict_AddName(font, "BaseFont", name);
  if (status == HPDF_OK) status = HPDF_Dict_AddName(descendant_, "BaseFont", name);
  if (status == HPDF_OK) status = RefreshWidths();
  if (status == HPDF_OK) status = ReplaceToUnicodeMap(toUnicode_, definition.shown.Characters(), CodeLength::kTwoBytes);
  if (status == HPDF_OK) revision_ = definition.shown.Revision();
  return status;
}

// The part that carries the glyphs; a code is the number of a glyph in the embedded font.
HPDF_Font NewDescendant(HPDF_FontDef definition, HPDF_MMgr memory, HPDF_Xref xref) {
  HPDF_Dict font = HPDF_Dict_New(memory);
  if (font == nullptr || HPDF_Xref_Add(xref, font) != HPDF_OK) return nullptr;
  const bool isCff = TrueTypeOf(definition).file.HasCffOutlines();
  HPDF_STATUS status = HPDF_Dict_AddName(font, "Type", "Font");
  status |= HPDF_Dict_AddName(font, "Subtype", isCff ? "CIDFontType0" : "CIDFontType2");
  status |= HPDF_Dict_AddName(font, "BaseFont", definition->base_font);
  if (!isCff) status |= HPDF_Dict_AddName(font, "CIDToGIDMap", "Identity");
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

ShownText AppendShownText(HPDF_Font font, std::span<const HPDF_BYTE> text, const DirectedText *whole,
                          const TextGaps &gaps, std::string &operand) {
  return static_cast<TrueTypeType0Font &>(FontObjectOf(font)).AppendShown(text, whole, gaps, operand);
}

bool IsPlain(HPDF_Font font, std::string_view text) {
  return static_cast<const TrueTypeType0Font &>(FontObjectOf(font)).IsPlain(text);
}

char *WritePlainCodes(HPDF_Font font, std::string_view text, char *end, HPDF_TextWidth &width) {
  return static_cast<TrueTypeType0Font &>(FontObjectOf(font)).WritePlain(text, end, width);
}

}  // namespace quillbar::engine
