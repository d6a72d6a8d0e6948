// SPDX-License-Identifier: MIT
// What is accepted as a TrueType font, and what is refused before the library sees it.
#include "plugin/engine/fonts/truetype/truetype_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <optional>
#include <string>

#include "tests/support/sample.h"
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

TEST(TrueTypeFile, PartsMayBeScaledOrTurned) {
  struct Transformation {
    unsigned flag;
    std::size_t numbers;  // of two bytes, behind the offsets
  };
  for (const auto &[flag, numbers] :
       {Transformation{0x0008, 1}, Transformation{0x0040, 2}, Transformation{0x0080, 4}}) {
    SyntheticFont font;
    FontBytes parts = SyntheticFont::Composite({2, 3});
    engine::Write16(parts, 10, 0x0023 | flag);
    parts.insert(parts.begin() + 18, 2 * numbers, std::uint8_t{0x40});
    font.SetOutline(1, parts);
    const TrueTypeFile file = Accepted(font.Build());
    bool isWhole = false;
    const auto components = engine::ComponentsOf(file.OutlineOf(1), isWhole);
    EXPECT_TRUE(isWhole) << flag;
    ASSERT_EQ(components.size(), 2U) << flag;
    EXPECT_EQ(components[0].glyph, 2) << flag;
    EXPECT_EQ(components[1].glyph, 3) << flag;
    engine::Write16(parts, 10, 0x0003 | flag);
    font.SetOutline(1, {parts.begin(), parts.begin() + 16});
    EXPECT_EQ(FaultOf(font.Build()), FontFault::kOutline) << "cut off before the numbers: " << flag;
  }
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
  // One of signs has another form than the only one that is read.
  font.SetCharacterMap(3, 0, SyntheticFont::GroupMap({{'A', 'C', 1}}));
  EXPECT_EQ(FaultOf(font.Build()), FontFault::kCharacterMap);
}

// A map of format 0, which gives each byte a glyph.
FontBytes ByteMap(const std::map<unsigned, std::uint8_t> &glyphs) {
  FontBytes map;
  for (const std::uint32_t number : {0u, 262u, 0u}) engine::Append16(map, number);
  map.resize(262);
  for (const auto &[byte, glyph] : glyphs) map.at(6 + byte) = glyph;
  return map;
}

TEST(TrueTypeFile, AMapOfBytesIsReadAsFarAsItIsAscii) {
  SyntheticFont font;
  font.SetCharacterMap(1, 0, ByteMap({{'A', 2}, {'B', 200}, {0xC4, 3}}));
  const TrueTypeFile file = Accepted(font.Build());
  EXPECT_EQ(file.GlyphOf(U'A'), 2);
  EXPECT_EQ(file.GlyphOf(U'B'), 0) << "a glyph that the font doesn't have";
  EXPECT_EQ(file.GlyphOf(U'\u00C4'), 0);
  FontBytes cut = ByteMap({{'A', 2}});
  cut.resize(261);
  font.SetCharacterMap(1, 0, cut);
  EXPECT_EQ(FaultOf(font.Build()), FontFault::kCharacterMap);
}

TEST(TrueTypeFile, MapsThatAreCutOffAreRefused) {
  for (const unsigned encoding : {1u, 10u}) {
    SyntheticFont font;
    FontBytes map =
        encoding == 1 ? SyntheticFont::SegmentMap({{'A', 'C', 1u - 'A'}}) : SyntheticFont::GroupMap({{'A', 'C', 1}});
    map.resize(15);
    font.SetCharacterMap(3, encoding, map);
    EXPECT_EQ(FaultOf(font.Build()), FontFault::kCharacterMap) << encoding;
    map.resize(1);
    font.SetCharacterMap(3, encoding, map);
    EXPECT_EQ(FaultOf(font.Build()), FontFault::kCharacterMap) << encoding;
  }
}

// Two maps of format 4, of one character each.
FontBytes TwoMaps(unsigned firstPlatform, unsigned secondPlatform) {
  const FontBytes first = SyntheticFont::SegmentMap({{'A', 'A', 1u - 'A'}});
  const FontBytes second = SyntheticFont::SegmentMap({{'A', 'A', 2u - 'A'}});
  FontBytes table;
  for (const std::uint32_t number : {0u, 2u, firstPlatform, 1u}) engine::Append16(table, number);
  engine::Append32(table, 20);
  for (const std::uint32_t number : {secondPlatform, 1u}) engine::Append16(table, number);
  engine::Append32(table, static_cast<std::uint32_t>(20 + first.size()));
  table.insert(table.end(), first.begin(), first.end());
  table.insert(table.end(), second.begin(), second.end());
  return table;
}

