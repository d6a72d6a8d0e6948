// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "host/language/syntax/diagnostics.h"
#include "host/language/syntax/token.h"

namespace quillbar::language {

/// The tokens of one file, and what in it isn't a token.
struct TokenizedFile {
  std::vector<Token> tokens;
  std::vector<Diagnostic> errors;
};

/// Leaves out the branches of #If, #ElseIf, #Else and #EndIf that don't hold, with the errors in them. Conditions are
/// made of literals, operators, the constants of the target, and constants that the files declare.
void LeaveOutBranches(const SourceText &source, std::vector<TokenizedFile> &files, Diagnostics &diagnostics);

}  // namespace quillbar::language
