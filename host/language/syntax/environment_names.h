// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace quillbar::language {

/// Whether the development environment knows this name, be it a word of its language, a type or a function. Asked about
/// names that this host doesn't know, so that its messages don't take them for slips.
bool IsNameOfTheEnvironment(std::string_view name);

/// Whether the name is a word with which the environment's language starts a declaration or a line of its own, and which
/// this host's language doesn't have.
bool StartsLineOfTheEnvironment(std::string_view name);

/// The message about a name of the environment that is missing here; it names the page that lists what there is.
std::string NotPartOfThisHost(std::string_view name);

}  // namespace quillbar::language
