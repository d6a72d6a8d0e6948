// SPDX-License-Identifier: MIT
#pragma once

#include "host/language/syntax/conditional_compilation.h"

namespace quillbar::language {

/// Turns the lines that start with "#tag", with which projects store classes and modules as text, into what a script
/// would say: constants and enumerations into their declarations, a computed property into a declaration before its
/// accessors. The other tags say nothing that the lines inside them don't, and are left out. A tag that isn't closed is an
/// error.
void ReadTags(TokenizedFile &file);

/// The name of a tag, "Note" of `#tag Note, Name = Hints`; empty for another line.
std::string_view TagName(std::string_view line);

/// Whether the text inside a tag is for people or for the environment, not for a compiler.
bool IsTextTag(std::string_view name);

}  // namespace quillbar::language
