// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "host/language/tree/code.h"
#include "host/language/tree/lvalues.h"

namespace quillbar::language {

/// A call of a Sub or Function of the script. ByRef arguments are variables.
class ProcedureCall final : public Expression {
 public:
  ProcedureCall(Span where, const host::MethodInfo &method, std::vector<ExpressionPointer> arguments);

  std::int64_t EvaluateInteger(Frame &frame) const override;
  double EvaluateReal(Frame &frame) const override;
  host::StringHandle EvaluateText(Frame &frame) const override;
  host::ObjectHandle EvaluateObject(Frame &frame) const override;
  host::ArrayHandle EvaluateArray(Frame &frame) const override;
  void Run(Frame &frame) const override;

 private:
  template <class Finish>
  auto Call(Frame &frame, Finish finish) const;

  struct Argument {
    ExpressionPointer value;
    const VariableLvalue *variable;  // ByRef: `value` as a variable
  };
  const Procedure &procedure_;
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
