// SPDX-License-Identifier: MIT
#include "tests/readers/text_readers.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string_view>

#include "tests/support/document_readers.h"
#include "tests/support/process.h"
#include "tests/support/reader_versions.h"
#include "tests/support/temporary_folder.h"

namespace quillbar::test {
namespace {

namespace fs = std::filesystem;

std::string OutputOf(const Command &command) {
  const ProcessResult result = RunProcess(command);
  EXPECT_EQ(result.exitStatus, 0) << command.front().Text();
  EXPECT_EQ(result.errors, "") << command.front().Text();
  return result.output;
}

// Poppler puts direction marks around text that it has reversed.
std::string WithoutDirections(std::string text) {
  for (const char *mark : {"\u202A", "\u202B", "\u202C"}) {
    for (std::size_t at; (at = text.find(mark)) != std::string::npos;) text.erase(at, 3);
  }
  return text;
}

std::vector<std::string> Split(const std::string &text, char separator) {
  std::vector<std::string> parts;
  for (std::size_t begin = 0; begin < text.size();) {
    const std::size_t end = std::min(text.find(separator, begin), text.size());
    parts.push_back(text.substr(begin, end - begin));
    begin = end + 1;
  }
  return parts;
}

// A file for each page: Ghostscript puts nothing between pages.
std::vector<std::string> GhostscriptPages(const fs::path &file) {
  const TemporaryFolder folder;
  const ProcessResult result =
      RunProcess({"gs", "-q", "-dBATCH", "-dNOPAUSE", "-sDEVICE=txtwrite", "-o", folder / "page%d", file});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.output + result.errors, "");
  std::vector<std::string> pages;
  for (fs::path page; page = folder / ("page" + std::to_string(pages.size() + 1)), fs::exists(page);)
    pages.push_back(ReadFile(page));
  return pages;
}

std::vector<std::string> PagesOf(TextReader reader, const fs::path &file) {
  switch (reader) {
    case TextReader::kPoppler:
      return Split(OutputOf({"pdftotext", "-enc", "UTF-8", file, "-"}), '\f');
    case TextReader::kMuPdf: {
      std::vector<std::string> pages = Split(OutputOf({"mutool", "draw", "-q", "-N", "-F", "text", file}), '\f');
      // The end of a line after the last page.
      if (!pages.empty() && pages.back() == "\n") pages.pop_back();
      return pages;
    }
    case TextReader::kGhostscript:
      return GhostscriptPages(file);
    case TextReader::kPdfJs:
    case TextReader::kPdfium:
      break;
  }
  std::vector<std::string> pages;
  const auto documents =
      ReadBy(reader == TextReader::kPdfJs ? DocumentReader::kPdfJs : DocumentReader::kPdfium, std::vector{file});
  for (const ReadPage &page : documents.front().pages) pages.push_back(page.text);
  return pages;
}

}  // namespace

void PrintTo(TextReader reader, std::ostream *out) {
  constexpr const char *kNames[] = {"Poppler", "MuPdf", "Ghostscript", "PdfJs", "Pdfium"};
  *out << kNames[static_cast<int>(reader)];
}

std::string ReasonToLeaveOut(TextReader reader) {
  if (reader == TextReader::kPdfJs) return ReasonToLeaveOut(DocumentReader::kPdfJs);
  if (reader == TextReader::kPdfium) return ReasonToLeaveOut(DocumentReader::kPdfium);
  return "";
}

bool TurnsRightToLeft(TextReader reader) {
  if (reader == TextReader::kMuPdf) return MuPdfTurnsRightToLeft();
  return reader != TextReader::kGhostscript;
}

std::vector<PageLines> LinesOf(TextReader reader, const fs::path &file) {
  constexpr std::string_view kBlanks = " \r";
  std::vector<PageLines> pages;
  for (const std::string &page : PagesOf(reader, file)) {
    PageLines lines;
    for (const std::string &line : Split(page, '\n')) {
      const std::string text = WithoutDirections(line);
      const std::size_t first = text.find_first_not_of(kBlanks);
      if (first != std::string::npos) lines.push_back(text.substr(first, text.find_last_not_of(kBlanks) - first + 1));
    }
    pages.push_back(std::move(lines));
  }
  return pages;
}

}  // namespace quillbar::test
