// SPDX-License-Identifier: MIT
// libharu's subsetter keeps the glyph numbers, so `loca`, `hmtx`, `post` and `name` go in whole; it loses the
// components of nested composite glyphs and every component numbered above 32,767. Here the glyphs used are numbered
// anew.
#include "plugin/engine/fonts/truetype/truetype_subset.h"

#include <algorithm>

namespace quillbar::engine {

namespace {

constexpr std::size_t kHeadAdjustmentOffset = 8;
constexpr std::size_t kHeadPositionFormatOffset = 50;

std::uint32_t Checksum(Bytes bytes) {
  std::uint32_t sum = 0;
  std::size_t at = 0;
  for (; at + 4 <= bytes.size(); at += 4) sum += U32(bytes, at);
  for (int shift = 24; at < bytes.size(); ++at, shift -= 8) sum += static_cast<std::uint32_t>(bytes[at]) << shift;
  return sum;
}

void PadTo4(std::vector<std::uint8_t> &bytes) {
  while (bytes.size() % 4 != 0) bytes.push_back(0);
}

std::vector<std::uint8_t> Copy(Bytes bytes) { return {bytes.begin(), bytes.end()}; }

// Where each glyph of the old font is in the new one. The new font's own glyphs come first, then further ones of the
// old font in the order in which they were asked for.
class Numbering {
 public:
  explicit Numbering(std::span<const EmbeddedGlyph> glyphs) : own_(glyphs.size()) {
    for (std::size_t i = 0; i < glyphs.size(); ++i) {
      if (!glyphs[i].isComposed) new_.emplace(glyphs[i].glyph, static_cast<std::uint16_t>(i));
    }
  }
  std::uint16_t NewNumberOf(std::uint16_t glyph) {
    const auto [found, isNew] = new_.emplace(glyph, static_cast<std::uint16_t>(own_ + further_.size()));
    if (isNew) further_.push_back(glyph);
    return found->second;
  }
  // Grows while outlines are taken over and name their components.
  const std::vector<std::uint16_t> &Further() const { return further_; }

 private:
  std::size_t own_;
  std::vector<std::uint16_t> further_;
  std::map<std::uint16_t, std::uint16_t> new_;
};

// What `maxp` says of the largest composite glyphs.
struct CompositeLimits {
  std::uint32_t points = 0, contours = 0, components = 0, depth = 0;

