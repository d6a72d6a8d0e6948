// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "interface/values.h"

namespace quillbar::host {

class ClassInfo;
class EnumerationInfo;

/// The basic kinds of script values. `Integer` and `UInteger` are not kinds of their own: they are the
/// 32-bit or 64-bit kind, whichever is as wide as a pointer.
enum class TypeKind : std::uint8_t {
  kNone,  // no value: the result of a Sub
  kNil,   // the type of the literal Nil
  kBoolean,
  kInt8,
  kInt16,
  kInt32,
  kInt64,
  kUInt8,
  kUInt16,
  kUInt32,
  kUInt64,
  kSingle,
  kDouble,
  kCurrency,  // a number of ten-thousandths
  kColor,
  kPtr,
  kString,
  kObject,
  kEnumeration,
  kVariant,  // a value of any type: its own type is that of what it holds
};

inline constexpr TypeKind kIntegerKind = sizeof(Integer) == 8 ? TypeKind::kInt64 : TypeKind::kInt32;
inline constexpr TypeKind kUIntegerKind = sizeof(Integer) == 8 ? TypeKind::kUInt64 : TypeKind::kUInt32;

constexpr bool IsInteger(TypeKind kind) { return kind >= TypeKind::kInt8 && kind <= TypeKind::kUInt64; }
constexpr bool IsSigned(TypeKind kind) { return kind >= TypeKind::kInt8 && kind <= TypeKind::kInt64; }
constexpr bool IsFloating(TypeKind kind) { return kind == TypeKind::kSingle || kind == TypeKind::kDouble; }
constexpr bool IsNumeric(TypeKind kind) { return IsInteger(kind) || IsFloating(kind) || kind == TypeKind::kCurrency; }

/// The width of an integer kind in bits; 0 for every other kind.
constexpr int BitWidth(TypeKind kind) {
  switch (kind) {
    case TypeKind::kInt8:
    case TypeKind::kUInt8:
      return 8;
    case TypeKind::kInt16:
    case TypeKind::kUInt16:
      return 16;
    case TypeKind::kInt32:
    case TypeKind::kUInt32:
      return 32;
    case TypeKind::kInt64:
    case TypeKind::kUInt64:
      return 64;
    default:
      return 0;
  }
}

/// A script type: a kind, the class or enumeration it names, and whether it is an array of that. Small
/// and copied freely; the classes and enumerations belong to the host's registry.
class Type {
 public:
  constexpr Type() = default;
  constexpr Type(TypeKind kind) : kind_(kind) {}  // NOLINT: a kind is the type of its name

  static constexpr Type Integer() { return kIntegerKind; }
  static constexpr Type Class(const ClassInfo &info) { return Type(TypeKind::kObject, &info); }
  static constexpr Type Enumeration(const EnumerationInfo &info) { return Type(TypeKind::kEnumeration, &info); }

  constexpr TypeKind kind() const { return IsArray() ? TypeKind::kNone : kind_; }
  constexpr bool IsArray() const { return rank_ > 0; }
  /// The number of an array's dimensions; 0 for other types.
  constexpr int Rank() const { return rank_; }
  constexpr bool IsNone() const { return kind_ == TypeKind::kNone && !IsArray(); }
  constexpr bool IsNil() const { return kind_ == TypeKind::kNil && !IsArray(); }
  constexpr bool IsString() const { return kind() == TypeKind::kString; }
  constexpr bool IsObject() const { return kind() == TypeKind::kObject; }
  constexpr bool IsEnumeration() const { return kind() == TypeKind::kEnumeration; }
  constexpr bool IsVariant() const { return kind() == TypeKind::kVariant; }

  /// Whether values of this type hold a reference: strings, objects and arrays.
  constexpr bool IsReference() const { return IsArray() || IsString() || IsObject(); }

  /// The class of an object type (or of the elements of an array of objects), else null.
  const ClassInfo *objectClass() const {
    return kind_ == TypeKind::kObject ? static_cast<const ClassInfo *>(info_) : nullptr;
  }
  /// The enumeration of an enumeration type (or of an array's elements), else null.
  const EnumerationInfo *enumeration() const {
    return kind_ == TypeKind::kEnumeration ? static_cast<const EnumerationInfo *>(info_) : nullptr;
  }

  /// The type of arrays of this type, with one dimension or as many as are given.
  constexpr Type ArrayOf(int rank = 1) const {
    Type array = *this;
    array.rank_ = static_cast<std::uint8_t>(rank);
    return array;
  }
  /// The type of an array's elements; this type itself if it isn't an array.
  constexpr Type Element() const {
    Type element = *this;
    element.rank_ = 0;
    return element;
  }

  /// The kind that a value of this type has in C: an enumeration is its underlying integer.
  TypeKind StorageKind() const;

  /// The name as scripts write it, for example "Integer", "Page.PageSizeEnum", "UInt16()".
  std::string Name() const;

  friend constexpr bool operator==(const Type &, const Type &) = default;

 private:
  constexpr Type(TypeKind kind, const void *info) : kind_(kind), info_(info) {}

  TypeKind kind_ = TypeKind::kNone;
  std::uint8_t rank_ = 0;
  const void *info_ = nullptr;
};

/// The kind that a built-in type name ("Integer", "single", "Byte" ...) stands for; kNone when the
/// name is not built in.
TypeKind BuiltInKind(std::string_view name);

/// The script name of a kind; "Integer" for the pointer-wide signed one.
std::string_view KindName(TypeKind kind);

}  // namespace quillbar::host
