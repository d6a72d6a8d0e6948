// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "host/language/syntax/statement_parser.h"

namespace quillbar::language {

/// Reads an enumeration, up to its "End Enum".
std::unique_ptr<syntax::Enumeration> ParseEnumeration(Parser &parser);

}  // namespace quillbar::language
