// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "host/language/syntax/parser_context.h"
#include "host/language/syntax/syntax_tree.h"

/// Reads expressions. Operators bind in this order, tightest first; those of one rank from left to right:
///
///     IsA    ^    - + (sign)    Not    * / \ Mod    + -    = <> < > <= >= Is    And    Or Xor
namespace quillbar::language {

/// Reads an expression.
syntax::ExpressionPointer ParseExpression(Parser &parser);

/// Reads a name, literal or parenthesis with the members and arguments after it. With `isStatement`, parentheses
/// that only open the first argument (`Print (a) + b`) are left to the caller.
syntax::ExpressionPointer ParseOperand(Parser &parser, bool isStatement = false);

/// Reads the arguments of a call that has no parentheses, up to the end of the line.
std::vector<syntax::ExpressionPointer> ParseArgumentsToLineEnd(Parser &parser);

/// Reads the arguments after an optional "(", that is, of `New Type` or `New Type(a, b)`.
std::vector<syntax::ExpressionPointer> ParseOptionalArguments(Parser &parser);

/// Reads the name of a type: its parts between dots.
syntax::TypeName ParseTypeName(Parser &parser);

/// The dimensions in the parentheses after the name of an array: none without parentheses, else the number of commas
/// and one. The bounds of each dimension are read into `upperBounds`, where they may be given.
int ParseDimensions(Parser &parser, std::vector<syntax::ExpressionPointer> *upperBounds = nullptr);

}  // namespace quillbar::language
