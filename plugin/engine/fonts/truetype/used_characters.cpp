// SPDX-License-Identifier: MIT
#include "plugin/engine/fonts/truetype/used_characters.h"

namespace quillbar::engine {

namespace {

constexpr std::size_t kMaxGlyphs = 0xFFFF;

// Adds the components of a composite glyph, and theirs in turn, to `components`.
void AddComponentsOf(const TrueTypeFile &font, std::uint16_t glyph, std::set<std::uint16_t> &components) {
  std::vector<std::uint16_t> open{glyph};
  while (!open.empty()) {
    bool isWhole = false;
    const auto found = ComponentsOf(font.OutlineOf(open.back()), isWhole);
    open.pop_back();
    for (const GlyphComponent &component : found) {
      if (components.insert(component.glyph).second) open.push_back(component.glyph);
    }
  }
}

}  // namespace

std::uint16_t UsedCharacters::Add(const TrueTypeFile &font, char32_t character) {
  const std::uint16_t glyph = font.GlyphOf(character);
  // What the embedded font would hold: one glyph for each character, and every component.
  AddComponentsOf(font, glyph, components_);
  if (characters_.size() + components_.size() >= kMaxGlyphs) return 0;
  characters_.push_back(character);
  glyphs_.push_back(glyph);
  return static_cast<std::uint16_t>(characters_.size() - 1);
}

}  // namespace quillbar::engine
