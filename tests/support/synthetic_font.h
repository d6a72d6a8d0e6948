// SPDX-License-Identifier: MIT
// Small TrueType fonts made for a test: valid as they come, and easy to break in one place.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "plugin/engine/fonts/big_endian.h"

namespace quillbar::test {

using FontBytes = std::vector<std::uint8_t>;

/// A font of 1000 units per em. Glyph 0 is a square, every other glyph a square of its own size, and
/// character `firstCharacter` + i has glyph i + 1. Tables can be replaced before the file is put together.
class SyntheticFont {
 public:
  explicit SyntheticFont(unsigned glyphs = 4, unsigned firstCharacter = 'A', unsigned advance = 600) {
    using engine::Append16;
    using engine::Append32;

    FontBytes &head = tables["head"];
    for (const std::uint32_t number : {0x00010000u, 0x00010000u, 0u, 0x5F0F3CF5u}) Append32(head, number);
    Append16(head, 0);     // flags
    Append16(head, 1000);  // units per em, offset 18
    head.resize(36);       // dates
    for (const std::uint32_t number : {0u, 0u, 800u, 800u}) Append16(head, number);
    for (const std::uint32_t number : {0u, 8u, 2u, 1u, 0u}) Append16(head, number);  // long positions, offset 50

    FontBytes &header = tables["hhea"];
    Append32(header, 0x00010000);
    for (const int number : {800, -200, 0}) Append16(header, static_cast<std::uint32_t>(number));
    header.resize(34);
    Append16(header, glyphs);  // metrics, offset 34

    FontBytes &profile = tables["maxp"];
    Append32(profile, 0x00010000);
    Append16(profile, glyphs);  // offset 4
    profile.resize(32);

    for (unsigned glyph = 0; glyph < glyphs; ++glyph) {
      Append16(tables["hmtx"], advance);
      Append16(tables["hmtx"], 100);
      SetOutline(glyph, Square(100 + glyph % 600));
    }

    SetCharacterMap(3, 1, SegmentMap({{firstCharacter, firstCharacter + glyphs - 2, 1 - firstCharacter}}));
    SetName(6, "Synthetic");
  }

  /// Replaces the outline of a glyph.
  void SetOutline(unsigned glyph, FontBytes outline) { outlines[glyph] = std::move(outline); }

  void SetCharacterMap(unsigned platform, unsigned encoding, const FontBytes &map) {
    FontBytes table;
    for (const std::uint32_t number : {0u, 1u, platform, encoding}) engine::Append16(table, number);
    engine::Append32(table, 12);
    table.insert(table.end(), map.begin(), map.end());
    tables["cmap"] = table;
  }

  void SetName(unsigned id, const std::string &name) { SetNames({{id, name}}); }

  /// The font's only names, by their numbers.
  void SetNames(const std::map<unsigned, std::string> &names) {
    FontBytes table, strings;
    const auto count = static_cast<std::uint32_t>(names.size());
    for (const std::uint32_t number : {0u, count, 6 + 12 * count}) engine::Append16(table, number);
    for (const auto &[id, name] : names) {
      for (const std::uint32_t number : {1u, 0u, 0u, std::uint32_t{id}, static_cast<std::uint32_t>(name.size()),
                                         static_cast<std::uint32_t>(strings.size())})
        engine::Append16(table, number);
      strings.insert(strings.end(), name.begin(), name.end());
    }
    table.insert(table.end(), strings.begin(), strings.end());
    tables["name"] = table;
  }

  /// A square from the baseline, `side` units wide.
  static FontBytes Square(unsigned side) {
    FontBytes outline;
    for (const std::uint32_t number : {1u, 0u, 0u, side, side, 3u, 0u}) engine::Append16(outline, number);
    for (int i = 0; i < 4; ++i) outline.push_back(0x01);  // on the curve, both coordinates in two bytes
    for (const int dx : {0, 0, static_cast<int>(side), 0}) engine::Append16(outline, static_cast<std::uint32_t>(dx));
    for (const int dy : {0, static_cast<int>(side), 0, -static_cast<int>(side)})
      engine::Append16(outline, static_cast<std::uint32_t>(dy));
    return outline;
  }

