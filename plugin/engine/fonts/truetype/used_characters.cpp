// SPDX-License-Identifier: MIT
#include "plugin/engine/fonts/truetype/used_characters.h"

namespace quillbar::engine {

namespace {

constexpr std::size_t kMaxGlyphs = 0xFFFF;

// Adds the parts of a composite glyph, and theirs in turn, to `parts`.
void AddPartsOf(const TrueTypeFile &font, std::uint16_t glyph, std::set<std::uint16_t> &parts) {
  std::vector<std::uint16_t> open{glyph};
  while (!open.empty()) {
    bool isWhole = false;
    const auto found = PartsOf(font.OutlineOf(open.back()), isWhole);
    open.pop_back();
    for (const OutlinePart &part : found) {
      if (parts.insert(part.glyph).second) open.push_back(part.glyph);
    }
  }
}

}  // namespace

std::uint16_t UsedCharacters::Add(const TrueTypeFile &font, char32_t character) {
  const std::uint16_t glyph = font.GlyphOf(character);
  // What the embedded font would hold: one glyph a character, and every part.
  AddPartsOf(font, glyph, parts_);
  if (characters_.size() + parts_.size() >= kMaxGlyphs) return 0;
  characters_.push_back(character);
  glyphs_.push_back(glyph);
  return static_cast<std::uint16_t>(characters_.size() - 1);
}

}  // namespace quillbar::engine
