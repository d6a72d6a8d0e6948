// SPDX-License-Identifier: MIT
#include "host/language/syntax/parser.h"

#include <fmt/format.h>

#include <memory>
#include <optional>
#include <utility>

#include "host/language/syntax/class_parser.h"
#include "host/language/syntax/enumeration_parser.h"
#include "host/language/syntax/environment_names.h"
#include "host/language/syntax/lexer.h"
#include "host/language/syntax/names.h"
#include "host/language/syntax/procedure_parser.h"
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

void ParseItem(Parser &parser, syntax::Script &script) {
  if (parser.Accept(TokenKind::kEndOfLine)) return;
  if (parser.At(TokenKind::kDirective)) return ParseDirective(parser);
  if (AtClass(parser)) return ParseClass(parser, script);
  if (AcceptUsing(parser, script) || AcceptDelegate(parser, script)) return;
  // What "Private Sub" declares is read all the same.
  while (AtLineOfTheEnvironment(parser) &&
         (parser.Ahead().Is(Keyword::kSub) || parser.Ahead().Is(Keyword::kFunction)) &&
         !SameName(parser.Current().text, "Declare")) {
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
