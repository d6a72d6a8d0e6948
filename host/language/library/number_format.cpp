// SPDX-License-Identifier: MIT
#include "host/language/library/number_format.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <vector>

#include "host/runtime/numbers.h"

namespace quillbar::language {
namespace {

/// A part of a format, parsed.
struct Picture {
  struct Item {
    enum class Kind { kDigit, kPoint, kText, kSign, kMinus, kExponent };
    Kind kind;
    char character = 0;  // of a digit: '0' or '#'; of an exponent: 'e' or 'E'
    bool showsPlus = false;
  };
  std::vector<Item> items;
  int wholeDigits = 0;  // placeholders before the point
  int leastWhole = 0;   // of them, from the first "0" on
  int fractionDigits = 0;
  int leastFraction = 0;
  int exponentDigits = 0;
  bool groups = false;
  bool hasPercent = false;
  bool hasSign = false;
  bool hasExponent = false;
};

Picture ReadPicture(std::string_view format) {
  using Kind = Picture::Item::Kind;
  Picture picture;
  bool isFraction = false;
  for (std::size_t i = 0; i < format.size(); ++i) {
    const char c = format[i];
    if (c == '0' || c == '#') {
      picture.items.push_back({Kind::kDigit, c});
      if (picture.hasExponent) {
        ++picture.exponentDigits;
      } else if (isFraction) {
        ++picture.fractionDigits;
        if (c == '0') picture.leastFraction = picture.fractionDigits;
      } else {
        ++picture.wholeDigits;
        if (c == '0' || picture.leastWhole > 0) ++picture.leastWhole;
      }
    } else if (c == '.' && !isFraction && !picture.hasExponent) {
      isFraction = true;
      picture.items.push_back({Kind::kPoint});
    } else if (c == ',' && !isFraction && picture.wholeDigits > 0) {
      picture.groups = true;
    } else if ((c == 'e' || c == 'E') && !picture.hasExponent && picture.wholeDigits > 0) {
      const bool showsPlus = i + 1 < format.size() && format[i + 1] == '+';
      const bool hasSign = showsPlus || (i + 1 < format.size() && format[i + 1] == '-');
      if (hasSign) ++i;
      picture.hasExponent = true;
      picture.items.push_back({Kind::kExponent, c, showsPlus});
    } else if (c == '+' || c == '-') {
      picture.hasSign = true;
      picture.items.push_back({c == '+' ? Kind::kSign : Kind::kMinus});
    } else if (c == '%') {
      picture.hasPercent = true;
      picture.items.push_back({Kind::kText, c});
    } else {
      if (c == '\\' && i + 1 < format.size()) ++i;
      picture.items.push_back({Kind::kText, format[i]});
    }
  }
  return picture;
}

struct Digits {
  std::string whole;
  std::string fraction;
  int exponent = 0;
};

/// The digits that the picture shows of a number that is not negative.
Digits DigitsOf(host::Decimal number, const Picture &picture) {
  Digits digits;
  if (picture.hasExponent) {
    const int wholeLength = std::max(picture.wholeDigits, 1);
    number.Round(wholeLength + picture.fractionDigits - number.point);
    if (!number.digits.empty()) digits.exponent = number.point - wholeLength;
    number.point = wholeLength;
    if (number.digits.empty()) number.digits.assign(1, '0');
  } else {
    number.Round(picture.fractionDigits);
  }
  // Zeros where the digits don't reach.
  const int count = static_cast<int>(number.digits.size());
  const auto digitAt = [&](int place) {
    return place >= 0 && place < count ? number.digits[static_cast<std::size_t>(place)] : '0';
  };
  for (int place = 0; place < number.point; ++place) digits.whole += digitAt(place);
  for (int place = 0; place < picture.fractionDigits; ++place) digits.fraction += digitAt(number.point + place);
  while (digits.fraction.size() > static_cast<std::size_t>(picture.leastFraction) && digits.fraction.back() == '0') {
    digits.fraction.pop_back();
  }
  if (digits.whole.size() < static_cast<std::size_t>(picture.leastWhole)) {
    digits.whole.insert(0, static_cast<std::size_t>(picture.leastWhole) - digits.whole.size(), '0');
  }
  if (picture.groups) {
    for (std::size_t at = digits.whole.size(); at > 3; at -= 3) digits.whole.insert(at - 3, 1, ',');
  }
  return digits;
}

std::string WriteDigits(const Picture &picture, const Digits &digits, bool isNegative) {
  using Kind = Picture::Item::Kind;
  std::string result;
  bool wroteWhole = false;
  bool inExponent = false;
  for (const Picture::Item &item : picture.items) {
    switch (item.kind) {
      case Kind::kDigit:
        // All digits are put where the first placeholder is; the fraction follows the point.
        if (!wroteWhole && !inExponent) {
          result += digits.whole;
          wroteWhole = true;
        }
        break;
      case Kind::kPoint:
        if (!wroteWhole) result += digits.whole;
        wroteWhole = true;
        if (!digits.fraction.empty()) result += "." + digits.fraction;
        break;
      case Kind::kExponent:
        inExponent = true;
        result += item.character;
        if (digits.exponent < 0) {
          result += '-';
        } else if (item.showsPlus) {
          result += '+';
        }
        result += fmt::format("{:0{}}", std::abs(digits.exponent), std::max(picture.exponentDigits, 2));
        break;
      case Kind::kSign:
        result += isNegative ? '-' : '+';
        break;
      case Kind::kMinus:
        if (isNegative) result += '-';
        break;
      case Kind::kText:
        result += item.character;
        break;
    }
  }
  return result;
}

/// The parts between semicolons; "\;" doesn't separate.
std::vector<std::string_view> SplitParts(std::string_view format) {
  std::vector<std::string_view> parts;
  std::size_t begin = 0;
  for (std::size_t i = 0; i <= format.size(); ++i) {
    if (i < format.size() && format[i] == '\\') {
      ++i;
    } else if (i >= format.size() || format[i] == ';') {
      parts.push_back(format.substr(begin, std::min(i, format.size()) - begin));
      begin = i + 1;
    }
  }
  return parts;
}

}  // namespace

std::string FormatNumber(double number, std::string_view format) {
  if (!std::isfinite(number)) return FormatShort(number, false);
  return FormatDecimal(number < 0, host::DecimalOf(number), format);
}

std::string FormatDecimal(bool isNegative, host::Decimal magnitude, std::string_view format) {
  const std::vector<std::string_view> parts = SplitParts(format);
  std::size_t part = 0;
  if (isNegative && parts.size() > 1 && !parts[1].empty()) part = 1;
  if (magnitude.digits.empty() && parts.size() > 2 && !parts[2].empty()) part = 2;

  const Picture picture = ReadPicture(parts[part]);
  if (picture.hasPercent && !magnitude.digits.empty()) magnitude.point += 2;
  const Digits digits = DigitsOf(std::move(magnitude), picture);
  const auto allZero = [](const std::string &text) { return text.find_first_not_of("0,") == std::string::npos; };
  const bool showsNegative = isNegative && !(allZero(digits.whole) && allZero(digits.fraction));
  std::string result = WriteDigits(picture, digits, showsNegative);
  if (showsNegative && part == 0 && !picture.hasSign) result.insert(0, 1, '-');
  return result;
}

std::string FormatShort(double number, bool isSingle) {
  if (std::isnan(number)) return "NaN";
  if (std::isinf(number)) return number < 0 ? "-Infinity" : "Infinity";
  return isSingle ? fmt::format("{:.7g}", number) : fmt::format("{:.15g}", number);
}

double ParseNumber(std::string_view text) {
  const std::size_t start = text.find_first_not_of(" \t\r\n");
  if (start == std::string_view::npos) return 0;
  text.remove_prefix(start);
  if (text.size() > 2 && text[0] == '&') {
    const char letter = static_cast<char>(text[1] | 0x20);
    const int base = letter == 'h' ? 16 : letter == 'b' ? 2 : letter == 'o' ? 8 : 0;
    std::uint64_t whole = 0;
    if (base != 0) std::from_chars(text.data() + 2, text.data() + text.size(), whole, base);
    return static_cast<double>(static_cast<std::int64_t>(whole));
  }
  const bool hasPlus = text[0] == '+';
  if (hasPlus) text.remove_prefix(1);
  // Only digits, a point and an exponent make numbers here: "nan" and "infinity" are words.
  const std::size_t first = !hasPlus && !text.empty() && text[0] == '-' ? 1 : 0;
  if (text.size() <= first || !(text[first] == '.' || (text[first] >= '0' && text[first] <= '9'))) return 0;
  double number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error == std::errc::result_out_of_range) {
    // Too large a number is infinite, too small a one is zero; the exponent's sign tells which.
    const std::string_view written(text.data(), static_cast<std::size_t>(end - text.data()));
    const bool isSmall = written.find("e-") != std::string_view::npos || written.find("E-") != std::string_view::npos ||
                         written.starts_with("0.") || written.starts_with("-0.");
    number = isSmall ? 0.0 : HUGE_VAL;
    return text[0] == '-' ? -number : number;
  }
  return number;
}

std::int64_t ParseInteger(std::string_view text) {
  const std::size_t start = text.find_first_not_of(" \t\r\n");
  if (start == std::string_view::npos) return 0;
  const char *const first = text.data() + start + (text[start] == '+' ? 1 : 0);
  const char *const last = text.data() + text.size();
  std::int64_t number = 0;
  const auto [end, error] = std::from_chars(first, last, number);
  const bool goesOn = end != last && (*end == '.' || *end == 'e' || *end == 'E');
  if (error == std::errc() && !goesOn) return number;
  return host::TruncateRealTo(host::TypeKind::kInt64, ParseNumber(text));
}

}  // namespace quillbar::language
