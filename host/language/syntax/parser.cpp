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

/// Reads the top level of a script: declarations, and the statements that run.
class ScriptParser : public StatementParser {
 public:
  using StatementParser::StatementParser;

  syntax::Script Run() {
    while (!At(TokenKind::kEndOfFile)) {
      Recover([&] { ParseItem(); });
    }
    return std::move(script_);
  }

 private:
  void ParseItem() {
    if (Accept(TokenKind::kEndOfLine)) return;
    if (At(TokenKind::kDirective)) return ParseDirective();
    // What "Private Sub" declares is read all the same.
    while (AtLineOfTheEnvironment() && (Ahead().Is(Keyword::kSub) || Ahead().Is(Keyword::kFunction)) &&
           !SameName(Current().text, "Delegate") && !SameName(Current().text, "Declare")) {
      Report(Current().span, NotPartOfThisHost(Current().text));
      Take();
    }
    if (At(Keyword::kSub) || At(Keyword::kFunction)) {
      script_.procedures.push_back(ParseProcedure());
    } else if (At(Keyword::kEnum)) {
      script_.enumerations.push_back(ParseEnumeration());
    } else if (AtEndOfTheEnvironment()) {
      SkipLine();
    } else if (AtBlockEnd()) {
      FailStray();
    } else {
      script_.body.push_back(ParseStatement());
    }
  }

  /// Whether this ends a block whose start has been refused.
  bool AtEndOfTheEnvironment() const {
    return At(Keyword::kEnd) && !diagnostics_.Empty() && StartsLineOfTheEnvironment(Ahead().text);
  }

  [[noreturn]] void FailStray() {
    const Token &first = Take();
    std::string line(Spelling(first.keyword));
    if (first.Is(Keyword::kEnd) && At(TokenKind::kKeyword)) {
      line += fmt::format(" {}", Spelling(Current().keyword));
      Take();
    }
    Fail(SpanFrom(first), fmt::format("\"{}\" closes or continues nothing here", line));
  }

  std::unique_ptr<syntax::Procedure> ParseProcedure() {
    const Token &first = Take();
    const bool isFunction = first.Is(Keyword::kFunction);
    auto procedure = std::make_unique<syntax::Procedure>();
    // The body is read even after an error in its first line, so that its end is matched with its start.
    Recover([&] {
      const Token &name = ExpectNewName(isFunction ? "a function" : "a sub");
      procedure->name = name.text;
      procedure->nameSpan = name.span;
      if (Accept(TokenKind::kLeftParenthesis)) ParseParameters(*procedure);
      if (isFunction && !At(Keyword::kAs)) FailHere("\"As\" and the type of the function's result");
      if (Accept(Keyword::kAs)) {
        if (!isFunction) Fail(Last().span, "a \"Sub\" has no result; use \"Function\"");
        procedure->result = ParseResultType();
      }
      procedure->span = SpanFrom(first);
      ExpectLineEnd();
    });
    procedure->body = ParseBlock();
    procedure->endSpan = Current().span;
    ExpectEnd(first.keyword, first);
    return procedure;
  }

  void ParseParameters(syntax::Procedure &procedure) {
    if (Accept(TokenKind::kRightParenthesis)) return;
    do {
      procedure.parameters.push_back(ParseParameter());
    } while (Accept(TokenKind::kComma));
    Expect(TokenKind::kRightParenthesis, "\",\" or \")\"");
  }

  syntax::Parameter ParseParameter() {
    syntax::Parameter parameter;
    const Token &first = Current();
    for (;;) {
      if (Accept(Keyword::kByRef)) {
        parameter.byReference = true;
      } else if (Accept(Keyword::kOptional)) {
        parameter.isOptional = true;
      } else if (Accept(Keyword::kParamArray)) {
        parameter.isList = true;
      } else if (!Accept(Keyword::kByVal)) {
        break;
      }
    }
    if (Ahead().Is(TokenKind::kName) && (SameName(first.text, "Extends") || SameName(first.text, "Assigns"))) {
      Fail(first.span, NotPartOfThisHost(first.text));
    }
    parameter.name = ExpectNewName("a parameter").text;
    bool isArray = false;
    if (Accept(TokenKind::kLeftParenthesis)) {
      isArray = true;
      Expect(TokenKind::kRightParenthesis, "\")\"; an array is written name() As Type");
    }
    if (!At(Keyword::kAs)) FailHere("\"As\" and the type of the parameter");
    Take();
    parameter.type = ParseTypeName();
    parameter.type.isArray = isArray;
    if (Accept(TokenKind::kEqual)) {
      parameter.isOptional = true;
      parameter.defaultValue = ParseExpression();
    }
    parameter.span = SpanFrom(first);
    return parameter;
  }

  syntax::TypeName ParseResultType() {
    syntax::TypeName type = ParseTypeName();
    if (Accept(TokenKind::kLeftParenthesis)) {
      Expect(TokenKind::kRightParenthesis, "\")\"; an array is written As Type()");
      type.isArray = true;
    }
    return type;
  }

  std::unique_ptr<syntax::Enumeration> ParseEnumeration() {
    const Token &first = Take();
    auto enumeration = std::make_unique<syntax::Enumeration>();
    Recover([&] {
      const Token &name = ExpectNewName("an enumeration");
      enumeration->name = name.text;
      enumeration->nameSpan = name.span;
      if (Accept(Keyword::kAs)) enumeration->type = ParseTypeName();
      enumeration->span = SpanFrom(first);
      ExpectLineEnd();
    });
    while (!At(Keyword::kEnd) && !At(TokenKind::kEndOfFile)) {
      Recover([&] {
        if (Accept(TokenKind::kEndOfLine)) return;
        const Token &name = ExpectNewName("an enumeration's member");
        syntax::Enumeration::Value &value = enumeration->values.emplace_back();
        value.name = name.text;
        value.span = name.span;
        if (Accept(TokenKind::kEqual)) value.value = ParseExpression();
        ExpectLineEnd();
      });
    }
    ExpectEnd(Keyword::kEnum, first);
    return enumeration;
  }

  syntax::Script script_;
};

}  // namespace

syntax::Script Parse(const SourceText &source, Diagnostics &diagnostics) {
  std::vector<Token> tokens = Tokenize(source, diagnostics);
  if (tokens.empty()) return {};
  return ScriptParser(source, diagnostics, std::move(tokens)).Run();
}

}  // namespace quillbar::language
