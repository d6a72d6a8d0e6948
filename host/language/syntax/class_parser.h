// SPDX-License-Identifier: MIT
#pragma once

#include "host/language/syntax/statement_parser.h"

namespace quillbar::language {

/// Whether a class, an interface or a module starts here, also with a word such as "Protected" before it.
bool AtClass(const Parser &parser);

/// Reads a class, an interface or a module, up to its "End Class", and adds it to the script. Members with errors are
/// reported and left out.
void ParseClass(Parser &parser, syntax::Script &script, const syntax::Class *container = nullptr);

/// Reads `Delegate Sub Name(parameters)`; false when something else stands here.
bool AcceptDelegate(Parser &parser, syntax::Script &script);

/// Reads `Using Module`; false when something else stands here.
bool AcceptUsing(Parser &parser, syntax::Script &script);

}  // namespace quillbar::language
