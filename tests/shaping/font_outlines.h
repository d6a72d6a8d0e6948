// SPDX-License-Identifier: MIT
// What glyphs look like, as FreeType reads a font.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace quillbar::test {

/// A closed curve of an outline, in units of the font.
struct Contour {
  int shape = 0;        // the same number for all that differ at most in their place, whatever font they are from
  double x = 0, y = 0;  // its first point
};

/// A font file, or a font program embedded in a PDF file.
class FontOutlines {
 public:
  /// The first face of a file. Throws std::runtime_error when FreeType refuses it.
  explicit FontOutlines(const std::filesystem::path &file);
  explicit FontOutlines(std::string bytes);
  ~FontOutlines();
  FontOutlines(const FontOutlines &) = delete;
  FontOutlines &operator=(const FontOutlines &) = delete;

  int UnitsPerEm() const;
  bool Covers(char32_t character) const;
  /// The contours of a glyph, composites taken apart, around the glyph's origin. A glyph that can't be read fails the
  /// test.
  const std::vector<Contour> &ContoursOf(std::uint32_t glyph);
  /// The advance that the program itself states for a glyph, in units.
  double AdvanceOf(std::uint32_t glyph) const;

 private:
  struct Face;
  std::string bytes_;
  std::unique_ptr<Face> face_;
  std::map<std::uint32_t, std::vector<Contour>> read_;
};

}  // namespace quillbar::test
