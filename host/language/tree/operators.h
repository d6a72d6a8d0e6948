// SPDX-License-Identifier: MIT
#pragma once

#include "host/language/syntax/syntax_tree.h"
#include "host/language/tree/code.h"

/// Nodes for operators. The checker has already chosen the types and converted the operands.
namespace quillbar::language {

/// Arithmetic on two operands of `type`: `+ - *` and, on integers, `\` and `Mod`; on Doubles also `/`, `^` and `Mod`.
ExpressionPointer MakeArithmetic(syntax::BinaryOperator operation, host::Type type, Span span, ExpressionPointer left,
                                 ExpressionPointer right);

/// A comparison of two operands of one representation. Integers may be of different kinds and compare
/// by their mathematical values.
ExpressionPointer MakeComparison(syntax::BinaryOperator operation, Span span, ExpressionPointer left,
                                 ExpressionPointer right);

/// Arithmetic on two operands of the type Currency. `\` gives an Int64, the others Currency; a result that it can't hold
/// raises OutOfBoundsException.
ExpressionPointer MakeCurrencyArithmetic(syntax::BinaryOperator operation, Span span, ExpressionPointer left,
                                         ExpressionPointer right);

/// Arithmetic and comparisons of two Variants, on what they hold. An order that there isn't raises
/// TypeMismatchException.
ExpressionPointer MakeVariantArithmetic(syntax::BinaryOperator operation, Span span, ExpressionPointer left,
                                        ExpressionPointer right);
ExpressionPointer MakeVariantComparison(syntax::BinaryOperator operation, Span span, ExpressionPointer left,
                                        ExpressionPointer right);

/// `And`, `Or`, `Xor`: on Booleans, the right side runs only when it matters; on integers, bit by bit.
ExpressionPointer MakeLogic(syntax::BinaryOperator operation, host::Type type, Span span, ExpressionPointer left,
                            ExpressionPointer right);

/// Two texts joined, for `+`.
ExpressionPointer MakeConcatenation(Span span, ExpressionPointer left, ExpressionPointer right);

/// The sign `-` before a number of `type`.
ExpressionPointer MakeNegation(host::Type type, Span span, ExpressionPointer operand);
/// `Not`: the other Boolean, or all bits of an integer inverted.
ExpressionPointer MakeNot(host::Type type, Span span, ExpressionPointer operand);

/// `If(condition, first, second)`
ExpressionPointer MakeConditional(Span span, ExpressionPointer condition, ExpressionPointer first,
                                  ExpressionPointer second);

}  // namespace quillbar::language
