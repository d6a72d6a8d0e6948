// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "host/language/syntax/parser_base.h"
#include "host/language/syntax/syntax_tree.h"

namespace quillbar::language {

/// Reads expressions. Operators bind in this order, tightest first; those of one rank from left to right:
///
///     IsA    ^    - + (sign)    Not    * / \ Mod    + -    = <> < > <= >= Is    And    Or Xor
class ExpressionParser : public ParserBase {
 public:
  using ParserBase::ParserBase;

 protected:
  /// Reads an expression.
  syntax::ExpressionPointer ParseExpression();

  /// Reads a name, literal or parenthesis with the members and arguments after it. With `isStatement`, parentheses
  /// that only open the first argument (`Print (a) + b`) are left to the caller.
  syntax::ExpressionPointer ParseOperand(bool isStatement = false);

  /// Reads the arguments of a call that has no parentheses, up to the end of the line.
  std::vector<syntax::ExpressionPointer> ParseArgumentsToLineEnd();
  /// Reads the name of a type, with "()" for an array.
  syntax::TypeName ParseTypeName();

  /// Reads the arguments after an optional "(", that is, of `New Type` or `New Type(a, b)`.
  std::vector<syntax::ExpressionPointer> ParseOptionalArguments();

 private:
  syntax::ExpressionPointer ParseBinary(int rank);
  syntax::ExpressionPointer ParsePrefixed();
  syntax::ExpressionPointer ParsePrimary();
  syntax::ExpressionPointer ParseNew();
  syntax::ExpressionPointer ParseConditional();
  syntax::ExpressionPointer ParseAddressOf();
  std::vector<syntax::ExpressionPointer> ParseParenthesizedArguments();
};

}  // namespace quillbar::language
