// SPDX-License-Identifier: MIT
// For, For Each, While and Do.
#include "host/language/syntax/statement_parser.h"

#include <fmt/format.h>

#include "host/language/syntax/names.h"

namespace quillbar::language {

using syntax::StatementKind;
using syntax::StatementPointer;

StatementPointer StatementParser::ParseFor() {
  const Token &first = Take();
  if (At(Keyword::kEach)) return ParseForEach(first);
  auto statement = std::make_unique<syntax::For>(first.span);
  const Token &variable = ExpectNewName("the loop's variable");
  statement->variable = variable.text;
  statement->variableSpan = variable.span;
  if (Accept(Keyword::kAs)) statement->type = ParseTypeName();
  Expect(TokenKind::kEqual, "\"=\" and the first value of the loop");
  statement->first = ParseExpression();
  if (!At(Keyword::kTo) && !At(Keyword::kDownTo)) FailHere("\"To\" or \"DownTo\"");
  statement->isDown = Take().Is(Keyword::kDownTo);
  statement->last = ParseExpression();
  if (Accept(Keyword::kStep)) statement->step = ParseExpression();
  statement->span = SpanFrom(first);
  ExpectLineEnd();
  statement->body = ParseBlock();
  ExpectNext(first, variable.text);
  return statement;
}

StatementPointer StatementParser::ParseForEach(const Token &first) {
  Take();
  auto statement = std::make_unique<syntax::ForEach>(first.span);
  const Token &variable = ExpectNewName("the loop's variable");
  statement->variable = variable.text;
  statement->variableSpan = variable.span;
  if (Accept(Keyword::kAs)) statement->type = ParseTypeName();
  Expect(Keyword::kIn, "the variable of \"For Each\"");
  statement->list = ParseExpression();
  statement->span = SpanFrom(first);
  ExpectLineEnd();
  statement->body = ParseBlock();
  ExpectNext(first, variable.text);
  return statement;
}

void StatementParser::ExpectNext(const Token &opener, std::string_view variable) {
  if (At(TokenKind::kEndOfFile)) FailUnclosed(opener, "Next");
  if (!At(Keyword::kNext)) {
    FailHere(fmt::format("\"Next\" for the \"For\" of line {}", source_.Locate(opener.span.begin).line));
  }
  Take();
  if (At(TokenKind::kName)) {
    const Token &name = Take();
    if (!SameName(name.text, variable)) {
      Fail(name.span, fmt::format("this \"Next\" belongs to the loop over \"{}\"", variable));
    }
  }
  ExpectLineEnd();
}

StatementPointer StatementParser::ParseWhile() {
  const Token &first = Take();
  auto statement = std::make_unique<syntax::While>(first.span);
  statement->condition = ParseExpression();
  statement->span = SpanFrom(first);
  ExpectLineEnd();
  statement->body = ParseBlock();
  if (At(TokenKind::kEndOfFile)) FailUnclosed(first, "Wend");
  if (Accept(Keyword::kWend)) {
    ExpectLineEnd();
  } else if (At(Keyword::kEnd)) {
    ExpectEnd(Keyword::kWhile, first);
  } else {
    FailHere(fmt::format("\"Wend\" for the \"While\" of line {}", source_.Locate(first.span.begin).line));
  }
  return statement;
}

StatementPointer StatementParser::ParseDo() {
  const Token &first = Take();
  auto statement = std::make_unique<syntax::Do>(first.span);
  statement->before = ParseDoTest();
  statement->span = SpanFrom(first);
  ExpectLineEnd();
  statement->body = ParseBlock();
  if (At(TokenKind::kEndOfFile)) FailUnclosed(first, "Loop");
  if (!At(Keyword::kLoop)) {
    FailHere(fmt::format("\"Loop\" for the \"Do\" of line {}", source_.Locate(first.span.begin).line));
  }
  Take();
  statement->after = ParseDoTest();
  ExpectLineEnd();
  return statement;
}

syntax::Do::Test StatementParser::ParseDoTest() {
  syntax::Do::Test test;
  if (At(Keyword::kWhile) || At(Keyword::kUntil)) {
    test.isUntil = Take().Is(Keyword::kUntil);
    test.condition = ParseExpression();
  }
  return test;
}

}  // namespace quillbar::language
