// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

#include "host/language/check/call_checker.h"
#include "host/language/tree/delegates.h"

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

/// The methods of the script that `AddressOf` names.
std::unique_ptr<AddressNode> CheckAddressOf(Checker &checker, const syntax::Expression &expression);

/// The only one of these methods; fails when there are several.
const host::MethodInfo &OnlyMethod(Checker &checker, const AddressNode &address);

/// The value that a name or member refers to; callables are called without arguments.
ExpressionPointer ToValue(Checker &checker, Resolution resolution);

}  // namespace quillbar::language
