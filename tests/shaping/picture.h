// SPDX-License-Identifier: MIT
// Pictures of text, and how much of their ink is in the same places.
#pragma once

#include <cstddef>
#include <filesystem>
#include <ostream>
#include <string>
#include <vector>

#include "tests/shaping/reference_shaper.h"

namespace quillbar::test {

/// Programs that draw the pages of PDF files.
enum class Renderer { kPoppler, kMuPdf, kGhostscript, kPdfium };
inline constexpr Renderer kRenderers[] = {Renderer::kPoppler, Renderer::kMuPdf, Renderer::kGhostscript,
                                          Renderer::kPdfium};
void PrintTo(Renderer renderer, std::ostream *out);

/// Why the renderer can't be used here; empty if it can.
std::string ReasonToLeaveOut(Renderer renderer);

/// The black pixels of a picture, cropped to them.
struct Ink {
  std::ptrdiff_t width = 0, height = 0;
  std::vector<char> pixels;  // row by row from the top, 1 for a black one
};

/// The ink of a portable graymap. What is darker than the middle is black.
Ink InkOf(const std::string &graymap);

/// The pixels that are black in both pictures among those that are black in one, from 0 to 1, when one picture is laid
/// on the other as well as it fits.
double CommonInk(const Ink &one, const Ink &other);

/// The first page of a PDF file, at 432 dots an inch. A renderer that fails fails the test.
Ink DrawnBy(Renderer renderer, const std::filesystem::path &file);

/// A text as hb-view draws it: as one run in the font's first face, in this size in points; at 432 dots an inch.
Ink ReferencePicture(const std::filesystem::path &font, double size, const std::string &text, Shaping shaping);

}  // namespace quillbar::test
