// SPDX-License-Identifier: MIT
#pragma once

#include <hpdf.h>

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "plugin/engine/layout/bidirectional.h"

namespace quillbar::engine {

/// A text taken apart into characters.
struct DecodedText {
  std::u32string characters;
  std::vector<std::uint32_t> ends;  // of each character, in bytes
};

/// A text that is ordered by direction, because it holds a directional mark. Its parts, such as the lines of a box, are
/// ordered as the paragraphs are that they belong to.
class DirectedText {
 public:
  /// `bytes` are what `decoded` was made of, and must live longer than this. Throws std::bad_alloc.
  DirectedText(std::span<const HPDF_BYTE> bytes, DecodedText decoded);

  /// The runs of a part of the text, from left to right; they begin at characters of the part.
  struct Order {
    std::vector<VisualRun> runs;
    bool isRightToLeft;  // the direction of the paragraph, of the first if there are several
  };
  /// `part` must be inside the text. Throws std::bad_alloc.
  Order OrderOf(std::span<const HPDF_BYTE> part) const;
  /// The characters of a part of the text. Throws std::bad_alloc.
  std::u32string CharactersOf(std::span<const HPDF_BYTE> part) const;

 private:
  struct Paragraph {
    std::size_t start;  // its first character
    BidirectionalParagraph levels;
  };

  // The first character of a part, and the one after its last.
  struct Range {
    std::size_t first, end;
  };
  Range RangeOf(std::span<const HPDF_BYTE> part) const;

  std::span<const HPDF_BYTE> bytes_;
  DecodedText decoded_;
  std::vector<Paragraph> paragraphs_;
};

}  // namespace quillbar::engine
