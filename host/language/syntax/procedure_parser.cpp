// SPDX-License-Identifier: MIT
#include "host/language/syntax/procedure_parser.h"

#include "host/language/syntax/names.h"

namespace quillbar::language {
namespace {

syntax::Parameter ParseParameter(Parser &parser) {
  syntax::Parameter parameter;
  const Token &first = parser.Current();
  for (;;) {
    if (parser.Accept(Keyword::kByRef)) {
      parameter.byReference = true;
    } else if (parser.Accept(Keyword::kOptional)) {
      parameter.isOptional = true;
    } else if (parser.Accept(Keyword::kParamArray)) {
      parameter.isList = true;
    } else if (!parser.Accept(Keyword::kByVal)) {
      break;
    }
  }
  if (parser.At(TokenKind::kName) && parser.Ahead().Is(TokenKind::kName)) {
    parameter.isExtended = SameName(parser.Current().text, "Extends");
    parameter.isAssigned = SameName(parser.Current().text, "Assigns");
    if (parameter.isExtended || parameter.isAssigned) parser.Take();
  }
  parameter.name = parser.ExpectNewName("a parameter").text;
  const int rank = ParseDimensions(parser);
  if (!parser.At(Keyword::kAs)) parser.FailHere("\"As\" and the type of the parameter");
  parser.Take();
  parameter.type = ParseTypeName(parser);
  parameter.type.rank = rank;
  if (parser.Accept(TokenKind::kEqual)) {
    parameter.isOptional = true;
    parameter.defaultValue = ParseExpression(parser);
  }
  parameter.span = parser.SpanFrom(first);
  return parameter;
}

void ParseParameters(Parser &parser, syntax::Procedure &procedure) {
  if (parser.Accept(TokenKind::kRightParenthesis)) return;
  do {
    procedure.parameters.push_back(ParseParameter(parser));
  } while (parser.Accept(TokenKind::kComma));
  parser.Expect(TokenKind::kRightParenthesis, "\",\" or \")\"");
}

syntax::TypeName ParseResultType(Parser &parser) {
  syntax::TypeName type = ParseTypeName(parser);
  type.rank = ParseDimensions(parser);
  return type;
}

std::unique_ptr<syntax::Procedure> ParseFirstLine(Parser &parser) {
  const Token &first = parser.Take();
  const bool isFunction = first.Is(Keyword::kFunction);
  const bool isSub = first.Is(Keyword::kSub);
  auto procedure = std::make_unique<syntax::Procedure>();
  parser.Recover([&] {
    const Token &name = parser.ExpectNewName(isFunction ? "a function" : isSub ? "a sub" : "an event");
    procedure->name = name.text;
    procedure->nameSpan = name.span;
    if (parser.Accept(TokenKind::kLeftParenthesis)) ParseParameters(parser, *procedure);
    if (isFunction && !parser.At(Keyword::kAs)) parser.FailHere("\"As\" and the type of the function's result");
    if (parser.Accept(Keyword::kAs)) {
      if (isSub) parser.Fail(parser.Last().span, "a \"Sub\" has no result; use \"Function\"");
      procedure->result = ParseResultType(parser);
    }
    procedure->span = parser.SpanFrom(first);
    parser.ExpectLineEnd();
  });
  return procedure;
}

}  // namespace

std::unique_ptr<syntax::Procedure> ParseProcedure(Parser &parser) {
  const Token &first = parser.Current();
  // The body is read even after an error in its first line, so that its end is matched with its start.
  std::unique_ptr<syntax::Procedure> procedure = ParseFirstLine(parser);
  procedure->body = ParseBlock(parser);
  procedure->endSpan = parser.Current().span;
  ExpectEnd(parser, first.keyword, first);
  return procedure;
}

std::unique_ptr<syntax::Procedure> ParseProcedureHead(Parser &parser) {
  const Token &first = parser.Current();
  std::unique_ptr<syntax::Procedure> procedure = ParseFirstLine(parser);
  const std::size_t mark = parser.Mark();
  while (parser.Accept(TokenKind::kEndOfLine)) {
  }
  if (first.Is(TokenKind::kKeyword) && parser.At(Keyword::kEnd) && parser.Ahead().Is(first.keyword)) {
    ExpectEnd(parser, first.keyword, first);
  } else {
    parser.ReturnTo(mark);
  }
  return procedure;
}

}  // namespace quillbar::language
