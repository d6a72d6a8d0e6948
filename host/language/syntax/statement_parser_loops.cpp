// SPDX-License-Identifier: MIT
// For, For Each, While and Do.
#include "host/language/syntax/statement_parser.h"

#include <fmt/format.h>

#include "host/language/syntax/names.h"

namespace quillbar::language {
namespace {

using syntax::StatementKind;

void ExpectNext(Parser &parser, const Token &opener, std::string_view variable) {
  if (parser.At(TokenKind::kEndOfFile)) FailUnclosed(parser, opener, "Next");
  if (!parser.At(Keyword::kNext)) {
    parser.FailHere(fmt::format("\"Next\" for the \"For\" of line {}", parser.source.Locate(opener.span.begin).line));
  }
  parser.Take();
  if (parser.At(TokenKind::kName)) {
    const Token &name = parser.Take();
    if (!SameName(name.text, variable)) {
      parser.Fail(name.span, fmt::format("this \"Next\" belongs to the loop over \"{}\"", variable));
    }
  }
  parser.ExpectLineEnd();
}

syntax::StatementPointer ParseForEach(Parser &parser, const Token &first) {
  parser.Take();
  auto statement = std::make_unique<syntax::ForEach>(first.span);
  const Token &variable = parser.ExpectNewName("the loop's variable");
  statement->variable = variable.text;
  statement->variableSpan = variable.span;
  if (parser.Accept(Keyword::kAs)) statement->type = ParseTypeName(parser);
  parser.Expect(Keyword::kIn, "the variable of \"For Each\"");
  statement->list = ParseExpression(parser);
  statement->span = parser.SpanFrom(first);
  parser.ExpectLineEnd();
  statement->body = ParseBlock(parser);
  ExpectNext(parser, first, variable.text);
  return statement;
}

syntax::Do::Test ParseDoTest(Parser &parser) {
  syntax::Do::Test test;
  if (parser.At(Keyword::kWhile) || parser.At(Keyword::kUntil)) {
    test.isUntil = parser.Take().Is(Keyword::kUntil);
    test.condition = ParseExpression(parser);
  }
  return test;
}

}  // namespace

syntax::StatementPointer ParseFor(Parser &parser) {
  const Token &first = parser.Take();
  if (parser.At(Keyword::kEach)) return ParseForEach(parser, first);
  auto statement = std::make_unique<syntax::For>(first.span);
  const Token &variable = parser.ExpectNewName("the loop's variable");
  statement->variable = variable.text;
  statement->variableSpan = variable.span;
  if (parser.Accept(Keyword::kAs)) statement->type = ParseTypeName(parser);
  parser.Expect(TokenKind::kEqual, "\"=\" and the first value of the loop");
  statement->first = ParseExpression(parser);
  if (!parser.At(Keyword::kTo) && !parser.At(Keyword::kDownTo)) parser.FailHere("\"To\" or \"DownTo\"");
  statement->isDown = parser.Take().Is(Keyword::kDownTo);
  statement->last = ParseExpression(parser);
  if (parser.Accept(Keyword::kStep)) statement->step = ParseExpression(parser);
  statement->span = parser.SpanFrom(first);
  parser.ExpectLineEnd();
  statement->body = ParseBlock(parser);
  ExpectNext(parser, first, variable.text);
  return statement;
}

syntax::StatementPointer ParseWhile(Parser &parser) {
  const Token &first = parser.Take();
  auto statement = std::make_unique<syntax::While>(first.span);
  statement->condition = ParseExpression(parser);
  statement->span = parser.SpanFrom(first);
  parser.ExpectLineEnd();
  statement->body = ParseBlock(parser);
  if (parser.At(TokenKind::kEndOfFile)) FailUnclosed(parser, first, "Wend");
  if (parser.Accept(Keyword::kWend)) {
    parser.ExpectLineEnd();
  } else if (parser.At(Keyword::kEnd)) {
    ExpectEnd(parser, Keyword::kWhile, first);
  } else {
    parser.FailHere(fmt::format("\"Wend\" for the \"While\" of line {}", parser.source.Locate(first.span.begin).line));
  }
  return statement;
}

syntax::StatementPointer ParseDo(Parser &parser) {
  const Token &first = parser.Take();
  auto statement = std::make_unique<syntax::Do>(first.span);
  statement->before = ParseDoTest(parser);
  statement->span = parser.SpanFrom(first);
  parser.ExpectLineEnd();
  statement->body = ParseBlock(parser);
  if (parser.At(TokenKind::kEndOfFile)) FailUnclosed(parser, first, "Loop");
  if (!parser.At(Keyword::kLoop)) {
    parser.FailHere(fmt::format("\"Loop\" for the \"Do\" of line {}", parser.source.Locate(first.span.begin).line));
  }
  parser.Take();
  statement->after = ParseDoTest(parser);
  parser.ExpectLineEnd();
  return statement;
}

}  // namespace quillbar::language
