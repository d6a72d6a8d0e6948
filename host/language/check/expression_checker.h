// SPDX-License-Identifier: MIT
#pragma once

#include "host/language/check/call_checker.h"
#include "host/language/check/resolution.h"

namespace quillbar::language {

/// Resolves names and gives expressions their types.
class ExpressionChecker : public CallChecker {
 public:
  using CallChecker::CallChecker;

 protected:
  /// Checks an expression that must have a value.
  ExpressionPointer CheckValue(const syntax::Expression &expression);
  ExpressionPointer CheckValue(const syntax::Expression &expression, host::Type type, std::string_view purpose = {});
  ExpressionPointer CheckCondition(const syntax::Expression &expression, std::string_view purpose);

  /// Checks an expression that is run for its effect; a Sub has no value.
  ExpressionPointer CheckCall(const syntax::Expression &expression);

  /// Checks the left side of "=".
  LvaluePointer CheckLvalue(const syntax::Expression &expression);

  /// The operation on both operands, converted to their common type.
  ExpressionPointer MakeBinary(syntax::BinaryOperator operation, Span operatorSpan, Span span, ExpressionPointer left,
                               ExpressionPointer right);

  /// The procedure that `AddressOf` names; fails when it is overloaded.
  const ScriptProcedure &CheckAddressOf(const syntax::Expression &expression);

  /// Resolves a name or member, whatever it refers to.
  Resolution Resolve(const syntax::Expression &expression);

 private:
  // names_checker.cpp
  Resolution ResolveName(std::string_view name, Span span);
  bool FindValueName(std::string_view name, Span span, Resolution &resolution);
  bool FindCallableName(std::string_view name, Resolution &resolution);
  bool FindTypeName(std::string_view name, Resolution &resolution);
  /// How the member of an enumeration is written that has this name: one of the class's own, or, without a class, one of
  /// the script's or any class's. Empty when there is none.
  std::string EnumerationMemberNamed(std::string_view name, const host::ClassInfo *owner) const;
  [[noreturn]] void FailUnknownName(std::string_view name, Span span);
  Resolution ResolveMember(const syntax::Member &member);
  bool FindMemberOfType(const Resolution &base, Resolution &resolution);
  bool FindMemberOfModule(const Resolution &base, Resolution &resolution);
  bool FindMemberOfNamespace(const Resolution &base, Resolution &resolution);
  bool FindMemberOfValue(Resolution &base, Resolution &resolution);
  bool FindLibraryMethod(host::Type receiver, Resolution &resolution) const;
  [[noreturn]] void FailUnknownMember(const Resolution &base, const syntax::Member &member, host::Type receiver);

  ExpressionPointer ToValue(Resolution resolution);
  ExpressionPointer CheckInvocation(const syntax::Call &call);
  ExpressionPointer CheckElement(ExpressionPointer list, const syntax::Call &call);
  ExpressionPointer CheckConversion(host::Type type, const syntax::Call &call);
  ExpressionPointer CheckCType(const syntax::Call &call);
  ExpressionPointer CheckArray(const syntax::Call &call);
  ExpressionPointer CheckUnary(const syntax::Unary &unary);
  ExpressionPointer CheckNumberLiteral(const syntax::IntegerLiteral &literal);
  ExpressionPointer CheckIsA(const syntax::IsA &isA);
  ExpressionPointer CheckConditional(const syntax::Conditional &conditional);
  ExpressionPointer CheckAny(const syntax::Expression &expression);
  LvaluePointer ToLvalue(ExpressionPointer value, Span span);
  Arguments CheckArguments(const std::vector<syntax::ExpressionPointer> &arguments);
  ExpressionPointer MakeComparisonOf(syntax::BinaryOperator operation, Span operatorSpan, Span span,
                                     ExpressionPointer left, ExpressionPointer right);
  ExpressionPointer MakeSortWith(Resolution &callee, const syntax::Call &call);

  /// The common type of two values, for `Array(…)` and `If(…)`.
  static std::optional<host::Type> CommonType(host::Type one, host::Type other);
};

}  // namespace quillbar::language
