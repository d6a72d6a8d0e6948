// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <string>
#include <variant>
#include <vector>

#include "plugin/engine/fonts/big_endian.h"
#include "plugin/engine/fonts/font_fault.h"

namespace quillbar::engine {

/// A Type 1 font's metrics file (Adobe Font Metrics, version 4.1) in memory, checked whole before anything of it is
/// used. Widths and heights are in 1/1000 of the font size.
struct AfmFile {
  struct Glyph {
    int code;  // in the font's own encoding; -1 for none
    int width;
    std::string name;
  };

  std::string fontName;
  std::string encodingScheme;
  std::array<int, 4> boundingBox{};  // left, bottom, right, top
  int ascender = 0;
  int descender = 0;
  int capHeight = 0;
  int xHeight = 0;
  int italicAngle = 0;  // degrees
  int horizontalStem = 0;
  int verticalStem = 0;
  bool isBold = false;
  bool isFixedPitch = false;
  std::vector<Glyph> glyphs;

  /// The metrics, or what is wrong with the file. Throws std::bad_alloc only.
  static std::variant<AfmFile, FontFault> Read(Bytes file);
};

}  // namespace quillbar::engine
