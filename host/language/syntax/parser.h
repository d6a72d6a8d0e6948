// SPDX-License-Identifier: MIT
#pragma once

#include "host/language/syntax/diagnostics.h"
#include "host/language/syntax/source_text.h"
#include "host/language/syntax/syntax_tree.h"

namespace quillbar::language {

/// How deeply statements and parentheses may be nested, and how many levels an expression's tree may
/// have (a chain of n operators has n + 1).
inline constexpr std::uint32_t kMaxNesting = 200;
inline constexpr std::uint32_t kMaxExpressionHeight = 1000;

/// Reads a script. An error is reported and its line skipped, so that one run shows all errors; the tree is complete
/// only when there were none.
syntax::Script Parse(const SourceText &source, Diagnostics &diagnostics);

}  // namespace quillbar::language
