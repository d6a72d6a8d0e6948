// SPDX-License-Identifier: MIT
#include "tests/shaping/font_outlines.h"

#include <ft2build.h>
#include <gtest/gtest.h>

#include <stdexcept>

#include FT_FREETYPE_H
#include FT_OUTLINE_H

#include "tests/support/temporary_folder.h"

namespace quillbar::test {
namespace {

FT_Library Library() {
  static FT_Library library = [] {
    FT_Library made = nullptr;
    if (FT_Init_FreeType(&made) != 0) throw std::runtime_error("FreeType doesn't start");
    return made;
  }();
  return library;
}

constexpr FT_Int32 kAsInTheFont = FT_LOAD_NO_SCALE | FT_LOAD_NO_HINTING | FT_LOAD_NO_BITMAP;

int NumberOf(const std::string &shape) {
  static std::map<std::string, int> numbers;
  return numbers.try_emplace(shape, static_cast<int>(numbers.size())).first->second;
}

}  // namespace

struct FontOutlines::Face {
  FT_Face face = nullptr;
  ~Face() { FT_Done_Face(face); }
};

FontOutlines::FontOutlines(const std::filesystem::path &file) : FontOutlines(ReadFile(file)) {}

FontOutlines::FontOutlines(std::string bytes) : bytes_(std::move(bytes)), face_(std::make_unique<Face>()) {
  if (FT_New_Memory_Face(Library(), reinterpret_cast<const FT_Byte *>(bytes_.data()),
                         static_cast<FT_Long>(bytes_.size()), 0, &face_->face) != 0)
    throw std::runtime_error("FreeType refuses the font");
}

FontOutlines::~FontOutlines() = default;

int FontOutlines::UnitsPerEm() const { return face_->face->units_per_EM; }

bool FontOutlines::Covers(char32_t character) const { return FT_Get_Char_Index(face_->face, character) != 0; }

double FontOutlines::AdvanceOf(std::uint32_t glyph) const {
  return FT_Load_Glyph(face_->face, glyph, kAsInTheFont) == 0
             ? static_cast<double>(face_->face->glyph->metrics.horiAdvance)
             : -1;
}

const std::vector<Contour> &FontOutlines::ContoursOf(std::uint32_t glyph) {
  const auto [place, isNew] = read_.try_emplace(glyph);
  std::vector<Contour> &contours = place->second;
  if (!isNew) return contours;
  if (const FT_Error error = FT_Load_Glyph(face_->face, glyph, kAsInTheFont); error != 0) {
    ADD_FAILURE() << "FreeType can't read glyph " << glyph << ": error " << error;
    return contours;
  }
  const FT_Outline &outline = face_->face->glyph->outline;
  int begin = 0;
  for (int index = 0; index < outline.n_contours; ++index) {
    const int end = outline.contours[index] + 1;
    const FT_Vector first = outline.points[begin];
    // The steps between the points, with what each point is to the curve.
    std::string shape;
    for (int i = begin; i < end; ++i) {
      shape += std::to_string(outline.points[i].x - first.x) + ',' + std::to_string(outline.points[i].y - first.y) +
               static_cast<char>('a' + FT_CURVE_TAG(outline.tags[i]));
    }
    contours.push_back({NumberOf(shape), static_cast<double>(first.x), static_cast<double>(first.y)});
    begin = end;
  }
  return contours;
}

}  // namespace quillbar::test
