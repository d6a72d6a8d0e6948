// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <utility>

#include "host/language/tree/representation.h"
#include "host/runtime/handles.h"
#include "host/runtime/value.h"

namespace quillbar::language {

/// The storage of one variable. The variable's type says which member is in use, so the cell doesn't record it; a cell
/// of zero bits is zero, the empty string or Nil.
union Cell {
  std::int64_t integer = 0;
  double real;
  String text;
  Object object;
  Array array;
  host::Value *variant;  // null: Nil
  Cell *reference;       // a ByRef parameter: the caller's variable

  host::StringHandle Text() const { return host::StringHandle(text); }
  host::ObjectHandle ObjectValue() const { return host::ObjectHandle(object); }
  host::ArrayHandle ArrayValue() const { return host::ArrayHandle(array); }

  // The old reference is released last: destroying its object may run a handler that reads this variable.
  void SetText(host::StringHandle value) { host::StringHandle::Adopt(std::exchange(text, value.Detach())); }
  void SetObject(host::ObjectHandle value) { host::ObjectHandle::Adopt(std::exchange(object, value.Detach())); }
  host::Value VariantValue() const { return variant == nullptr ? host::Value::Nil() : *variant; }
  void SetVariant(host::Value value) {
    const std::unique_ptr<host::Value> old(
        std::exchange(variant, value.IsNil() ? nullptr : new host::Value(std::move(value))));
  }
  void SetArray(host::ArrayHandle value) { host::ArrayHandle::Adopt(std::exchange(array, value.Detach())); }

  /// Releases what the cell holds and leaves it zero.
  void Clear(Representation representation) {
    switch (representation) {
      case Representation::kText:
        SetText({});
        break;
      case Representation::kObject:
        SetObject({});
        break;
      case Representation::kArray:
        SetArray({});
        break;
      case Representation::kVariant:
        SetVariant(host::Value::Nil());
        break;
      default:
        integer = 0;
        break;
    }
  }
};

}  // namespace quillbar::language
