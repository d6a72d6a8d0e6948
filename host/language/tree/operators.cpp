// SPDX-License-Identifier: MIT
#include "host/language/tree/operators.h"

#include <fmt/format.h>

#include <cmath>
#include <type_traits>
#include <utility>

#include "host/language/run/error_translation.h"
#include "host/language/tree/literals.h"
#include "host/language/tree/lvalues.h"
#include "host/language/values/variant.h"
#include "host/runtime/text.h"

namespace quillbar::language {
namespace {

using host::TypeKind;
using syntax::BinaryOperator;

// Operands of numbers: any expression, or, found without a virtual call, a variable of the procedure or a constant.

template <class Native>
struct AnyOperand {
  ExpressionPointer node;
  Native Get(Frame &frame) const { return EvaluateAs<Native>(*node, frame); }
  bool IsConstant() const { return node->IsConstant(); }
  bool IsPlain() const { return node->isPlain; }
};

template <class Native>
struct LocalOperand {
  std::size_t slot;
  Native Get(Frame &frame) const {
    if constexpr (std::is_same_v<Native, double>) {
      return frame.cells[slot].real;
    } else {
      return frame.cells[slot].integer;
    }
  }
  static bool IsConstant() { return false; }
  static bool IsPlain() { return true; }
};

template <class Native>
struct ConstantOperand {
  Native value;
  Native Get(Frame &) const { return value; }
  static bool IsConstant() { return true; }
  static bool IsPlain() { return true; }
};

/// `Operation` is called with the two operands.
template <class Left, class Right, class Operand, class Result, class Operation>
class BinaryNode final : public Computed<Result, BinaryNode<Left, Right, Operand, Result, Operation>> {
  using Base = Computed<Result, BinaryNode<Left, Right, Operand, Result, Operation>>;

 public:
  BinaryNode(host::Type nodeType, Span where, Left left, Right right, Operation operation)
      : Base(nodeType, where), left_(std::move(left)), right_(std::move(right)), operation_(operation) {
    this->isPlain = left_.IsPlain() && right_.IsPlain();
  }

  Result Compute(Frame &frame) const {
    const Operand left = left_.Get(frame);
    const Operand right = right_.Get(frame);
    return operation_(left, right);
  }

  bool IsConstant() const override { return left_.IsConstant() && right_.IsConstant(); }

 private:
  Left left_;
  Right right_;
  [[no_unique_address]] Operation operation_;
};

/// A node for any operands.
template <class Operand, class Result, class Operation>
ExpressionPointer Make(host::Type type, Span span, ExpressionPointer left, ExpressionPointer right,
                       Operation operation) {
  using Any = AnyOperand<Operand>;
  return MakeExpression<BinaryNode<Any, Any, Operand, Result, Operation>>(type, span, Any{std::move(left)},
                                                                          Any{std::move(right)}, operation);
}

/// A node for numbers, of the class that fits the operands.
template <class Operand, class Result, class Operation>
ExpressionPointer MakeNumeric(host::Type type, Span span, ExpressionPointer left, ExpressionPointer right,
                              Operation operation) {
  using Constant = std::conditional_t<std::is_same_v<Operand, double>, RealConstant, IntegerConstant>;
  const auto make = [&](auto first, auto second) -> ExpressionPointer {
    return MakeExpression<BinaryNode<decltype(first), decltype(second), Operand, Result, Operation>>(
        type, span, std::move(first), std::move(second), operation);
  };
  const auto withRight = [&](auto first) -> ExpressionPointer {
    if (const auto *local = dynamic_cast<const LocalVariable *>(right.get())) {
      return make(std::move(first), LocalOperand<Operand>{local->slot});
    }
    if (const auto *constant = dynamic_cast<const Constant *>(right.get())) {
      return make(std::move(first), ConstantOperand<Operand>{constant->value});
    }
    return make(std::move(first), AnyOperand<Operand>{std::move(right)});
  };
  if (const auto *local = dynamic_cast<const LocalVariable *>(left.get())) {
    return withRight(LocalOperand<Operand>{local->slot});
  }
  return withRight(AnyOperand<Operand>{std::move(left)});
}

// Wrapping arithmetic is done on unsigned numbers, where C++ defines it.
constexpr std::int64_t WrappingAdd(std::int64_t a, std::int64_t b) {
  return static_cast<std::int64_t>(static_cast<std::uint64_t>(a) + static_cast<std::uint64_t>(b));
}
constexpr std::int64_t WrappingSubtract(std::int64_t a, std::int64_t b) {
  return static_cast<std::int64_t>(static_cast<std::uint64_t>(a) - static_cast<std::uint64_t>(b));
}
constexpr std::int64_t WrappingMultiply(std::int64_t a, std::int64_t b) {
  return static_cast<std::int64_t>(static_cast<std::uint64_t>(a) * static_cast<std::uint64_t>(b));
}

template <class Operation>
ExpressionPointer MakeInteger(host::Type type, Span span, ExpressionPointer left, ExpressionPointer right,
                              Operation operation) {
  const TypeKind kind = type.StorageKind();
  if (host::BitWidth(kind) == 64) {
    return MakeNumeric<std::int64_t, std::int64_t>(type, span, std::move(left), std::move(right), operation);
  }
  return Make<std::int64_t, std::int64_t>(
      type, span, std::move(left), std::move(right),
      [kind, operation](std::int64_t a, std::int64_t b) { return NarrowInteger(kind, operation(a, b)); });
}

/// `\` and `Mod` on integers, which fail for a divisor of zero.
class IntegerDivision final : public Computed<std::int64_t, IntegerDivision> {
 public:
  IntegerDivision(host::Type nodeType, Span where, ExpressionPointer left, ExpressionPointer right, bool isModulo)
      : Computed(nodeType, where),
        left_(std::move(left)),
        right_(std::move(right)),
        kind_(nodeType.StorageKind()),
        isModulo_(isModulo) {
    isPlain = left_->isPlain && right_->isPlain;
  }

