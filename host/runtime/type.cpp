// SPDX-License-Identifier: MIT
#include "host/runtime/type.h"

#include <array>

#include "host/runtime/class_model.h"
#include "interface/declaration.h"

namespace quillbar::host {
namespace {

struct NamedKind {
  std::string_view name;
  TypeKind kind;
};

// The first name of a kind is the one that messages show.
constexpr std::array kNames{
    NamedKind{"Integer", kIntegerKind},         NamedKind{"UInteger", kUIntegerKind},
    NamedKind{"Boolean", TypeKind::kBoolean},   NamedKind{"Int8", TypeKind::kInt8},
    NamedKind{"Int16", TypeKind::kInt16},       NamedKind{"Int32", TypeKind::kInt32},
    NamedKind{"Int64", TypeKind::kInt64},       NamedKind{"UInt8", TypeKind::kUInt8},
    NamedKind{"UInt16", TypeKind::kUInt16},     NamedKind{"UInt32", TypeKind::kUInt32},
    NamedKind{"UInt64", TypeKind::kUInt64},     NamedKind{"Byte", TypeKind::kUInt8},
    NamedKind{"Single", TypeKind::kSingle},     NamedKind{"Double", TypeKind::kDouble},
    NamedKind{"Currency", TypeKind::kCurrency}, NamedKind{"Color", TypeKind::kColor},
    NamedKind{"Ptr", TypeKind::kPtr},           NamedKind{"String", TypeKind::kString},
    NamedKind{"Variant", TypeKind::kVariant},
};

}  // namespace

TypeKind BuiltInKind(std::string_view name) {
  for (const NamedKind &named : kNames) {
    if (SameName(named.name, name)) return named.kind;
  }
  return TypeKind::kNone;
}

std::string_view KindName(TypeKind kind) {
  for (const NamedKind &named : kNames) {
    if (named.kind == kind) return named.name;
  }
  switch (kind) {
    case TypeKind::kNil:
      return "Nil";
    case TypeKind::kObject:
      return "Object";
    case TypeKind::kEnumeration:
      return "Enumeration";
    default:
      return "nothing";
  }
}

TypeKind Type::StorageKind() const {
  if (const EnumerationInfo *info = enumeration()) return info->underlying;
  return kind_;
}

std::string Type::Name() const {
  std::string name;
  if (objectClass() != nullptr) {
    name = objectClass()->name;
  } else if (enumeration() != nullptr) {
    name = enumeration()->qualifiedName;
  } else {
    name = KindName(kind_);
  }
  if (IsArray()) name += "(" + std::string(static_cast<std::size_t>(rank_ - 1), ',') + ")";
  return name;
}

}  // namespace quillbar::host
