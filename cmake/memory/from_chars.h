// SPDX-License-Identifier: MIT
// What libc++ lacks: reading floating-point numbers. Included by the compiler before a file that needs it, in builds for
// MemorySanitizer alone. It also takes the hexadecimal numbers that strtod takes.
#pragma once

#include <cctype>
#include <charconv>
#include <cstdlib>
#include <string>

namespace std {

inline from_chars_result from_chars(const char *first, const char *last, double &value) {
  const string text(first, last);
  if (text.empty() || text[0] == '+' || isspace(static_cast<unsigned char>(text[0])) != 0) {
    return {first, errc::invalid_argument};
  }
  char *end = nullptr;
  const double read = strtod(text.c_str(), &end);
  if (end == text.c_str()) return {first, errc::invalid_argument};
  value = read;
  return {first + (end - text.c_str()), errc()};
}

}  // namespace std
