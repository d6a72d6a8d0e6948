// SPDX-License-Identifier: MIT
/// Shaping: which glyphs show a text, and where (HarfBuzz).
#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "plugin/engine/fonts/big_endian.h"
#include "plugin/engine/fonts/shaping/script_runs.h"

namespace quillbar::engine {

/// A glyph as it is to be drawn, in visual order. All distances are in font units.
struct ShapedGlyph {
  std::uint16_t glyph;
  std::uint32_t cluster;  // the first character that it belongs to, counted from the beginning of the text
  std::int32_t advance;   // to the next glyph
  std::int32_t x, y;      // from its place on the line
};

/// Receives an outline in font units. Its functions may throw std::bad_alloc.
class OutlineReceiver {
 public:
  virtual ~OutlineReceiver() = default;
  virtual void MoveTo(float x, float y) = 0;
  virtual void LineTo(float x, float y) = 0;
  virtual void CurveTo(float x1, float y1, float x2, float y2, float x3, float y3) = 0;
};

/// Left, bottom, right, top of an outline in font units.
struct GlyphExtents {
  int left, bottom, right, top;
};

/// A font file for shaping. Of a collection it is the first font, of a variable font the default instance.
///
/// Nothing in a file makes it fail: tables that can't be used count as absent.
class Shaper {
 public:
  /// `file` must stay as it is while this lives. Throws std::bad_alloc.
  explicit Shaper(Bytes file);
  ~Shaper();
  Shaper(Shaper &&) noexcept;
  Shaper &operator=(Shaper &&) noexcept;

  /// Appends the glyphs of `run`, which is a part of `text`, to `glyphs`. Throws std::bad_alloc.
  void Shape(std::u32string_view text, const ScriptRun &run, std::vector<ShapedGlyph> &glyphs) const;

  /// Draws a glyph's outline; nothing if it has none. Throws std::bad_alloc.
  void Draw(std::uint16_t glyph, OutlineReceiver &receiver) const;

  /// What a glyph's outline covers; zeros if it has none. Throws std::bad_alloc.
  GlyphExtents ExtentsOf(std::uint16_t glyph) const;

 private:
  struct Handles;
  std::unique_ptr<Handles> handles_;
};

}  // namespace quillbar::engine
