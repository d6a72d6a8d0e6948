// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "host/language/tree/code.h"

namespace quillbar::language {

class IntegerConstant final : public Computed<std::int64_t, IntegerConstant> {
 public:
  IntegerConstant(host::Type constantType, Span where, std::int64_t number)
      : Computed(constantType, where), value(number) {
    kind = NodeKind::kInteger;
    isPlain = true;
  }
  std::int64_t Compute(Frame &) const { return value; }
  bool IsConstant() const override { return true; }
  const std::int64_t value;
};

class RealConstant final : public Computed<double, RealConstant> {
 public:
  RealConstant(host::Type constantType, Span where, double number) : Computed(constantType, where), value(number) {
    kind = NodeKind::kLiteral;
    isPlain = true;
  }
  double Compute(Frame &) const { return value; }
  bool IsConstant() const override { return true; }
  const double value;
};

class TextConstant final : public Computed<host::StringHandle, TextConstant> {
 public:
  TextConstant(Span where, host::StringHandle text)
      : Computed(host::TypeKind::kString, where), value_(std::move(text)) {
    kind = NodeKind::kLiteral;
    isPlain = true;
  }
  host::StringHandle Compute(Frame &) const { return value_; }
  bool IsConstant() const override { return true; }

 private:
  host::StringHandle value_;
};

/// Nil, of the type `Nil` or of a class.
class NilConstant final : public Computed<host::ObjectHandle, NilConstant> {
 public:
  NilConstant(host::Type constantType, Span where) : Computed(constantType, where) {
    kind = NodeKind::kLiteral;
    isPlain = true;
  }
  host::ObjectHandle Compute(Frame &) const { return {}; }
  bool IsConstant() const override { return true; }
};

/// The number of a node that is a whole number as a constant, else null.
inline const std::int64_t *ConstantInteger(const Expression &node) {
  return node.kind == NodeKind::kInteger ? &static_cast<const IntegerConstant &>(node).value : nullptr;
}

/// A constant node for a value of the host that is neither an array nor an object.
inline ExpressionPointer MakeConstant(const host::Value &value, Span span) {
  switch (RepresentationOf(value.type())) {
    case Representation::kReal:
      return MakeExpression<RealConstant>(value.type(), span, value.RawReal());
    case Representation::kText:
      return MakeExpression<TextConstant>(span, value.AsString());
    case Representation::kObject:
      return MakeExpression<NilConstant>(value.type(), span);
    default:
      return MakeExpression<IntegerConstant>(value.type(), span, value.RawInteger());
  }
}

}  // namespace quillbar::language
