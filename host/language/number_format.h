// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace quillbar::language {

/// A number by the dialect's format texts, such as "#,##0.00", "-0.0%", "0.00;(0.00);none".
///
/// Up to three parts between semicolons: for positive numbers, negative ones, zero. In a part: "0" a
/// digit or a zero, "#" a digit or nothing, "." the decimal point, "," in front of it thousands in
/// groups, "%" the number times 100, "E+" or "e+" scientific, "+" the sign always, "-" the sign of negative
/// numbers, "\" the next character as it stands. Other characters stand for themselves. A negative number
/// never loses its sign: with neither a sign nor a part of its own, "-" is put in front.
std::string FormatNumber(double number, std::string_view format);

/// The shortest usual form: 15 significant digits (7 for Single), no zeros behind the last one.
std::string FormatShort(double number, bool isSingle);

/// The number at the start of a text, by the rules of Val: blanks before it are passed over, what follows
/// it is left out, &h, &b and &o are known; 0 when there is none.
double ParseNumber(std::string_view text);

}  // namespace quillbar::language
