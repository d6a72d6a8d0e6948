// SPDX-License-Identifier: MIT
#include "plugin/engine/fonts/truetype/shown_glyphs.h"

#include <algorithm>

#include "plugin/engine/fonts/shaping/script_runs.h"

namespace quillbar::engine {

namespace {

constexpr std::size_t kMaxGlyphs = 0xFFFF;

// The width of a mark among the codes of its cluster, in 1/1000 of the font size: little enough for readers to see no
// gap, and not nothing.
constexpr std::int32_t kMarkWidth = 10;

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

// The advance of a cluster shared out among its characters, which are in visual order.
std::vector<std::int32_t> WidthsOf(std::u32string_view characters, std::int32_t advance) {
  const auto count = static_cast<std::int32_t>(characters.size());
  const auto marks = static_cast<std::int32_t>(std::ranges::count_if(characters, IsNonspacingMark));
  std::vector<std::int32_t> widths(characters.size());
  if (advance <= 0 || count == 0) return widths;
  const std::int32_t letters = count - marks;
  const std::int32_t ofMark = letters == 0 ? 0 : std::min(kMarkWidth, std::max(advance / (4 * count), 1));
  std::int32_t rest = advance - ofMark * marks;
  std::int32_t sharing = letters == 0 ? count : letters;
  for (std::size_t i = 0; i < widths.size(); ++i) {
    if (letters != 0 && IsNonspacingMark(characters[i])) {
      widths[i] = ofMark;
    } else {
      widths[i] = rest / sharing--;
      rest -= widths[i];
    }
  }
  return widths;
}

}  // namespace

std::uint16_t ShownGlyphs::Add(char32_t character, EmbeddedGlyph glyph) {
  // What the embedded font would hold: one glyph for each code, and every component.
  if (characters_.size() + components_.size() >= kMaxGlyphs) return 0;
  glyphs_.push_back(std::move(glyph));
  characters_.push_back(character);
  return static_cast<std::uint16_t>(characters_.size() - 1);
}

std::uint16_t ShownGlyphs::AddGlyph(const TrueTypeFile &font, char32_t character, std::uint16_t glyph) {
  AddComponentsOf(font, glyph, components_);
  return Add(character, {false, glyph, {}, font.WidthOf(glyph)});
}

std::uint16_t ShownGlyphs::AddCharacter(const TrueTypeFile &font, char32_t character) {
  return AddGlyph(font, character, font.GlyphOf(character));
}

std::uint16_t ShownGlyphs::AlternateCodeOf(const TrueTypeFile &font, char32_t character, std::uint16_t glyph) {
  constexpr std::size_t kPlaces = 1024;
  if (recentAlternates_.empty()) recentAlternates_.resize(kPlaces);
  Alternate &recent = recentAlternates_[(character * 31 + glyph) % kPlaces];
  if (recent.character != character || recent.glyph != glyph || recent.code == 0) {
    std::uint16_t &code = alternates_[{character, glyph}];
    if (code == 0) code = glyph == font.GlyphOf(character) ? CodeOf(font, character) : AddGlyph(font, character, glyph);
    recent = {character, glyph, code};
  }
  return recent.code;
}

std::uint16_t ShownGlyphs::AddComposed(const TrueTypeFile &font, char32_t character, std::vector<GlyphPart> parts,
                                       std::int32_t width) {
  const auto [found, isNew] = composed_.try_emplace({character, width, parts}, std::uint16_t{0});
  if (isNew) {
    for (const GlyphPart &part : parts) {
      components_.insert(part.glyph);
      AddComponentsOf(font, part.glyph, components_);
    }
    found->second = Add(character, {true, 0, std::move(parts), width});
  }
  return found->second;
}

std::uint16_t ShownGlyphs::BlankCodeOf(const TrueTypeFile &font, char32_t character) {
  return AddComposed(font, character, {}, 0);
}

ShownGlyphs::ClusterCodes ShownGlyphs::CodesOf(const TrueTypeFile &font, const TextLayout &layout,
                                               const GlyphCluster &cluster) {
  std::u32string characters = layout.text.substr(cluster.first, cluster.count);
  if (cluster.isRightToLeft) std::ranges::reverse(characters);
  const auto *glyphs = layout.glyphs.data() + cluster.glyphs;

  if (cluster.count == 1 && cluster.glyphCount == 1 && glyphs->x == 0 && glyphs->y == 0) {
    // A kerned letter is moved. What is to take no room goes on below, where it gets no width.
    const std::int32_t width = font.WidthOf(glyphs->glyph);
    if (cluster.advance > 0 && width > 0)
      return {{AlternateCodeOf(font, characters[0], glyphs->glyph)}, cluster.advance - width};
  }

  const std::vector<std::int32_t> widths = WidthsOf(characters, cluster.advance);
  const auto letter = std::ranges::find_if_not(characters, IsNonspacingMark);
  const std::size_t drawing = letter == characters.end() ? 0 : static_cast<std::size_t>(letter - characters.begin());
  std::int64_t before = 0;
  for (std::size_t i = 0; i < drawing; ++i) before += widths[i];
  const auto em = static_cast<std::int64_t>(font.UnitsPerEm());
  auto position = static_cast<std::int32_t>(-(before * em + 500) / 1000);
  std::vector<GlyphPart> parts;
  for (std::uint32_t i = 0; i < cluster.glyphCount; ++i) {
    // Blanks, which are what remains of characters that aren't seen, need no place.
    if (!font.IsBlank(glyphs[i].glyph)) parts.push_back({glyphs[i].glyph, position + glyphs[i].x, glyphs[i].y});
    position += glyphs[i].advance;
  }

  ClusterCodes result{{}, cluster.advance};
  for (std::size_t i = 0; i < characters.size(); ++i) {
    result.codes.push_back(
        AddComposed(font, characters[i], i == drawing ? parts : std::vector<GlyphPart>(), widths[i]));
    result.rest -= widths[i];
  }
  return result;
}

std::int32_t ShownGlyphs::AppendCodes(const TrueTypeFile &font, const TextLayout &layout, const GlyphCluster &cluster,
                                      std::vector<std::uint16_t> &codes) {
  if (!cluster.isShaped) {
    codes.push_back(CodeOf(font, layout.text[cluster.first]));
    return 0;
  }
  if (cluster.count == 1 && cluster.glyphCount == 1) {
    const ShapedGlyph &glyph = layout.glyphs[cluster.glyphs];
    if (glyph.x == 0 && glyph.y == 0 && glyph.advance == static_cast<std::int32_t>(font.AdvanceOf(glyph.glyph))) {
      codes.push_back(AlternateCodeOf(font, layout.text[cluster.first], glyph.glyph));
      return 0;
    }
  }
  key_.assign(1, cluster.count << 1 | (cluster.isRightToLeft ? 1u : 0u));
  key_.append(layout.text, cluster.first, cluster.count);
  key_.push_back(static_cast<char32_t>(cluster.advance));
  for (std::uint32_t i = cluster.glyphs; i < cluster.glyphs + cluster.glyphCount; ++i) {
    const ShapedGlyph &glyph = layout.glyphs[i];
    key_ += {glyph.glyph, static_cast<char32_t>(glyph.advance), static_cast<char32_t>(glyph.x),
             static_cast<char32_t>(glyph.y)};
  }
  auto found = clusters_.find(key_);
  if (found == clusters_.end()) found = clusters_.emplace(key_, CodesOf(font, layout, cluster)).first;
  codes.insert(codes.end(), found->second.codes.begin(), found->second.codes.end());
  return found->second.rest;
}

}  // namespace quillbar::engine