  /// A glyph composed of others, each `step` units further right.
  static FontBytes Composite(const std::vector<unsigned> &parts, unsigned step = 50) {
    FontBytes outline;
    for (const std::uint32_t number : {0xFFFFu, 0u, 0u, 800u, 800u}) engine::Append16(outline, number);
    for (std::size_t i = 0; i < parts.size(); ++i) {
      engine::Append16(outline, 0x0003u | (i + 1 < parts.size() ? 0x0020u : 0u));  // words, offsets, more
      engine::Append16(outline, parts[i]);
      engine::Append16(outline, static_cast<std::uint32_t>(step * i));
      engine::Append16(outline, 0);
    }
    return outline;
  }

  /// A range of characters in a map of format 4.
  struct Segment {
    unsigned first, last, delta;
  };
  /// A character map of format 4; the closing segment is added.
  static FontBytes SegmentMap(std::vector<Segment> segments) {
    segments.push_back({0xFFFF, 0xFFFF, 1});
    const auto doubled = static_cast<std::uint32_t>(2 * segments.size());
    FontBytes map;
    for (const std::uint32_t number : {4u, 16 + 4 * doubled, 0u, doubled, 0u, 0u, 0u}) engine::Append16(map, number);
    for (const Segment &segment : segments) engine::Append16(map, segment.last);
    engine::Append16(map, 0);
    for (const Segment &segment : segments) engine::Append16(map, segment.first);
    for (const Segment &segment : segments) engine::Append16(map, segment.delta);
    for (std::size_t i = 0; i < segments.size(); ++i) engine::Append16(map, 0);
    return map;
  }

  /// A range of characters in a map of format 12.
  struct Group {
    std::uint32_t first, last, glyph;
  };
  /// A character map of format 12.
  static FontBytes GroupMap(const std::vector<Group> &groups) {
    FontBytes map;
    for (const std::uint32_t number : {12u, 0u}) engine::Append16(map, number);
    for (const std::size_t number : {16 + 12 * groups.size(), std::size_t{0}, groups.size()})
      engine::Append32(map, static_cast<std::uint32_t>(number));
    for (const Group &group : groups) {
      for (const std::uint32_t number : {group.first, group.last, group.glyph}) engine::Append32(map, number);
    }
    return map;
  }

  /// The font file.
  FontBytes Build() const {
    auto all = tables;
    FontBytes positions, glyphs;
    for (const auto &[glyph, outline] : outlines) {
      engine::Append32(positions, static_cast<std::uint32_t>(glyphs.size()));
      glyphs.insert(glyphs.end(), outline.begin(), outline.end());
      while (glyphs.size() % 4 != 0) glyphs.push_back(0);
    }
    engine::Append32(positions, static_cast<std::uint32_t>(glyphs.size()));
    all.try_emplace("loca", positions);
    all.try_emplace("glyf", glyphs);

    FontBytes file;
    engine::Append32(file, signature);
    for (const std::size_t number : {all.size(), std::size_t{0}, std::size_t{0}, std::size_t{0}})
      engine::Append16(file, static_cast<std::uint32_t>(number));
    std::size_t offset = 12 + 16 * all.size();
    for (const auto &[tag, table] : all) {
      file.insert(file.end(), tag.begin(), tag.end());
      for (const std::size_t number : {std::size_t{0}, offset, table.size()})
        engine::Append32(file, static_cast<std::uint32_t>(number));
      offset += (table.size() + 3) / 4 * 4;
    }
    for (const auto &[tag, table] : all) {
      file.insert(file.end(), table.begin(), table.end());
      while (file.size() % 4 != 0) file.push_back(0);
    }
    return file;
  }

  std::uint32_t signature = 0x00010000;
  std::map<std::string, FontBytes> tables;
  std::map<unsigned, FontBytes> outlines;
};

}  // namespace quillbar::test
