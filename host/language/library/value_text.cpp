// SPDX-License-Identifier: MIT
#include "host/language/library/value_text.h"

#include <fmt/format.h>

#include <cstdint>

#include "host/language/library/number_format.h"
#include "host/runtime/currency.h"
#include "host/runtime/numbers.h"

namespace quillbar::language {

host::StringHandle TextOf(const host::Value &value) {
  const host::Type type = value.type();
  if (type.IsString()) return value.AsString();
  std::string text;
  if (host::IsFloating(type.kind())) {
    text = FormatShort(value.RawReal(), type.kind() == host::TypeKind::kSingle);
  } else if (type.kind() == host::TypeKind::kCurrency) {
    text = host::currency::ToText(value.RawInteger());
  } else if (type.kind() == host::TypeKind::kBoolean) {
    text = value.AsBoolean() ? "True" : "False";
  } else if (type.kind() == host::TypeKind::kColor) {
    text = fmt::format("&h{:08X}", static_cast<std::uint32_t>(value.AsInteger()));
  } else if (type.StorageKind() == host::TypeKind::kUInt64) {
    text = fmt::format("{}", static_cast<std::uint64_t>(value.AsInteger()));
  } else {
    text = fmt::format("{}", value.AsInteger());
  }
  return host::StringHandle::FromUtf8(text);
}

}  // namespace quillbar::language