  std::int64_t Compute(Frame &frame) const {
    const std::int64_t dividend = left_->EvaluateInteger(frame);
    const std::int64_t divisor = right_->EvaluateInteger(frame);
    if (divisor == 0) {
      frame.runtime.Raise(frame, span, ExceptionKind::kDivideByZero, "an integer was divided by zero");
    }
    if (kind_ == TypeKind::kUInt64) {
      const auto a = static_cast<std::uint64_t>(dividend);
      const auto b = static_cast<std::uint64_t>(divisor);
      return static_cast<std::int64_t>(isModulo_ ? a % b : a / b);
    }
    // The one quotient that doesn't fit wraps around, as all integer arithmetic does.
    if (divisor == -1) return isModulo_ ? 0 : NarrowInteger(kind_, WrappingSubtract(0, dividend));
    return isModulo_ ? dividend % divisor : dividend / divisor;
  }

  bool IsConstant() const override { return left_->IsConstant() && right_->IsConstant(); }

 private:
  ExpressionPointer left_;
  ExpressionPointer right_;
  TypeKind kind_;
  bool isModulo_;
};

template <class Operand, class Comparison>
ExpressionPointer MakeCompare(Span span, ExpressionPointer left, ExpressionPointer right, Comparison comparison) {
  return Make<Operand, bool>(TypeKind::kBoolean, span, std::move(left), std::move(right), comparison);
}

template <class Operand, class Comparison>
ExpressionPointer MakeNumericCompare(Span span, ExpressionPointer left, ExpressionPointer right,
                                     Comparison comparison) {
  return MakeNumeric<Operand, bool>(TypeKind::kBoolean, span, std::move(left), std::move(right), comparison);
}

/// Calls `make` with the comparison of two ordered values as a function object.
template <class Make>
ExpressionPointer WithOrder(BinaryOperator operation, Make make) {
  switch (operation) {
    case BinaryOperator::kNotEqual:
      return make([](const auto &a, const auto &b) { return a != b; });
    case BinaryOperator::kLess:
      return make([](const auto &a, const auto &b) { return a < b; });
    case BinaryOperator::kLessEqual:
      return make([](const auto &a, const auto &b) { return a <= b; });
    case BinaryOperator::kGreater:
      return make([](const auto &a, const auto &b) { return a > b; });
    case BinaryOperator::kGreaterEqual:
      return make([](const auto &a, const auto &b) { return a >= b; });
    default:
      return make([](const auto &a, const auto &b) { return a == b; });
  }
}

/// `And` and `Or` on Booleans.
template <bool kStopsOn>
class ShortCircuit final : public Computed<bool, ShortCircuit<kStopsOn>> {
 public:
  ShortCircuit(Span where, ExpressionPointer left, ExpressionPointer right)
      : Computed<bool, ShortCircuit>(TypeKind::kBoolean, where), left_(std::move(left)), right_(std::move(right)) {}

  bool Compute(Frame &frame) const {
    if ((left_->EvaluateInteger(frame) != 0) == kStopsOn) return kStopsOn;
    return right_->EvaluateInteger(frame) != 0;
  }

  bool IsConstant() const override { return left_->IsConstant() && right_->IsConstant(); }