  void Include(const CompositeLimits &other) {
    points = std::max(points, other.points);
    contours = std::max(contours, other.contours);
    components = std::max(components, other.components);
    depth = std::max(depth, other.depth);
  }
};

// Glyphs inside others deeper than this are not counted: files that mean well have two levels.
constexpr std::uint32_t kDeepest = 8;

// The points and contours that a glyph of the font file is drawn with, and how deep its components are.
CompositeLimits ExtentOf(const TrueTypeFile &font, std::uint16_t glyph, std::uint32_t depth = 0) {
  const Bytes outline = font.OutlineOf(glyph);
  CompositeLimits extent;
  if (outline.size() < 10 || depth == kDeepest) return extent;
  const int contours = S16(outline, 0);
  if (contours >= 0) {
    const std::size_t end = 10 + 2 * static_cast<std::size_t>(contours);
    extent.contours = static_cast<std::uint32_t>(contours);
    extent.points = contours == 0 || outline.size() < end ? 0u : U16(outline, end - 2) + 1u;
    return extent;
  }
  bool isWhole = false;
  for (const GlyphComponent &component : ComponentsOf(outline, isWhole)) {
    const CompositeLimits part = ExtentOf(font, component.glyph, depth + 1);
    extent.points += part.points;
    extent.contours += part.contours;
    extent.depth = std::max(extent.depth, part.depth);
  }
  ++extent.depth;
  return extent;
}

struct Outlines {
  std::vector<std::uint8_t> bytes;
  std::vector<std::uint32_t> positions;
  std::vector<int> leftBearings;
  CompositeLimits limits;  // of composed glyphs
};

constexpr std::uint32_t kWordArguments = 0x0001, kArgumentsAreDistances = 0x0002, kMoreComponents = 0x0020;

std::uint32_t AsInt16(std::int32_t value) {
  return static_cast<std::uint32_t>(std::clamp(value, -32768, 32767)) & 0xFFFF;
}

// A composite glyph of `parts`; nothing for none. The number of its left bearing is put down too.
void AppendComposite(const TrueTypeFile &font, const std::vector<GlyphPart> &parts, Numbering &numbering,
                     Outlines &outlines) {
  std::int32_t left = 0, bottom = 0, right = 0, top = 0;
  CompositeLimits extent;
  for (std::size_t i = 0; i < parts.size(); ++i) {
    const auto &[glyph, x, y] = parts[i];
    const Bytes outline = font.OutlineOf(glyph);
    if (outline.size() < 10) continue;
    left = i == 0 ? S16(outline, 2) + x : std::min(left, S16(outline, 2) + x);
    bottom = i == 0 ? S16(outline, 4) + y : std::min(bottom, S16(outline, 4) + y);
    right = i == 0 ? S16(outline, 6) + x : std::max(right, S16(outline, 6) + x);
    top = i == 0 ? S16(outline, 8) + y : std::max(top, S16(outline, 8) + y);
    const CompositeLimits part = ExtentOf(font, glyph);
    extent.points += part.points;
    extent.contours += part.contours;
    extent.depth = std::max(extent.depth, part.depth);
  }
  outlines.leftBearings.push_back(std::clamp(left, -32768, 32767));
  if (parts.empty()) return;
  ++extent.depth;
  extent.components = static_cast<std::uint32_t>(parts.size());
  outlines.limits.Include(extent);
  Append16(outlines.bytes, 0xFFFF);  // no contours of its own
  for (const std::int32_t edge : {left, bottom, right, top}) Append16(outlines.bytes, AsInt16(edge));
  for (std::size_t i = 0; i < parts.size(); ++i) {
    Append16(outlines.bytes, kWordArguments | kArgumentsAreDistances | (i + 1 < parts.size() ? kMoreComponents : 0));
    Append16(outlines.bytes, numbering.NewNumberOf(parts[i].glyph));
    Append16(outlines.bytes, AsInt16(parts[i].x));
    Append16(outlines.bytes, AsInt16(parts[i].y));
  }
}

void AppendOutline(const TrueTypeFile &font, std::uint16_t glyph, Numbering &numbering, Outlines &outlines) {
  const Bytes outline = font.OutlineOf(glyph);
  const std::size_t start = outlines.bytes.size();
  outlines.bytes.insert(outlines.bytes.end(), outline.begin(), outline.end());
  bool isWhole = false;
  for (const GlyphComponent &component : ComponentsOf(outline, isWhole))
    Write16(outlines.bytes, start + component.glyphOffset, numbering.NewNumberOf(component.glyph));
  outlines.leftBearings.push_back(font.LeftBearingOf(glyph));
}

Outlines TakeOutlines(const TrueTypeFile &font, std::span<const EmbeddedGlyph> glyphs, Numbering &numbering) {
  Outlines outlines;
  const auto begin = [&] { outlines.positions.push_back(static_cast<std::uint32_t>(outlines.bytes.size())); };
  for (const EmbeddedGlyph &glyph : glyphs) {
    begin();
    if (glyph.isComposed) {
      AppendComposite(font, glyph.parts, numbering, outlines);
    } else {
      AppendOutline(font, glyph.glyph, numbering, outlines);
    }
    PadTo4(outlines.bytes);
  }
  for (std::size_t i = 0; i < numbering.Further().size(); ++i) {
    begin();
    AppendOutline(font, numbering.Further()[i], numbering, outlines);
    PadTo4(outlines.bytes);
  }
  begin();
  return outlines;
}

// `maxp` with room for what was composed.
std::vector<std::uint8_t> Profile(const TrueTypeFile &font, std::uint32_t glyphCount, const CompositeLimits &limits) {
  std::vector<std::uint8_t> profile = Copy(font.Table("maxp"));
  Write16(profile, 4, glyphCount);
  const auto raise = [&](std::size_t offset, std::uint32_t value) {
    if (profile.size() >= offset + 2)
      Write16(profile, offset, std::min(std::max<std::uint32_t>(U16(profile, offset), value), 0xFFFFu));
  };
  raise(10, limits.points);
  raise(12, limits.contours);
  raise(28, limits.components);
  raise(30, limits.depth);
  return profile;
}

// A `cmap` with one map, Microsoft's for Unicode, in format 4.
std::vector<std::uint8_t> CharacterMap(const std::map<std::uint16_t, std::uint16_t> &characters) {
  struct Segment {
    std::uint32_t first, last, glyph;
  };
  std::vector<Segment> segments;
  for (const auto &[character, glyph] : characters) {
    if (!segments.empty()) {
      Segment &open = segments.back();
      if (character == open.last + 1 && glyph == open.glyph + (character - open.first)) {
        open.last = character;
        continue;
      }
    }
    segments.push_back({character, character, glyph});
  }
  segments.push_back({0xFFFF, 0xFFFF, 0});

  std::uint32_t power = 1, exponent = 0;
  for (; power <= segments.size() / 2; power *= 2) ++exponent;
  const auto doubled = static_cast<std::uint32_t>(2 * segments.size());

  std::vector<std::uint8_t> table;
  for (const std::uint32_t number : {0u, 1u, 3u, 1u}) Append16(table, number);
  Append32(table, 12);
  for (const std::uint32_t number : {4u, 16 + 4 * doubled, 0u, doubled, 2 * power, exponent, doubled - 2 * power})
    Append16(table, number);
  for (const Segment &segment : segments) Append16(table, segment.last);
  Append16(table, 0);
  for (const Segment &segment : segments) Append16(table, segment.first);
  for (const Segment &segment : segments) Append16(table, segment.first == 0xFFFF ? 1 : segment.glyph - segment.first);
  for (std::size_t i = 0; i < segments.size(); ++i) Append16(table, 0);
  return table;
}

std::vector<std::uint8_t> Assemble(std::map<std::string, std::vector<std::uint8_t>> &tables) {
  const auto count = static_cast<std::uint32_t>(tables.size());
  std::uint32_t power = 1, exponent = 0;
  for (; power * 2 <= count; power *= 2) ++exponent;

  std::vector<std::uint8_t> file;
  Append32(file, 0x00010000);
  for (const std::uint32_t number : {count, 16 * power, exponent, 16 * (count - power)}) Append16(file, number);

  std::size_t offset = 12 + 16 * std::size_t{count};
  std::size_t head = 0;
  for (auto &[tag, table] : tables) {
    if (tag == "head") head = offset;
    file.insert(file.end(), tag.begin(), tag.end());
    Append32(file, Checksum(table));
    Append32(file, static_cast<std::uint32_t>(offset));
    Append32(file, static_cast<std::uint32_t>(table.size()));
    PadTo4(table);
    offset += table.size();
  }
  file.reserve(offset);
  for (const auto &[tag, table] : tables) file.insert(file.end(), table.begin(), table.end());
  Write32(file, head + kHeadAdjustmentOffset, 0xB1B0AFBA - Checksum(file));
  return file;
}

}  // namespace

std::vector<std::uint8_t> SubsetTrueType(const TrueTypeFile &font, std::span<const EmbeddedGlyph> glyphs,
                                         const std::map<std::uint16_t, std::uint16_t> &characters) {
  Numbering numbering(glyphs);
  Outlines outlines = TakeOutlines(font, glyphs, numbering);
  const auto count = static_cast<std::uint32_t>(outlines.leftBearings.size());

  std::map<std::string, std::vector<std::uint8_t>> tables;
  for (const char *tag : {"cvt ", "fpgm", "prep"}) {
    const Bytes table = font.Table(tag);
    if (!table.empty()) tables.emplace(tag, Copy(table));
  }

  const bool isLong = outlines.bytes.size() > std::size_t{2} * 0xFFFF;
  std::vector<std::uint8_t> &positions = tables["loca"];
  for (const std::uint32_t position : outlines.positions) {
    if (isLong) {
      Append32(positions, position);
    } else {
      Append16(positions, position / 2);
    }
  }

  std::vector<std::uint8_t> &metrics = tables["hmtx"];
  for (std::uint32_t i = 0; i < count; ++i) {
    if (i >= glyphs.size()) {
      Append16(metrics, font.AdvanceOf(numbering.Further()[i - glyphs.size()]));
    } else if (glyphs[i].isComposed) {
      Append16(metrics, (static_cast<std::uint32_t>(glyphs[i].width) * font.UnitsPerEm() + 500) / 1000);
    } else {
      Append16(metrics, font.AdvanceOf(glyphs[i].glyph));
    }
    Append16(metrics, static_cast<std::uint32_t>(outlines.leftBearings[i]));
  }

  std::vector<std::uint8_t> &head = tables["head"] = Copy(font.Table("head").first(54));
  Write32(head, kHeadAdjustmentOffset, 0);
  Write16(head, kHeadPositionFormatOffset, isLong ? 1 : 0);
  std::vector<std::uint8_t> &header = tables["hhea"] = Copy(font.Table("hhea").first(36));
  Write16(header, 34, count);
  tables["maxp"] = Profile(font, count, outlines.limits);
  tables["glyf"] = std::move(outlines.bytes);
  tables["cmap"] = CharacterMap(characters);
  return Assemble(tables);
}

}  // namespace quillbar::engine
