// SPDX-License-Identifier: MIT
// Font files come from anywhere, and libharu's loader trusts every number in them. This reader, used by
// truetype_definition.cpp in its place, refuses a file whose tables disagree.
#include "plugin/engine/fonts/truetype/truetype_file.h"

#include <algorithm>
#include <string_view>

namespace quillbar::engine {

namespace {

constexpr std::uint32_t Tag(const char (&name)[5]) {
  std::uint32_t tag = 0;
  for (int i = 0; i < 4; ++i) tag = tag << 8 | static_cast<unsigned char>(name[i]);
  return tag;
}

constexpr std::uint32_t kMagic = 0x5F0F3CF5;
constexpr std::size_t kDirectoryHeadBytes = 12;
constexpr std::size_t kDirectoryEntryBytes = 16;
constexpr std::size_t kCollectionHeadBytes = 16;  // up to the place of the first font
constexpr std::size_t kHeadBytes = 54;
constexpr std::size_t kHheaBytes = 36;

// Bits of a composite glyph's component.
enum ComponentFlag : unsigned {
  kArgumentsAreWords = 0x0001,
  kHasScale = 0x0008,
  kMoreComponents = 0x0020,
  kHasTwoScales = 0x0040,
  kHasMatrix = 0x0080,
};

// The kind of file that `signature` announces, if it is not a TrueType or OpenType font.
std::variant<std::monostate, FontFault> KindFault(std::uint32_t signature) {
  switch (signature) {
    case 0x00010000:
    case Tag("true"):
    case Tag("OTTO"):
      return {};
    case Tag("wOFF"):
    case Tag("wOF2"):
      return FontFault::kWebFont;
    default:
      return FontFault::kNotTrueType;
  }
}

}  // namespace

std::vector<GlyphComponent> ComponentsOf(Bytes outline, bool &isWhole) {
  std::vector<GlyphComponent> components;
  isWhole = true;
  if (outline.empty()) return components;
  if (outline.size() < 10) {
    isWhole = false;
    return components;
  }
  if (S16(outline, 0) >= 0) return components;
  std::size_t at = 10;
  for (;;) {
    if (outline.size() - at < 4) break;
    const unsigned flags = U16(outline, at);
    components.push_back({at + 2, U16(outline, at + 2)});
    std::size_t length = 4 + ((flags & kArgumentsAreWords) != 0 ? 4u : 2u);
    if ((flags & kHasScale) != 0) {
      length += 2;
    } else if ((flags & kHasTwoScales) != 0) {
      length += 4;
    } else if ((flags & kHasMatrix) != 0) {
      length += 8;
    }
    if (outline.size() - at < length) break;
    at += length;
    if ((flags & kMoreComponents) == 0) return components;
  }
  isWhole = false;
  return components;
}

std::variant<TrueTypeFile, FontFault> TrueTypeFile::Read(std::vector<std::uint8_t> bytes) {
  TrueTypeFile file;
  file.bytes_ = std::move(bytes);
  if (const auto problem = file.ReadDirectory(); const auto *fault = std::get_if<FontFault>(&problem)) return *fault;
  if (!file.ReadHeader()) return FontFault::kHeader;
  if (file.glyphCount_ == 0) return FontFault::kNoGlyphs;
  if (!file.ReadMetrics()) return FontFault::kMetrics;
  if (!file.hasCffOutlines_ && !file.ReadGlyphPositions()) return FontFault::kGlyphPositions;
  if (!file.hasCffOutlines_ && !file.CheckOutlines()) return FontFault::kOutline;
  if (!file.ReadCharacterMap()) return FontFault::kCharacterMap;
  file.shaper_.emplace(file.bytes_);
  if (file.hasCffOutlines_ && !file.HasAnyOutline()) return FontFault::kCffOutlines;
  return file;
}

std::variant<std::monostate, FontFault> TrueTypeFile::ReadDirectory() {
  const Bytes file(bytes_);
  if (file.size() > kMaxFontFileBytes) return FontFault::kTooLarge;
  if (file.size() < 4) return FontFault::kTooShort;
  std::size_t directory = 0;
  if (U32(file, 0) == Tag("ttcf")) {
    if (file.size() < kCollectionHeadBytes || U32(file, 8) == 0) return FontFault::kCollection;
    directory = U32(file, 12);
    if (directory > file.size() - 4) return FontFault::kCollection;
  }
  if (const auto problem = KindFault(U32(file, directory)); std::holds_alternative<FontFault>(problem)) return problem;
  if (file.size() - directory < kDirectoryHeadBytes) return FontFault::kTooShort;
  const std::size_t count = U16(file, directory + 4);
  if (file.size() - directory < kDirectoryHeadBytes + count * kDirectoryEntryBytes) return FontFault::kTooShort;
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t entry = directory + kDirectoryHeadBytes + i * kDirectoryEntryBytes;
    const Extent extent{U32(file, entry + 8), U32(file, entry + 12)};
    if (extent.offset > file.size() || extent.length > file.size() - extent.offset) return FontFault::kTableOutsideFile;
    const auto *name = file.data() + entry;
    tables_.emplace(std::string(name, name + 4), extent);
  }
  const auto isMissing = [&](std::string_view tag) { return !tables_.contains(tag); };
  for (const char *required : {"cmap", "head", "hhea", "hmtx", "maxp"}) {
    if (isMissing(required)) return FontFault::kMissingTable;
  }
  const bool hasCff = !isMissing("CFF ") || !isMissing("CFF2");
  if (U32(file, directory) == Tag("OTTO") && !hasCff) return FontFault::kCffOutlines;
  hasCffOutlines_ = isMissing("glyf") || isMissing("loca");
  if (hasCffOutlines_ && !hasCff) return FontFault::kMissingTable;
  return {};
}