 private:
  ExpressionPointer left_;
  ExpressionPointer right_;
};

class Concatenation final : public Computed<host::StringHandle, Concatenation> {
 public:
  Concatenation(Span where, ExpressionPointer left, ExpressionPointer right)
      : Computed(TypeKind::kString, where), left_(std::move(left)), right_(std::move(right)) {}

  host::StringHandle Compute(Frame &frame) const {
    const host::StringHandle left = left_->EvaluateText(frame);
    const host::StringHandle right = right_->EvaluateText(frame);
    if (left.Bytes().size() + right.Bytes().size() > Limits::Current().stringBytes) {
      frame.runtime.Raise(frame, span, ExceptionKind::kOutOfMemory, TooLongString());
    }
    return TranslateErrors(frame, span, [&] { return host::text::Concatenate(left, right); });
  }

  bool IsConstant() const override { return left_->IsConstant() && right_->IsConstant(); }

 private:
  ExpressionPointer left_;
  ExpressionPointer right_;
};

template <class Operand, class Operation>
class UnaryNode final : public Computed<Operand, UnaryNode<Operand, Operation>> {
 public:
  UnaryNode(host::Type nodeType, Span where, ExpressionPointer operand, Operation operation)
      : Computed<Operand, UnaryNode>(nodeType, where), operand_(std::move(operand)), operation_(operation) {
    this->isPlain = operand_->isPlain;
  }

  Operand Compute(Frame &frame) const { return operation_(EvaluateAs<Operand>(*operand_, frame)); }
  bool IsConstant() const override { return operand_->IsConstant(); }

 private:
  ExpressionPointer operand_;
  [[no_unique_address]] Operation operation_;
};

template <class Operand, class Operation>
ExpressionPointer MakeUnary(host::Type type, Span span, ExpressionPointer operand, Operation operation) {
  return MakeExpression<UnaryNode<Operand, Operation>>(type, span, std::move(operand), operation);
}

class CurrencyArithmetic final : public Computed<std::int64_t, CurrencyArithmetic> {
 public:
  CurrencyArithmetic(BinaryOperator operation, Span where, ExpressionPointer left, ExpressionPointer right)
      : Computed(operation == BinaryOperator::kIntegerDivide ? TypeKind::kInt64 : TypeKind::kCurrency, where),
        operation_(operation),
        left_(std::move(left)),
        right_(std::move(right)) {}

  std::int64_t Compute(Frame &frame) const {
    const std::int64_t left = left_->EvaluateInteger(frame);
    const std::int64_t right = right_->EvaluateInteger(frame);
    return TranslateErrors(frame, span, [&] { return variant::ComputeCurrency(operation_, left, right); });
  }

  bool IsConstant() const override { return left_->IsConstant() && right_->IsConstant(); }

 private:
  BinaryOperator operation_;
  ExpressionPointer left_;
  ExpressionPointer right_;
};

class VariantArithmetic final : public Computed<host::Value, VariantArithmetic> {
 public:
  VariantArithmetic(BinaryOperator operation, Span where, ExpressionPointer left, ExpressionPointer right)
      : Computed(TypeKind::kVariant, where), operation_(operation), left_(std::move(left)), right_(std::move(right)) {}

  host::Value Compute(Frame &frame) const {
    const host::Value left = left_->EvaluateVariant(frame);
    const host::Value right = right_->EvaluateVariant(frame);
    return TranslateErrors(frame, span, [&] { return variant::Compute(operation_, left, right); });
  }

 private:
  BinaryOperator operation_;
  ExpressionPointer left_;
  ExpressionPointer right_;
};

class VariantComparison final : public Computed<bool, VariantComparison> {
 public:
  VariantComparison(BinaryOperator operation, Span where, ExpressionPointer left, ExpressionPointer right)
      : Computed(TypeKind::kBoolean, where), operation_(operation), left_(std::move(left)), right_(std::move(right)) {}

  bool Compute(Frame &frame) const {
    const host::Value left = left_->EvaluateVariant(frame);
    const host::Value right = right_->EvaluateVariant(frame);
    return TranslateErrors(frame, span, [&] { return Holds(left, right); });
  }

