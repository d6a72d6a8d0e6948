// SPDX-License-Identifier: MIT
#include "host/language/tree/numbers.h"

#include <bit>

namespace quillbar::language {

host::Value BoxInteger(host::Type type, std::int64_t number) {
  switch (type.kind()) {
    case host::TypeKind::kBoolean:
      return host::Value(number != 0);
    case host::TypeKind::kPtr:
      return host::Value::OfPtr(std::bit_cast<void *>(static_cast<std::intptr_t>(number)));
    default:
      return host::Value::OfInteger(type, number);
  }
}

host::Value BoxReal(host::Type type, double number) {
  if (type.kind() == host::TypeKind::kSingle) return host::Value(static_cast<float>(number));
  return host::Value(number);
}

std::int64_t UnboxInteger(const host::Value &value) {
  if (value.type().kind() == host::TypeKind::kPtr) return std::bit_cast<std::intptr_t>(value.RawPointer());
  return value.RawInteger();
}

double UnboxReal(const host::Value &value) {
  return value.type().kind() == host::TypeKind::kSingle ? static_cast<double>(value.RawSingle()) : value.RawDouble();
}

}  // namespace quillbar::language
