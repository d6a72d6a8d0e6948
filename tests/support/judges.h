// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace quillbar::test {

/// Programs that read PDF files. Each must exit with success and print no warning.
enum class Judge { kQpdf, kPoppler, kMuPdf, kGhostscript };

/// One judge's opinion of a file: success, or what it printed.
testing::AssertionResult Judged(Judge judge, const std::filesystem::path &file);

/// The opinion of all four. The second form writes the bytes to a temporary file first.
testing::AssertionResult JudgedFlawless(const std::filesystem::path &file);
testing::AssertionResult JudgedFlawless(std::string_view bytes);

/// The text of a page (counted from 1; 0: all pages) as poppler reads it, in UTF-8.
std::string ExtractedText(std::string_view bytes, int page = 0);

/// The text of each page, read at once.
std::vector<std::string> ExtractedPages(std::string_view bytes);

/// A page rendered by poppler at 72 dots an inch, so that a pixel is a point.
class Rendering {
 public:
  explicit Rendering(std::string_view bytes, int page = 1);

  int width() const { return width_; }
  int height() const { return height_; }
  /// The colour of the pixel in this column and row, counted from the top left, as &hRRGGBB.
  unsigned PixelAt(int column, int row) const;

 private:
  int width_ = 0;
  int height_ = 0;
  std::string pixels_;
};

}  // namespace quillbar::test
