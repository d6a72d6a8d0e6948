// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "host/language/syntax/diagnostics.h"
#include "host/language/syntax/source_text.h"
#include "host/language/syntax/syntax_tree.h"
#include "host/language/tree/program.h"
#include "host/runtime/host.h"

namespace quillbar::language {

/// Resolves every name and checks every type of a script, against the language's library and the classes that are
/// registered with the host. The program may run only if nothing was reported.
std::unique_ptr<Program> Check(const SourceText &source, const syntax::Script &script, host::Host &host,
                               Diagnostics &diagnostics);

}  // namespace quillbar::language
