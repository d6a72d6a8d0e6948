// SPDX-License-Identifier: MIT
#include "tests/shaping/picture.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <sstream>
#include <utility>

#include "tests/support/document_readers.h"
#include "tests/support/process.h"
#include "tests/support/temporary_folder.h"

namespace quillbar::test {
namespace {

namespace fs = std::filesystem;

constexpr char kDotsPerInch[] = "432";
// A picture's ends may be a pixel or two away from where the outline ends.
constexpr std::ptrdiff_t kFarthest = 3;

std::string PictureFrom(const Command &command) {
  const ProcessResult result = RunProcess(command);
  EXPECT_EQ(result.exitStatus, 0) << command.front().Text() << ": " << result.errors;
  return result.output;
}

std::string PopplersPicture(const fs::path &file) {
  return PictureFrom({"pdftoppm", "-r", kDotsPerInch, "-gray", "-singlefile", file});
}

// The number of pixels that are black in both, with the second picture so many pixels further down and to the right.
std::ptrdiff_t CommonPixels(const Ink &one, const Ink &other, std::ptrdiff_t down, std::ptrdiff_t right) {
  std::ptrdiff_t common = 0;
  const std::ptrdiff_t bottom = std::min(one.height, other.height + down);
  const std::ptrdiff_t begin = std::max<std::ptrdiff_t>(0, right), end = std::min(one.width, other.width + right);
  for (std::ptrdiff_t row = std::max<std::ptrdiff_t>(0, down); row < bottom; ++row) {
    const char *first = one.pixels.data() + row * one.width;
    const char *second = other.pixels.data() + (row - down) * other.width - right;
    for (std::ptrdiff_t column = begin; column < end; ++column) common += first[column] & second[column];
  }
  return common;
}

}  // namespace

void PrintTo(Renderer renderer, std::ostream *out) {
  constexpr const char *kNames[] = {"poppler", "MuPDF", "Ghostscript", "PDFium"};
  *out << kNames[static_cast<int>(renderer)];
}

std::string ReasonToLeaveOut(Renderer renderer) {
  return renderer == Renderer::kPdfium ? ReasonToLeaveOut(DocumentReader::kPdfium) : "";
}

Ink InkOf(const std::string &graymap) {
  Ink ink;
  std::istringstream stream(graymap);
  std::string kind;
  std::ptrdiff_t width = 0, height = 0, most = 0;
  stream >> kind;
  // Ghostscript says who wrote the picture.
  while ((stream >> std::ws).peek() == '#') stream.ignore(1000, '\n');
  stream >> width >> height >> most;
  EXPECT_EQ(kind, "P5");
  EXPECT_EQ(most, 255);
  const std::ptrdiff_t begin = static_cast<std::ptrdiff_t>(stream.tellg()) + 1;
  if (begin + width * height > std::ssize(graymap)) {
    ADD_FAILURE() << "the picture ends early";
    return ink;
  }
  const char *rows = graymap.data() + begin;
  const auto isBlack = [](char pixel) { return static_cast<unsigned char>(pixel) < 128; };
  std::ptrdiff_t top = height, bottom = 0, left = width, right = 0;
  for (std::ptrdiff_t row = 0; row < height; ++row) {
    const char *line = rows + row * width;
    const char *first = std::find_if(line, line + width, isBlack);
    if (first == line + width) continue;
    top = std::min(top, row), bottom = row + 1;
    left = std::min(left, first - line);
    const char *last = line + width - 1;
    while (!isBlack(*last)) --last;
    right = std::max(right, last - line + 1);
  }
  ink.width = std::max<std::ptrdiff_t>(0, right - left), ink.height = std::max<std::ptrdiff_t>(0, bottom - top);
  for (std::ptrdiff_t row = top; row < bottom; ++row) {
    for (const char *pixel = rows + row * width + left; pixel < rows + row * width + right; ++pixel)
      ink.pixels.push_back(isBlack(*pixel) ? 1 : 0);
  }
  return ink;
}

double CommonInk(const Ink &one, const Ink &other) {
  std::ptrdiff_t down = 0, right = 0, best = CommonPixels(one, other, 0, 0);
  // Towards the better place, a pixel at a time.
  for (bool isMoving = true; isMoving && std::max(std::abs(down), std::abs(right)) < kFarthest;) {
    isMoving = false;
    for (const auto &[moreDown, moreRight] : {std::pair{1, 0}, {-1, 0}, {0, 1}, {0, -1}}) {
      const std::ptrdiff_t common = CommonPixels(one, other, down + moreDown, right + moreRight);
      if (common <= best) continue;
      best = common, down += moreDown, right += moreRight;
      isMoving = true;
    }
  }
  const std::ptrdiff_t black = std::ranges::count(one.pixels, 1) + std::ranges::count(other.pixels, 1) - best;
  return black == 0 ? 0 : static_cast<double>(best) / static_cast<double>(black);
}

Ink DrawnBy(Renderer renderer, const fs::path &file) {
  switch (renderer) {
    case Renderer::kPoppler:
      return InkOf(PopplersPicture(file));
    case Renderer::kMuPdf:
      return InkOf(PictureFrom({"mutool", "draw", "-q", "-N", "-r", kDotsPerInch, "-F", "pgm", "-o", "-", file, "1"}));
    case Renderer::kGhostscript:
      return InkOf(
          PictureFrom({"gs", "-q", "-dBATCH", "-dNOPAUSE", "-sDEVICE=pgmraw", "-dTextAlphaBits=4",
                       "-dGraphicsAlphaBits=4", std::string("-r") + kDotsPerInch, "-dLastPage=1", "-o", "-", file}));
    case Renderer::kPdfium:
      break;
  }
  return InkOf(PictureFrom({"node", fs::path(QUILLBAR_READERS_SCRIPTS) / "draw_with_pdfium.mjs",
                            fs::path(QUILLBAR_READERS_FOLDER), kDotsPerInch, file}));
}

Ink ReferencePicture(const fs::path &font, double size, const std::string &text, Shaping shaping) {
  const TemporaryFolder folder;
  WriteFile(folder / "text", text);
  // As a file of outlines with room for tall letters, so that one program draws both.
  Command command = ReferenceCommand("hb-view", font, shaping);
  command.insert(command.end(),
                 {"--output-format=pdf", fmt::format("--font-size={}", size), fmt::format("--margin={}", 2 * size),
                  "--text-file", folder / "text", "--output-file", folder / "reference.pdf"});
  const ProcessResult result = RunProcess(command);
  EXPECT_EQ(result.exitStatus, 0) << result.errors;
  return InkOf(PopplersPicture(folder / "reference.pdf"));
}

}  // namespace quillbar::test
