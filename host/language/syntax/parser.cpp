// SPDX-License-Identifier: MIT
#include "host/language/syntax/parser.h"

#include <fmt/format.h>

#include <memory>
#include <optional>
#include <utility>

#include "host/language/syntax/class_parser.h"
#include "host/language/syntax/conditional_compilation.h"
#include "host/language/syntax/enumeration_parser.h"
#include "host/language/syntax/environment_names.h"
#include "host/language/syntax/lexer.h"
#include "host/language/syntax/names.h"
#include "host/language/syntax/procedure_parser.h"
#include "host/language/syntax/statement_parser.h"
#include "host/language/syntax/tag_format.h"

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

/// Whether a file belongs to a project that isn't stored as text.
bool IsOtherFormat(std::string_view text) { return text.starts_with("<?xml") || text.starts_with("RbBF"); }

/// A file after the first has declarations alone.
void RefuseStatements(Parser &parser, const syntax::Script &script, std::size_t first) {
  for (std::size_t i = first; i < script.body.size(); ++i) {
    if (script.body[i]->kind == syntax::StatementKind::kConstant) continue;
    return parser.Report(script.body[i]->span,
                         "statements run from the first file alone; the others declare classes, modules, Subs and "
                         "Functions");
  }
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
  std::vector<TokenizedFile> files(source.Files().size());
  for (std::size_t i = 0; i < files.size(); ++i) {
    if (IsOtherFormat(source.Slice(source.Files()[i].span))) {
      const std::uint32_t begin = source.Files()[i].span.begin;
      diagnostics.Report(source, {begin, begin + 1},
                         "this file is in a project format other than text; save the project as text");
      continue;
    }
    files[i].tokens = Tokenize(source, source.Files()[i], files[i].errors);
    ReadTags(files[i]);
  }
  LeaveOutBranches(source, files, diagnostics);
  syntax::Script script;
  for (TokenizedFile &file : files) {
    for (Diagnostic &error : file.errors) diagnostics.Report(source, error.span, std::move(error.message));
    if (file.tokens.empty()) continue;
    Parser parser(source, diagnostics, std::move(file.tokens));
    const std::size_t statements = script.body.size();
    while (!parser.At(TokenKind::kEndOfFile)) {
      parser.Recover([&] { ParseItem(parser, script); });
    }
    if (&file != &files.front()) RefuseStatements(parser, script, statements);
  }
  return script;
}

}  // namespace quillbar::language