Bytes TrueTypeFile::Table(std::string_view tag) const {
  const auto found = tables_.find(tag);
  return found == tables_.end() ? Bytes() : Part(found->second);
}

bool TrueTypeFile::ReadHeader() {
  const Bytes head = Table("head");
  if (head.size() < kHeadBytes || U32(head, 12) != kMagic) return false;
  unitsPerEm_ = U16(head, 18);
  if (unitsPerEm_ < 16 || unitsPerEm_ > 16384) return false;
  if (U16(head, 50) > 1) return false;
  const Bytes profile = Table("maxp");
  if (profile.size() < 6) return false;
  glyphCount_ = U16(profile, 4);
  return true;
}

bool TrueTypeFile::ReadMetrics() {
  const Bytes header = Table("hhea");
  if (header.size() < kHheaBytes) return false;
  metricCount_ = U16(header, 34);
  metrics_ = tables_.find("hmtx")->second;
  return metricCount_ > 0 && metricCount_ <= glyphCount_ && metrics_.length >= 4 * std::size_t{metricCount_};
}

bool TrueTypeFile::ReadGlyphPositions() {
  const Bytes table = Table("loca");
  outlines_ = tables_.find("glyf")->second;
  const bool isLong = U16(Table("head"), 50) == 1;
  const std::size_t count = std::size_t{glyphCount_} + 1;
  if (table.size() < count * (isLong ? 4 : 2)) return false;
  positions_.reserve(count);
  std::uint32_t last = 0;
  for (std::size_t i = 0; i < count; ++i) {
    const std::uint32_t position = isLong ? U32(table, 4 * i) : 2u * U16(table, 2 * i);
    if (position < last || position > outlines_.length) return false;
    positions_.push_back(position);
    last = position;
  }
  return true;
}

bool TrueTypeFile::CheckOutlines() const {
  for (unsigned glyph = 0; glyph < glyphCount_; ++glyph) {
    bool isWhole = false;
    const auto components = ComponentsOf(OutlineOf(static_cast<std::uint16_t>(glyph)), isWhole);
    if (!isWhole) return false;
    const auto isMissing = [&](const GlyphComponent &component) { return component.glyph >= glyphCount_; };
    if (std::ranges::any_of(components, isMissing)) return false;
  }
  return true;
}

bool TrueTypeFile::HasAnyOutline() const {
  for (unsigned glyph = 0; glyph < glyphCount_; ++glyph) {
    if (!IsBlank(static_cast<std::uint16_t>(glyph))) return true;
  }
  return false;
}

bool TrueTypeFile::IsBlank(std::uint16_t glyph) const {
  if (glyph >= glyphCount_) return true;
  if (!hasCffOutlines_) return OutlineOf(glyph).empty();
  const GlyphExtents extents = shaper_->ExtentsOf(glyph);
  return extents.left == extents.right && extents.bottom == extents.top;
}

