// SPDX-License-Identifier: MIT
#include "host/language/tree/conversions.h"

#include <fmt/format.h>

#include <utility>

#include "host/language/run/error_translation.h"
#include "host/language/run/runtime.h"
#include "host/language/tree/literals.h"
#include "host/language/values/variant.h"
#include "host/runtime/class_model.h"
#include "host/runtime/numbers.h"

namespace quillbar::language {
namespace {

using host::Type;
using host::TypeKind;

class IntegerToInteger final : public Computed<std::int64_t, IntegerToInteger> {
 public:
  IntegerToInteger(Type to, Span where, ExpressionPointer operand)
      : Computed(to, where), operand_(std::move(operand)), kind_(to.StorageKind()) {
    isPlain = operand_->isPlain;
  }
  std::int64_t Compute(Frame &frame) const { return NarrowInteger(kind_, operand_->EvaluateInteger(frame)); }
  bool IsConstant() const override { return operand_->IsConstant(); }

 private:
  ExpressionPointer operand_;
  TypeKind kind_;
};

class RealToInteger final : public Computed<std::int64_t, RealToInteger> {
 public:
  RealToInteger(Type to, Span where, ExpressionPointer operand)
      : Computed(to, where), operand_(std::move(operand)), kind_(to.StorageKind()) {
    isPlain = operand_->isPlain;
  }
  std::int64_t Compute(Frame &frame) const { return TruncateRealTo(kind_, operand_->EvaluateReal(frame)); }
  bool IsConstant() const override { return operand_->IsConstant(); }

 private:
  ExpressionPointer operand_;
  TypeKind kind_;
};

class IntegerToReal final : public Computed<double, IntegerToReal> {
 public:
  IntegerToReal(Type to, Span where, ExpressionPointer operand)
      : Computed(to, where), operand_(std::move(operand)), from_(operand_->type.StorageKind()) {
    isPlain = operand_->isPlain;
  }
  double Compute(Frame &frame) const {
    const double number = RealFromInteger(from_, operand_->EvaluateInteger(frame));
    return type.kind() == TypeKind::kSingle ? host::RoundToSingle(number) : number;
  }
  bool IsConstant() const override { return operand_->IsConstant(); }

 private:
  ExpressionPointer operand_;
  TypeKind from_;
};

class RealToReal final : public Computed<double, RealToReal> {
 public:
  RealToReal(Type to, Span where, ExpressionPointer operand) : Computed(to, where), operand_(std::move(operand)) {
    isPlain = operand_->isPlain;
  }
  double Compute(Frame &frame) const {
    const double number = operand_->EvaluateReal(frame);
    return type.kind() == TypeKind::kSingle ? host::RoundToSingle(number) : number;
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

/// A number to or from Currency.
class CurrencyConversion final : public Computed<host::Value, CurrencyConversion> {
 public:
  CurrencyConversion(Type to, Span where, ExpressionPointer operand)
      : Computed(to, where), operand_(std::move(operand)) {}
  host::Value Compute(Frame &frame) const {
    const host::Value value = operand_->Evaluate(frame);
    return TranslateErrors(frame, span, [&] { return value.ConvertedTo(type); });
  }
  bool IsConstant() const override { return operand_->IsConstant(); }

 private:
  ExpressionPointer operand_;
};

/// Any value as a Variant.
class ToVariant final : public Expression {
 public:
  ToVariant(Span where, ExpressionPointer operand)
      : Expression(TypeKind::kVariant, where), operand_(std::move(operand)) {}
  host::Value EvaluateVariant(Frame &frame) const override { return operand_->Evaluate(frame); }

 private:
  ExpressionPointer operand_;
};

/// What a Variant holds as a value of `type`; raises an exception when it can't be one.
class FromVariant final : public Computed<host::Value, FromVariant> {
 public:
  FromVariant(Type to, Span where, ExpressionPointer operand) : Computed(to, where), operand_(std::move(operand)) {}
  host::Value Compute(Frame &frame) const {
    const host::Value value = operand_->EvaluateVariant(frame);
    return TranslateErrors(frame, span, [&] { return variant::As(value, type); });
  }

 private:
  ExpressionPointer operand_;
};

}  // namespace

ExpressionPointer MakeConversion(ExpressionPointer expression, Type to, Span span) {
  const Type from = expression->type;
  if (from == to) return expression;
  if (to.IsVariant()) return MakeExpression<ToVariant>(span, std::move(expression));
  if (from.IsVariant()) return MakeExpression<FromVariant>(to, span, std::move(expression));
  if (from.kind() == TypeKind::kCurrency || to.kind() == TypeKind::kCurrency) {
    return MakeExpression<CurrencyConversion>(to, span, std::move(expression));
  }
  switch (RepresentationOf(to)) {
    case Representation::kInteger:
      if (RepresentationOf(from) == Representation::kReal) {
        return MakeExpression<RealToInteger>(to, span, std::move(expression));
      }
      return MakeExpression<IntegerToInteger>(to, span, std::move(expression));
    case Representation::kReal:
      if (RepresentationOf(from) == Representation::kReal) {
        return MakeExpression<RealToReal>(to, span, std::move(expression));
      }
      return MakeExpression<IntegerToReal>(to, span, std::move(expression));
    case Representation::kObject: {
      if (from.IsNil()) return MakeExpression<NilConstant>(to, span);
      const bool isUpwards = from.objectClass()->IsSubclassOf(*to.objectClass());
      return MakeExpression<ObjectCast>(to, span, std::move(expression), !isUpwards);
    }
    default:
      return expression;
  }
}

}  // namespace quillbar::language
