// SPDX-License-Identifier: MIT
// The pages of the reference.
#pragma once

#include <string>

namespace quillbar::test {

/// What the page of a class says of a member, "Page.Width": the text below the heading that names it, with one blank for
/// each line break. Throws std::runtime_error if there is none.
std::string ReferenceEntry(const std::string &qualifiedName);

}  // namespace quillbar::test
