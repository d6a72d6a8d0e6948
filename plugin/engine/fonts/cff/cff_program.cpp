// SPDX-License-Identifier: MIT
#include "plugin/engine/fonts/cff/cff_program.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

namespace quillbar::engine {

namespace {

using Data = std::vector<std::uint8_t>;

// An operand of a DICT, always five bytes long, so that a DICT's length doesn't depend on the offsets in it.
void AppendOperand(Data &data, std::uint32_t value) {
  data.push_back(29);
  Append32(data, value);
}

// An INDEX: objects of any length, found by their number.
Data Index(std::span<const Data> objects) {
  Data index;
  Append16(index, static_cast<std::uint32_t>(objects.size()));
  if (objects.empty()) return index;
  index.push_back(4);
  std::uint32_t offset = 1;
  Append32(index, offset);
  for (const Data &object : objects) Append32(index, offset += static_cast<std::uint32_t>(object.size()));
  for (const Data &object : objects) index.insert(index.end(), object.begin(), object.end());
  return index;
}

// Writes an outline as a Type 2 charstring (Adobe technical note 5177).
class Charstring : public OutlineReceiver {
 public:
  // `scale` makes thousandths of an em of font units. The private DICT's nominal width is 0.
  Charstring(double scale, std::int32_t width) : scale_(scale) { AppendNumber(width); }

  void SetOrigin(std::int32_t x, std::int32_t y) {
    originX_ = x;
    originY_ = y;
  }

  void MoveTo(float x, float y) override {
    AppendStep(x, y);
    data_.push_back(21);  // rmoveto
  }
  void LineTo(float x, float y) override {
    AppendStep(x, y);
    data_.push_back(5);  // rlineto
  }
  void CurveTo(float x1, float y1, float x2, float y2, float x3, float y3) override {
    AppendStep(x1, y1);
    AppendStep(x2, y2);
    AppendStep(x3, y3);
    data_.push_back(8);  // rrcurveto
  }

  Data Take() {
    data_.push_back(14);  // endchar
    return std::move(data_);
  }

 private:
  // Steps are taken between rounded points, so that roundings don't add up.
  void AppendStep(float x, float y) {
    const std::int64_t nextX = Fixed(x, originX_), nextY = Fixed(y, originY_);
    AppendFixed(nextX - x_);
    AppendFixed(nextY - y_);
    x_ = nextX;
    y_ = nextY;
  }

  // In 1/65536 of a thousandth of an em, in which most fonts have whole thousandths.
  std::int64_t Fixed(float value, std::int32_t origin) const {
    return std::llround((static_cast<double>(value) + origin) * scale_ * 65536);
  }

  void AppendFixed(std::int64_t value) {
    value = std::clamp<std::int64_t>(value, -0x7FFFFFFF, 0x7FFFFFFF);
    if (value % 65536 == 0) return AppendNumber(static_cast<std::int32_t>(value / 65536));
    data_.push_back(255);
    Append32(data_, static_cast<std::uint32_t>(value));
  }

  void AppendNumber(std::int32_t value) {
    if (value >= -107 && value <= 107) {
      data_.push_back(static_cast<std::uint8_t>(value + 139));
    } else if (value >= 108 && value <= 1131) {
      data_.push_back(static_cast<std::uint8_t>(247 + (value - 108) / 256));
      data_.push_back(static_cast<std::uint8_t>((value - 108) % 256));
    } else if (value >= -1131 && value <= -108) {
      data_.push_back(static_cast<std::uint8_t>(251 + (-value - 108) / 256));
      data_.push_back(static_cast<std::uint8_t>((-value - 108) % 256));
    } else {
      data_.push_back(28);
      Append16(data_, static_cast<std::uint32_t>(value) & 0xFFFF);
    }
  }

