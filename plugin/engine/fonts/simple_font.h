// SPDX-License-Identifier: MIT
#pragma once

#include <hpdf_utils.h>

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "plugin/engine/fonts/font_object.h"

namespace quillbar::engine {

/// How many codes of one byte there are.
inline constexpr int kOneByteCodes = 256;

/// Whether PDF's white space (ISO 32000-1, 7.2.2) has the byte: 1 or 0, to be counted.
inline constexpr std::array<HPDF_BYTE, kOneByteCodes> kIsWhiteSpace = [] {
  std::array<HPDF_BYTE, kOneByteCodes> table{};
  for (unsigned byte = 0; byte < table.size(); ++byte) table[byte] = HPDF_IS_WHITE_SPACE(byte) ? 1 : 0;
  return table;
}();

/// FontObject::FittingLength for codes of one byte, up to the one that does not fit; `widthOf` gives a code's width in
/// 1/1000 of the font size. They are added up in `Sum`, see LineFit.
template <typename Sum, typename WidthOf>
HPDF_UINT FittingCodes(std::span<const HPDF_BYTE> text, const LineSettings &line, HPDF_REAL *reached, WidthOf widthOf) {
  LineFit<Sum> fit(line, reached);
  for (std::size_t i = 0; i < text.size(); ++i) {
    const HPDF_BYTE code = text[i];
    if (kIsWhiteSpace[code] != 0) {
      fit.BeginWhiteSpace(i + 1);
    } else {
      fit.BeginCharacter(i);
    }
    const bool fits = fit.Add(static_cast<Sum>(widthOf(code)) * line.fontSize / 1000);
    if (!fits || code == '\n') return fit.Fitting();
    // After the comparison, as libharu has it in these fonts.
    if (i > 0) fit.AddCharacterSpace();
  }
  return fit.FittingWhole(text.size());
}

/// A font whose text has one byte for each character (ISO 32000-1, 9.6): the part that Type 1 and TrueType share.
class SimpleFont : public FontObject {
 public:
  HPDF_STATUS Refresh(HPDF_Dict font) override;

  /// Whether the encoding has directional marks, unless the font has codes of its own.
  bool CanBeDirected() const override { return hasMarkCodes_; }
  std::optional<DecodedText> DecodeDirected(std::span<const HPDF_BYTE> text) const override;

  /// The bytes of a part of `whole` in the order in which they are drawn, from left to right, with mirrored brackets and
  /// without directional marks. Letters are not joined: an encoding has no codes for their forms. Throws std::bad_alloc.
  std::string Ordered(std::string_view bytes, const DirectedText &whole) const;

  /// Writes bytes that a page shows to `end`, as in a literal string without its parentheses; there must be room for
  /// nothing but escapes. Takes note of them, and adds what they count to `width`, except words. All in one pass, which
  /// asks one table once for each byte. Returns where the text ends.
  char *WriteShown(std::string_view bytes, char *end, HPDF_TextWidth &width);

 protected:
  using FontObject::FontObject;

  /// Takes note of a code that a page shows: the file is to say what it means. Called before each code's first show.
  virtual void NoteShown(HPDF_BYTE code) = 0;

  /// What the codes shown so far mean, by code; 0 for the others.
  virtual std::vector<char32_t> ShownCharacters() const;

  /// Whether a code is a directional mark, which is not shown and has no width.
  bool IsMarkCode(int code) const { return IsDirectionalMark(EncodedCharacter(code)); }

  /// What a code means in the encoding; 0 for nothing.
  HPDF_UNICODE EncodedCharacter(int code) const {
    return encoder->to_unicode_fn(encoder, static_cast<HPDF_UINT16>(code));
  }

  /// Makes the map back to text, empty at first, as an entry of the font's dictionary.
  HPDF_STATUS CreateToUnicodeMap(HPDF_Dict font);
  bool HasToUnicodeMap() const { return toUnicode_ != nullptr; }

  /// Adds up the widths of a text's bytes and counts its words.
  HPDF_TextWidth SumOfWidths(std::span<const HPDF_BYTE> text) const;

  /// Appends the entry Widths with the codes from `first` to `last`.
  void AppendWidths(int first, int last, std::string &entries) const;

  std::array<HPDF_INT16, kOneByteCodes> widthOfCode_{};  // in 1/1000 of the font size
  std::array<bool, kOneByteCodes> isShown_{};

 private:
  bool HasMarkCodes() const {
    for (int code = 0; code < kOneByteCodes; ++code) {
      if (IsMarkCode(code)) return true;
    }
    return false;
  }

  // What WriteShown does with a byte, so packed that entries can be added up: the width, spaces, and how many bytes are
  // not simply copied, because they need an escape, are shown for the first time or have a width below 0.
  using ShownByte = std::uint64_t;
  static constexpr int kSpacesPlace = 32, kSpecialPlace = 56;
  static constexpr ShownByte kIsSpecial = ShownByte{1} << kSpecialPlace;

  char *WriteSpecial(std::string_view bytes, char *end, HPDF_TextWidth &width);

  HPDF_Dict toUnicode_ = nullptr;
  bool hasMarkCodes_ = HasMarkCodes();
  std::array<bool, kOneByteCodes> isNoted_{};
  std::array<ShownByte, kOneByteCodes> shownBytes_ = [] {
    std::array<ShownByte, kOneByteCodes> bytes{};
    bytes.fill(kIsSpecial);
    return bytes;
  }();
};

/// SimpleFont::WriteShown of a font of one-byte codes.
inline char *WriteShownCodes(HPDF_Font font, std::string_view bytes, char *end, HPDF_TextWidth &width) {
  return static_cast<SimpleFont &>(FontObjectOf(font)).WriteShown(bytes, end, width);
}

/// SimpleFont::Ordered of a font of one-byte codes.
inline std::string OrderedCodes(HPDF_Font font, std::string_view bytes, const DirectedText &whole) {
  return static_cast<SimpleFont &>(FontObjectOf(font)).Ordered(bytes, whole);
}

}  // namespace quillbar::engine