bool TrueTypeFile::ReadCharacterMap() {
  const Bytes table = Table("cmap");
  if (table.size() < 4) return false;
  const std::size_t count = U16(table, 2);
  if (table.size() < 4 + 8 * count) return false;

  Bytes segments, symbols, groups, byteTable;
  for (std::size_t i = 0; i < count; ++i) {
    const unsigned platform = U16(table, 4 + 8 * i);
    const unsigned encoding = U16(table, 6 + 8 * i);
    const std::size_t offset = U32(table, 8 + 8 * i);
    if (offset > table.size() || table.size() - offset < 2) return false;
    const Bytes map = table.subspan(offset);
    const unsigned format = U16(map, 0);
    const bool isUnicode = platform == 0 || (platform == 3 && (encoding == 1 || encoding == 10));
    if (isUnicode && format == 12) groups = map;
    // Microsoft's own map before the one for any platform.
    if (isUnicode && format == 4 && (segments.empty() || platform == 3)) segments = map;
    if (platform == 3 && encoding == 0 && format == 4) symbols = map;
    if (platform == 1 && encoding == 0 && format == 0) byteTable = map;
  }

  basicPlane_.assign(0x10000, 0);
  if (!segments.empty() || !groups.empty()) {
    return (segments.empty() || ReadSegments(segments, false)) && (groups.empty() || ReadGroups(groups));
  }
  if (!symbols.empty()) return ReadSegments(symbols, true);
  return !byteTable.empty() && ReadByteTable(byteTable);
}

bool TrueTypeFile::ReadSegments(Bytes map, bool isSymbol) {
  if (map.size() < 16) return false;
  const std::size_t doubled = U16(map, 6);
  // Four parallel arrays and a number between the first two.
  if (doubled == 0 || doubled % 2 != 0 || map.size() < 16 + 4 * doubled) return false;
  const std::size_t ends = 14, starts = 16 + doubled, deltas = starts + doubled, ranges = deltas + doubled;
  int lastEnd = -1;
  for (std::size_t i = 0; i < doubled; i += 2) {
    const unsigned first = U16(map, starts + i), last = U16(map, ends + i);
    if (first > last || static_cast<int>(first) <= lastEnd) return false;
    lastEnd = static_cast<int>(last);
    const unsigned delta = U16(map, deltas + i), range = U16(map, ranges + i);
    // Real fonts give the closing segment, U+FFFF alone, an offset into nothing. It names no character.
    if (first == 0xFFFF) continue;
    if (range % 2 != 0) return false;
    const std::size_t list = ranges + i + range;
    if (range != 0 && list + 2 * (std::size_t{last} - first) + 2 > map.size()) return false;
    for (unsigned code = first; code <= last; ++code) {
      unsigned glyph = code;
      if (range != 0) {
        glyph = U16(map, list + 2 * (std::size_t{code} - first));
        if (glyph == 0) continue;
      }
      glyph = (glyph + delta) & 0xFFFF;
      if (glyph >= glyphCount_) continue;
      basicPlane_[code] = static_cast<std::uint16_t>(glyph);
      // A symbol font's codes are at U+F000; text names them by their low byte.
      if (isSymbol && (code & 0xFF00) == 0xF000) basicPlane_[code & 0xFF] = static_cast<std::uint16_t>(glyph);
    }
  }
  return true;
}

bool TrueTypeFile::ReadGroups(Bytes map) {
  if (map.size() < 16) return false;
  const std::size_t count = U32(map, 12);
  if (count > (map.size() - 16) / 12) return false;
  std::int64_t lastEnd = -1;
  for (std::size_t i = 0; i < count; ++i) {
    const std::uint32_t first = U32(map, 16 + 12 * i), last = U32(map, 20 + 12 * i), glyph = U32(map, 24 + 12 * i);
    if (first > last || last > 0x10FFFF || first <= lastEnd) return false;
    lastEnd = last;
    // Beyond the last glyph there is nothing to find, however long the group claims to be.
    for (std::uint32_t code = first; code <= last && code - first + std::uint64_t{glyph} < glyphCount_; ++code) {
      const auto found = static_cast<std::uint16_t>(glyph + (code - first));
      if (code < 0x10000) {
        basicPlane_[code] = found;
      } else {
        otherPlanes_.emplace_hint(otherPlanes_.end(), code, found);
      }
    }
  }
  return true;
}