 private:
  bool Holds(const host::Value &left, const host::Value &right) const {
    switch (operation_) {
      case BinaryOperator::kIs:
        return (left.IsNil() && right.IsNil()) ||
               (left.type().IsReference() && !left.type().IsString() && left.type() == right.type() && left == right);
      case BinaryOperator::kEqual:
        return variant::AreEqual(left, right);
      case BinaryOperator::kNotEqual:
        return !variant::AreEqual(left, right);
      default:
        break;
    }
    const std::optional<int> order = variant::Compare(left, right);
    if (!order) {
      throw LibraryError{ExceptionKind::kTypeMismatch, fmt::format("these Variants have no order: {} and {}",
                                                                   left.type().Name(), right.type().Name())};
    }
    switch (operation_) {
      case BinaryOperator::kLess:
        return *order < 0;
      case BinaryOperator::kLessEqual:
        return *order <= 0;
      case BinaryOperator::kGreater:
        return *order > 0;
      default:
        return *order >= 0;
    }
  }

  BinaryOperator operation_;
  ExpressionPointer left_;
  ExpressionPointer right_;
};

class ConditionalNode final : public Expression {
 public:
  ConditionalNode(Span where, ExpressionPointer condition, ExpressionPointer first, ExpressionPointer second)
      : Expression(first->type, where),
        condition_(std::move(condition)),
        first_(std::move(first)),
        second_(std::move(second)) {}

  std::int64_t EvaluateInteger(Frame &frame) const override { return Chosen(frame).EvaluateInteger(frame); }
  double EvaluateReal(Frame &frame) const override { return Chosen(frame).EvaluateReal(frame); }
  host::StringHandle EvaluateText(Frame &frame) const override { return Chosen(frame).EvaluateText(frame); }
  host::ObjectHandle EvaluateObject(Frame &frame) const override { return Chosen(frame).EvaluateObject(frame); }
  host::ArrayHandle EvaluateArray(Frame &frame) const override { return Chosen(frame).EvaluateArray(frame); }
  host::Value EvaluateVariant(Frame &frame) const override { return Chosen(frame).EvaluateVariant(frame); }
  bool IsConstant() const override { return condition_->IsConstant() && first_->IsConstant() && second_->IsConstant(); }

 private:
  const Expression &Chosen(Frame &frame) const { return condition_->EvaluateInteger(frame) != 0 ? *first_ : *second_; }

