// SPDX-License-Identifier: MIT
// libharu reads AFM files into fixed buffers line by line and believes the count of metrics, so a long line overruns a
// buffer and a large count takes all memory.
#include "plugin/engine/fonts/type1/afm_file.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <string_view>

namespace quillbar::engine {

namespace {

constexpr std::size_t kMaxGlyphs = 65535;
constexpr std::size_t kMaxName = 127;  // of a PDF name
constexpr std::string_view kBlanks = " \t";

// Takes the next word off `text`.
std::string_view TakeWord(std::string_view &text) {
  text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
  const std::size_t end = std::min(text.find_first_of(kBlanks), text.size());
  const std::string_view word = text.substr(0, end);
  text.remove_prefix(end);
  text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
  return word;
}

// A number of metrics, whole: fractions are cut off as the library's integers ask. Nothing beyond 16 bits is a metric.
std::optional<int> NumberOf(std::string_view word) {
  if (word.starts_with('+')) word.remove_prefix(1);
  double value = 0;
  const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value);
  if (error != std::errc() || end != word.data() + word.size() || !(value >= -32768 && value <= 32767))
    return std::nullopt;
  return static_cast<int>(value);
}

class Reader {
 public:
  explicit Reader(Bytes file) : rest_(reinterpret_cast<const char *>(file.data()), file.size()) {}

  std::variant<AfmFile, FontFault> Read() {
    if (!NextLine() || TakeWord(line_) != "StartFontMetrics") return FontFault::kMetricsFileHeader;
    for (;;) {
      if (!NextLine()) return FontFault::kMetricsFileCount;
      const std::string_view key = TakeWord(line_);
      if (key == "StartCharMetrics") break;
      if (!TakeGlobal(key)) return FontFault::kMetricsFileLine;
    }
    if (afm_.fontName.empty() || afm_.fontName.size() > kMaxName) return FontFault::kMetricsFileHeader;

    std::size_t count = 0;
    const std::string_view word = TakeWord(line_);
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), count);
    // A line of metrics has more than eight bytes, so no count can be larger than the file.
    if (error != std::errc() || count > kMaxGlyphs || count > rest_.size() / 8) return FontFault::kMetricsFileCount;
    afm_.glyphs.reserve(count);
    for (;;) {
      if (!NextLine()) return FontFault::kMetricsFileCount;
      const std::string_view key = TakeWord(line_);
      if (key.empty() || key == "Comment") continue;
      if (key == "EndCharMetrics") break;
      if (!TakeGlyph(key)) return FontFault::kMetricsFileLine;
    }
    if (afm_.glyphs.size() != count) return FontFault::kMetricsFileCount;
    return std::move(afm_);
  }

 private:
  // Moves to the next line, of any length: longer ones than the format allows are common. False at the end of the
  // file.
  bool NextLine() {
    if (rest_.empty()) return false;
    const std::size_t end = std::min(rest_.find_first_of("\r\n"), rest_.size());
    line_ = rest_.substr(0, end);
    rest_.remove_prefix(end);
    if (rest_.starts_with("\r\n")) rest_.remove_prefix(1);
    if (!rest_.empty()) rest_.remove_prefix(1);
    return true;
  }

  bool TakeNumber(int &value) {
    const std::optional<int> number = NumberOf(TakeWord(line_));
    if (number) value = *number;
    return number.has_value();
  }

  bool TakeGlobal(std::string_view key) {
    if (key == "FontName") {
      afm_.fontName = TakeWord(line_);
      return std::all_of(afm_.fontName.begin(), afm_.fontName.end(), [](char c) { return c > 0x20 && c < 0x7F; });
    }
    if (key == "EncodingScheme") {
      afm_.encodingScheme = TakeWord(line_);
      return afm_.encodingScheme.size() <= kMaxName;
    }
    if (key == "Weight") {
      afm_.isBold = line_.find("Bold") != std::string_view::npos;
    } else if (key == "IsFixedPitch") {
      afm_.isFixedPitch = TakeWord(line_) == "true";
    } else if (key == "FontBBox") {
      return std::all_of(afm_.boundingBox.begin(), afm_.boundingBox.end(), [&](int &side) { return TakeNumber(side); });
    } else if (key == "ItalicAngle") {
      return TakeNumber(afm_.italicAngle);
    } else if (key == "Ascender") {
      return TakeNumber(afm_.ascender);
    } else if (key == "Descender") {
      return TakeNumber(afm_.descender);
    } else if (key == "CapHeight") {
      return TakeNumber(afm_.capHeight);
    } else if (key == "XHeight") {
      return TakeNumber(afm_.xHeight);
    } else if (key == "StdHW") {
      return TakeNumber(afm_.horizontalStem);
    } else if (key == "StdVW") {
      return TakeNumber(afm_.verticalStem);
    }
    return true;
  }

  // C 65 ; WX 722 ; N A ; B 15 0 706 674 ;
  bool TakeGlyph(std::string_view key) {
    AfmFile::Glyph glyph{-1, 0, {}};
    bool hasWidth = false;
    const std::string_view code = TakeWord(line_);
    if (key == "C") {
      const std::optional<int> number = NumberOf(code);
      if (!number) return false;
      glyph.code = *number;
    } else if (key == "CH") {
      if (code.size() < 3 || code.front() != '<' || code.back() != '>') return false;
      const auto [end, error] = std::from_chars(code.data() + 1, code.data() + code.size() - 1, glyph.code, 16);
      if (error != std::errc() || end != code.data() + code.size() - 1) return false;
    } else {
      return false;
    }
    while (!line_.empty()) {
      const std::size_t end = std::min(line_.find(';'), line_.size());
      std::string_view field = line_.substr(0, end);
      line_.remove_prefix(std::min(end + 1, line_.size()));
      const std::string_view name = TakeWord(field);
      if (name == "WX" || name == "W0X") {
        const std::optional<int> number = NumberOf(TakeWord(field));
        if (!number) return false;
        glyph.width = *number;
        hasWidth = true;
      } else if (name == "N") {
        glyph.name = TakeWord(field);
      }
    }
    if (!hasWidth || glyph.name.empty()) return false;
    afm_.glyphs.push_back(std::move(glyph));
    return true;
  }

  std::string_view rest_;
  std::string_view line_;
  AfmFile afm_;
};

}  // namespace

std::variant<AfmFile, FontFault> AfmFile::Read(Bytes file) { return Reader(file).Read(); }

}  // namespace quillbar::engine