TEST(TrueTypeFile, MicrosoftsMapComesBeforeTheOneForAnyPlatform) {
  SyntheticFont font;
  font.tables["cmap"] = TwoMaps(0, 3);
  EXPECT_EQ(Accepted(font.Build()).GlyphOf(U'A'), 2);
  font.tables["cmap"] = TwoMaps(3, 0);
  EXPECT_EQ(Accepted(font.Build()).GlyphOf(U'A'), 1);
}

TEST(TrueTypeFile, CollectionsThatLieAreRefused) {
  FontBytes collection;
  for (const std::uint32_t number : {0x74746366u, 0x00010000u, 1u, 16u}) engine::Append32(collection, number);
  EXPECT_EQ(FaultOf(collection), FontFault::kCollection) << "its font is not there";
  EXPECT_EQ(FaultOf({collection.begin(), collection.begin() + 11}), FontFault::kCollection) << "cut off";
  engine::Write32(collection, 8, 0);
  EXPECT_EQ(FaultOf(collection), FontFault::kCollection) << "no fonts";
}

TEST(TrueTypeFile, BearingsThatAreLeftOutAreZero) {
  SyntheticFont font(4);
  font.tables["hmtx"].resize(10);
  const TrueTypeFile file = Accepted(With16(font, "hhea", 34, 2));
  EXPECT_EQ(file.LeftBearingOf(1), 100);
  EXPECT_EQ(file.LeftBearingOf(3), 0);
}

TEST(TrueTypeFile, CharactersAboveTheBasicPlaneThatAreNotThereHaveNoGlyph) {
  EXPECT_EQ(Accepted(SyntheticFont().Build()).GlyphOf(U'\U0001F600'), 0);
}

TEST(TrueTypeFile, GlyphsThatAreNotThereAreBlank) {
  const TrueTypeFile file = Accepted(SyntheticFont(4).Build());
  EXPECT_FALSE(file.IsBlank(3));
  EXPECT_TRUE(file.IsBlank(4));
}

// A name table with one record and the bytes that it names.
FontBytes NameTable(unsigned platform, unsigned encoding, unsigned language, unsigned length, unsigned offset,
                    const std::string &bytes) {
  FontBytes table;
  for (const std::uint32_t number : {0u, 1u, 18u, platform, encoding, language, 6u, length, offset})
    engine::Append16(table, number);
  table.insert(table.end(), bytes.begin(), bytes.end());
  return table;
}

TEST(TrueTypeFile, NamesAreTheirPrintableAscii) {
  using std::string_literals::operator""s;
  const auto nameFrom = [](const FontBytes &table) {
    SyntheticFont font;
    font.tables["name"] = table;
    return Accepted(font.Build()).PostScriptName();
  };
  EXPECT_EQ(nameFrom(NameTable(1, 0, 0, 5, 0, "A\tB\x7F\xC4")), "AB");
  EXPECT_EQ(nameFrom(NameTable(3, 1, 0x409, 6, 0, "\0A\4B\0C"s)), "AC") << "a character of another block is left out";
  EXPECT_EQ(nameFrom(NameTable(3, 1, 0x407, 2, 0, "\0D"s)), "D") << "for want of an English one";
  EXPECT_EQ(nameFrom(NameTable(2, 0, 0, 2, 0, "EF")), "EF") << "of whatever platform";
}

TEST(TrueTypeFile, NamesOutsideTheirTableAreLeftOut) {
  const std::string substitute = [] {
    SyntheticFont font;
    font.tables.erase("name");
    return Accepted(font.Build()).PostScriptName();
  }();
  const auto nameFrom = [](FontBytes table) {
    SyntheticFont font;
    font.tables["name"] = std::move(table);
    return Accepted(font.Build()).PostScriptName();
  };
  EXPECT_EQ(nameFrom(NameTable(1, 0, 0, 9, 0, "short")), substitute) << "longer than what is there";
  EXPECT_EQ(nameFrom(NameTable(1, 0, 0, 1, 900, "short")), substitute) << "from beyond the end";
  EXPECT_EQ(nameFrom(NameTable(1, 0, 0, 2, 0, "\1\2")), substitute) << "nothing printable";
  EXPECT_EQ(nameFrom(FontBytes(5)), substitute) << "no head";
  FontBytes records = NameTable(1, 0, 0, 1, 0, "A");
  records.resize(17);
  EXPECT_EQ(nameFrom(records), substitute) << "a record that is cut off";
}

TEST(TrueTypeFile, EverySingleByteChangedIsEitherReadOrRefused) {
  const char32_t step = test::TakesSamples() ? 7 : 1;
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
      for (char32_t c = 0; c < 0x10000; c += step) {
        const unsigned glyph = font->GlyphOf(c);
        if (glyph > highest) highest = glyph;
      }
      EXPECT_LT(highest, font->GlyphCount());
    }
  }
}

}  // namespace
}  // namespace quillbar
