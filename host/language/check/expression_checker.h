// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

#include "host/language/check/call_checker.h"

/// Gives expressions their types.
namespace quillbar::language {

/// Checks an expression that must have a value; with a type, one that converts to it. `purpose` says what the value is
/// for.
ExpressionPointer CheckValue(Checker &checker, const syntax::Expression &expression);
ExpressionPointer CheckValue(Checker &checker, const syntax::Expression &expression, host::Type type,
                             std::string_view purpose = {});
ExpressionPointer CheckCondition(Checker &checker, const syntax::Expression &expression, std::string_view purpose);

/// Checks an expression that is run for its effect; a Sub has no value.
ExpressionPointer CheckCall(Checker &checker, const syntax::Expression &expression);

/// Checks the left side of "=".
LvaluePointer CheckLvalue(Checker &checker, const syntax::Expression &expression);

/// The operation on both operands, converted to their common type.
ExpressionPointer MakeBinary(Checker &checker, syntax::BinaryOperator operation, Span operatorSpan, Span span,
                             ExpressionPointer left, ExpressionPointer right);

/// The procedure that `AddressOf` names; fails when it is overloaded.
const host::MethodInfo &CheckAddressOf(Checker &checker, const syntax::Expression &expression);

/// The value that a name or member refers to; callables are called without arguments.
ExpressionPointer ToValue(Checker &checker, Resolution resolution);

}  // namespace quillbar::language
