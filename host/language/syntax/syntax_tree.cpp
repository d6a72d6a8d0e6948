// SPDX-License-Identifier: MIT
#include "host/language/syntax/syntax_tree.h"

namespace quillbar::language::syntax {

std::string_view Spelling(BinaryOperator operation) {
  switch (operation) {
    case BinaryOperator::kPower:
      return "^";
    case BinaryOperator::kMultiply:
      return "*";
    case BinaryOperator::kDivide:
      return "/";
    case BinaryOperator::kIntegerDivide:
      return "\\";
    case BinaryOperator::kModulo:
      return "Mod";
    case BinaryOperator::kAdd:
      return "+";
    case BinaryOperator::kSubtract:
      return "-";
    case BinaryOperator::kEqual:
      return "=";
    case BinaryOperator::kNotEqual:
      return "<>";
    case BinaryOperator::kLess:
      return "<";
    case BinaryOperator::kGreater:
      return ">";
    case BinaryOperator::kLessEqual:
      return "<=";
    case BinaryOperator::kGreaterEqual:
      return ">=";
    case BinaryOperator::kIs:
      return "Is";
    case BinaryOperator::kAnd:
      return "And";
    case BinaryOperator::kOr:
      return "Or";
    case BinaryOperator::kXor:
      return "Xor";
  }
  return {};
}

}  // namespace quillbar::language::syntax
