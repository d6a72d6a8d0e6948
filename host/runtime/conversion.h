// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include "host/runtime/type.h"

/// Which types convert to which others, and how well: one scale for scripts and for callers in C++.
namespace quillbar::host {

enum class Conversions {
  /// What a script's assignments and arguments do: numbers fit each other, an object its superclasses and interfaces,
  /// Nil every class, and everything a Variant and back.
  kImplicit,
  /// Also between whole numbers and enumerations, colours and Ptr's Nil, as callers in C++ may write them.
  kCodes,
  /// Also what a script converts with `CType(value, Type)`: Booleans and numbers, a superclass and its subclasses,
  /// interfaces.
  kExplicit,
};

/// How well a value of type `from` fits where `to` is wanted: 0 for the same type, more for a poorer fit, nothing when
/// it doesn't convert. For choosing among overloads.
std::optional<int> ConversionCost(Type from, Type to, Conversions allowed = Conversions::kImplicit);

/// The type in which arithmetic on numbers of these two types is done; nothing unless both are numbers.
std::optional<Type> CommonNumber(Type one, Type other);

}  // namespace quillbar::host
