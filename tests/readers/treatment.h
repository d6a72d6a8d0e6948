// SPDX-License-Identifier: MIT
// What is done to a file before it is read.
#pragma once

#include <filesystem>
#include <string>

namespace quillbar::test {

enum class Treatment { kAsWritten, kRewrittenByGhostscript, kLinearizedByQpdf };

/// For names of tests.
std::string NameOf(Treatment treatment);

/// The file after its treatment: itself, or another one beside it. A treatment that fails makes the test fail.
std::filesystem::path Treated(Treatment treatment, const std::filesystem::path &file);

}  // namespace quillbar::test
