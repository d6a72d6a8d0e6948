// SPDX-License-Identifier: MIT
// The members of Variants.

#include <cstdint>

#include "host/language/library/library.h"
#include "host/language/values/variant.h"

namespace quillbar::language {
namespace {

using host::StringHandle;
using host::Type;
using host::TypeKind;
using host::Value;

template <TypeKind kKind>
std::int64_t IntegerValue(const Value &value) {
  return variant::As(value, kKind).AsInteger();
}
std::int64_t CurrencyValue(const Value &value) { return variant::As(value, TypeKind::kCurrency).RawInteger(); }
double SingleValue(const Value &value) { return variant::As(value, TypeKind::kSingle).AsDouble(); }
double DoubleValue(const Value &value) { return variant::AsDouble(value); }
bool BooleanValue(const Value &value) { return variant::AsBoolean(value); }
StringHandle StringValue(const Value &value) { return variant::AsText(value); }

host::ObjectHandle DateTimeValue(Runtime &runtime, const Value &value) {
  return variant::As(value, Type::Class(runtime.Host().Class("DateTime"))).AsObject();
}

host::ObjectHandle ObjectValue(Runtime &runtime, const Value &value) {
  return variant::As(value, Type::Class(runtime.Host().Class("Object"))).AsObject();
}

bool IsNull(const Value &value) { return value.IsNil(); }
bool IsArray(const Value &value) { return value.type().IsArray(); }
std::int64_t TypeOf(const Value &value) { return variant::TypeNumber(value); }

std::int64_t ElementType(const Value &value) {
  if (value.type().IsArray()) return variant::TypeNumber(value.type().Element());
  throw LibraryError{ExceptionKind::kTypeMismatch, "this Variant doesn't hold an array"};
}

std::int64_t HashOf(const Value &value) { return static_cast<std::int32_t>(variant::Hash(value)); }

template <std::int64_t kNumber>
std::int64_t Constant() {
  return kNumber;
}

using namespace library;

constexpr LibraryFunction kVariantFunctions[] = {
    kFunction<"IsNumeric(value As Variant) As Boolean", &variant::IsNumeric>,
    kFunction<"VarType(value As Variant) As Integer", &TypeOf>,

    kMethod<"Variant", "Type() As Integer", &TypeOf>,
    kMethod<"Variant", "ArrayElementType() As Integer", &ElementType>,
    kMethod<"Variant", "IsNull() As Boolean", &IsNull>,
    kMethod<"Variant", "IsNumeric() As Boolean", &variant::IsNumeric>,
    kMethod<"Variant", "IsArray() As Boolean", &IsArray>,
    kMethod<"Variant", "Equals(other As Variant) As Boolean", &variant::AreEqual>,
    kMethod<"Variant", "Hash() As Integer", &HashOf>,
    kMethod<"Variant", "BooleanValue() As Boolean", &BooleanValue>,
    kMethod<"Variant", "ColorValue() As Color", &IntegerValue<TypeKind::kColor>>,
    kMethod<"Variant", "CurrencyValue() As Currency", &CurrencyValue>,
    kMethod<"Variant", "DateTimeValue() As DateTime", &DateTimeValue>,
    kMethod<"Variant", "DoubleValue() As Double", &DoubleValue>,
    kMethod<"Variant", "IntegerValue() As Integer", &IntegerValue<host::kIntegerKind>>,
    kMethod<"Variant", "Int32Value() As Int32", &IntegerValue<TypeKind::kInt32>>,
    kMethod<"Variant", "Int64Value() As Int64", &IntegerValue<TypeKind::kInt64>>,
    kMethod<"Variant", "ObjectValue() As Object", &ObjectValue>,
    kMethod<"Variant", "SingleValue() As Single", &SingleValue>,
    kMethod<"Variant", "StringValue() As String", &StringValue>,
    kMethod<"Variant", "ToString() As String", &StringValue>,
    kMethod<"Variant", "UInt32Value() As UInt32", &IntegerValue<TypeKind::kUInt32>>,
    kMethod<"Variant", "UInt64Value() As UInt64", &IntegerValue<TypeKind::kUInt64>>,

    kShared<"Variant", "TypeNil() As Integer", &Constant<0>>,
    kShared<"Variant", "TypeInt32() As Integer", &Constant<2>>,
    kShared<"Variant", "TypeInteger() As Integer", &Constant<sizeof(Integer) == 8 ? 3 : 2>>,
    kShared<"Variant", "TypeInt64() As Integer", &Constant<3>>,
    kShared<"Variant", "TypeSingle() As Integer", &Constant<4>>,
    kShared<"Variant", "TypeDouble() As Integer", &Constant<5>>,
    kShared<"Variant", "TypeCurrency() As Integer", &Constant<6>>,
    kShared<"Variant", "TypeString() As Integer", &Constant<8>>,
    kShared<"Variant", "TypeObject() As Integer", &Constant<9>>,
    kShared<"Variant", "TypeBoolean() As Integer", &Constant<11>>,
    kShared<"Variant", "TypeColor() As Integer", &Constant<16>>,
    kShared<"Variant", "TypePtr() As Integer", &Constant<26>>,
    kShared<"Variant", "TypeDateTime() As Integer", &Constant<38>>,
    kShared<"Variant", "TypeArray() As Integer", &Constant<variant::kArrayTypeNumber>>,
};

}  // namespace

std::span<const LibraryFunction> VariantFunctions() { return kVariantFunctions; }

}  // namespace quillbar::language
