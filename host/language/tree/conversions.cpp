// SPDX-License-Identifier: MIT
#include "host/language/tree/conversions.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "host/language/run/runtime.h"
#include "host/language/tree/literals.h"
#include "host/runtime/class_model.h"

namespace quillbar::language {
namespace {

using host::Type;
using host::TypeKind;

bool HoldsInteger(Type type) {
  return host::IsInteger(type.kind()) || type.IsEnumeration() || type.kind() == TypeKind::kColor ||
         type.kind() == TypeKind::kBoolean;
}

class IntegerToInteger final : public Computed<std::int64_t, IntegerToInteger> {
 public:
  IntegerToInteger(Type to, Span where, ExpressionPointer operand)
      : Computed(to, where), operand_(std::move(operand)), kind_(to.StorageKind()) {}
  std::int64_t Compute(Frame &frame) const { return NarrowInteger(kind_, operand_->EvaluateInteger(frame)); }
  bool IsConstant() const override { return operand_->IsConstant(); }

 private:
  ExpressionPointer operand_;
  TypeKind kind_;
};

class RealToInteger final : public Computed<std::int64_t, RealToInteger> {
 public:
  RealToInteger(Type to, Span where, ExpressionPointer operand)
      : Computed(to, where), operand_(std::move(operand)), kind_(to.StorageKind()) {}
  std::int64_t Compute(Frame &frame) const { return TruncateRealTo(kind_, operand_->EvaluateReal(frame)); }
  bool IsConstant() const override { return operand_->IsConstant(); }

 private:
  ExpressionPointer operand_;
  TypeKind kind_;
};

class IntegerToReal final : public Computed<double, IntegerToReal> {
 public:
  IntegerToReal(Type to, Span where, ExpressionPointer operand)
      : Computed(to, where), operand_(std::move(operand)), from_(operand_->type.StorageKind()) {}
  double Compute(Frame &frame) const {
    const double number = RealFromInteger(from_, operand_->EvaluateInteger(frame));
    return type.kind() == TypeKind::kSingle ? RoundToSingle(number) : number;
  }
  bool IsConstant() const override { return operand_->IsConstant(); }

 private:
  ExpressionPointer operand_;
  TypeKind from_;
};

class RealToReal final : public Computed<double, RealToReal> {
 public:
  RealToReal(Type to, Span where, ExpressionPointer operand) : Computed(to, where), operand_(std::move(operand)) {}
  double Compute(Frame &frame) const {
    const double number = operand_->EvaluateReal(frame);
    return type.kind() == TypeKind::kSingle ? RoundToSingle(number) : number;
  }
  bool IsConstant() const override { return operand_->IsConstant(); }

 private:
  ExpressionPointer operand_;
};

/// An object as one of its superclasses, which needs no check, or of its subclasses, which is checked at run time.
class ObjectCast final : public Computed<host::ObjectHandle, ObjectCast> {
 public:
  ObjectCast(Type to, Span where, ExpressionPointer operand, bool isChecked)
      : Computed(to, where), operand_(std::move(operand)), isChecked_(isChecked) {}

  host::ObjectHandle Compute(Frame &frame) const {
    host::ObjectHandle object = operand_->EvaluateObject(frame);
    if (isChecked_ && object && !object.Class().IsSubclassOf(*type.objectClass())) {
      frame.runtime.Raise(frame, span, ExceptionKind::kIllegalCast,
                          fmt::format("this is a {}, not a {}", object.Class().name, type.objectClass()->name));
    }
    return object;
  }

