// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include "host/language/code.h"

/// Which types stand for which others, and the nodes that turn one into another.
namespace quillbar::language {

/// How well a value of type `from` fits where `to` is wanted, without anything being written: 0 for
/// the same type, more for a poorer fit, nothing when it can't stand there. Numbers fit each other; an
/// object fits its superclasses; Nil fits every class.
std::optional<int> ImplicitCost(host::Type from, host::Type to);

/// Whether `CType(value, to)` and `to(value)` are allowed: beyond the above, enumerations, colours and
/// Booleans from and to integers, and objects from a superclass.
bool CanConvertExplicitly(host::Type from, host::Type to);

/// The node that converts; `expression` itself when nothing is to be done. One of the two tests above
/// must have passed.
ExpressionPointer MakeConversion(ExpressionPointer expression, host::Type to, Span span);

/// The type in which numbers of two types meet in arithmetic; nothing unless both are numbers.
std::optional<host::Type> CommonNumber(host::Type one, host::Type other);

}  // namespace quillbar::language
