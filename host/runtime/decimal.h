// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace quillbar::host {

/// A number that is not negative by its decimal digits, for rounding as people do it on paper.
struct Decimal {
  std::string digits;  // significant ones; empty for zero
  int point = 0;       // how many of them are before the decimal point; below 0: zeros follow the point first

  /// Rounds to this many places after the point, or before it when negative; halves away from zero.
  void Round(int places);
};

/// The shortest decimal number that reads back as `number`, without its sign. `number` must be finite.
Decimal DecimalOf(double number);
Decimal DecimalOf(std::uint64_t number);

/// The number at the start of a text of digits with an optional point and exponent; zero when there is none.
Decimal ReadDecimal(std::string_view text);

}  // namespace quillbar::host
