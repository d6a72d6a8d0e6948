// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

/// The documents that the benchmark writes, each defined once for both writers.
///
/// A writer has the pages' operations as members: `BeginPage()`, `Rectangle(x, y, width, height)` and so on;
/// `ShowText(line)` takes the number of one of the lines that it was given.
namespace quillbar::bench {

inline constexpr int kTextPages = 1000;
inline constexpr int kLinesPerPage = 50;
inline constexpr int kPathPages = 300;
inline constexpr int kOperationsPerPage = 1000;

using Lines = std::array<std::string, kLinesPerPage>;

/// The text of a page: lines of about 80 characters, no two alike, the same in every run.
inline Lines TextLines() {
  constexpr std::array<const char *, 16> kWords{"measure", "of",  "type",   "leading", "in",   "points",
                                                "kerned",  "a",   "across", "column",  "page", "baseline",
                                                "glyph",   "and", "the",    "folio"};
  Lines lines;
  std::uint32_t state = 1;
  for (std::size_t line = 0; line < lines.size(); ++line) {
    lines[line] = std::to_string(line + 1) + ".";
    while (lines[line].size() < 76) {
      state = state * 1664525U + 1013904223U;
      lines[line] += ' ';
      lines[line] += kWords[state >> 28];
    }
  }
  return lines;
}

/// Writes pages of text. `writer` has begun a document.
template <class Writer>
void WriteTextPages(Writer &writer, int pages = kTextPages) {
  for (int page = 0; page < pages; ++page) {
    writer.BeginPage();
    writer.BeginText();
    writer.SetFont(10.5F);
    writer.MoveTextPosition(56.0F, 780.0F);
    for (int line = 0; line < kLinesPerPage; ++line) {
      writer.ShowText(static_cast<std::size_t>(line));
      writer.MoveTextPosition(0.0F, -14.25F);
    }
    writer.EndText();
    writer.EndPage();
  }
}

/// Writes pages of paths. `writer` has begun a document.
template <class Writer>
void WritePathPages(Writer &writer, int pages = kPathPages) {
  constexpr int kOperationsPerFigure = 10;
  for (int page = 0; page < pages; ++page) {
    writer.BeginPage();
    for (int figure = 0; figure < kOperationsPerPage / kOperationsPerFigure; ++figure) {
      const float x = 20.0F + static_cast<float>(figure % 10) * 55.37F;
      const float y = 20.0F + static_cast<float>(figure / 10) * 79.91F;
      const float shade = static_cast<float>(figure) / 100.0F;
      writer.SetRGBStroke(shade, 0.25F, 1.0F - shade);
      writer.SetLineWidth(0.25F + shade);
      writer.MoveTo(x, y);
      writer.LineTo(x + 41.5F, y + 3.25F);
      writer.LineTo(x + 38.125F, y + 61.75F);
      writer.CurveTo(x + 30.1F, y + 70.2F, x + 12.3F, y + 66.4F, x + 5.5F, y + 40.6F);
      writer.CurveTo(x + 1.7F, y + 30.8F, x - 3.9F, y + 11.1F, x, y);
      writer.Stroke();
      writer.Rectangle(x + 8.0F, y + 9.0F, 21.7F, 33.3F);
      writer.Stroke();
    }
    writer.EndPage();
  }
}

}  // namespace quillbar::bench