 private:
  ExpressionPointer operand_;
  bool isChecked_;
};

int ClassDistance(const host::ClassInfo *from, const host::ClassInfo *to) {
  int distance = 0;
  for (; from != nullptr; from = from->superclass, ++distance) {
    if (from == to) return distance;
  }
  return -1;
}

int NumberCost(TypeKind from, TypeKind to) {
  constexpr int kWiden = 1;
  constexpr int kToDouble = 10;
  constexpr int kToSingle = 11;
  constexpr int kNarrow = 20;
  constexpr int kDropFraction = 40;
  if (host::IsFloating(from) && host::IsFloating(to)) return to == TypeKind::kDouble ? kWiden : kNarrow;
  if (host::IsFloating(from)) return kDropFraction;
  if (host::IsFloating(to)) return to == TypeKind::kDouble ? kToDouble : kToSingle;
  const bool keepsAll = host::IsSigned(from) == host::IsSigned(to)
                            ? host::BitWidth(to) >= host::BitWidth(from)
                            : host::IsSigned(to) && host::BitWidth(to) > host::BitWidth(from);
  return keepsAll ? kWiden : kNarrow;
}

}  // namespace

std::optional<int> ImplicitCost(Type from, Type to) {
  if (from == to) return 0;
  if (from.IsArray() || to.IsArray() || from.IsNone() || to.IsNone()) return std::nullopt;
  if (host::IsNumeric(from.kind()) && host::IsNumeric(to.kind())) return NumberCost(from.kind(), to.kind());
  if (to.IsObject()) {
    if (from.IsNil()) return 1;
    if (!from.IsObject()) return std::nullopt;
    const int distance = ClassDistance(from.objectClass(), to.objectClass());
    return distance < 0 ? std::nullopt : std::optional(distance);
  }
  return std::nullopt;
}

bool CanConvertExplicitly(Type from, Type to) {
  if (ImplicitCost(from, to)) return true;
  if (from.IsArray() || to.IsArray()) return false;
  const bool hasNumber = host::IsNumeric(from.kind()) || host::IsNumeric(to.kind());
  if (HoldsInteger(from) && HoldsInteger(to)) return hasNumber;
  if (from.IsObject() && to.IsObject()) return ClassDistance(to.objectClass(), from.objectClass()) >= 0;
  return (host::IsFloating(from.kind()) && to.IsEnumeration()) || (from.IsEnumeration() && host::IsFloating(to.kind()));
}

ExpressionPointer MakeConversion(ExpressionPointer expression, Type to, Span span) {
  const Type from = expression->type;
  if (from == to) return expression;
  switch (RepresentationOf(to)) {
    case Representation::kInteger:
      if (RepresentationOf(from) == Representation::kReal) {
        return std::make_unique<RealToInteger>(to, span, std::move(expression));
      }
      return std::make_unique<IntegerToInteger>(to, span, std::move(expression));
    case Representation::kReal:
      if (RepresentationOf(from) == Representation::kReal) {
        return std::make_unique<RealToReal>(to, span, std::move(expression));
      }
      return std::make_unique<IntegerToReal>(to, span, std::move(expression));
    case Representation::kObject: {
      if (from.IsNil()) return std::make_unique<NilConstant>(to, span);
      const bool isUpwards = ClassDistance(from.objectClass(), to.objectClass()) >= 0;
      return std::make_unique<ObjectCast>(to, span, std::move(expression), !isUpwards);
    }
    default:
      return expression;
  }
}

std::optional<Type> CommonNumber(Type one, Type other) {
  const TypeKind a = one.kind();
  const TypeKind b = other.kind();
  if (!host::IsNumeric(a) || !host::IsNumeric(b)) return std::nullopt;
  if (host::IsFloating(a) || host::IsFloating(b)) {
    return Type(a == TypeKind::kSingle && b == TypeKind::kSingle ? TypeKind::kSingle : TypeKind::kDouble);
  }
  if (a == TypeKind::kUInt64 || b == TypeKind::kUInt64) return Type(TypeKind::kUInt64);
  const bool needsWide =
      std::max(host::BitWidth(a), host::BitWidth(b)) == 64 ||
      ((a == TypeKind::kUInt32 || b == TypeKind::kUInt32) && host::BitWidth(host::kIntegerKind) == 32);
  return Type(needsWide ? TypeKind::kInt64 : host::kIntegerKind);
}

}  // namespace quillbar::language
