// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "host/language/syntax/statement_parser.h"

namespace quillbar::language {

/// Reads a Sub or Function, up to its end.
std::unique_ptr<syntax::Procedure> ParseProcedure(Parser &parser);

/// Reads the first line of a Sub or Function that has no body, and the "End Sub" that may follow all the same. After
/// another word, such as "Event", the result says whether it is a Function.
std::unique_ptr<syntax::Procedure> ParseProcedureHead(Parser &parser);

}  // namespace quillbar::language
