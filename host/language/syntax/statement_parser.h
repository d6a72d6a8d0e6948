// SPDX-License-Identifier: MIT
#pragma once

#include <initializer_list>

#include "host/language/syntax/expression_parser.h"

namespace quillbar::language {

/// Reads statements and the blocks that they contain.
class StatementParser : public ExpressionParser {
 public:
  using ExpressionParser::ExpressionParser;

 protected:
  /// Reads one statement with its line end.
  syntax::StatementPointer ParseStatement();

  /// Whether the line that starts here closes or continues a block ("End If", "Else", "Next" …).
  bool AtBlockEnd() const;

  /// Whether the line starts with a word of the environment's language that this host's doesn't have ("Property x As
  /// Integer"). A word alone, or with an operator behind it, may be a name of the script.
  bool AtLineOfTheEnvironment() const;

  /// Reads statements up to a line that closes or continues a block. Lines with errors are reported and skipped.
  syntax::Block ParseBlock();

  /// Reads "End word", or "End" alone, with its line end. `opener` is the line that it closes.
  void ExpectEnd(Keyword word, const Token &opener);

  /// Runs `read`; an error in it is reported and the rest of its line skipped.
  template <class Read>
  void Recover(Read read) {
    try {
      read();
    } catch (const SyntaxError &error) {
      Report(error.span, error.message);
      SkipLine();
    }
  }

  /// `#Pragma` lines mean nothing to this host and are passed over.
  void ParseDirective();

 private:
  syntax::StatementPointer ParseSimpleStatement();
  syntax::StatementPointer ParseDeclare();
  syntax::StatementPointer ParseConstant();
  syntax::StatementPointer ParseAssignOrCall();
  syntax::StatementPointer ParseCall();
  syntax::StatementPointer ParseIf();
  syntax::Block ParseSingleLineBlock();
  syntax::StatementPointer ParseSelect();
  syntax::Select::Test ParseCaseTest();
  syntax::StatementPointer ParseFor();
  syntax::StatementPointer ParseForEach(const Token &first);
  syntax::StatementPointer ParseWhile();
  syntax::StatementPointer ParseDo();
  syntax::Do::Test ParseDoTest();
  syntax::StatementPointer ParseJump();
  syntax::StatementPointer ParseReturn();
  syntax::StatementPointer ParseRedim();
  syntax::StatementPointer ParseHandler();
  syntax::StatementPointer ParseTry();
  syntax::StatementPointer ParseRaise();
  void ParseVariables(syntax::Declare &declare);
  void ExpectNext(const Token &opener, std::string_view variable);
  [[noreturn]] void FailUnclosed(const Token &opener, std::string_view closer) const;
};

}  // namespace quillbar::language
