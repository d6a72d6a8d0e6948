// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "host/language/check/checker_base.h"
#include "host/language/check/resolution.h"
#include "host/language/tree/statements.h"

namespace quillbar::language {

/// Conversions, and the choice among overloads.
class CallChecker : public CheckerBase {
 public:
  using CheckerBase::CheckerBase;

 protected:
  using Arguments = std::vector<ExpressionPointer>;

  /// The value converted to `type`; fails with the reason when it doesn't convert. `purpose` says what the value is
  /// for: "the argument \"x\" of MoveTo".
  ExpressionPointer Convert(ExpressionPointer value, host::Type type, std::string_view purpose = {});

  /// How well this particular expression fits: constants and array literals fit more types than their own type says.
  std::optional<int> Cost(const Expression &value, host::Type type) const;

  /// The call of the overload that the arguments fit best.
  ExpressionPointer Call(Resolution callee, Arguments arguments, Span span);

  /// The call of a constructor, for `New type(arguments)`.
  ExpressionPointer Construct(host::Type type, Arguments arguments, Span span);

  /// An lvalue whose parts `before` has evaluated, so that it can be used several times: `MakeLvalue` gives one node
  /// for each use.
  struct StableLvalue {
    host::Type type;
    Span span;
    std::vector<Symbol> parts;
    const host::PropertyInfo *property = nullptr;
    bool isElement = false;
  };
  /// Makes `before` evaluate the parts of an lvalue into temporary variables.
  StableLvalue Stabilise(ExpressionPointer lvalue, Block &before);
  LvaluePointer MakeLvalue(const StableLvalue &lvalue) const;

 private:
  struct Choice {
    const Callable *callable = nullptr;
    int cost = 0;
    bool isAmbiguous = false;
  };
  /// Binds `Element` to the element type, in functions that take an array first.
  void BindElements(Resolution &callee, const Arguments &arguments) const;
  std::optional<int> CallCost(const Callable &callable, const Arguments &arguments) const;
  Choice Choose(const std::vector<Callable> &callables, const Arguments &arguments) const;
  [[noreturn]] void FailNoOverload(const Resolution &callee, const Arguments &arguments, Span span) const;

  /// Fails with the reason why the only candidate doesn't take the arguments.
  void ExplainMismatch(const Callable &callable, const Arguments &arguments, Span span) const;

  ExpressionPointer MakeCall(const Callable &callable, ExpressionPointer receiver, Arguments arguments, Span span);
  Arguments FillIn(const Callable &callable, Arguments arguments, Span span);
  ExpressionPointer PassReference(const Callable &callable, const CallParameter &parameter, ExpressionPointer argument,
                                  Block &before, Block &after);
};

/// A type as messages name it: "Integer", "an array of String".
std::string Named(host::Type type);

}  // namespace quillbar::language
