// SPDX-License-Identifier: MIT
#include "tests/support/judges.h"

#include <sstream>

#include "tests/support/process.h"
#include "tests/support/temporary_folder.h"

namespace quillbar::test {
namespace {

Command CommandOf(Judge judge, const std::filesystem::path &file, const TemporaryFolder &folder) {
  switch (judge) {
    case Judge::kQpdf:
      return {"qpdf", "--check", file};
    case Judge::kPoppler:
      // A small picture: all that matters is that every operator is read.
      return {"pdftoppm", "-r", "36", file, folder / "poppler"};
    case Judge::kMuPdf:
      return {"mutool", "draw", "-q", "-N", "-r", "36", "-o", folder / "mupdf%d.pnm", file};
    case Judge::kGhostscript:
      return {"gs", "-q", "-dBATCH", "-dNOPAUSE", "-dPDFSTOPONERROR", "-r36", "-sDEVICE=nullpage", file};
  }
  return {};
}

// What the program printed besides what it always prints.
std::string ComplaintsOf(Judge judge, const ProcessResult &result) {
  if (judge == Judge::kQpdf) {
    return result.output.find("No syntax or stream encoding errors found") != std::string::npos ? result.errors
                                                                                                : result.output;
  }
  return result.output + result.errors;
}

std::string ExtractedWith(const Command &options, std::string_view bytes) {
  const TemporaryFolder folder;
  WriteFile(folder / "saved.pdf", bytes);
  Command command{"pdftotext", "-enc", "UTF-8"};
  command.insert(command.end(), options.begin(), options.end());
  command.insert(command.end(), {folder / "saved.pdf", "-"});
  const ProcessResult result = RunProcess(command);
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.errors, "");
  return result.output;
}

}  // namespace

testing::AssertionResult Judged(Judge judge, const std::filesystem::path &file) {
  const TemporaryFolder folder;
  const Command command = CommandOf(judge, file, folder);
  const ProcessResult result = RunProcess(command);
  const std::string complaints = ComplaintsOf(judge, result);
  if (result.exitStatus == 0 && complaints.empty()) return testing::AssertionSuccess();
  return testing::AssertionFailure() << command.front().Text() << " ended with status " << result.exitStatus << ":\n"
                                     << complaints;
}

testing::AssertionResult JudgedFlawless(const std::filesystem::path &file) {
  for (const Judge judge : {Judge::kQpdf, Judge::kPoppler, Judge::kMuPdf, Judge::kGhostscript}) {
    const testing::AssertionResult opinion = Judged(judge, file);
    if (!opinion) return opinion;
  }
  return testing::AssertionSuccess();
}

testing::AssertionResult JudgedFlawless(std::string_view bytes) {
  const TemporaryFolder folder;
  WriteFile(folder / "saved.pdf", bytes);
  return JudgedFlawless(folder / "saved.pdf");
}

std::string ExtractedText(std::string_view bytes, int page) {
  if (page == 0) return ExtractedWith({"-nopgbrk"}, bytes);
  const std::string number = std::to_string(page);
  return ExtractedWith({"-nopgbrk", "-f", number, "-l", number}, bytes);
}

std::vector<std::string> ExtractedPages(std::string_view bytes) {
  const std::string text = ExtractedWith({}, bytes);
  std::vector<std::string> pages;
  for (std::size_t start = 0, end = 0; (end = text.find('\f', start)) != std::string::npos; start = end + 1) {
    pages.push_back(text.substr(start, end - start));
  }
  return pages;
}

Rendering::Rendering(std::string_view bytes, int page) {
  const TemporaryFolder folder;
  WriteFile(folder / "saved.pdf", bytes);
  const std::string number = std::to_string(page);
  const ProcessResult result =
      RunProcess({"pdftoppm", "-r", "72", "-f", number, "-l", number, "-aa", "no", folder / "saved.pdf"});
  EXPECT_EQ(result.exitStatus, 0) << result.errors;
  std::istringstream stream(result.output);
  std::string kind;
  int most = 0;
  stream >> kind >> width_ >> height_ >> most;
  EXPECT_EQ(kind, "P6");
  EXPECT_EQ(most, 255);
  pixels_ = result.output.substr(static_cast<std::size_t>(stream.tellg()) + 1);
  EXPECT_EQ(pixels_.size(), static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_) * 3);
}

unsigned Rendering::PixelAt(int column, int row) const {
  if (column < 0 || column >= width_ || row < 0 || row >= height_) {
    ADD_FAILURE() << "no pixel at " << column << ", " << row;
    return 0;
  }
  const std::size_t offset =
      (static_cast<std::size_t>(row) * static_cast<std::size_t>(width_) + static_cast<std::size_t>(column)) * 3;
  const auto channel = [&](std::size_t index) {
    return static_cast<unsigned>(static_cast<unsigned char>(pixels_[offset + index]));
  };
  return channel(0) << 16 | channel(1) << 8 | channel(2);
}

}  // namespace quillbar::test
