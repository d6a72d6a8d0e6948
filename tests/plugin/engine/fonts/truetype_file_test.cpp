// SPDX-License-Identifier: MIT
// What is accepted as a TrueType font, and what is refused before the library sees it.
#include "plugin/engine/fonts/truetype/truetype_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>

#include "tests/support/synthetic_font.h"

namespace quillbar {
namespace {

using engine::FontFault;
using engine::TrueTypeFile;
using test::FontBytes;
using test::SyntheticFont;

// The fault of a file; nothing if it is accepted.
std::optional<FontFault> FaultOf(FontBytes bytes) {
  const auto result = TrueTypeFile::Read(std::move(bytes));
  const auto *fault = std::get_if<FontFault>(&result);
  return fault ? std::optional(*fault) : std::nullopt;
}

TrueTypeFile Accepted(FontBytes bytes) {
  auto result = TrueTypeFile::Read(std::move(bytes));
  EXPECT_TRUE(std::holds_alternative<TrueTypeFile>(result));
  return std::get<TrueTypeFile>(std::move(result));
}

// A font with one number of a table changed.
FontBytes With16(SyntheticFont font, const std::string &table, std::size_t offset, unsigned value) {
  engine::Write16(font.tables.at(table), offset, value);
  return font.Build();
}

TEST(TrueTypeFile, SmallestFontIsReadWhole) {
  const TrueTypeFile font = Accepted(SyntheticFont().Build());
  EXPECT_EQ(font.UnitsPerEm(), 1000u);
  EXPECT_EQ(font.GlyphCount(), 4u);
  EXPECT_EQ(font.Ascent(), 800);
  EXPECT_EQ(font.Descent(), -200);
  EXPECT_EQ(font.GlyphOf(U'A'), 1);
  EXPECT_EQ(font.GlyphOf(U'C'), 3);
  EXPECT_EQ(font.GlyphOf(U'D'), 0);
  EXPECT_EQ(font.AdvanceOf(2), 600u);
  EXPECT_EQ(font.PostScriptName(), "Synthetic");
}

TEST(TrueTypeFile, OtherKindsOfFilesAreToldApart) {
  const auto withSignature = [](const char *signature) {
    FontBytes bytes = SyntheticFont().Build();
    std::copy(signature, signature + 4, bytes.begin());
    return bytes;
  };
  EXPECT_EQ(FaultOf(withSignature("OTTO")), FontFault::kCffOutlines);
  EXPECT_EQ(FaultOf(withSignature("ttcf")), FontFault::kCollection);
  EXPECT_EQ(FaultOf(withSignature("wOFF")), FontFault::kWebFont);
  EXPECT_EQ(FaultOf(withSignature("wOF2")), FontFault::kWebFont);
  EXPECT_EQ(FaultOf(withSignature("%PDF")), FontFault::kNotTrueType);
  EXPECT_EQ(FaultOf(withSignature("true")), std::nullopt);
}

TEST(TrueTypeFile, EveryTruncationIsRefused) {
  const FontBytes whole = SyntheticFont().Build();
  for (std::size_t size = 0; size + 4 < whole.size(); ++size)
    EXPECT_NE(FaultOf({whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size)}), std::nullopt) << size;
}

TEST(TrueTypeFile, EveryMissingRequiredTableIsRefused) {
  for (const char *tag : {"cmap", "head", "hhea", "hmtx", "maxp"}) {
    SyntheticFont font;
    font.tables.erase(tag);
    EXPECT_EQ(FaultOf(font.Build()), FontFault::kMissingTable) << tag;
  }
}

TEST(TrueTypeFile, TableOutsideTheFileIsRefused) {
  for (const unsigned value : {0x7FFFFFFFu, 0xFFFFFFFFu, 0x00010000u}) {
    for (const std::size_t field : {8u, 12u}) {  // offset, length
      FontBytes bytes = SyntheticFont().Build();
      engine::Write32(bytes, 12 + field, value);
      EXPECT_EQ(FaultOf(bytes), FontFault::kTableOutsideFile) << value << ' ' << field;
    }
  }
}

TEST(TrueTypeFile, UnitsPerEmOutsideTheFormatsRangeAreRefused) {
  for (const unsigned value : {0u, 15u, 16385u, 65535u})
    EXPECT_EQ(FaultOf(With16(SyntheticFont(), "head", 18, value)), FontFault::kHeader) << value;
  for (const unsigned value : {16u, 2048u, 16384u})
    EXPECT_EQ(FaultOf(With16(SyntheticFont(), "head", 18, value)), std::nullopt) << value;
}

TEST(TrueTypeFile, WrongMagicNumberIsRefused) {
  EXPECT_EQ(FaultOf(With16(SyntheticFont(), "head", 12, 0)), FontFault::kHeader);
}

TEST(TrueTypeFile, ZeroGlyphsAreRefused) {
  EXPECT_EQ(FaultOf(With16(SyntheticFont(), "maxp", 4, 0)), FontFault::kNoGlyphs);
}

TEST(TrueTypeFile, MetricsCountMustLieBetweenOneAndTheGlyphCount) {
  EXPECT_EQ(FaultOf(With16(SyntheticFont(4), "hhea", 34, 0)), FontFault::kMetrics);
  EXPECT_EQ(FaultOf(With16(SyntheticFont(4), "hhea", 34, 5)), FontFault::kMetrics);
  EXPECT_EQ(FaultOf(With16(SyntheticFont(4), "hhea", 34, 65535)), FontFault::kMetrics);
  EXPECT_EQ(FaultOf(With16(SyntheticFont(4), "hhea", 34, 1)), std::nullopt);
}

TEST(TrueTypeFile, GlyphsBeyondTheMetricsHaveTheLastAdvance) {
  SyntheticFont font(4);
  engine::Write16(font.tables["hmtx"], 4, 321);
  const TrueTypeFile file = Accepted(With16(font, "hhea", 34, 2));
  EXPECT_EQ(file.AdvanceOf(3), 321u);
}

TEST(TrueTypeFile, ShortMetricsTableIsRefused) {
  SyntheticFont font;
  font.tables["hmtx"].resize(15);
  EXPECT_EQ(FaultOf(font.Build()), FontFault::kMetrics);
}

TEST(TrueTypeFile, GlyphPositionsMustIncreaseAndStayInside) {
  EXPECT_EQ(FaultOf(With16(SyntheticFont(4), "maxp", 4, 5)), FontFault::kGlyphPositions)
      << "more glyphs than positions";
  SyntheticFont font(2);
  FontBytes positions;
  for (const std::uint32_t position : {0u, 32u, 28u}) engine::Append32(positions, position);
  font.tables["loca"] = positions;
  EXPECT_EQ(FaultOf(font.Build()), FontFault::kGlyphPositions) << "decreasing";
  engine::Write32(font.tables["loca"], 8, 100000);
  EXPECT_EQ(FaultOf(font.Build()), FontFault::kGlyphPositions) << "outside";
}

TEST(TrueTypeFile, OutlinesThatAreCutOffOrNameMissingPartsAreRefused) {
  SyntheticFont cut;
  cut.SetOutline(1, FontBytes(8));
  EXPECT_EQ(FaultOf(cut.Build()), FontFault::kOutline);
  SyntheticFont missing;
  missing.SetOutline(1, SyntheticFont::Composite({2, 4}));
  EXPECT_EQ(FaultOf(missing.Build()), FontFault::kOutline);
  SyntheticFont endless;
  FontBytes parts = SyntheticFont::Composite({2});
  engine::Write16(parts, 10, 0x0023);  // more parts follow, but none do
  endless.SetOutline(1, parts);
  EXPECT_EQ(FaultOf(endless.Build()), FontFault::kOutline);
  SyntheticFont sound;
  sound.SetOutline(1, SyntheticFont::Composite({2, 3}));
  EXPECT_EQ(FaultOf(sound.Build()), std::nullopt);
}

TEST(TrueTypeFile, GlyphThatIsAPartOfItselfDoesNotHangTheSubsetter) {
  SyntheticFont font;
  font.SetOutline(1, SyntheticFont::Composite({2}));
  font.SetOutline(2, SyntheticFont::Composite({1}));
  EXPECT_EQ(FaultOf(font.Build()), std::nullopt);
}

TEST(TrueTypeFile, CharacterMapThatLiesIsRefused) {
  const auto fault = [](std::size_t offset, unsigned value) {
    SyntheticFont font;
    FontBytes map = SyntheticFont::SegmentMap({{'A', 'C', 1u - 'A'}});
    engine::Write16(map, offset, value);
    font.SetCharacterMap(3, 1, map);
    return FaultOf(font.Build());
  };
  // Two segments: ends at 14, starts at 20, deltas at 24, ranges at 28.
  EXPECT_EQ(fault(6, 0), FontFault::kCharacterMap) << "no segments";
  EXPECT_EQ(fault(6, 3), FontFault::kCharacterMap) << "half a segment";
  EXPECT_EQ(fault(6, 0xFFFE), FontFault::kCharacterMap) << "segments beyond the table";
  EXPECT_EQ(fault(20, 'D'), FontFault::kCharacterMap) << "a segment that ends before it begins";
  EXPECT_EQ(fault(14, 0xFFFF), FontFault::kCharacterMap) << "segments that overlap";
  EXPECT_EQ(fault(28, 0x1000), FontFault::kCharacterMap) << "glyph numbers outside the table";
  EXPECT_EQ(fault(28, 3), FontFault::kCharacterMap) << "an odd range offset";
  EXPECT_EQ(fault(30, 101), std::nullopt) << "a closing segment that leads nowhere";
  EXPECT_EQ(fault(2, 0xFFFF), std::nullopt) << "a wrong length, which nothing needs";
}

TEST(TrueTypeFile, CharacterMapsOutsideTheirTableAreRefused) {
  SyntheticFont font;
  engine::Write32(font.tables["cmap"], 8, 0x7FFFFFFF);
  EXPECT_EQ(FaultOf(font.Build()), FontFault::kCharacterMap);
  font = SyntheticFont();
  engine::Write16(font.tables["cmap"], 2, 0xFFFF);
  EXPECT_EQ(FaultOf(font.Build()), FontFault::kCharacterMap);
  font = SyntheticFont();
  font.tables["cmap"].resize(3);
  EXPECT_EQ(FaultOf(font.Build()), FontFault::kCharacterMap);
}

TEST(TrueTypeFile, CharactersOfGlyphsThatAreNotThereHaveNone) {
  SyntheticFont font;
  font.SetCharacterMap(3, 1, SyntheticFont::SegmentMap({{'A', 'Z', 1u - 'A'}}));
  const TrueTypeFile file = Accepted(font.Build());
  EXPECT_EQ(file.GlyphOf(U'C'), 3);
  EXPECT_EQ(file.GlyphOf(U'D'), 0);
}

TEST(TrueTypeFile, CharactersAboveTheBasicPlaneAreFound) {
  SyntheticFont font;
  font.SetCharacterMap(3, 10, SyntheticFont::GroupMap({{'a', 'a', 1}, {0x1F600, 0x1F601, 2}}));
  const TrueTypeFile file = Accepted(font.Build());
  EXPECT_EQ(file.GlyphOf(U'a'), 1);
  EXPECT_EQ(file.GlyphOf(U'\U0001F601'), 3);
  EXPECT_EQ(file.GlyphOf(U'\U0001F602'), 0);
}

TEST(TrueTypeFile, GroupsThatLieAreRefused) {
  for (const auto &groups :
       std::vector<std::vector<SyntheticFont::Group>>{{{5, 4, 1}}, {{0, 0x110000, 1}}, {{10, 20, 1}, {15, 30, 1}}}) {
    SyntheticFont font;
    font.SetCharacterMap(3, 10, SyntheticFont::GroupMap(groups));
    EXPECT_EQ(FaultOf(font.Build()), FontFault::kCharacterMap);
  }
  SyntheticFont font;
  FontBytes map = SyntheticFont::GroupMap({{'a', 'a', 1}});
  engine::Write32(map, 12, 0xFFFFFFFF);
  font.SetCharacterMap(3, 10, map);
  EXPECT_EQ(FaultOf(font.Build()), FontFault::kCharacterMap) << "more groups than the table holds";
}

TEST(TrueTypeFile, SymbolFontIsFoundByTheLowByte) {
  SyntheticFont font;
  font.SetCharacterMap(3, 0, SyntheticFont::SegmentMap({{0xF041, 0xF043, 1u - 0xF041}}));
  const TrueTypeFile file = Accepted(font.Build());
  EXPECT_EQ(file.GlyphOf(U'B'), 2);
  EXPECT_EQ(file.GlyphOf(0xF042), 2);
}

TEST(TrueTypeFile, FontWithoutUnicodeMapIsRefused) {
  SyntheticFont font;
  font.SetCharacterMap(3, 2, SyntheticFont::SegmentMap({{'A', 'C', 1u - 'A'}}));
  EXPECT_EQ(FaultOf(font.Build()), FontFault::kCharacterMap);
}

TEST(TrueTypeFile, EverySingleByteChangedIsEitherReadOrRefused) {
  const FontBytes whole = SyntheticFont().Build();
  for (std::size_t i = 0; i < whole.size(); ++i) {
    for (const int value : {0x00, 0x01, 0x7F, 0x80, 0xFF}) {
      FontBytes bytes = whole;
      bytes[i] = static_cast<std::uint8_t>(value);
      auto result = TrueTypeFile::Read(std::move(bytes));
      const auto *font = std::get_if<TrueTypeFile>(&result);
      if (font == nullptr) continue;
      // Whatever was accepted can be used without a look at the numbers again.
      for (unsigned glyph = 0; glyph < font->GlyphCount(); ++glyph) {
        const auto number = static_cast<std::uint16_t>(glyph);
        bool isWhole = false;
        for (const auto &component : engine::ComponentsOf(font->OutlineOf(number), isWhole))
          EXPECT_LT(component.glyph, font->GlyphCount());
        EXPECT_TRUE(isWhole);
        EXPECT_LE(font->AdvanceOf(number), 65535u);
        EXPECT_GE(font->LeftBearingOf(number), -32768);
      }
      // One expectation for all characters: so many would take most of the test's time.
      unsigned highest = 0;
      for (char32_t c = 0; c < 0x10000; ++c) {
        const unsigned glyph = font->GlyphOf(c);
        if (glyph > highest) highest = glyph;
      }
      EXPECT_LT(highest, font->GlyphCount());
    }
  }
}

}  // namespace
}  // namespace quillbar
