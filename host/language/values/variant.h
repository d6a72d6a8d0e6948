// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "host/language/syntax/syntax_tree.h"
#include "host/runtime/value.h"

/// What the dialect does with a value whose type is only known when it is used: a Variant. All of these throw
/// LibraryError where a value can't be used as wanted: TypeMismatchException for one of another sort,
/// IllegalCastException for an object of another class.
namespace quillbar::language::variant {

/// `value` as a value of `target`, as where a Variant is assigned to a variable of that type. Numbers convert to each
/// other as everywhere; a text is the number that it starts with, or else 0; Booleans are 1 and 0, colours their codes,
/// a DateTime its seconds from 1970 or its text; Nil is zero, False, the empty text. Arrays keep their element type.
host::Value As(const host::Value &value, host::Type target);

/// `value` as the text that `Print` shows.
host::StringHandle AsText(const host::Value &value);
std::int64_t AsInteger(const host::Value &value);
double AsDouble(const host::Value &value);
bool AsBoolean(const host::Value &value);

/// Whether the value is a number, or a text that is one from its first to its last character.
bool IsNumeric(const host::Value &value);

/// The dialect's number for the type of what a Variant holds, or of an array's elements, such as 8 for String.
std::int64_t TypeNumber(const host::Value &value);
std::int64_t TypeNumber(host::Type type);
inline constexpr std::int64_t kArrayTypeNumber = 4096;

/// Whether two values are the same key: of one sort, numbers by value, texts without regard to case, moments by time,
/// objects and arrays by identity. `Hash` is equal for those.
bool AreSameKey(const host::Value &one, const host::Value &other, bool isCaseSensitive = false);
std::size_t Hash(const host::Value &value);

/// The order of two values, below, equal to or above 0; nothing when they can only be equal or not, and aren't. Nil
/// comes before everything. A number and a text that isn't one are compared as texts.
std::optional<int> Compare(const host::Value &one, const host::Value &other);
bool AreEqual(const host::Value &one, const host::Value &other);

/// Arithmetic on two amounts of Currency: an amount, or a whole number for `\`. Throws DivideByZeroException as
/// LibraryError and an overflow as HostError.
std::int64_t ComputeCurrency(syntax::BinaryOperator operation, std::int64_t one, std::int64_t other);

/// Arithmetic on what two Variants hold. Two texts are joined by `+`. Throws DivideByZeroException as LibraryError.
host::Value Compute(syntax::BinaryOperator operation, const host::Value &one, const host::Value &other);

}  // namespace quillbar::language::variant
