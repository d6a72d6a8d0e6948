// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "host/runtime/type.h"

namespace quillbar::language {

/// How the interpreter holds the values of a type. The type says what the value means; six forms are
/// enough to hold them all.
enum class Representation : std::uint8_t {
  kNone,
  kInteger,  // std::int64_t: integers, Boolean, Color, enumerations; UInt64 and Ptr by their bits
  kReal,     // double: Single (already rounded to it) and Double
  kText,
  kObject,
  kArray,
  kVariant,  // host::Value, whatever it holds
};

/// The representation of a type's values.
constexpr Representation RepresentationOf(host::Type type) {
  if (type.IsArray()) return Representation::kArray;
  switch (type.kind()) {
    case host::TypeKind::kNone:
      return Representation::kNone;
    case host::TypeKind::kSingle:
    case host::TypeKind::kDouble:
      return Representation::kReal;
    case host::TypeKind::kString:
      return Representation::kText;
    case host::TypeKind::kVariant:
      return Representation::kVariant;
    case host::TypeKind::kNil:
    case host::TypeKind::kObject:
      return Representation::kObject;
    default:
      return Representation::kInteger;
  }
}

/// Whether values of this form hold a reference that must be released.
constexpr bool IsOwning(Representation representation) { return representation >= Representation::kText; }

}  // namespace quillbar::language
