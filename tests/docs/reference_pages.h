// SPDX-License-Identifier: MIT
// The pages of the reference.
#pragma once

#include <filesystem>
#include <string>

namespace quillbar::test {

/// What the page of a class says of a member, "Page.Width": the text below the heading that names it, with one blank for
/// each line break. Throws std::runtime_error if there is none.
std::string ReferenceEntry(const std::string &qualifiedName);

/// Why the checks of docs/site/ can't run here; empty where they can.
std::string ReasonNotToCheck();

/// What a check, "check_reference.py", finds missing on the pages of a folder, of what a file says that there is: a line
/// for each fault.
std::string FaultsFoundBy(const std::string &check, const std::filesystem::path &docs,
                          const std::filesystem::path &facts);

}  // namespace quillbar::test
