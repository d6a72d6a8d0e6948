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

// The glyphs of the new font in order, as numbers of the old one, and where each old number is found.
class Numbering {
 public:
  explicit Numbering(std::span<const std::uint16_t> glyphs) : old_(glyphs.begin(), glyphs.end()) {
    for (std::size_t i = 0; i < old_.size(); ++i) new_.emplace(old_[i], static_cast<std::uint16_t>(i));
  }
  std::uint16_t NewNumberOf(std::uint16_t glyph) {
    const auto [found, isNew] = new_.emplace(glyph, static_cast<std::uint16_t>(old_.size()));
    if (isNew) old_.push_back(glyph);
    return found->second;
  }
  // Grows while outlines are taken over and name their components.
  const std::vector<std::uint16_t> &OldNumbers() const { return old_; }

 private:
  std::vector<std::uint16_t> old_;
  std::map<std::uint16_t, std::uint16_t> new_;
};

struct Outlines {
  std::vector<std::uint8_t> bytes;
  std::vector<std::uint32_t> positions;
};

Outlines TakeOutlines(const TrueTypeFile &font, Numbering &numbering) {
  Outlines outlines;
  for (std::size_t i = 0; i < numbering.OldNumbers().size(); ++i) {
    const Bytes outline = font.OutlineOf(numbering.OldNumbers()[i]);
    const std::size_t start = outlines.bytes.size();
    outlines.positions.push_back(static_cast<std::uint32_t>(start));
    outlines.bytes.insert(outlines.bytes.end(), outline.begin(), outline.end());
    bool isWhole = false;
    for (const GlyphComponent &component : ComponentsOf(outline, isWhole))
      Write16(outlines.bytes, start + component.glyphOffset, numbering.NewNumberOf(component.glyph));
    PadTo4(outlines.bytes);
  }
  outlines.positions.push_back(static_cast<std::uint32_t>(outlines.bytes.size()));
  return outlines;
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

std::vector<std::uint8_t> SubsetTrueType(const TrueTypeFile &font, std::span<const std::uint16_t> glyphs,
                                         const std::map<std::uint16_t, std::uint16_t> &characters) {
  Numbering numbering(glyphs);
  Outlines outlines = TakeOutlines(font, numbering);
  const auto &old = numbering.OldNumbers();
  const auto count = static_cast<std::uint32_t>(old.size());

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
  for (const std::uint16_t glyph : old) {
    Append16(metrics, font.AdvanceOf(glyph));
    Append16(metrics, static_cast<std::uint32_t>(font.LeftBearingOf(glyph)));
  }

  std::vector<std::uint8_t> &head = tables["head"] = Copy(font.Table("head").first(54));
  Write32(head, kHeadAdjustmentOffset, 0);
  Write16(head, kHeadPositionFormatOffset, isLong ? 1 : 0);
  std::vector<std::uint8_t> &header = tables["hhea"] = Copy(font.Table("hhea").first(36));
  Write16(header, 34, count);
  std::vector<std::uint8_t> &profile = tables["maxp"] = Copy(font.Table("maxp"));
  Write16(profile, 4, count);

  tables["glyf"] = std::move(outlines.bytes);
  tables["cmap"] = CharacterMap(characters);
  return Assemble(tables);
}

}  // namespace quillbar::engine
