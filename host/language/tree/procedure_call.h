// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <vector>

#include "host/language/tree/code.h"
#include "host/language/tree/lvalues.h"

namespace quillbar::language {

/// Runs a procedure with values as its arguments, for callers that aren't expressions. ByRef arguments get cells of
/// their own meanwhile and come back in `arguments`.
host::Value CallWithValues(Runtime &runtime, const Frame *caller, Span span, const Procedure &procedure,
                           const host::ObjectHandle &self, std::span<const host::ParameterInfo> parameters,
                           std::span<host::Value> arguments);

/// A call of a Sub or Function of the script, or of a method of its classes. ByRef arguments are variables. The class
/// of the receiver chooses among a method and those that override it, unless `isDirect`, as for `Super`.
class ProcedureCall final : public Expression {
 public:
  ProcedureCall(Span where, const host::MethodInfo &method, ExpressionPointer receiver, bool isDirect,
                std::vector<ExpressionPointer> arguments);

  std::int64_t EvaluateInteger(Frame &frame) const override;
  double EvaluateReal(Frame &frame) const override;
  host::StringHandle EvaluateText(Frame &frame) const override;
  host::ObjectHandle EvaluateObject(Frame &frame) const override;
  host::ArrayHandle EvaluateArray(Frame &frame) const override;
  host::Value EvaluateVariant(Frame &frame) const override;
  void Run(Frame &frame) const override;

 private:
  template <class Finish>
  auto Call(Frame &frame, Finish finish) const;

  struct Argument {
    ExpressionPointer value;
    const VariableLvalue *variable;  // ByRef: `value` as a variable
  };
  const host::MethodInfo &method_;
  ExpressionPointer receiver_;  // null: not a method
  bool isDirect_;
  std::vector<Argument> arguments_;
};

/// A call whose ByRef arguments are copied in and out: statements before it store them in temporary variables,
/// statements after it store the results.
class CopyInCopyOut final : public Expression {
 public:
  CopyInCopyOut(Block before, ExpressionPointer inner, Block after)
      : Expression(inner->type, inner->span),
        before_(std::move(before)),
        inner_(std::move(inner)),
        after_(std::move(after)) {}

  std::int64_t EvaluateInteger(Frame &frame) const override { return EvaluateBetween<std::int64_t>(frame); }
  double EvaluateReal(Frame &frame) const override { return EvaluateBetween<double>(frame); }
  host::StringHandle EvaluateText(Frame &frame) const override { return EvaluateBetween<host::StringHandle>(frame); }
  host::ObjectHandle EvaluateObject(Frame &frame) const override { return EvaluateBetween<host::ObjectHandle>(frame); }
  host::ArrayHandle EvaluateArray(Frame &frame) const override { return EvaluateBetween<host::ArrayHandle>(frame); }
  host::Value EvaluateVariant(Frame &frame) const override { return EvaluateBetween<host::Value>(frame); }
  void Run(Frame &frame) const override {
    before_.Execute(frame);
    inner_->Run(frame);
    after_.Execute(frame);
  }

 private:
  template <class Native>
  Native EvaluateBetween(Frame &frame) const {
    before_.Execute(frame);
    Native result = EvaluateAs<Native>(*inner_, frame);
    after_.Execute(frame);
    return result;
  }

  Block before_;
  ExpressionPointer inner_;
  Block after_;
};

/// `Array(a, b, c)`
class ArrayLiteral final : public Computed<host::ArrayHandle, ArrayLiteral> {
 public:
  ArrayLiteral(host::Type element, Span where, std::vector<ExpressionPointer> literalElements)
      : Computed(element.ArrayOf(), where), elements(std::move(literalElements)) {
    kind = NodeKind::kArrayLiteral;
  }
  host::ArrayHandle Compute(Frame &frame) const;

  std::vector<ExpressionPointer> elements;
};

}  // namespace quillbar::language
