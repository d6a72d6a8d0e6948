// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "host/language/syntax/statement_parser.h"

namespace quillbar::language {

/// Reads a Sub or Function, up to its end.
std::unique_ptr<syntax::Procedure> ParseProcedure(Parser &parser);

}  // namespace quillbar::language
