// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "host/language/syntax/syntax_tree.h"

namespace quillbar::language::testing {

/// An expression with every operator in parentheses: `(1 + (2 * 3))`.
std::string Dump(const syntax::Expression &expression);

/// Statements as nested lists: `(if c ((call (f))) else ())`.
std::string Dump(const syntax::Block &block);

/// A statement in the notation above.
std::string Dump(const syntax::Statement &statement);
std::string Dump(const syntax::TypeName &type);

/// Parses `text`, which must be free of errors, and dumps its top-level statements.
std::string ParseAndDump(const std::string &text);

/// Parses `x = text` and dumps the right side.
std::string ParseAndDumpExpression(const std::string &text);

/// The messages of all errors in `text`, each as "line:column: message", separated by line ends.
std::string ParseDiagnostics(const std::string &text);

}  // namespace quillbar::language::testing
