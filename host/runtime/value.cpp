// SPDX-License-Identifier: MIT
#include "host/runtime/value.h"

#include "host/runtime/class_model.h"
#include "host/runtime/currency.h"
#include "host/runtime/host_error.h"
#include "host/runtime/numbers.h"

namespace quillbar::host {
namespace {

bool HoldsNumber(TypeKind kind) {
  return IsNumeric(kind) || kind == TypeKind::kBoolean || kind == TypeKind::kColor || kind == TypeKind::kEnumeration;
}

}  // namespace

Value Value::Nil() {
  Value value;
  value.type_ = TypeKind::kNil;
  value.payload_.pointer = nullptr;
  return value;
}

Value Value::Zero(Type type) {
  if (type.IsArray()) return Value(ArrayHandle::CreateEmpty(type));
  if (type.IsVariant()) return Nil();
  Value value;
  value.type_ = type;
  switch (type.kind()) {
    case TypeKind::kSingle:
      value.payload_.single = 0;
      break;
    case TypeKind::kDouble:
      value.payload_.real = 0;
      break;
    case TypeKind::kString:
    case TypeKind::kObject:
    case TypeKind::kPtr:
      value.payload_.pointer = nullptr;
      break;
    default:
      break;
  }
  return value;
}

Value Value::OfInteger(Type type, std::int64_t number) {
  if (type.kind() == TypeKind::kPtr) return OfPtr(reinterpret_cast<void *>(static_cast<std::intptr_t>(number)));
  Value value;
  value.type_ = type;
  value.payload_.integer = NarrowInteger(type.StorageKind(), number);
  return value;
}

Value Value::OfReal(Type type, double number) {
  return type.kind() == TypeKind::kSingle ? Value(static_cast<float>(number)) : Value(number);
}

Value Value::OfPtr(void *address) {
  Value value;
  value.type_ = TypeKind::kPtr;
  value.payload_.pointer = address;
  return value;
}

Value::Value(Color color) noexcept : type_(TypeKind::kColor) { payload_.integer = static_cast<std::int64_t>(color); }
Value::Value(const char *utf8) : Value(std::string_view(utf8)) {}
Value::Value(std::string_view utf8) : Value(StringHandle::FromUtf8(utf8)) {}
Value::Value(const std::string &utf8) : Value(std::string_view(utf8)) {}
Value::Value(StringHandle string) noexcept : type_(TypeKind::kString) { payload_.pointer = string.Detach(); }

Value::Value(const ObjectHandle &object) : Value(ObjectHandle(object)) {}
Value::Value(ObjectHandle &&object) : type_(TypeKind::kNil) {
  payload_.pointer = nullptr;
  if (object.IsNil()) return;
  type_ = Type::Class(object.Class());
  payload_.pointer = object.Detach();
}

Value::Value(ArrayHandle array) noexcept : type_(array.ArrayType()) { payload_.pointer = array.Detach(); }

Value::Value(const Value &other) : type_(other.type_), payload_(other.payload_) { Retain(); }

Value::Value(Value &&other) noexcept : type_(other.type_), payload_(other.payload_) { other.type_ = Type(); }

Value &Value::operator=(const Value &other) {
  if (this != &other) *this = Value(other);
  return *this;
}

Value &Value::operator=(Value &&other) noexcept {
  std::swap(type_, other.type_);
  std::swap(payload_, other.payload_);
  return *this;
}

template <class Action>
void Value::WithReference(Action action) const {
  if (!type_.IsReference() || payload_.pointer == nullptr) return;
  if (type_.IsArray()) {
    action(static_cast<Array>(payload_.pointer));
  } else if (type_.IsString()) {
    action(static_cast<String>(payload_.pointer));
  } else {
    action(static_cast<Object>(payload_.pointer));
  }
}

void Value::Retain() const {
  WithReference([](auto pointer) { host::Retain(pointer); });
}

void Value::Release() noexcept {
  WithReference([](auto pointer) { host::Release(pointer); });
}

bool Value::IsNil() const { return type_.IsNil() || (type_.IsObject() && payload_.pointer == nullptr); }

void Value::Mismatch(std::string_view wanted) const {
  throw HostError(ErrorKind::kTypeMismatch,
                  "a value of type " + type_.Name() + " was given where " + std::string(wanted) + " is needed");
}

bool Value::AsBoolean() const { return AsInteger() != 0; }

std::int64_t Value::AsInteger() const {
  if (!HoldsNumber(type_.kind())) Mismatch("a number");
  if (type_.kind() == TypeKind::kCurrency) return currency::ToInteger(payload_.integer);
  return IsFloating(type_.kind()) ? TruncateRealTo(TypeKind::kInt64, RawReal()) : payload_.integer;
}

double Value::AsDouble() const {
  if (!HoldsNumber(type_.kind())) Mismatch("a number");
  if (type_.kind() == TypeKind::kCurrency) return currency::ToReal(payload_.integer);
  return IsFloating(type_.kind()) ? RawReal() : RealFromInteger(type_.StorageKind(), payload_.integer);
}

float Value::AsSingle() const {
  return type_.kind() == TypeKind::kSingle ? payload_.single : static_cast<float>(AsDouble());
}

Color Value::AsColor() const { return Color{static_cast<std::uint32_t>(AsInteger())}; }

void *Value::AsPtr() const {
  if (type_.IsNil()) return nullptr;
  if (type_.kind() != TypeKind::kPtr) Mismatch("a Ptr");
  return payload_.pointer;
}

StringHandle Value::AsString() const {
  if (!type_.IsString()) Mismatch("a String");
  return StringHandle(static_cast<String>(payload_.pointer));
}

ObjectHandle Value::AsObject() const {
  if (type_.IsNil()) return {};
  if (!type_.IsObject()) Mismatch("an object");
  return ObjectHandle(static_cast<Object>(payload_.pointer));
}

ArrayHandle Value::AsArray() const {
  if (!type_.IsArray()) Mismatch("an array");
  return ArrayHandle(static_cast<Array>(payload_.pointer));
}

Value Value::ConvertedTo(Type target) const {
  if (target == type_) return *this;
  if (target.IsVariant() && !IsNone()) return IsNil() ? Nil() : *this;
  const auto refuse = [&] { Mismatch(target.IsArray() ? "an array of type " + target.Name() : target.Name()); };
  if (target.IsArray() || type_.IsArray()) refuse();
  switch (target.kind()) {
    case TypeKind::kSingle:
      return Value(AsSingle());
    case TypeKind::kDouble:
      return Value(AsDouble());
    case TypeKind::kString:
      refuse();
      break;
    case TypeKind::kCurrency:
      if (!HoldsNumber(type_.kind())) refuse();
      if (IsFloating(type_.kind())) return OfInteger(target, currency::FromReal(RawReal()));
      return OfInteger(target, currency::FromInteger(payload_.integer, type_.StorageKind() == TypeKind::kUInt64));
    case TypeKind::kPtr:
      return OfPtr(AsPtr());
    case TypeKind::kNone:
    case TypeKind::kNil:
      if (!IsNil()) refuse();
      return Nil();
    case TypeKind::kObject: {
      if (IsNil()) return Zero(target);
      if (!type_.IsObject()) refuse();
      const ObjectHandle object = AsObject();
      if (target.objectClass() != nullptr && !object.Class().IsSubclassOf(*target.objectClass())) refuse();
      return *this;
    }
    default:
      break;
  }
  if (!HoldsNumber(type_.kind())) refuse();
  if (IsFloating(type_.kind())) return OfInteger(target, TruncateRealTo(target.StorageKind(), RawReal()));
  return OfInteger(target, AsInteger());
}

bool operator==(const Value &a, const Value &b) {
  if (a.type_ != b.type_) return false;
  switch (a.type_.kind()) {
    case TypeKind::kSingle:
      return a.payload_.single == b.payload_.single;
    case TypeKind::kDouble:
      return a.payload_.real == b.payload_.real;
    case TypeKind::kString: {
      const StringHandle left = a.AsString();
      const StringHandle right = b.AsString();
      return left.Bytes() == right.Bytes() && left.Encoding() == right.Encoding();
    }
    case TypeKind::kObject:
    case TypeKind::kPtr:
      return a.payload_.pointer == b.payload_.pointer;
    default:
      break;
  }
  if (a.type_.IsArray()) return a.payload_.pointer == b.payload_.pointer;
  return a.type_.IsNone() || a.type_.IsNil() || a.payload_.integer == b.payload_.integer;
}

}  // namespace quillbar::host