bool TrueTypeFile::ReadByteTable(Bytes map) {
  if (map.size() < 262) return false;
  // Only the ASCII half means the same in every byte encoding of the platform.
  for (unsigned code = 0; code < 0x80; ++code) {
    const std::uint16_t glyph = map[6 + code];
    if (glyph < glyphCount_) basicPlane_[code] = glyph;
  }
  return true;
}

std::array<int, 4> TrueTypeFile::BoundingBox() const {
  const Bytes head = Table("head");
  return {S16(head, 36), S16(head, 38), S16(head, 40), S16(head, 42)};
}

int TrueTypeFile::Ascent() const { return S16(Table("hhea"), 4); }
int TrueTypeFile::Descent() const { return S16(Table("hhea"), 6); }

unsigned TrueTypeFile::AdvanceOf(std::uint16_t glyph) const {
  return U16(Part(metrics_), 4 * std::size_t{std::min<unsigned>(glyph, metricCount_ - 1)});
}

int TrueTypeFile::WidthOf(std::uint16_t glyph) const {
  return static_cast<int>(std::min(AdvanceOf(glyph) * 1000 / unitsPerEm_, 32767u));
}

int TrueTypeFile::LeftBearingOf(std::uint16_t glyph) const {
  const Bytes table = Part(metrics_);
  if (glyph < metricCount_) return S16(table, 4 * std::size_t{glyph} + 2);
  const std::size_t offset = 4 * std::size_t{metricCount_} + 2 * (std::size_t{glyph} - metricCount_);
  // Fonts of one width for all leave the bearings out.
  return table.size() >= offset + 2 ? S16(table, offset) : 0;
}

Bytes TrueTypeFile::OutlineOf(std::uint16_t glyph) const {
  // Substitutions may name glyphs that the file doesn't have; CFF outlines have no positions.
  if (glyph + std::size_t{1} >= positions_.size()) return {};
  return Part(outlines_).subspan(positions_[glyph], positions_[glyph + 1u] - positions_[glyph]);
}

unsigned TrueTypeFile::FamilyClass() const {
  const Bytes table = Table("OS/2");
  return table.size() >= 32 ? table[30] : 0;
}

int TrueTypeFile::ItalicAngle() const {
  const Bytes table = Table("post");
  return table.size() >= 8 ? S16(table, 4) : 0;
}

bool TrueTypeFile::IsFixedPitch() const {
  const Bytes table = Table("post");
  return table.size() >= 16 && U32(table, 12) != 0;
}

std::string TrueTypeFile::Name(unsigned id) const {
  const Bytes table = Table("name");
  if (table.size() < 6) return {};
  const std::size_t count = U16(table, 2), strings = U16(table, 4);
  std::string best;
  int bestRank = -1;
  for (std::size_t i = 0; i < count && table.size() >= 6 + 12 * (i + 1); ++i) {
    const std::size_t record = 6 + 12 * i;
    if (U16(table, record + 6) != id) continue;
    const unsigned platform = U16(table, record), encoding = U16(table, record + 2), language = U16(table, record + 4);
    const std::size_t length = U16(table, record + 8), offset = strings + U16(table, record + 10);
    if (offset > table.size() || length > table.size() - offset) continue;
    const bool isWide = platform == 0 || platform == 3;
    // As libharu chooses: the one-byte record, else the English one, the last of several. Where it finds none, any
    // will do.
    const int rank = platform == 1 && encoding == 0 ? 3 : isWide && language == 0x409 ? 2 : isWide ? 1 : 0;
    if (rank < bestRank) continue;
    std::string name;
    for (std::size_t at = isWide ? 1 : 0; at < length; at += isWide ? 2 : 1) {
      const std::uint8_t byte = table[offset + at];
      if (isWide && table[offset + at - 1] != 0) continue;
      if (byte >= 0x20 && byte < 0x7F) name.push_back(static_cast<char>(byte));
    }
    if (name.empty()) continue;
    best = name;
    bestRank = rank;
  }
  return best;
}

}  // namespace quillbar::engine
