// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "host/language/syntax/diagnostics.h"
#include "host/language/syntax/source_text.h"
#include "host/language/syntax/token.h"

namespace quillbar::language {

/// Splits a file of a script into tokens. Comments and continued line ends leave none; the list always ends with
/// `kEndOfLine`, `kEndOfFile`. What isn't a token is left out, and an error says so. A file that can't be read at all has
/// no tokens.
std::vector<Token> Tokenize(const SourceText &source, const SourceText::File &file, std::vector<Diagnostic> &errors);

/// The same for the first file, with errors reported.
std::vector<Token> Tokenize(const SourceText &source, Diagnostics &diagnostics);

}  // namespace quillbar::language
