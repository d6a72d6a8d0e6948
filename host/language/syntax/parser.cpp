// SPDX-License-Identifier: MIT
#include "host/language/syntax/parser.h"

#include <fmt/format.h>

#include <memory>
#include <optional>
#include <utility>

#include "host/language/syntax/environment_names.h"
#include "host/language/syntax/lexer.h"
#include "host/language/syntax/names.h"
#include "host/language/syntax/statement_parser.h"

namespace quillbar::language {
namespace {

/// Whether this ends a block whose start has been refused.
bool AtEndOfTheEnvironment(const Parser &parser) {
  return parser.At(Keyword::kEnd) && parser.HasReported() && StartsLineOfTheEnvironment(parser.Ahead().text);
}

[[noreturn]] void FailStray(Parser &parser) {
  const Token &first = parser.Take();
  std::string line(Spelling(first.keyword));
  if (first.Is(Keyword::kEnd) && parser.At(TokenKind::kKeyword)) {
    line += fmt::format(" {}", Spelling(parser.Current().keyword));
    parser.Take();
  }
  parser.Fail(parser.SpanFrom(first), fmt::format("\"{}\" closes or continues nothing here", line));
}

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
  if (parser.Ahead().Is(TokenKind::kName) && (SameName(first.text, "Extends") || SameName(first.text, "Assigns"))) {
    parser.Fail(first.span, NotPartOfThisHost(first.text));
  }
  parameter.name = parser.ExpectNewName("a parameter").text;
  bool isArray = false;
  if (parser.Accept(TokenKind::kLeftParenthesis)) {
    isArray = true;
    parser.Expect(TokenKind::kRightParenthesis, "\")\"; an array is written name() As Type");
  }
  if (!parser.At(Keyword::kAs)) parser.FailHere("\"As\" and the type of the parameter");
  parser.Take();
  parameter.type = ParseTypeName(parser);
  parameter.type.isArray = isArray;
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
  if (parser.Accept(TokenKind::kLeftParenthesis)) {
    parser.Expect(TokenKind::kRightParenthesis, "\")\"; an array is written As Type()");
    type.isArray = true;
  }
  return type;
}

std::unique_ptr<syntax::Procedure> ParseProcedure(Parser &parser) {
  const Token &first = parser.Take();
  const bool isFunction = first.Is(Keyword::kFunction);
  auto procedure = std::make_unique<syntax::Procedure>();
  // The body is read even after an error in its first line, so that its end is matched with its start.
  parser.Recover([&] {
    const Token &name = parser.ExpectNewName(isFunction ? "a function" : "a sub");
    procedure->name = name.text;
    procedure->nameSpan = name.span;
    if (parser.Accept(TokenKind::kLeftParenthesis)) ParseParameters(parser, *procedure);
    if (isFunction && !parser.At(Keyword::kAs)) parser.FailHere("\"As\" and the type of the function's result");
    if (parser.Accept(Keyword::kAs)) {
      if (!isFunction) parser.Fail(parser.Last().span, "a \"Sub\" has no result; use \"Function\"");
      procedure->result = ParseResultType(parser);
    }
    procedure->span = parser.SpanFrom(first);
    parser.ExpectLineEnd();
  });
  procedure->body = ParseBlock(parser);
  procedure->endSpan = parser.Current().span;
  ExpectEnd(parser, first.keyword, first);
  return procedure;
}

std::unique_ptr<syntax::Enumeration> ParseEnumeration(Parser &parser) {
  const Token &first = parser.Take();
  auto enumeration = std::make_unique<syntax::Enumeration>();
  parser.Recover([&] {
    const Token &name = parser.ExpectNewName("an enumeration");
    enumeration->name = name.text;
    enumeration->nameSpan = name.span;
    if (parser.Accept(Keyword::kAs)) enumeration->type = ParseTypeName(parser);
    enumeration->span = parser.SpanFrom(first);
    parser.ExpectLineEnd();
  });
  while (!parser.At(Keyword::kEnd) && !parser.At(TokenKind::kEndOfFile)) {
    parser.Recover([&] {
      if (parser.Accept(TokenKind::kEndOfLine)) return;
      const Token &name = parser.ExpectNewName("an enumeration's member");
      syntax::Enumeration::Value &value = enumeration->values.emplace_back();
      value.name = name.text;
      value.span = name.span;
      if (parser.Accept(TokenKind::kEqual)) value.value = ParseExpression(parser);
      parser.ExpectLineEnd();
    });
  }
  ExpectEnd(parser, Keyword::kEnum, first);
  return enumeration;
}

void ParseItem(Parser &parser, syntax::Script &script) {
  if (parser.Accept(TokenKind::kEndOfLine)) return;
  if (parser.At(TokenKind::kDirective)) return ParseDirective(parser);
  // What "Private Sub" declares is read all the same.
  while (AtLineOfTheEnvironment(parser) &&
         (parser.Ahead().Is(Keyword::kSub) || parser.Ahead().Is(Keyword::kFunction)) &&
         !SameName(parser.Current().text, "Delegate") && !SameName(parser.Current().text, "Declare")) {
    parser.Report(parser.Current().span, NotPartOfThisHost(parser.Current().text));
    parser.Take();
  }
  if (parser.At(Keyword::kSub) || parser.At(Keyword::kFunction)) {
    script.procedures.push_back(ParseProcedure(parser));
  } else if (parser.At(Keyword::kEnum)) {
    script.enumerations.push_back(ParseEnumeration(parser));
  } else if (AtEndOfTheEnvironment(parser)) {
    parser.SkipLine();
  } else if (AtBlockEnd(parser)) {
    FailStray(parser);
  } else {
    script.body.push_back(ParseStatement(parser));
  }
}

}  // namespace

syntax::Script Parse(const SourceText &source, Diagnostics &diagnostics) {
  std::vector<Token> tokens = Tokenize(source, diagnostics);
  syntax::Script script;
  if (tokens.empty()) return script;
  Parser parser(source, diagnostics, std::move(tokens));
  while (!parser.At(TokenKind::kEndOfFile)) {
    parser.Recover([&] { ParseItem(parser, script); });
  }
  return script;
}

}  // namespace quillbar::language
