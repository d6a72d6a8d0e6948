// SPDX-License-Identifier: MIT
// If and Select Case.
#include "host/language/syntax/statement_parser.h"

#include <utility>

namespace quillbar::language {

using syntax::StatementKind;
using syntax::StatementPointer;

StatementPointer StatementParser::ParseIf() {
  const Token &first = Take();
  auto statement = std::make_unique<syntax::If>(first.span);
  syntax::If::Branch branch;
  branch.condition = ParseExpression();
  statement->span = SpanFrom(first);
  Expect(Keyword::kThen, "the condition of \"If\"");

  if (!AtLineEnd()) {
    branch.body = ParseSingleLineBlock();
    statement->branches.push_back(std::move(branch));
    if (Accept(Keyword::kElse)) statement->otherwise = ParseSingleLineBlock();
    ExpectLineEnd();
    return statement;
  }

  ExpectLineEnd();
  branch.body = ParseBlock();
  statement->branches.push_back(std::move(branch));
  while (At(Keyword::kElseIf) || (At(Keyword::kElse) && Ahead().Is(Keyword::kIf))) {
    if (Take().Is(Keyword::kElse)) Take();
    syntax::If::Branch &next = statement->branches.emplace_back();
    Recover([&] {
      next.condition = ParseExpression();
      Expect(Keyword::kThen, "the condition of \"ElseIf\"");
      ExpectLineEnd();
    });
    next.body = ParseBlock();
  }
  if (Accept(Keyword::kElse)) {
    ExpectLineEnd();
    statement->otherwise = ParseBlock();
  }
  ExpectEnd(Keyword::kIf, first);
  return statement;
}

syntax::Block StatementParser::ParseSingleLineBlock() {
  const Nested nested(*this);
  syntax::Block block;
  if (!At(Keyword::kIf)) {
    block.push_back(ParseSimpleStatement());
    return block;
  }
  // `If a Then If b Then c Else d`: the inner one takes the "Else" and leaves the line end.
  const Token &first = Take();
  auto inner = std::make_unique<syntax::If>(first.span);
  syntax::If::Branch branch;
  branch.condition = ParseExpression();
  inner->span = SpanFrom(first);
  Expect(Keyword::kThen, "the condition of \"If\"");
  if (AtLineEnd()) FailHere("a statement on the same line");
  branch.body = ParseSingleLineBlock();
  inner->branches.push_back(std::move(branch));
  if (Accept(Keyword::kElse)) inner->otherwise = ParseSingleLineBlock();
  block.push_back(std::move(inner));
  return block;
}

StatementPointer StatementParser::ParseSelect() {
  const Token &first = Take();
  auto statement = std::make_unique<syntax::Select>(first.span);
  Expect(Keyword::kCase, "\"Select\"");
  statement->subject = ParseExpression();
  statement->span = SpanFrom(first);
  ExpectLineEnd();
  while (Accept(TokenKind::kEndOfLine)) {
  }
  bool hasElse = false;
  while (At(Keyword::kCase) || At(Keyword::kElse)) {
    const Token &caseToken = Take();
    if (hasElse) Fail(caseToken.span, "no case can follow \"Case Else\"");
    if (caseToken.Is(Keyword::kElse) || Accept(Keyword::kElse)) {
      hasElse = true;
      ExpectLineEnd();
      statement->otherwise = ParseBlock();
      continue;
    }
    syntax::Select::Case &branch = statement->cases.emplace_back();
    Recover([&] {
      do {
        branch.tests.push_back(ParseCaseTest());
      } while (Accept(TokenKind::kComma));
      ExpectLineEnd();
    });
    branch.body = ParseBlock();
  }
  if (!At(Keyword::kEnd) && !At(TokenKind::kEndOfFile)) FailHere("\"Case\" or \"End Select\"");
  ExpectEnd(Keyword::kSelect, first);
  return statement;
}

syntax::Select::Test StatementParser::ParseCaseTest() {
  syntax::Select::Test test;
  const Token &first = Current();
  if (Accept(Keyword::kIsA)) {
    test.type = ParseTypeName();
  } else {
    if (Accept(Keyword::kIs)) {
      switch (Current().kind) {
        case TokenKind::kEqual:
          test.operation = syntax::BinaryOperator::kEqual;
          break;
        case TokenKind::kNotEqual:
          test.operation = syntax::BinaryOperator::kNotEqual;
          break;
        case TokenKind::kLess:
          test.operation = syntax::BinaryOperator::kLess;
          break;
        case TokenKind::kLessEqual:
          test.operation = syntax::BinaryOperator::kLessEqual;
          break;
        case TokenKind::kGreater:
          test.operation = syntax::BinaryOperator::kGreater;
          break;
        case TokenKind::kGreaterEqual:
          test.operation = syntax::BinaryOperator::kGreaterEqual;
          break;
        default:
          FailHere("a comparison after \"Is\"");
      }
      Take();
      test.first = ParseExpression();
    } else {
      test.first = ParseExpression();
      if (Accept(Keyword::kTo)) test.last = ParseExpression();
    }
  }
  test.span = SpanFrom(first);
  return test;
}

}  // namespace quillbar::language
