// SPDX-License-Identifier: MIT
#pragma once

#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>

#include "host/runtime/handles.h"
#include "host/runtime/type.h"

namespace quillbar::host {

/// A script value with its type. It owns a reference when it holds a string, an object or an array. What a Variant
/// holds is a value of that type, never one of the type Variant.
class Value {
 public:
  /// No value (the result of a Sub).
  Value() noexcept {}
  static Value Nil();
  /// Zero, False, the empty string, Nil or an empty array: the value with which a variable of this type starts.
  static Value Zero(Type type);
  /// `number` cut to the width of an integer, Boolean, Color or enumeration type, as assignment does, a Ptr by its bits,
  /// or a Currency of this many ten-thousandths.
  static Value OfInteger(Type type, std::int64_t number);
  /// `number` as a Single or Double.
  static Value OfReal(Type type, double number);
  static Value OfPtr(void *address);

  /// C++ numbers take the kind of their width: int is Int32, std::int64_t is Int64, float is Single.
  template <class Number>
  requires std::is_arithmetic_v<Number> Value(Number number)
  noexcept : type_(KindOf<Number>()) {  // NOLINT: literals are values
    if constexpr (std::same_as<Number, float>) {
      payload_.single = number;
    } else if constexpr (std::floating_point<Number>) {
      payload_.real = static_cast<double>(number);
    } else {
      payload_.integer = static_cast<std::int64_t>(number);
    }
  }
  Value(Color color) noexcept;          // NOLINT
  Value(const char *utf8);              // NOLINT
  Value(std::string_view utf8);         // NOLINT
  Value(const std::string &utf8);       // NOLINT
  Value(StringHandle string) noexcept;  // NOLINT
  Value(const ObjectHandle &object);    // NOLINT: the type is the object's own class
  Value(ObjectHandle &&object);         // NOLINT
  Value(ArrayHandle array) noexcept;    // NOLINT

  Value(const Value &other);
  Value(Value &&other) noexcept;
  Value &operator=(const Value &other);
  Value &operator=(Value &&other) noexcept;
  ~Value() { Release(); }

  Type type() const { return type_; }
  bool IsNone() const { return type_.IsNone(); }
  /// True for the literal Nil and for an object variable that holds Nil.
  bool IsNil() const;

  // Each of these throws HostError (kTypeMismatch) when the value is of another sort. Numbers, Booleans, colours and
  // enumerations convert to each other; real numbers lose their fraction when they become integers, and are clamped to
  // the bounds of Int64.
  bool AsBoolean() const;
  std::int64_t AsInteger() const;
  double AsDouble() const;
  float AsSingle() const;
  Color AsColor() const;
  void *AsPtr() const;
  StringHandle AsString() const;
  ObjectHandle AsObject() const;  // Nil gives an empty handle
  ArrayHandle AsArray() const;

  /// A string's text as UTF-8.
  std::string Utf8() const { return AsString().Utf8(); }

  /// This value as `target`: numbers change width (integers wrap, as in assignments), enumerations and integers
  /// convert, Nil becomes any object, an object any of its superclasses, and everything a Variant as it is. Throws HostError (kTypeMismatch) otherwise.
  /// The object's own class counts, so a downcast works if the object is of the subclass.
  Value ConvertedTo(Type target) const;

  /// Whether type and number or reference are the same; strings are compared by bytes and encoding.
  friend bool operator==(const Value &a, const Value &b);

  /// The raw payload. Integers and Booleans are held as the number itself, sign- or zero-extended.
  std::int64_t RawInteger() const {
    return type_.kind() == TypeKind::kPtr ? reinterpret_cast<std::intptr_t>(payload_.pointer) : payload_.integer;
  }
  /// A Single or Double.
  double RawReal() const {
    return type_.kind() == TypeKind::kSingle ? static_cast<double>(payload_.single) : payload_.real;
  }
  /// Another number in place of the one that this value holds: an integer, Boolean, Color, enumeration or Ptr, which
  /// fits its type already.
  void PutInteger(std::int64_t number) {
    if (type_.kind() == TypeKind::kPtr) {
      payload_.pointer = reinterpret_cast<void *>(static_cast<std::intptr_t>(number));
    } else {
      payload_.integer = number;
    }
  }
  /// The same for a Single or Double.
  void PutReal(double number) {
    if (type_.kind() == TypeKind::kSingle) {
      payload_.single = static_cast<float>(number);
    } else {
      payload_.real = number;
    }
  }
  float RawSingle() const { return payload_.single; }
  double RawDouble() const { return payload_.real; }
  void *RawPointer() const { return payload_.pointer; }

 private:
  template <class Number>
  static constexpr Type KindOf() {
    if constexpr (std::same_as<Number, bool>) return TypeKind::kBoolean;
    if constexpr (std::same_as<Number, float>) return TypeKind::kSingle;
    if constexpr (std::floating_point<Number>) return TypeKind::kDouble;
    if constexpr (std::integral<Number> && !std::same_as<Number, bool>) {
      constexpr bool isSigned = std::is_signed_v<Number>;
      if constexpr (sizeof(Number) == 1) return isSigned ? TypeKind::kInt8 : TypeKind::kUInt8;
      if constexpr (sizeof(Number) == 2) return isSigned ? TypeKind::kInt16 : TypeKind::kUInt16;
      if constexpr (sizeof(Number) == 4) return isSigned ? TypeKind::kInt32 : TypeKind::kUInt32;
      if constexpr (sizeof(Number) == 8) return isSigned ? TypeKind::kInt64 : TypeKind::kUInt64;
    }
  }

  template <class Action>
  void WithReference(Action action) const;
  void Retain() const;
  void Release() noexcept;
  [[noreturn]] void Mismatch(std::string_view wanted) const;

  union Payload {
    std::int64_t integer = 0;
    float single;
    double real;
    void *pointer;
  };

  Type type_;
  Payload payload_;
};

}  // namespace quillbar::host
