// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "host/language/values/dictionary.h"
#include "host/runtime/value.h"

/// Values from and to JSON text (RFC 8259). Errors are thrown as LibraryError, for JSONException.
namespace quillbar::language::json {

/// Objects and arrays that are nested deeper are refused, in texts and in values.
inline constexpr int kMaxDepth = 500;

/// What the two kinds of containers become. Members of objects come in the order of the text, of two with one name the
/// last one counts; names of different case are different.
struct Containers {
  std::function<host::Value(DictionaryEntries members)> object;
  std::function<host::Value(std::vector<host::Value> elements)> array;
};

/// The value of a whole text. Numbers without a point or exponent are Integers, or Int64, or UInt64, as far as they fit;
/// all others are Doubles. Fails with line and column for what isn't JSON.
host::Value Read(std::string_view utf8, const Containers &containers);

/// How values are written.
struct Style {
  bool isExpanded = false;  // on lines of their own
  int indent = 2;           // blanks for each level of an expanded text
  bool escapesSlashes = true;
  std::string decimalFormat;  // for numbers with a fraction; empty: as many digits as they need
};

/// A value as JSON text: Nil, numbers, Booleans, texts, dictionaries, arrays of one dimension, JSONItems. A Color or
/// DateTime is written as its text. Fails for other values, for numbers that aren't finite, and for containers that are
/// nested too deeply, such as those that hold themselves.
std::string Write(const host::Value &value, const Style &style);

}  // namespace quillbar::language::json
