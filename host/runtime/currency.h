// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "host/runtime/decimal.h"

/// The arithmetic of the type Currency: numbers with four decimal places, exact, held as whole numbers of
/// ten-thousandths in 64 bits. What has more places is rounded, halves away from zero. All of these throw HostError
/// (kOutOfBounds) for a result beyond what the type holds, about 922 trillion.
namespace quillbar::host::currency {

inline constexpr std::int64_t kUnit = 10'000;
inline constexpr int kPlaces = 4;

std::int64_t FromInteger(std::int64_t number, bool isUnsigned = false);
/// By the shortest decimal number that reads back as `number`. Not-a-number is out of bounds.
std::int64_t FromReal(double number);
/// The number at the start of a text, after blanks and a sign; 0 when there is none.
std::int64_t FromText(std::string_view text);

/// Whole units; the fraction is dropped.
constexpr std::int64_t ToInteger(std::int64_t amount) { return amount / kUnit; }
constexpr double ToReal(std::int64_t amount) { return static_cast<double>(amount) / kUnit; }
/// The amount by its digits, without its sign.
Decimal ToDecimal(std::int64_t amount);
/// With as many places as it needs: "12.5", "-3".
std::string ToText(std::int64_t amount);

std::int64_t Add(std::int64_t a, std::int64_t b);
std::int64_t Subtract(std::int64_t a, std::int64_t b);
std::int64_t Multiply(std::int64_t a, std::int64_t b);
/// To whole units, halves away from zero.
std::int64_t Round(std::int64_t amount);

}  // namespace quillbar::host::currency
