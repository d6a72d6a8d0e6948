// SPDX-License-Identifier: MIT
#include "host/runtime/decimal.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>

namespace quillbar::host {

void Decimal::Round(int places) {
  const int kept = point + places;
  if (kept >= static_cast<int>(digits.size())) return;
  if (kept < 0) {
    digits.clear();
    return;
  }
  const auto end = static_cast<std::size_t>(kept);
  bool roundsUp = digits[end] >= '5';
  digits.resize(end);
  for (std::size_t i = end; roundsUp && i > 0; --i) {
    roundsUp = digits[i - 1] == '9';
    digits[i - 1] = roundsUp ? '0' : static_cast<char>(digits[i - 1] + 1);
  }
  if (roundsUp) {
    digits.insert(0, 1, '1');
    ++point;
  }
}

Decimal DecimalOf(double number) { return ReadDecimal(fmt::format("{}", std::fabs(number))); }
Decimal DecimalOf(std::uint64_t number) { return ReadDecimal(fmt::format("{}", number)); }

Decimal ReadDecimal(std::string_view text) {
  Decimal decimal;
  bool hasPoint = false;
  std::size_t i = 0;
  for (; i < text.size(); ++i) {
    const char c = text[i];
    if (c == '.' && !hasPoint) {
      hasPoint = true;
    } else if (c >= '0' && c <= '9') {
      const bool leads = decimal.digits.empty() && c == '0';
      if (!leads) decimal.digits += c;
      if (hasPoint ? leads : !leads) decimal.point += hasPoint ? -1 : 1;
    } else {
      break;
    }
  }
  if (i + 1 < text.size() && (text[i] == 'e' || text[i] == 'E')) {
    const std::size_t start = text[i + 1] == '+' ? i + 2 : i + 1;
    std::int64_t exponent = 0;
    const auto [end, error] = std::from_chars(text.data() + start, text.data() + text.size(), exponent);
    constexpr std::int64_t kMost = 100'000;
    if (error == std::errc::result_out_of_range) exponent = text[start] == '-' ? -kMost : kMost;
    decimal.point += static_cast<int>(std::clamp(exponent, -kMost, kMost));
  }
  while (!decimal.digits.empty() && decimal.digits.back() == '0') decimal.digits.pop_back();
  if (decimal.digits.empty()) decimal.point = 0;
  return decimal;
}

}  // namespace quillbar::host
