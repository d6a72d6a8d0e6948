// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quillbar::test {

/// What qpdf's library has to say against a PDF file: an error or warnings about its structure, any stream or the
/// content of any page. Empty for a flawless file. An encrypted file must open with one of the passwords.
std::string FileComplaints(std::string_view file, const std::vector<std::string> &passwords);

}  // namespace quillbar::test
