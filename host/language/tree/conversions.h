// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include "host/language/tree/code.h"

/// Which types convert to which others, and the nodes that convert.
namespace quillbar::language {

/// How well a value of type `from` fits implicitly where `to` is wanted: 0 for the same type, more for a poorer fit,
/// nothing when it doesn't convert implicitly. Numbers fit each other; an object fits its superclasses; Nil fits every
/// class.
std::optional<int> ImplicitCost(host::Type from, host::Type to);

/// Whether `CType(value, to)` and `to(value)` are allowed: besides the implicit conversions, those between integers
/// and enumerations, colours and Booleans, and those from a superclass to a subclass.
bool CanConvertExplicitly(host::Type from, host::Type to);

/// The node that converts; `expression` itself when there is nothing to do. One of the two functions above must have
/// allowed the conversion.
ExpressionPointer MakeConversion(ExpressionPointer expression, host::Type to, Span span);

/// The type in which arithmetic on numbers of these two types is done; nothing unless both are numbers.
std::optional<host::Type> CommonNumber(host::Type one, host::Type other);

}  // namespace quillbar::language
