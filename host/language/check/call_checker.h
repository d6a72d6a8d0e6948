// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "host/language/check/context.h"
#include "host/language/check/resolution.h"
#include "host/runtime/conversion.h"

/// Conversions, and the choice among overloads.
namespace quillbar::language {

using Arguments = std::vector<ExpressionPointer>;

/// A type as messages name it: "Integer", "an array of String".
std::string Named(host::Type type);

/// The value converted to `type`; fails with the reason when it doesn't convert. `purpose` says what the value is
/// for: "the argument \"x\" of MoveTo".
ExpressionPointer Convert(Checker &checker, ExpressionPointer value, host::Type type, std::string_view purpose = {});

/// Whether `CType(value, to)` and `to(value)` are allowed.
bool CanConvert(host::Type from, host::Type to);

/// Whether a method has exactly these parameters and this result.
bool HasSignature(const host::MethodInfo &method, std::span<const ParameterInfo> parameters, host::Type result);

/// How well this particular expression fits: constants and array literals fit more types than their own type says.
std::optional<int> Cost(const Expression &value, host::Type type);

/// The call of the overload that the arguments fit best.
ExpressionPointer Call(Checker &checker, Resolution callee, Arguments arguments, Span span);

/// The call of the method that a delegate holds.
ExpressionPointer CallDelegate(Checker &checker, ExpressionPointer delegate, Arguments arguments, Span span);

/// The call of a method of this name of the value's class, such as `Operator_Compare`; null, and nothing is taken, when
/// the class has none that takes the arguments.
ExpressionPointer CallOperator(Checker &checker, std::string_view name, ExpressionPointer &object,
                               ExpressionPointer &argument, Span span);

/// Fails unless the code that is being checked may use this member of `owner`.
void RequireAccess(Checker &checker, host::Access access, const host::ClassInfo *owner, std::string_view name,
                   Span span);

/// What `callee(arguments) = value` assigns to: a method with a parameter that `Assigns`; null when there is none.
LvaluePointer FindAssignment(Checker &checker, Resolution &callee,
                             const std::vector<syntax::ExpressionPointer> &written, Span span);

/// The call of a constructor, for `New type(arguments)`.
ExpressionPointer Construct(Checker &checker, host::Type type, Arguments arguments, Span span);

/// An lvalue whose parts a block has evaluated, so that it can be used several times: `MakeLvalue` gives one node for
/// each use.
struct StableLvalue {
  host::Type type;
  Span span;
  std::vector<Symbol> parts;
  const host::PropertyInfo *property = nullptr;
  bool isElement = false;
};
/// Makes `before` evaluate the parts of an lvalue into temporary variables.
StableLvalue Stabilise(Checker &checker, ExpressionPointer lvalue, Block &before);
LvaluePointer MakeLvalue(const Checker &checker, const StableLvalue &lvalue);

}  // namespace quillbar::language