  ExpressionPointer condition_;
  ExpressionPointer first_;
  ExpressionPointer second_;
};

}  // namespace

ExpressionPointer MakeArithmetic(BinaryOperator operation, host::Type type, Span span, ExpressionPointer left,
                                 ExpressionPointer right) {
  if (RepresentationOf(type) == Representation::kReal) {
    const bool isSingle = type.kind() == TypeKind::kSingle;
    const auto make = [&](auto compute) {
      if (!isSingle) return MakeNumeric<double, double>(type, span, std::move(left), std::move(right), compute);
      return Make<double, double>(type, span, std::move(left), std::move(right),
                                  [compute](double a, double b) { return host::RoundToSingle(compute(a, b)); });
    };
    switch (operation) {
      case BinaryOperator::kAdd:
        return make([](double a, double b) { return a + b; });
      case BinaryOperator::kSubtract:
        return make([](double a, double b) { return a - b; });
      case BinaryOperator::kMultiply:
        return make([](double a, double b) { return a * b; });
      case BinaryOperator::kDivide:
        return make([](double a, double b) { return a / b; });
      case BinaryOperator::kModulo:
        return make([](double a, double b) { return std::fmod(a, b); });
      default:
        return make([](double a, double b) { return std::pow(a, b); });
    }
  }
  switch (operation) {
    case BinaryOperator::kAdd:
      return MakeInteger(type, span, std::move(left), std::move(right),
                         [](std::int64_t a, std::int64_t b) { return WrappingAdd(a, b); });
    case BinaryOperator::kSubtract:
      return MakeInteger(type, span, std::move(left), std::move(right),
                         [](std::int64_t a, std::int64_t b) { return WrappingSubtract(a, b); });
    case BinaryOperator::kMultiply:
      return MakeInteger(type, span, std::move(left), std::move(right),
                         [](std::int64_t a, std::int64_t b) { return WrappingMultiply(a, b); });
    default:
      return MakeExpression<IntegerDivision>(type, span, std::move(left), std::move(right),
                                             operation == BinaryOperator::kModulo);
  }
}

ExpressionPointer MakeComparison(BinaryOperator operation, Span span, ExpressionPointer left, ExpressionPointer right) {
  const Representation representation = RepresentationOf(left->type);
  const bool leftIsWide = left->type.StorageKind() == TypeKind::kUInt64;
  const bool rightIsWide = right->type.StorageKind() == TypeKind::kUInt64;
  return WithOrder(operation, [&](auto order) {
    switch (representation) {
      case Representation::kReal:
        return MakeNumericCompare<double>(span, std::move(left), std::move(right), order);
      case Representation::kText:
        return MakeCompare<host::StringHandle>(
            span, std::move(left), std::move(right), [order](const host::StringHandle &a, const host::StringHandle &b) {
              return order(host::text::Compare(a, b, host::text::Comparison::kIgnoreCase), 0);
            });
      case Representation::kObject:
        return MakeCompare<host::ObjectHandle>(
            span, std::move(left), std::move(right),
            [order](const host::ObjectHandle &a, const host::ObjectHandle &b) { return order(a.Get(), b.Get()); });
      case Representation::kArray:
        return MakeCompare<host::ArrayHandle>(
            span, std::move(left), std::move(right),
            [order](const host::ArrayHandle &a, const host::ArrayHandle &b) { return order(a.Get(), b.Get()); });
      default:
        break;
    }
    if (!leftIsWide && !rightIsWide) {
      return MakeNumericCompare<std::int64_t>(span, std::move(left), std::move(right), order);
    }
    // A negative number is below every UInt64; otherwise the bits decide.
    return MakeCompare<std::int64_t>(span, std::move(left), std::move(right), [=](std::int64_t a, std::int64_t b) {
      if (!leftIsWide && a < 0) return order(-1, 0);
      if (!rightIsWide && b < 0) return order(0, -1);
      return order(static_cast<std::uint64_t>(a), static_cast<std::uint64_t>(b));
    });
  });
}

ExpressionPointer MakeCurrencyArithmetic(BinaryOperator operation, Span span, ExpressionPointer left,
                                         ExpressionPointer right) {
  return MakeExpression<CurrencyArithmetic>(operation, span, std::move(left), std::move(right));
}

ExpressionPointer MakeVariantArithmetic(BinaryOperator operation, Span span, ExpressionPointer left,
                                        ExpressionPointer right) {
  return MakeExpression<VariantArithmetic>(operation, span, std::move(left), std::move(right));
}

ExpressionPointer MakeVariantComparison(BinaryOperator operation, Span span, ExpressionPointer left,
                                        ExpressionPointer right) {
  return MakeExpression<VariantComparison>(operation, span, std::move(left), std::move(right));
}

ExpressionPointer MakeLogic(BinaryOperator operation, host::Type type, Span span, ExpressionPointer left,
                            ExpressionPointer right) {
  const bool isBoolean = type.kind() == TypeKind::kBoolean;
  switch (operation) {
    case BinaryOperator::kAnd:
      if (isBoolean) return MakeExpression<ShortCircuit<false>>(span, std::move(left), std::move(right));
      return MakeInteger(type, span, std::move(left), std::move(right),
                         [](std::int64_t a, std::int64_t b) { return a & b; });
    case BinaryOperator::kOr:
      if (isBoolean) return MakeExpression<ShortCircuit<true>>(span, std::move(left), std::move(right));
      return MakeInteger(type, span, std::move(left), std::move(right),
                         [](std::int64_t a, std::int64_t b) { return a | b; });
    default:
      return MakeInteger(type, span, std::move(left), std::move(right),
                         [](std::int64_t a, std::int64_t b) { return a ^ b; });
  }
}

ExpressionPointer MakeConcatenation(Span span, ExpressionPointer left, ExpressionPointer right) {
  return MakeExpression<Concatenation>(span, std::move(left), std::move(right));
}

ExpressionPointer MakeNegation(host::Type type, Span span, ExpressionPointer operand) {
  if (RepresentationOf(type) == Representation::kReal) {
    return MakeUnary<double>(type, span, std::move(operand), [](double number) { return -number; });
  }
  const TypeKind kind = type.StorageKind();
  return MakeUnary<std::int64_t>(type, span, std::move(operand), [kind](std::int64_t number) {
    return NarrowInteger(kind, WrappingSubtract(0, number));
  });
}

ExpressionPointer MakeNot(host::Type type, Span span, ExpressionPointer operand) {
  if (type.kind() == TypeKind::kBoolean) {
    return MakeUnary<std::int64_t>(type, span, std::move(operand),
                                   [](std::int64_t number) -> std::int64_t { return number == 0 ? 1 : 0; });
  }
  const TypeKind kind = type.StorageKind();
  return MakeUnary<std::int64_t>(type, span, std::move(operand),
                                 [kind](std::int64_t number) { return NarrowInteger(kind, ~number); });
}

ExpressionPointer MakeConditional(Span span, ExpressionPointer condition, ExpressionPointer first,
                                  ExpressionPointer second) {
  return MakeExpression<ConditionalNode>(span, std::move(condition), std::move(first), std::move(second));
}

}  // namespace quillbar::language
