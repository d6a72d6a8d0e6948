// SPDX-License-Identifier: MIT
// How HarfBuzz's own programs shape and draw text.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "tests/support/process.h"

namespace quillbar::test {

/// A glyph that hb-shape places, in units of the font, from left to right.
struct ReferenceGlyph {
  std::uint32_t glyph = 0;
  double advance = 0;
  double x = 0, y = 0;  // offsets from where the glyph before ends
};

/// How hb-shape treats a text.
enum class Shaping {
  kFull,       // as the script asks for
  kMarks,      // marks are placed, but letters neither kerned nor joined
  kNoChoices,  // every character's own glyph with its own advance, as text in simple scripts is set
};

/// How one of HarfBuzz's programs is called for a font's first face; what it is to do with which text follows.
Command ReferenceCommand(const char *program, const std::filesystem::path &font, Shaping shaping);

/// What hb-shape makes of each text, as one run in the font's first face. Texts are UTF-8 without line ends. A failure
/// of hb-shape fails the test.
std::vector<std::vector<ReferenceGlyph>> ReferenceShapes(const std::filesystem::path &font,
                                                         const std::vector<std::string> &texts, Shaping shaping);

/// Why hb-shape and hb-view can't be used here; empty if they can.
std::string ReasonForNoReference();

}  // namespace quillbar::test
