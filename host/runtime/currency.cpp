// SPDX-License-Identifier: MIT
#include "host/runtime/currency.h"

#include <fmt/format.h>

#include <array>
#include <charconv>
#include <cmath>
#include <limits>

#include "host/runtime/host_error.h"

namespace quillbar::host::currency {
namespace {

[[noreturn]] void FailOverflow() {
  throw HostError(ErrorKind::kOutOfBounds, "this is beyond what a Currency can hold, 922,337,203,685,477.5807");
}

std::uint64_t Magnitude(std::int64_t number) {
  return number < 0 ? 0 - static_cast<std::uint64_t>(number) : static_cast<std::uint64_t>(number);
}

std::int64_t WithSign(std::uint64_t magnitude, bool isNegative) {
  const std::uint64_t most = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
  if (magnitude > most + (isNegative ? 1 : 0)) FailOverflow();
  return static_cast<std::int64_t>(isNegative ? 0 - magnitude : magnitude);
}

std::int64_t FromDecimal(Decimal decimal, bool isNegative) {
  decimal.Round(kPlaces);
  if (decimal.digits.empty()) return 0;
  const int length = decimal.point + kPlaces;
  constexpr int kMostDigits = 19;
  if (length > kMostDigits) FailOverflow();
  decimal.digits.resize(static_cast<std::size_t>(length), '0');
  std::uint64_t magnitude = 0;
  std::from_chars(decimal.digits.data(), decimal.digits.data() + decimal.digits.size(), magnitude);
  return WithSign(magnitude, isNegative);
}

}  // namespace

std::int64_t FromInteger(std::int64_t number, bool isUnsigned) {
  std::int64_t amount = 0;
  if ((isUnsigned && number < 0) || __builtin_mul_overflow(number, kUnit, &amount)) FailOverflow();
  return amount;
}

std::int64_t FromReal(double number) {
  if (!std::isfinite(number)) FailOverflow();
  return FromDecimal(DecimalOf(number), number < 0);
}

std::int64_t FromText(std::string_view text) {
  const std::size_t start = text.find_first_not_of(" \t\r\n");
  if (start == std::string_view::npos) return 0;
  text.remove_prefix(start);
  const bool isNegative = text.front() == '-';
  if (isNegative || text.front() == '+') text.remove_prefix(1);
  return FromDecimal(ReadDecimal(text), isNegative);
}

Decimal ToDecimal(std::int64_t amount) {
  Decimal decimal = DecimalOf(Magnitude(amount));
  if (!decimal.digits.empty()) decimal.point -= kPlaces;
  return decimal;
}

std::string ToText(std::int64_t amount) {
  const std::uint64_t magnitude = Magnitude(amount);
  std::string text = fmt::format("{}{}.{:04}", amount < 0 ? "-" : "", magnitude / kUnit, magnitude % kUnit);
  text.resize(text.find_last_not_of('0') + 1);
  if (text.back() == '.') text.pop_back();
  return text;
}

std::int64_t Add(std::int64_t a, std::int64_t b) {
  std::int64_t sum = 0;
  if (__builtin_add_overflow(a, b, &sum)) FailOverflow();
  return sum;
}

std::int64_t Subtract(std::int64_t a, std::int64_t b) {
  std::int64_t difference = 0;
  if (__builtin_sub_overflow(a, b, &difference)) FailOverflow();
  return difference;
}

std::int64_t Multiply(std::int64_t a, std::int64_t b) {
  // The product has 128 bits, which not every compiler has a type for: four digits of 32 bits, divided one by one.
  constexpr std::uint64_t kMask = 0xFFFFFFFF;
  const std::uint64_t x = Magnitude(a);
  const std::uint64_t y = Magnitude(b);
  const std::uint64_t low = (x & kMask) * (y & kMask);
  const std::uint64_t one = (x & kMask) * (y >> 32);
  const std::uint64_t other = (x >> 32) * (y & kMask);
  const std::uint64_t high = (x >> 32) * (y >> 32);
  const std::uint64_t second = (low >> 32) + (one & kMask) + (other & kMask);
  const std::uint64_t third = (second >> 32) + (one >> 32) + (other >> 32) + (high & kMask);
  const std::array<std::uint64_t, 4> digits{(third >> 32) + (high >> 32), third & kMask, second & kMask, low & kMask};
  std::array<std::uint64_t, 4> quotient{};
  std::uint64_t rest = 0;
  for (std::size_t i = 0; i < digits.size(); ++i) {
    const std::uint64_t part = rest << 32 | digits[i];
    quotient[i] = part / kUnit;
    rest = part % kUnit;
  }
  if (quotient[0] != 0 || quotient[1] != 0 || quotient[2] >> 31 != 0) FailOverflow();
  const std::uint64_t magnitude = (quotient[2] << 32 | quotient[3]) + (rest * 2 >= kUnit ? 1 : 0);
  return WithSign(magnitude, (a < 0) != (b < 0));
}

std::int64_t Round(std::int64_t amount) {
  const std::uint64_t magnitude = Magnitude(amount);
  return WithSign((magnitude / kUnit + (magnitude % kUnit * 2 >= kUnit ? 1 : 0)) * kUnit, amount < 0);
}

}  // namespace quillbar::host::currency
