// SPDX-License-Identifier: MIT
#include "host/language/values/variant.h"

#include <fmt/format.h>

#include <bit>
#include <charconv>
#include <cmath>
#include <functional>

#include "host/language/library/number_format.h"
#include "host/language/library/value_text.h"
#include "host/language/run/exceptions.h"
#include "host/language/run/runtime.h"
#include "host/runtime/class_model.h"
#include "host/runtime/conversion.h"
#include "host/runtime/currency.h"
#include "host/runtime/numbers.h"
#include "host/runtime/text.h"

namespace quillbar::language::variant {
namespace {

using host::StringHandle;
using host::Type;
using host::TypeKind;
using host::Value;
using syntax::BinaryOperator;

/// Numbers and what counts as one.
bool HoldsNumber(Type type) {
  return host::IsNumeric(type.kind()) || type.IsEnumeration() || type.kind() == TypeKind::kBoolean ||
         type.kind() == TypeKind::kColor;
}

bool IsMoment(const Value &value) {
  if (!value.type().IsObject() || value.IsNil()) return false;
  for (const host::ClassInfo *info = &value.AsObject().Class(); info != nullptr; info = info->superclass) {
    if (info->isBuiltIn && info->name == "DateTime") return true;
  }
  return false;
}

Value PropertyOf(const Value &object, std::string_view name) {
  return host::Host::Current()->Get(object.AsObject(), name);
}

double SecondsOf(const Value &moment) { return PropertyOf(moment, "SecondsFrom1970").AsDouble(); }

std::string Described(const Value &value) {
  if (value.IsNil()) return "Nil";
  return value.type().IsArray() ? fmt::format("an array of {}", value.type().Element().Name()) : value.type().Name();
}

[[noreturn]] void FailMismatch(const Value &value, std::string_view wanted) {
  throw LibraryError{ExceptionKind::kTypeMismatch,
                     fmt::format("this Variant holds {}, not {}", Described(value), wanted)};
}

/// The number of a text that is one and nothing else.
std::optional<double> WholeNumber(const StringHandle &text) {
  const std::string utf8 = text.Utf8();
  const std::size_t first = utf8.find_first_not_of(" \t\r\n");
  if (first == std::string::npos) return std::nullopt;
  const std::size_t last = utf8.find_last_not_of(" \t\r\n");
  std::string_view written = std::string_view(utf8).substr(first, last + 1 - first);
  if (written.starts_with("&")) {
    const bool isHexadecimal = written.size() > 2 && (written[1] == 'h' || written[1] == 'H') &&
                               written.find_first_not_of("0123456789ABCDEFabcdef", 2) == std::string_view::npos;
    return isHexadecimal ? std::optional(ParseNumber(written)) : std::nullopt;
  }
  if (written.starts_with("+")) written.remove_prefix(1);
  if (written.find_first_not_of("0123456789.eE+-") != std::string_view::npos) return std::nullopt;
  double number = 0;
  const auto [end, error] = std::from_chars(written.data(), written.data() + written.size(), number);
  if (end != written.data() + written.size() || error == std::errc::invalid_argument) return std::nullopt;
  return ParseNumber(written);
}

int Sign(double a, double b) { return a < b ? -1 : a > b ? 1 : 0; }

int CompareNumbers(const Value &one, const Value &other) {
  const auto isWhole = [](TypeKind kind) { return !host::IsFloating(kind) && kind != TypeKind::kCurrency; };
  if (one.type() == other.type() && !host::IsFloating(one.type().kind()) &&
      one.type().StorageKind() != TypeKind::kUInt64) {
    return one.RawInteger() < other.RawInteger() ? -1 : one.RawInteger() > other.RawInteger() ? 1 : 0;
  }
  const bool areWhole = isWhole(one.type().kind()) && isWhole(other.type().kind());
  if (!areWhole) return Sign(one.AsDouble(), other.AsDouble());
  const bool oneIsWide = one.type().StorageKind() == TypeKind::kUInt64;
  const bool otherIsWide = other.type().StorageKind() == TypeKind::kUInt64;
  const std::int64_t a = one.AsInteger();
  const std::int64_t b = other.AsInteger();
  // A negative number is below every UInt64; two numbers of one sign are in the order of their bits.
  const bool aIsNegative = a < 0 && !oneIsWide;
  const bool bIsNegative = b < 0 && !otherIsWide;
  if (aIsNegative != bIsNegative) return aIsNegative ? -1 : 1;
  const auto x = static_cast<std::uint64_t>(a);
  const auto y = static_cast<std::uint64_t>(b);
  return x < y ? -1 : x > y ? 1 : 0;
}

int CompareTexts(const StringHandle &one, const StringHandle &other) {
  return host::text::Compare(one, other, host::text::Comparison::kIgnoreCase);
}

bool AreIdentical(const Value &one, const Value &other) {
  return one.type().IsArray() == other.type().IsArray() && one.RawPointer() == other.RawPointer();
}

/// A value as a number for arithmetic.
Value AsOperand(BinaryOperator operation, const Value &value) {
  const Type type = value.type();
  if (value.IsNil()) return Value(Integer{0});
  if (host::IsNumeric(type.kind())) return value;
  if (HoldsNumber(type)) return value.ConvertedTo(type.StorageKind() == TypeKind::kUInt64 ? type : Type::Integer());
  if (type.IsString()) {
    if (const std::optional<double> number = WholeNumber(value.AsString())) return Value(*number);
    throw LibraryError{
        ExceptionKind::kTypeMismatch,
        fmt::format("\"{}\" takes numbers, but this Variant holds a text that isn't one", syntax::Spelling(operation))};
  }
  throw LibraryError{ExceptionKind::kTypeMismatch,
                     fmt::format("\"{}\" takes numbers or texts, but this Variant holds {}",
                                 syntax::Spelling(operation), Described(value))};
}

double ComputeReal(BinaryOperator operation, double a, double b) {
  switch (operation) {
    case BinaryOperator::kAdd:
      return a + b;
    case BinaryOperator::kSubtract:
      return a - b;
    case BinaryOperator::kMultiply:
      return a * b;
    case BinaryOperator::kDivide:
      return a / b;
    case BinaryOperator::kModulo:
      return std::fmod(a, b);
    default:
      return std::pow(a, b);
  }
}

std::int64_t ComputeInteger(BinaryOperator operation, Type type, std::int64_t a, std::int64_t b) {
  const auto x = static_cast<std::uint64_t>(a);
  const auto y = static_cast<std::uint64_t>(b);
  switch (operation) {
    case BinaryOperator::kAdd:
      return static_cast<std::int64_t>(x + y);
    case BinaryOperator::kSubtract:
      return static_cast<std::int64_t>(x - y);
    case BinaryOperator::kMultiply:
      return static_cast<std::int64_t>(x * y);
    default:
      break;
  }
  const bool isModulo = operation == BinaryOperator::kModulo;
  if (b == 0)
    throw LibraryError{ExceptionKind::kDivideByZero, type.kind() == TypeKind::kCurrency
                                                         ? "an amount was divided by zero"
                                                         : "an integer was divided by zero"};
  if (type.kind() == TypeKind::kUInt64) return static_cast<std::int64_t>(isModulo ? x % y : x / y);
  if (b == -1) return isModulo ? 0 : static_cast<std::int64_t>(0 - x);
  return isModulo ? a % b : a / b;
}

}  // namespace

StringHandle AsText(const Value &value) {
  if (value.IsNil()) return {};
  if (value.type().IsString() || HoldsNumber(value.type())) return TextOf(value);
  if (IsMoment(value)) return PropertyOf(value, "SQLDateTime").AsString();
  FailMismatch(value, "a text");
}

double AsDouble(const Value &value) {
  if (value.IsNil()) return 0;
  if (HoldsNumber(value.type())) return value.AsDouble();
  if (value.type().IsString()) return ParseNumber(value.Utf8());
  if (IsMoment(value)) return SecondsOf(value);
  FailMismatch(value, "a number");
}

std::int64_t AsInteger(const Value &value) {
  if (value.IsNil()) return 0;
  if (HoldsNumber(value.type())) return value.AsInteger();
  if (value.type().IsString()) return ParseInteger(value.Utf8());
  return TruncateRealTo(TypeKind::kInt64, AsDouble(value));
}

bool AsBoolean(const Value &value) {
  if (value.type().IsString()) {
    return CompareTexts(value.AsString(), StringHandle::FromUtf8("true")) == 0 || ParseNumber(value.Utf8()) != 0;
  }
  if (host::IsFloating(value.type().kind())) return value.AsDouble() != 0;
  return AsInteger(value) != 0;
}

Value As(const Value &value, Type target) {
  if (target.IsVariant() || value.type() == target) return value;
  if (target.IsArray()) {
    if (value.IsNil()) return Value::Zero(target);
    FailMismatch(value, fmt::format("an array of {}", target.Element().Name()));
  }
  if (value.type().IsArray()) FailMismatch(value, target.Name());
  switch (target.kind()) {
    case TypeKind::kString:
      return AsText(value);
    case TypeKind::kBoolean:
      return Value(AsBoolean(value));
    case TypeKind::kSingle:
    case TypeKind::kDouble:
      return Value::OfReal(target, AsDouble(value));
    case TypeKind::kCurrency:
      if (value.type().IsString()) return Value::OfInteger(target, host::currency::FromText(value.Utf8()));
      if (HoldsNumber(value.type())) return value.ConvertedTo(target);
      return Value::OfInteger(target, host::currency::FromReal(AsDouble(value)));
    case TypeKind::kObject:
      if (value.IsNil()) return Value::Zero(target);
      if (!value.type().IsObject()) FailMismatch(value, fmt::format("an object of class {}", target.Name()));
      if (!value.AsObject().Class().IsSubclassOf(*target.objectClass())) {
        throw LibraryError{ExceptionKind::kIllegalCast,
                           fmt::format("this Variant holds a {}, not a {}", value.AsObject().Class().name,
                                       target.objectClass()->name)};
      }
      return value;
    case TypeKind::kPtr:
      if (value.IsNil()) return Value::OfPtr(nullptr);
      FailMismatch(value, "a Ptr");
    case TypeKind::kNone:
    case TypeKind::kNil:
      FailMismatch(value, "Nil");
    default:
      break;
  }
  if (host::IsFloating(value.type().kind())) {
    return Value::OfInteger(target, TruncateRealTo(target.StorageKind(), value.AsDouble()));
  }
  return Value::OfInteger(target, AsInteger(value));
}

bool IsNumeric(const Value &value) {
  if (value.type().IsString()) return WholeNumber(value.AsString()).has_value();
  return host::IsNumeric(value.type().kind()) || value.type().IsEnumeration();
}

std::int64_t TypeNumber(Type type) {
  switch (type.StorageKind()) {
    case TypeKind::kInt8:
    case TypeKind::kInt16:
    case TypeKind::kInt32:
    case TypeKind::kUInt8:
    case TypeKind::kUInt16:
      return 2;
    case TypeKind::kUInt32:
    case TypeKind::kInt64:
    case TypeKind::kUInt64:
      return 3;
    case TypeKind::kSingle:
      return 4;
    case TypeKind::kDouble:
      return 5;
    case TypeKind::kCurrency:
      return 6;
    case TypeKind::kString:
      return 8;
    case TypeKind::kObject:
      return type.objectClass()->isBuiltIn && type.objectClass()->name == "DateTime" ? 38 : 9;
    case TypeKind::kBoolean:
      return 11;
    case TypeKind::kColor:
      return 16;
    case TypeKind::kPtr:
      return 26;
    default:
      return 0;
  }
}

std::int64_t TypeNumber(const Value &value) {
  if (value.IsNil()) return 0;
  if (value.type().IsArray()) return kArrayTypeNumber | TypeNumber(value.type().Element());
  return IsMoment(value) ? 38 : TypeNumber(value.type());
}

bool AreSameKey(const Value &one, const Value &other, bool isCaseSensitive) {
  if (one.IsNil() || other.IsNil()) return one.IsNil() && other.IsNil();
  if (one.type().IsString() || other.type().IsString()) {
    using host::text::Comparison;
    const Comparison comparison = isCaseSensitive ? Comparison::kCaseSensitive : Comparison::kIgnoreCase;
    if (one.type() != other.type()) return false;
    return one.RawPointer() == other.RawPointer() ||
           host::text::Compare(one.AsString(), other.AsString(), comparison) == 0;
  }
  const bool oneIsNumber = HoldsNumber(one.type());
  if (oneIsNumber != HoldsNumber(other.type())) return false;
  if (oneIsNumber) return CompareNumbers(one, other) == 0;
  if (IsMoment(one) && IsMoment(other)) return SecondsOf(one) == SecondsOf(other);
  return AreIdentical(one, other);
}

std::size_t Hash(const Value &value) {
  if (value.IsNil()) return 0;
  if (value.type().IsString()) return host::text::Hash(value.AsString());
  // Numbers that are equal are equal as Doubles too.
  const auto mix = [](double number) {
    std::uint64_t bits = std::bit_cast<std::uint64_t>(number == 0 ? 0.0 : number);
    bits = (bits ^ bits >> 32) * 0x9E3779B97F4A7C15;
    return static_cast<std::size_t>(bits ^ bits >> 29);
  };
  if (HoldsNumber(value.type())) return mix(value.AsDouble());
  if (IsMoment(value)) return mix(SecondsOf(value));
  return std::hash<const void *>()(value.RawPointer());
}

std::optional<int> Compare(const Value &one, const Value &other) {
  if (one.IsNil() || other.IsNil()) return static_cast<int>(other.IsNil()) - static_cast<int>(one.IsNil());
  const bool oneIsNumber = HoldsNumber(one.type());
  const bool otherIsNumber = HoldsNumber(other.type());
  const bool oneIsText = one.type().IsString();
  const bool otherIsText = other.type().IsString();
  if (oneIsNumber && otherIsNumber) return CompareNumbers(one, other);
  if (oneIsText && otherIsText) return CompareTexts(one.AsString(), other.AsString());
  if (oneIsText && otherIsNumber) {
    const std::optional<double> number = WholeNumber(one.AsString());
    return number ? Sign(*number, other.AsDouble()) : CompareTexts(one.AsString(), TextOf(other));
  }
  if (oneIsNumber && otherIsText) return -*Compare(other, one);
  if (IsMoment(one) && IsMoment(other)) return Sign(SecondsOf(one), SecondsOf(other));
  const bool areReferences = !oneIsNumber && !otherIsNumber && !oneIsText && !otherIsText;
  return areReferences && AreIdentical(one, other) ? std::optional(0) : std::nullopt;
}

bool AreEqual(const Value &one, const Value &other) {
  // Not-a-number has no place in the order, and equals nothing.
  const auto isNan = [](const Value &value) {
    return host::IsFloating(value.type().kind()) && std::isnan(value.AsDouble());
  };
  return !isNan(one) && !isNan(other) && Compare(one, other) == 0;
}

std::int64_t ComputeCurrency(BinaryOperator operation, std::int64_t one, std::int64_t other) {
  switch (operation) {
    case BinaryOperator::kAdd:
      return host::currency::Add(one, other);
    case BinaryOperator::kSubtract:
      return host::currency::Subtract(one, other);
    case BinaryOperator::kMultiply:
      return host::currency::Multiply(one, other);
    default:
      return ComputeInteger(operation, TypeKind::kCurrency, one, other);
  }
}

Value Compute(BinaryOperator operation, const Value &one, const Value &other) {
  if (operation == BinaryOperator::kAdd && one.type().IsString() && other.type().IsString()) {
    const StringHandle left = one.AsString();
    const StringHandle right = other.AsString();
    RequireStringSize(left.Bytes().size() + right.Bytes().size());
    return host::text::Concatenate(left, right);
  }
  const Value a = AsOperand(operation, one);
  const Value b = AsOperand(operation, other);
  Type type = host::CommonNumber(a.type(), b.type()).value_or(TypeKind::kDouble);
  if (operation == BinaryOperator::kDivide || operation == BinaryOperator::kPower) type = TypeKind::kDouble;
  if (operation == BinaryOperator::kIntegerDivide && host::IsFloating(type.kind())) type = TypeKind::kInt64;
  if (type.kind() == TypeKind::kCurrency) {
    const std::int64_t amount =
        ComputeCurrency(operation, a.ConvertedTo(type).RawInteger(), b.ConvertedTo(type).RawInteger());
    return Value::OfInteger(operation == BinaryOperator::kIntegerDivide ? Type(TypeKind::kInt64) : type, amount);
  }
  if (host::IsFloating(type.kind())) return Value::OfReal(type, ComputeReal(operation, a.AsDouble(), b.AsDouble()));
  return Value::OfInteger(
      type, ComputeInteger(operation, type, a.ConvertedTo(type).AsInteger(), b.ConvertedTo(type).AsInteger()));
}

}  // namespace quillbar::language::variant
