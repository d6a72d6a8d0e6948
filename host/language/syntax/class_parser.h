// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "host/language/syntax/statement_parser.h"

namespace quillbar::language {

/// Reads a class, up to its "End Class". Members with errors are reported and left out.
std::unique_ptr<syntax::Class> ParseClass(Parser &parser);

}  // namespace quillbar::language