  double scale_;
  std::int32_t originX_ = 0, originY_ = 0;  // of the part that is drawn, in font units
  std::int64_t x_ = 0, y_ = 0;
  Data data_;
};

Data CharstringOf(const TrueTypeFile &font, const EmbeddedGlyph &glyph) {
  Charstring charstring(1000.0 / font.UnitsPerEm(), glyph.isComposed ? glyph.width : font.WidthOf(glyph.glyph));
  if (!glyph.isComposed) {
    font.Shaper().Draw(glyph.glyph, charstring);
  } else {
    for (const auto &[part, x, y] : glyph.parts) {
      charstring.SetOrigin(x, y);
      font.Shaper().Draw(part, charstring);
    }
  }
  return charstring.Take();
}

// Numbers of the standard strings' end: the first string of the font's own.
constexpr std::uint32_t kFirstOwnString = 391;

// Where the tables begin, which the top DICT tells.
struct Offsets {
  std::uint32_t charset = 0, fontOfGlyph = 0, charstrings = 0, fonts = 0;
};

Data TopDict(std::size_t glyphCount, const Offsets &offsets) {
  Data dict;
  // ROS comes first: Adobe-Identity-0.
  AppendOperand(dict, kFirstOwnString);
  AppendOperand(dict, kFirstOwnString + 1);
  AppendOperand(dict, 0);
  dict.insert(dict.end(), {12, 30});
  AppendOperand(dict, static_cast<std::uint32_t>(glyphCount));
  dict.insert(dict.end(), {12, 34});  // CIDCount
  AppendOperand(dict, offsets.charset);
  dict.push_back(15);  // charset
  AppendOperand(dict, offsets.charstrings);
  dict.push_back(17);  // CharStrings
  AppendOperand(dict, offsets.fonts);
  dict.insert(dict.end(), {12, 36});  // FDArray
  AppendOperand(dict, offsets.fontOfGlyph);
  dict.insert(dict.end(), {12, 37});  // FDSelect
  return dict;
}

Data Of(std::string_view text) { return {text.begin(), text.end()}; }

}  // namespace

std::vector<std::uint8_t> CffProgram(const TrueTypeFile &font, std::span<const EmbeddedGlyph> glyphs) {
  std::vector<Data> charstrings;
  charstrings.reserve(glyphs.size());
  for (const EmbeddedGlyph &glyph : glyphs) charstrings.push_back(CharstringOf(font, glyph));
  const auto count = static_cast<std::uint32_t>(glyphs.size());

  Data charset{2};  // ranges: glyph i is character i
  if (count > 1) {
    Append16(charset, 1);
    Append16(charset, count - 2);
  }
  Data fontOfGlyph{3};  // ranges: one font for all
  Append16(fontOfGlyph, 1);
  Append16(fontOfGlyph, 0);
  fontOfGlyph.push_back(0);
  Append16(fontOfGlyph, count);
  const Data glyphIndex = Index(charstrings);

  Data file{1, 0, 4, 4};
  // Each has branches that take back, after an exception, what is made of it.
  const std::array names = {Of("Subset")};                   // GCOVR_EXCL_BR_LINE
  const std::array strings = {Of("Adobe"), Of("Identity")};  // GCOVR_EXCL_BR_LINE
  const Data nameIndex = Index(names), stringIndex = Index(strings), subroutines = Index({});
  // The length of the top DICT doesn't depend on the offsets.
  const std::size_t topLength = Index(std::array{TopDict(count, {})}).size();
  Offsets offsets;
  std::size_t at = file.size() + nameIndex.size() + topLength + stringIndex.size() + subroutines.size();
  const auto place = [&](std::size_t length) {
    const auto start = static_cast<std::uint32_t>(at);
    at += length;
    return start;
  };
  offsets.charset = place(charset.size());
  offsets.fontOfGlyph = place(fontOfGlyph.size());
  offsets.charstrings = place(glyphIndex.size());
  Data privateDict;
  AppendOperand(privateDict, 0);
  privateDict.push_back(20);  // defaultWidthX
  AppendOperand(privateDict, 0);
  privateDict.push_back(21);  // nominalWidthX
  const std::uint32_t privateAt = place(privateDict.size());
  offsets.fonts = static_cast<std::uint32_t>(at);
  Data fontDict;
  AppendOperand(fontDict, static_cast<std::uint32_t>(privateDict.size()));
  AppendOperand(fontDict, privateAt);
  fontDict.push_back(18);  // Private

  const auto append = [&](const Data &part) { file.insert(file.end(), part.begin(), part.end()); };
  append(nameIndex);
  append(Index(std::array{TopDict(count, offsets)}));
  append(stringIndex);
  append(subroutines);
  append(charset);
  append(fontOfGlyph);
  append(glyphIndex);
  append(privateDict);
  append(Index(std::array{fontDict}));
  return file;
}

}  // namespace quillbar::engine
