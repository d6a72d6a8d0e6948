// SPDX-License-Identifier: MIT
#include "host/runtime/foreign_call.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <optional>
#include <stdexcept>
#include <type_traits>
#include <utility>

namespace quillbar::host {
namespace {

constexpr ForeignForm kIntegerForm = sizeof(Integer) == 8 ? ForeignForm::kInt64 : ForeignForm::kInt32;

template <class T>
T Take(const void *place) {
  T value;
  std::memcpy(&value, place, sizeof value);
  return value;
}

// The form of an argument by its C type. All references are addresses.
template <class Argument>
constexpr ForeignForm kFormOf = std::is_same_v<Argument, float>     ? ForeignForm::kSingle
                                : std::is_same_v<Argument, Integer> ? kIntegerForm
                                                                    : ForeignForm::kPtr;

template <class Result, class... Arguments, std::size_t... Index>
void CallWith(FunctionAddress address, Object instance, const ForeignSlot *slots, ForeignResult &result,
              std::index_sequence<Index...>) {
  const auto call = [&] {
    return reinterpret_cast<Result (*)(Object, Arguments...)>(address)(instance, Take<Arguments>(&slots[Index])...);
  };
  if constexpr (std::is_void_v<Result>) {
    call();
  } else if constexpr (std::is_same_v<Result, float>) {
    result.single = call();
  } else if constexpr (std::is_same_v<Result, Integer>) {
    result.word = static_cast<ffi_arg>(call());
  } else {
    result.pointer = call();
  }
}

template <class Result, class... Arguments>
void Call(FunctionAddress address, Object instance, const ForeignSlot *slots, ForeignResult &result) {
  CallWith<Result, Arguments...>(address, instance, slots, result, std::index_sequence_for<Arguments...>());
}

constexpr std::size_t kMostDirect = 6;

struct Shape {
  std::optional<ForeignForm> result;
  std::size_t count;
  std::array<ForeignForm, kMostDirect> forms;
  DirectCall call;
};

template <class Result, class... Arguments>
constexpr Shape ShapeOf() {
  std::optional<ForeignForm> result;
  if constexpr (!std::is_void_v<Result>) result = kFormOf<Result>;
  return {result, sizeof...(Arguments), {kFormOf<Arguments>...}, &Call<Result, Arguments...>};
}

constexpr std::array kShapes{
    ShapeOf<void>(),
    ShapeOf<void, float>(),
    ShapeOf<void, float, float>(),
    ShapeOf<void, float, float, float>(),
    ShapeOf<void, float, float, float, float>(),
    ShapeOf<void, float, float, float, float, float>(),
    ShapeOf<void, float, float, float, float, float, float>(),
    ShapeOf<void, void *>(),
    ShapeOf<void, void *, float>(),
    ShapeOf<void, void *, void *>(),
    ShapeOf<void, Integer>(),
    ShapeOf<void, Integer, Integer>(),
    ShapeOf<void, Integer, float>(),
    ShapeOf<void, Integer, void *>(),
    ShapeOf<float>(),
    ShapeOf<float, void *>(),
    ShapeOf<Integer>(),
    ShapeOf<void *>(),
    ShapeOf<void *, void *>(),
    ShapeOf<void *, Integer>(),
};

bool IsOfForm(ForeignForm given, ForeignForm known) {
  return given == known || (known == ForeignForm::kPtr && IsOwning(given));
}

}  // namespace

DirectCall FindDirectCall(std::span<const ForeignForm> forms, std::optional<ForeignForm> result) {
  for (const Shape &shape : kShapes) {
    const bool givesSame = result && shape.result ? IsOfForm(*result, *shape.result) : !result && !shape.result;
    if (givesSame && shape.count == forms.size() &&
        std::ranges::equal(forms, std::span(shape.forms).first(shape.count), &IsOfForm)) {
      return shape.call;
    }
  }
  return nullptr;
}

ffi_type *ForeignTypeOf(Type type) {
  if (type.IsNone()) return &ffi_type_void;
  if (type.IsReference()) return &ffi_type_pointer;
  switch (type.StorageKind()) {
    case TypeKind::kBoolean:
    case TypeKind::kInt8:
      return &ffi_type_sint8;
    case TypeKind::kInt16:
      return &ffi_type_sint16;
    case TypeKind::kInt32:
      return &ffi_type_sint32;
    case TypeKind::kInt64:
    case TypeKind::kCurrency:
      return &ffi_type_sint64;
    case TypeKind::kUInt8:
      return &ffi_type_uint8;
    case TypeKind::kUInt16:
      return &ffi_type_uint16;
    case TypeKind::kUInt32:
    case TypeKind::kColor:
      return &ffi_type_uint32;
    case TypeKind::kUInt64:
      return &ffi_type_uint64;
    case TypeKind::kSingle:
      return &ffi_type_float;
    case TypeKind::kDouble:
      return &ffi_type_double;
    default:
      return &ffi_type_pointer;
  }
}

ForeignForm ForeignFormOf(Type type) {
  if (type.IsArray()) return ForeignForm::kArray;
  switch (type.StorageKind()) {
    case TypeKind::kBoolean:
    case TypeKind::kInt8:
    case TypeKind::kUInt8:
      return ForeignForm::kInt8;
    case TypeKind::kInt16:
    case TypeKind::kUInt16:
      return ForeignForm::kInt16;
    case TypeKind::kInt32:
    case TypeKind::kUInt32:
    case TypeKind::kColor:
      return ForeignForm::kInt32;
    case TypeKind::kInt64:
    case TypeKind::kUInt64:
    case TypeKind::kCurrency:
      return ForeignForm::kInt64;
    case TypeKind::kSingle:
      return ForeignForm::kSingle;
    case TypeKind::kDouble:
      return ForeignForm::kDouble;
    case TypeKind::kString:
      return ForeignForm::kString;
    case TypeKind::kObject:
      return ForeignForm::kObject;
    case TypeKind::kVariant:
      return ForeignForm::kVariant;
    default:
      return ForeignForm::kPtr;
  }
}

void StoreForeign(const Value &value, Type type, void *place) {
  const ForeignForm form = ForeignFormOf(type);
  ForeignSlot slot;
  if (form == ForeignForm::kSingle || form == ForeignForm::kDouble) {
    slot.PutReal(form, value.RawReal());
  } else if (form == ForeignForm::kVariant) {
    slot.pointer = const_cast<Value *>(&value);
  } else if (IsOwning(form)) {
    slot.pointer = value.RawPointer();
  } else {
    slot.PutInteger(form, value.RawInteger());
  }
  std::memcpy(place, &slot, ForeignTypeOf(type)->size);
}

Value LoadForeign(Type type, const void *place) {
  switch (type.StorageKind()) {
    case TypeKind::kBoolean:
      return Value(Take<std::int8_t>(place) != 0);
    case TypeKind::kInt8:
      return Value::OfInteger(type, Take<std::int8_t>(place));
    case TypeKind::kInt16:
      return Value::OfInteger(type, Take<std::int16_t>(place));
    case TypeKind::kInt32:
      return Value::OfInteger(type, Take<std::int32_t>(place));
    case TypeKind::kInt64:
    case TypeKind::kUInt64:
    case TypeKind::kCurrency:
      return Value::OfInteger(type, Take<std::int64_t>(place));
    case TypeKind::kUInt8:
      return Value::OfInteger(type, Take<std::uint8_t>(place));
    case TypeKind::kUInt16:
      return Value::OfInteger(type, Take<std::uint16_t>(place));
    case TypeKind::kUInt32:
    case TypeKind::kColor:
      return Value::OfInteger(type, Take<std::uint32_t>(place));
    case TypeKind::kSingle:
      return Value(Take<float>(place));
    case TypeKind::kDouble:
      return Value(Take<double>(place));
    case TypeKind::kPtr:
      return Value::OfPtr(Take<void *>(place));
    default:
      return {};
  }
}

Value LoadForeignResult(Type type, const ForeignResult &result) {
  if (type.IsNone()) return {};
  switch (type.StorageKind()) {
    case TypeKind::kBoolean:
      return Value(static_cast<std::int8_t>(result.word) != 0);
    case TypeKind::kInt64:
    case TypeKind::kUInt64:
    case TypeKind::kCurrency:
      return Value::OfInteger(type, result.int64);
    case TypeKind::kSingle:
      return Value(result.single);
    case TypeKind::kDouble:
      return Value(result.real);
    case TypeKind::kPtr:
      return Value::OfPtr(result.pointer);
    default:
      return Value::OfInteger(type, static_cast<std::int64_t>(result.word));
  }
}

CallInterface::CallInterface(std::span<const ParameterInfo> parameters, Type result, bool hasInstance) {
  types_.reserve(parameters.size() + 1);
  if (hasInstance) types_.push_back(&ffi_type_pointer);
  for (const ParameterInfo &parameter : parameters) {
    types_.push_back(parameter.byRef ? &ffi_type_pointer : ForeignTypeOf(parameter.type));
  }
  const ffi_status status =
      ffi_prep_cif(&cif_, FFI_DEFAULT_ABI, static_cast<unsigned>(types_.size()), ForeignTypeOf(result), types_.data());
  if (status != FFI_OK) throw std::logic_error("libffi doesn't know this calling convention");
}

}  // namespace quillbar::host
