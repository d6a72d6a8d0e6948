// SPDX-License-Identifier: MIT
// What a page draws where, read from its operators and its embedded fonts.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "tests/shaping/font_outlines.h"
#include "tests/support/pdf_file.h"

namespace quillbar::test {

/// A text on a page: everything in one text object. Places and the advance are in em, from where the text begins.
struct DrawnText {
  double advance = 0;  // the whole movement of the text position, before the font's size is applied
  std::vector<Contour> contours;
};

/// Reads the texts of a file whose pages set text in embedded fonts with codes of two bytes.
class DrawnTexts {
 public:
  explicit DrawnTexts(std::string bytes) : file_(std::move(bytes)) {}

  /// The texts of all pages in their order. What it doesn't understand fails the test.
  std::vector<DrawnText> Read();

 private:
  struct Font;
  void ReadPage(std::size_t page, std::vector<DrawnText> &texts);
  Font &FontOf(std::size_t page, const std::string &name);
  void Show(Font &font, const std::string &codes, double rise, double characterSpace, DrawnText &text, double &x);

  PdfFile file_;
  std::map<QPDFObjGen, std::shared_ptr<Font>> fonts_;
};

}  // namespace quillbar::test
