// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "host/language/syntax/diagnostics.h"
#include "host/language/syntax/source_text.h"
#include "host/language/syntax/token.h"

namespace quillbar::language {

/// Splits a script into tokens. Comments and continued line ends leave none; the list always ends with `kEndOfLine`,
/// `kEndOfFile`. What isn't a token is reported and left out.
std::vector<Token> Tokenize(const SourceText &source, Diagnostics &diagnostics);

}  // namespace quillbar::language
