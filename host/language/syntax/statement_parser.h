// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

#include "host/language/syntax/expression_parser.h"

/// Reads statements and the blocks that they contain.
namespace quillbar::language {

/// Reads one statement with its line end.
syntax::StatementPointer ParseStatement(Parser &parser);

/// Reads a statement that fits on a line, without its line end.
syntax::StatementPointer ParseSimpleStatement(Parser &parser);

/// Whether the line that starts here closes or continues a block ("End If", "Else", "Next" …).
bool AtBlockEnd(const Parser &parser);

/// Whether the line starts with a word of the environment's language that this host's doesn't have. A word alone, or
/// with an operator after it, may be a name of the script.
bool AtLineOfTheEnvironment(const Parser &parser);

/// Reads statements up to a line that closes or continues a block. Lines with errors are reported and skipped.
syntax::Block ParseBlock(Parser &parser);

/// Reads "End word", or "End" alone, with its line end. `opener` is the line that it closes.
void ExpectEnd(Parser &parser, Keyword word, const Token &opener);

/// Fails at `opener`, whose block the script doesn't close.
[[noreturn]] void FailUnclosed(Parser &parser, const Token &opener, std::string_view closer);

/// `#Pragma` lines mean nothing to this host and are passed over.
void ParseDirective(Parser &parser);

/// Read the statement of their name, whose first word is the current token.
syntax::StatementPointer ParseDeclare(Parser &parser);
syntax::StatementPointer ParseConstant(Parser &parser);
syntax::StatementPointer ParseIf(Parser &parser);
syntax::StatementPointer ParseSelect(Parser &parser);
syntax::StatementPointer ParseFor(Parser &parser);
syntax::StatementPointer ParseWhile(Parser &parser);
syntax::StatementPointer ParseDo(Parser &parser);

}  // namespace quillbar::language
