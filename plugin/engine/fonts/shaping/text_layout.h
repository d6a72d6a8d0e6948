// SPDX-License-Identifier: MIT
/// Text of a font file's glyphs, laid out: what is drawn for which characters, in which order, how wide.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "plugin/engine/fonts/shaping/shaper.h"
#include "plugin/engine/layout/bidirectional.h"

namespace quillbar::engine {

/// Characters that are drawn together, and are one piece to a reader of the text too.
struct GlyphCluster {
  std::uint32_t first, count;  // its characters
  std::uint32_t glyphs;        // the first of its glyphs in TextLayout::glyphs
  std::uint32_t glyphCount;
  std::int32_t advance;  // in 1/1000 of the font size
  bool isShaped;         // otherwise it is one character, and has the glyph that the font has for it
  bool isRightToLeft;
};

/// A laid out text.
struct TextLayout {
  std::u32string text;
  std::vector<ShapedGlyph> glyphs;
  /// In the order of the text.
  std::vector<GlyphCluster> clusters;
  /// The order in which the clusters are drawn: their numbers, and directional marks between them as the negatives of
  /// their code points. Unless the text is ordered it is that of the text, and not listed here.
  std::vector<std::int32_t> visual;
  bool isOrdered = false;
};

/// How characters of a font are measured.
struct CharacterMetrics {
  unsigned unitsPerEm;                              // how many font units make an em
  std::function<std::int32_t(char32_t)> advanceOf;  // of the glyph that the font has for a character, in 1/1000 em
};

/// Lays out `layout.text` in the order of its characters. Throws std::bad_alloc.
void LayOut(const Shaper &shaper, const CharacterMetrics &metrics, TextLayout &layout);

/// The same ordered by direction: `runs` are those of the text, from left to right. `isRightToLeft` is the direction of
/// the paragraph. Directional marks of the text are left out; others are put where readers of the file, which see
/// the glyphs from left to right, would else take numbers and punctuation for parts of another run. Throws
/// std::bad_alloc.
void LayOutInOrder(const Shaper &shaper, const CharacterMetrics &metrics, const std::vector<VisualRun> &runs,
                   bool isRightToLeft, TextLayout &layout);

}  // namespace quillbar::engine
