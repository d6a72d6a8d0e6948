// SPDX-License-Identifier: MIT
// If and Select Case.
#include "host/language/syntax/statement_parser.h"

#include <utility>

namespace quillbar::language {
namespace {

using syntax::StatementKind;

syntax::Block ParseSingleLineBlock(Parser &parser) {
  const Parser::Nested nested(parser);
  syntax::Block block;
  if (!parser.At(Keyword::kIf)) {
    block.push_back(ParseSimpleStatement(parser));
    return block;
  }
  // `If a Then If b Then c Else d`: the inner one takes the "Else" and leaves the line end.
  const Token &first = parser.Take();
  auto inner = std::make_unique<syntax::If>(first.span);
  syntax::If::Branch branch;
  branch.condition = ParseExpression(parser);
  inner->span = parser.SpanFrom(first);
  parser.Expect(Keyword::kThen, "the condition of \"If\"");
  if (parser.AtLineEnd()) parser.FailHere("a statement on the same line");
  branch.body = ParseSingleLineBlock(parser);
  inner->branches.push_back(std::move(branch));
  if (parser.Accept(Keyword::kElse)) inner->otherwise = ParseSingleLineBlock(parser);
  block.push_back(std::move(inner));
  return block;
}

syntax::Select::Test ParseCaseTest(Parser &parser) {
  syntax::Select::Test test;
  const Token &first = parser.Current();
  if (parser.Accept(Keyword::kIsA)) {
    test.type = ParseTypeName(parser);
  } else {
    if (parser.Accept(Keyword::kIs)) {
      switch (parser.Current().kind) {
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
          parser.FailHere("a comparison after \"Is\"");
      }
      parser.Take();
      test.first = ParseExpression(parser);
    } else {
      test.first = ParseExpression(parser);
      if (parser.Accept(Keyword::kTo)) test.last = ParseExpression(parser);
    }
  }
  test.span = parser.SpanFrom(first);
  return test;
}

}  // namespace

syntax::StatementPointer ParseIf(Parser &parser) {
  const Token &first = parser.Take();
  auto statement = std::make_unique<syntax::If>(first.span);
  syntax::If::Branch branch;
  branch.condition = ParseExpression(parser);
  statement->span = parser.SpanFrom(first);
  parser.Expect(Keyword::kThen, "the condition of \"If\"");

  if (!parser.AtLineEnd()) {
    branch.body = ParseSingleLineBlock(parser);
    statement->branches.push_back(std::move(branch));
    if (parser.Accept(Keyword::kElse)) statement->otherwise = ParseSingleLineBlock(parser);
    parser.ExpectLineEnd();
    return statement;
  }

  parser.ExpectLineEnd();
  branch.body = ParseBlock(parser);
  statement->branches.push_back(std::move(branch));
  while (parser.At(Keyword::kElseIf) || (parser.At(Keyword::kElse) && parser.Ahead().Is(Keyword::kIf))) {
    if (parser.Take().Is(Keyword::kElse)) parser.Take();
    syntax::If::Branch &next = statement->branches.emplace_back();
    parser.Recover([&] {
      next.condition = ParseExpression(parser);
      parser.Expect(Keyword::kThen, "the condition of \"ElseIf\"");
      parser.ExpectLineEnd();
    });
    next.body = ParseBlock(parser);
  }
  if (parser.Accept(Keyword::kElse)) {
    parser.ExpectLineEnd();
    statement->otherwise = ParseBlock(parser);
  }
  ExpectEnd(parser, Keyword::kIf, first);
  return statement;
}

syntax::StatementPointer ParseSelect(Parser &parser) {
  const Token &first = parser.Take();
  auto statement = std::make_unique<syntax::Select>(first.span);
  parser.Expect(Keyword::kCase, "\"Select\"");
  statement->subject = ParseExpression(parser);
  statement->span = parser.SpanFrom(first);
  parser.ExpectLineEnd();
  while (parser.Accept(TokenKind::kEndOfLine)) {
  }
  bool hasElse = false;
  while (parser.At(Keyword::kCase) || parser.At(Keyword::kElse)) {
    const Token &caseToken = parser.Take();
    if (hasElse) parser.Fail(caseToken.span, "no case can follow \"Case Else\"");
    if (caseToken.Is(Keyword::kElse) || parser.Accept(Keyword::kElse)) {
      hasElse = true;
      parser.ExpectLineEnd();
      statement->otherwise = ParseBlock(parser);
      continue;
    }
    syntax::Select::Case &branch = statement->cases.emplace_back();
    parser.Recover([&] {
      do {
        branch.tests.push_back(ParseCaseTest(parser));
      } while (parser.Accept(TokenKind::kComma));
      parser.ExpectLineEnd();
    });
    branch.body = ParseBlock(parser);
  }
  if (!parser.At(Keyword::kEnd) && !parser.At(TokenKind::kEndOfFile)) parser.FailHere("\"Case\" or \"End Select\"");
  ExpectEnd(parser, Keyword::kSelect, first);
  return statement;
}

}  // namespace quillbar::language
