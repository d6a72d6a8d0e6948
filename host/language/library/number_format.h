// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "host/runtime/decimal.h"

namespace quillbar::language {

/// Formats a number by one of the dialect's format texts, such as "#,##0.00", "-0.0%", "0.00;(0.00);none".
///
/// Up to three parts between semicolons: for positive numbers, negative ones, zero. In a part: "0" a digit or a zero,
/// "#" a digit or nothing, "." the decimal point, "," before it thousands in groups, "%" the number times 100, "E+" or
/// "e+" scientific, "+" the sign always, "-" the sign of negative numbers, "\" the next character as it is. Other
/// characters are written as they are. A negative number never loses its sign: with neither a sign nor a part of its
/// own, "-" is put before it.
///
/// What has more places than the format is rounded by its decimal digits, halves away from zero: a Double counts as the
/// shortest decimal number that stands for it, so that 1.005 is 1.01 with two places.
std::string FormatNumber(double number, std::string_view format);
/// The same for a number by its digits.
std::string FormatDecimal(bool isNegative, host::Decimal magnitude, std::string_view format);

/// A number in its shortest usual form: 15 significant digits (7 for Single), without trailing zeros.
std::string FormatShort(double number, bool isSingle);

/// The number at the start of a text, by the rules of Val: leading blanks are skipped, what follows the number is
/// ignored, &h, &b and &o are known; 0 when there is none.
double ParseNumber(std::string_view text);

/// The same as a whole number: its fraction is dropped. Whole numbers keep all 64 bits, which don't fit into a Double.
std::int64_t ParseInteger(std::string_view text);

}  // namespace quillbar::language
