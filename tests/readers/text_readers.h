// SPDX-License-Identifier: MIT
// Five readers of text, each used in the same way: a file in, the lines of its pages out.
#pragma once

#include <filesystem>
#include <ostream>
#include <string>
#include <vector>

namespace quillbar::test {

enum class TextReader { kPoppler, kMuPdf, kGhostscript, kPdfJs, kPdfium };
inline constexpr TextReader kTextReaders[] = {TextReader::kPoppler, TextReader::kMuPdf, TextReader::kGhostscript,
                                              TextReader::kPdfJs, TextReader::kPdfium};
void PrintTo(TextReader reader, std::ostream *out);

/// Why the reader can't be used here; empty if it can.
std::string ReasonToLeaveOut(TextReader reader);

/// Whether the reader takes text on the page as running from left to right, and reverses right-to-left text.
bool TurnsRightToLeft(TextReader reader);

using PageLines = std::vector<std::string>;

/// The lines of each page, in UTF-8, as the reader copies them. What is only layout is left out: ends of lines and of
/// pages, blanks at a line's ends and empty lines. A reader that fails, or prints a warning, fails the test.
std::vector<PageLines> LinesOf(TextReader reader, const std::filesystem::path &file);

}  // namespace quillbar::test
