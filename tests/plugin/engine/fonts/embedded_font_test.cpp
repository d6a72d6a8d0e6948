// SPDX-License-Identifier: MIT
// TrueType fonts embedded in saved files: what readers see and copy, and what the file costs.
#include <gmock/gmock.h>

#include <algorithm>
#include <cstring>
#include <map>
#include <set>

#include "plugin/engine/fonts/truetype/truetype_file.h"
#include "plugin/engine/fonts/truetype/truetype_name.h"
#include "tests/plugin/engine/driver/font_document.h"
#include "tests/support/pattern.h"
#include "tests/support/process.h"
#include "tests/support/reader_versions.h"
#include "tests/support/real_fonts.h"

namespace quillbar {
namespace {

using engine::TrueTypeFile;
using test::FontDocument;
using test::PdfFile;
using test::RealFont;
using test::SyntheticFont;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

MATCHER_P(Matches, expression, "matches " + std::string(expression)) {
  return !test::WholeMatch(std::string(arg), expression).empty();
}

TrueTypeFile Parsed(const test::FontBytes &program) {
  auto result = TrueTypeFile::Read(program);
  EXPECT_TRUE(std::holds_alternative<TrueTypeFile>(result));
  return std::get<TrueTypeFile>(std::move(result));
}

// What a reader copies that takes text on the page to run from left to right, and turns what is written the other way.
std::string AsTurned(const RealFont &font) {
  if (std::string_view(font.script) != "Hebrew") return font.text;
  std::string turned;
  for (std::size_t i = std::strlen(font.text); i >= 2; i -= 2) turned.append(font.text + i - 2, 2);
  return turned;
}

std::string AsMuPdfReads(const RealFont &font) { return test::MuPdfTurnsRightToLeft() ? AsTurned(font) : font.text; }

class RealFontTest : public testing::TestWithParam<RealFont> {};

TEST_P(RealFontTest, TextComesOutAsItWentIn) {
  const RealFont &font = GetParam();
  QUILLBAR_NEEDS_FONT(font.path, font.package);
  FontDocument document;
  ASSERT_EQ(document.Show(document.Font(document.Load(font.path)), font.text), HPDF_OK);
  const std::string saved = document.SaveToString();
  EXPECT_THAT(document.TakeCodes(), IsEmpty());
  EXPECT_TRUE(test::Flawless(saved));
  EXPECT_EQ(test::Trimmed(test::MuPdfText(saved)), AsMuPdfReads(font));
  EXPECT_THAT(test::ExtractedText(saved), HasSubstr(AsTurned(font)));  // poppler turns it
}

TEST_P(RealFontTest, IsEmbeddedAsASubset) {
  const RealFont &font = GetParam();
  QUILLBAR_NEEDS_FONT(font.path, font.package);
  FontDocument document;
  document.Show(document.Font(document.Load(font.path)), font.text);
  const std::string saved = document.SaveToString();
  test::WriteFile(document.Folder() / "saved.pdf", saved);
  const test::ProcessResult listed = test::RunProcess({"pdffonts", document.Folder() / "saved.pdf"});
  // Columns: name, type, encoding, embedded, subset, Unicode map.
  EXPECT_THAT(listed.output, testing::ContainsRegex("CID TrueType +Identity-H +yes +yes +yes"));
  EXPECT_LT(saved.size(), 60'000u);
}

INSTANTIATE_TEST_SUITE_P(Scripts, RealFontTest, testing::ValuesIn(test::RealTrueTypeFonts()),
                         [](const auto &made) { return std::string(made.param.script); });

TEST(EmbeddedFont, OneLineOfTextUncompressedStaysBelow60Kilobytes) {
  QUILLBAR_NEEDS_FONT(test::kDejaVuSans, "fonts-dejavu-core");
  FontDocument document;
  document.Show(document.Font(document.Load(test::kDejaVuSans)), "The quick brown fox jumps over the lazy dog");
  EXPECT_LT(document.SaveToString().size(), 60'000u);
}

TEST(EmbeddedFont, TextAddedAfterASaveIsInTheNextOne) {
  FontDocument document;
  HPDF_Font font = document.Font(document.Load(SyntheticFont().Build()));
  document.Show(font, "A");
  EXPECT_EQ(Parsed(test::EmbeddedProgram(PdfFile(document.SaveToString()))).GlyphCount(), 2u);
  document.Show(font, "BC");
  const std::string second = document.SaveToString();
  EXPECT_EQ(Parsed(test::EmbeddedProgram(PdfFile(second))).GlyphCount(), 4u);
  EXPECT_EQ(test::Trimmed(test::MuPdfText(second)), "A\nBC");
  EXPECT_EQ(document.SaveToString().size(), second.size()) << "a save without new text";
}

TEST(EmbeddedFont, TextInAOneByteEncodingAddedAfterASaveIsInTheNextOne) {
  FontDocument document;
  HPDF_Font font = document.Font(document.Load(SyntheticFont().Build()), "WinAnsiEncoding");
  document.Show(font, "A");
  document.SaveToString();
  document.Show(font, "B");
  const TrueTypeFile program = Parsed(test::EmbeddedProgram(PdfFile(document.SaveToString())));
  EXPECT_NE(program.GlyphOf(U'A'), 0);
  EXPECT_NE(program.GlyphOf(U'B'), 0);
  EXPECT_EQ(program.GlyphOf(U'C'), 0);
}

TEST(EmbeddedFont, OneFileServesUtf8AndOneByteEncodings) {
  QUILLBAR_NEEDS_FONT(test::kDejaVuSans, "fonts-dejavu-core");
  FontDocument document;
  const char *name = document.Load(test::kDejaVuSans);
  document.Show(document.Font(name), "Grüße");
  document.Show(document.Font(name, "CP1251"), "\xCF\xF0\xE8\xE2\xE5\xF2");
  const std::string saved = document.SaveToString();
  EXPECT_TRUE(test::Flawless(saved));
  EXPECT_EQ(test::Trimmed(test::MuPdfText(saved)), "Grüße\nПривет");
}

TEST(EmbeddedFont, CharactersThatShareAGlyphNameAreShownAndCopiedAsThemselves) {
  QUILLBAR_NEEDS_FONT(test::kDejaVuSans, "fonts-dejavu-core");
  FontDocument document;
  const char *name = document.Load(test::kDejaVuSans);
  document.Show(document.Font(name, "ISO8859-7"), "\xEC\xC4\xD9");             // Greek
  document.Show(document.Font(name, "MacRomanEncoding"), "\xB5\xC6\xBD\xDB");  // the signs, and the euro sign
  const std::string saved = document.SaveToString();
  EXPECT_TRUE(test::Flawless(saved));
  EXPECT_EQ(test::Trimmed(test::MuPdfText(saved)), "μΔΩ\nµ∆Ω€");
  // Every reader finds a glyph, whichever of the two characters it looks for.
  const TrueTypeFile program = Parsed(test::EmbeddedProgram(PdfFile(saved)));
  for (const char32_t character : U"μµΔ∆ΩΩ€") {
    if (character == 0) break;
    EXPECT_NE(program.GlyphOf(character), 0) << static_cast<unsigned>(character);
  }
}

TEST(EmbeddedFont, PartsOfNestedCompositeGlyphsAreEmbedded) {
  QUILLBAR_NEEDS_FONT(test::kDejaVuSans, "fonts-dejavu-core");
  // Each of these is made of a letter with an accent that is itself made of parts.
  FontDocument document;
  document.Show(document.Font(document.Load(test::kDejaVuSans)), "ẦỖǖ");
  const TrueTypeFile program = Parsed(test::EmbeddedProgram(PdfFile(document.SaveToString())));
  auto whole = TrueTypeFile::Read([] {
    const std::string bytes = test::ReadFile(test::kDejaVuSans);
    return test::FontBytes(bytes.begin(), bytes.end());
  }());
  const auto &font = std::get<TrueTypeFile>(whole);
  // The same number of outlines in the same depth as in the file.
  const auto count = [](const TrueTypeFile &in, std::uint16_t glyph, auto &self) -> int {
    bool isWhole = false;
    int outlines = in.OutlineOf(glyph).empty() ? 0 : 1;
    for (const auto &component : engine::ComponentsOf(in.OutlineOf(glyph), isWhole))
      outlines += self(in, component.glyph, self);
    return outlines;
  };
  std::uint16_t code = 1;
  for (const char32_t character : U"ẦỖǖ") {
    if (character == 0) break;
    EXPECT_EQ(count(program, code, count), count(font, font.GlyphOf(character), count))
        << static_cast<unsigned>(character);
    EXPECT_GT(count(program, code, count), 3);
    ++code;
  }
}

TEST(EmbeddedFont, GlyphNumbersAbove32767KeepTheirParts) {
  constexpr unsigned kGlyphs = 40'000;
  SyntheticFont font(kGlyphs, 0x100);
  font.SetOutline(10, SyntheticFont::Composite({39'000, 39'001}));
  font.SetOutline(39'001, SyntheticFont::Composite({39'002}));
  FontDocument document;
  document.Show(document.Font(document.Load(font.Build())), "\u0109");
  const std::string saved = document.SaveToString();
  const TrueTypeFile program = Parsed(test::EmbeddedProgram(PdfFile(saved)));
  EXPECT_EQ(program.GlyphCount(), 5u) << "the missing glyph, the composite and three parts";
  for (std::uint16_t glyph = 0; glyph < 5; ++glyph) EXPECT_THAT(program.OutlineOf(glyph), Not(IsEmpty()));
}

TEST(EmbeddedFont, MoreThan32767WideCharactersInARowAreSaved) {
  constexpr unsigned kGlyphs = 40'000;
  SyntheticFont font(kGlyphs, 0x3400, 1000);
  // The missing glyph is narrower, so each of the others needs a width of its own.
  engine::Write16(font.tables["hmtx"], 0, 500);
  FontDocument document;
  HPDF_Font face = document.Font(document.Load(font.Build()));
  std::string text;
  for (unsigned i = 0; i < kGlyphs - 1; ++i) {
    const unsigned c = 0x3400 + i;
    text += {static_cast<char>(0xE0 | c >> 12), static_cast<char>(0x80 | (c >> 6 & 0x3F)),
             static_cast<char>(0x80 | (c & 0x3F))};
    if (text.size() > 60'000 || i + 2 == kGlyphs) {
      EXPECT_EQ(document.Show(face, text), HPDF_OK);
      text.clear();
    }
  }
  const std::string saved = document.SaveToString();
  EXPECT_THAT(document.TakeCodes(), IsEmpty());
  const PdfFile file(saved);
  std::size_t widths = 0;
  QPDFObjectHandle all = file.Font(0, "/F1").getKey("/DescendantFonts").getArrayItem(0).getKey("/W");
  for (int i = 1; i < all.getArrayNItems(); i += 2) {
    widths += static_cast<std::size_t>(all.getArrayItem(i).getArrayNItems());
    EXPECT_LE(all.getArrayItem(i).getArrayNItems(), 32'767);
  }
  EXPECT_EQ(widths, kGlyphs);
}

TEST(EmbeddedFont, CharactersWithoutAGlyphShowTheMissingOneAndAreStillCopied) {
  FontDocument document;
  document.Show(document.Font(document.Load(SyntheticFont().Build())), "AыB漢C😀");
  const std::string saved = document.SaveToString();
  EXPECT_TRUE(test::Flawless(saved));
  EXPECT_EQ(test::Trimmed(test::MuPdfText(saved)), "AыB漢C😀");
  EXPECT_THAT(test::ExtractedText(saved), HasSubstr("AыB漢C😀"));
  const TrueTypeFile program = Parsed(test::EmbeddedProgram(PdfFile(saved)));
  const auto missing = program.OutlineOf(0), second = program.OutlineOf(2);
  EXPECT_TRUE(std::equal(missing.begin(), missing.end(), second.begin(), second.end()));
}

TEST(EmbeddedFont, CharactersAboveTheBasicPlaneAreShownWithTheirGlyph) {
  SyntheticFont font;
  font.SetCharacterMap(3, 10, SyntheticFont::GroupMap({{'a', 'a', 1}, {0x1F600, 0x1F601, 2}}));
  FontDocument document;
  document.Show(document.Font(document.Load(font.Build())), "a😀😁");
  const std::string saved = document.SaveToString();
  EXPECT_EQ(test::Trimmed(test::MuPdfText(saved)), "a😀😁");
  EXPECT_THAT(test::ExtractedText(saved), HasSubstr("a😀😁"));
  const TrueTypeFile program = Parsed(test::EmbeddedProgram(PdfFile(saved)));
  EXPECT_EQ(engine::S16(program.OutlineOf(2), 6), 102) << "the square of glyph 2";
  EXPECT_EQ(engine::S16(program.OutlineOf(3), 6), 103) << "the square of glyph 3";
}

TEST(EmbeddedFont, CharactersThatShareAGlyphAreCopiedAsThemselves) {
  SyntheticFont font;
  font.SetCharacterMap(3, 1, SyntheticFont::SegmentMap({{'A', 'A', 1u - 'A'}, {0x391, 0x391, 1u - 0x391}}));
  FontDocument document;
  document.Show(document.Font(document.Load(font.Build())), "AΑA");  // Latin, Greek, Latin
  EXPECT_EQ(test::Trimmed(test::MuPdfText(document.SaveToString())), "AΑA");
}

TEST(EmbeddedFont, BrokenBytesSwallowNothing) {
  FontDocument document;
  document.Show(document.Font(document.Load(SyntheticFont().Build())),
                "A\xE6"
                "B\xF0\x9F"
                "C\x80"
                "A");
  EXPECT_EQ(test::Trimmed(test::MuPdfText(document.SaveToString())), "A\uFFFDB\uFFFDC\uFFFDA");
}

TEST_P(RealFontTest, TextComesOutOfGhostscriptAsItWentIn) {
  const RealFont &font = GetParam();
  QUILLBAR_NEEDS_FONT(font.path, font.package);
  FontDocument document;
  document.Show(document.Font(document.Load(font.path)), font.text);
  const std::string saved = document.SaveToString();
  EXPECT_EQ(test::Trimmed(test::GhostscriptText(saved)), font.text);
  EXPECT_EQ(test::Trimmed(test::MuPdfText(test::RewrittenByGhostscript(saved))), AsMuPdfReads(font));
}

TEST(EmbeddedFont, TextInAOneByteEncodingComesOutOfGhostscriptAsItWentIn) {
  QUILLBAR_NEEDS_FONT(test::kDejaVuSans, "fonts-dejavu-core");
  FontDocument document;
  document.Show(document.Font(document.Load(test::kDejaVuSans), "CP1251"), "\xCF\xF0\xE8\xE2\xE5\xF2 \x96 \x88");
  const std::string saved = document.SaveToString();
  EXPECT_EQ(test::Trimmed(test::GhostscriptText(saved)), "Привет – €");
  EXPECT_EQ(test::Trimmed(test::MuPdfText(test::RewrittenByGhostscript(saved))), "Привет – €");
}

TEST(EmbeddedFont, MapBackToTextDeclaresCharactersInBlocksOfAHundred) {
  FontDocument document;
  std::string text;
  for (unsigned c = 0x41; c < 0x41 + 101; ++c) {
    if (c >= 0x80) text += static_cast<char>(0xC0 | c >> 6);
    text += static_cast<char>(c < 0x80 ? c : 0x80 | (c & 0x3F));
  }
  document.Show(document.Font(document.Load(SyntheticFont().Build())), text);
  const PdfFile file(document.SaveToString());
  const auto data = file.Font(0, "/F1").getKey("/ToUnicode").getStreamData(qpdf_dl_all);
  const std::string map(reinterpret_cast<const char *>(data->getBuffer()), data->getSize());
  EXPECT_THAT(map, HasSubstr("100 beginbfchar\n<0001> <0041>\n<0002> <0042>\n"));
  EXPECT_THAT(map, HasSubstr("endbfchar\n1 beginbfchar\n<0065> <00A5>\nendbfchar\n"));
  EXPECT_THAT(map, Not(HasSubstr("endbfrange")));
}

TEST(EmbeddedFont, LineOfNoWidthIsWritten) {
  SyntheticFont font(4, 'A', 0);
  FontDocument document;
  document.Show(document.Font(document.Load(font.Build())), "B");
  EXPECT_THAT(ContentOf(document.page), HasSubstr("<0001> Tj"));
}

TEST(EmbeddedFont, MeasuredTextIsNotEmbedded) {
  FontDocument document;
  HPDF_Font font = document.Font(document.Load(SyntheticFont().Build()));
  document.Show(font, "A");
  EXPECT_EQ(Call<HPDF_Font_TextWidth>(font, reinterpret_cast<const HPDF_BYTE *>("BC"), 2u).width, 1200u);
  EXPECT_EQ(Parsed(test::EmbeddedProgram(PdfFile(document.SaveToString()))).GlyphCount(), 2u);
}

TEST(EmbeddedFont, FileThatDisappearsAfterLoadingIsNotMissed) {
  FontDocument document;
  HPDF_Font font = document.Font(document.Load(SyntheticFont().Build()));
  std::filesystem::remove(document.Folder() / "font.ttf");
  document.Show(font, "ABC");
  EXPECT_TRUE(test::Flawless(document.SaveToString()));
  EXPECT_THAT(document.TakeCodes(), IsEmpty());
}

TEST(EmbeddedFont, FontThatForbidsEmbeddingIsEmbeddedAllTheSame) {
  SyntheticFont font;
  font.tables["OS/2"].resize(96);
  engine::Write16(font.tables["OS/2"], 8, 0x0002);
  FontDocument document;
  document.Show(document.Font(document.Load(font.Build())), "AB");
  const std::string saved = document.SaveToString();
  EXPECT_TRUE(test::Flawless(saved));
  EXPECT_EQ(Parsed(test::EmbeddedProgram(PdfFile(saved))).GlyphCount(), 3u);
  EXPECT_THAT(document.TakeCodes(), IsEmpty());
}

TEST(EmbeddedFont, RefusedFileLeavesTheReasonInTheErrorRecord) {
  SyntheticFont font;
  font.signature = 0x4F54544F;  // OTTO
  FontDocument document;
  EXPECT_EQ(document.Load(font.Build()), nullptr);
  EXPECT_THAT(
      document.failures,
      testing::ElementsAre(Failure{HPDF_TTF_INVALID_FOMAT, static_cast<HPDF_STATUS>(engine::FontFault::kCffOutlines)}));
}

TEST(EmbeddedFont, FoldersDevicesAndMissingFilesAreRefused) {
  FontDocument document;
  EXPECT_EQ(document.Load(document.Folder()), nullptr);
  EXPECT_EQ(document.Load(document.Folder() / "missing.ttf"), nullptr);
  EXPECT_EQ(document.TakeCodes().size(), 2u);
  for (const char *device : test::kDevices) EXPECT_EQ(document.Load(device), nullptr) << device;
  EXPECT_EQ(document.TakeCodes().size(), std::size(test::kDevices));
}

// A font whose A is a square of this width.
SyntheticFont FontWithAdvance(unsigned advance) { return SyntheticFont(4, 'A', advance); }

TEST(FontName, IsThePostScriptNameWithTheFirstWordOfTheStyle) {
  const std::pair<std::map<unsigned, std::string>, std::string> named[] = {
      {{{6, "Some-Font"}}, "Some-Font"},
      {{{2, "Regular"}, {6, "Some-Font"}}, "Some-Font"},
      {{{2, "Bold"}, {6, "Some-Bold"}}, "Some-Bold,Bold"},
      {{{2, "Bold Oblique"}, {6, "Some-BoldOblique"}}, "Some-BoldOblique,Bold"},
      {{{2, " Bold"}, {6, "SomeBold"}}, "SomeBold,"},
  };
  for (const auto &[names, expected] : named) {
    SyntheticFont font;
    font.SetNames(names);
    FontDocument document;
    EXPECT_STREQ(document.Load(font.Build()), expected.c_str());
  }
}

TEST(FontName, IsThatOfUnmodifiedLibharu) {
  QUILLBAR_NEEDS_FONT(test::kDejaVuSans, "fonts-dejavu-core");
  FontDocument document;
  EXPECT_STREQ(document.Load("/usr/share/fonts/truetype/dejavu/DejaVuSans-Bold.ttf"), "DejaVuSans-Bold,Bold");
  EXPECT_STREQ(document.Load(test::kDejaVuSans), "DejaVuSans,Book");
}

TEST(FontName, FontIsAlsoFoundByItsPostScriptName) {
  SyntheticFont font;
  font.SetNames({{2, "Bold Oblique"}, {6, "Some-BoldOblique"}});
  FontDocument document;
  HPDF_Font loaded = document.Font(document.Load(font.Build()), "WinAnsiEncoding");
  EXPECT_EQ(document.Font("Some-BoldOblique", "WinAnsiEncoding"), loaded);
  EXPECT_EQ(document.Font("Some-BoldOblique,BoldOblique", "WinAnsiEncoding"), loaded);
  EXPECT_THAT(document.TakeCodes(), IsEmpty());
  EXPECT_EQ(document.Font("Some-BoldOblique,Italic", "WinAnsiEncoding"), nullptr);
  EXPECT_EQ(document.Font("Some", "WinAnsiEncoding"), nullptr);
  EXPECT_EQ(document.TakeCodes().size(), 2u);
}

TEST(FontName, TwoFilesWithoutOneAreTwoFonts) {
  SyntheticFont narrow = FontWithAdvance(300), wide = FontWithAdvance(900);
  narrow.SetNames({});
  wide.SetNames({});
  FontDocument document;
  const std::string first = document.Load(narrow.Build()), second = document.Load(wide.Build());
  EXPECT_THAT(first, Matches("TrueTypeFont-[0-9A-F]{8}"));
  EXPECT_THAT(second, Matches("TrueTypeFont-[0-9A-F]{8}"));
  EXPECT_NE(first, second);
  const auto width = [&](const std::string &name) {
    return Call<HPDF_Font_TextWidth>(document.Font(name.c_str()), reinterpret_cast<const HPDF_BYTE *>("A"), 1u).width;
  };
  EXPECT_EQ(width(first), 300u);
  EXPECT_EQ(width(second), 900u);
  // The name is the file's, whatever was loaded before.
  FontDocument other;
  EXPECT_EQ(other.Load(wide.Build()), second);
}

TEST(FontName, TakenByAnotherFileGetsASuffix) {
  FontDocument document;
  const std::string first = document.Load(FontWithAdvance(300).Build());
  const std::string second = document.Load(FontWithAdvance(900).Build());
  EXPECT_EQ(first, "Synthetic");
  EXPECT_THAT(second, Matches("Synthetic-[0-9A-F]{8}"));
  EXPECT_EQ(document.Load(FontWithAdvance(900).Build()), second) << "the same file again";
  EXPECT_EQ(document.Load(FontWithAdvance(300).Build()), first);
  document.Show(document.Font(first.c_str()), "A");
  document.Show(document.Font(second.c_str()), "A");
  const std::string saved = document.SaveToString();
  EXPECT_TRUE(test::Flawless(saved));
  EXPECT_NE(test::EmbeddedProgram(PdfFile(saved), "/F1"), test::EmbeddedProgram(PdfFile(saved), "/F2"));
}

TEST(FontName, TakenByAStandardFontGetsASuffix) {
  SyntheticFont font;
  font.SetName(6, "Helvetica");
  FontDocument document;
  document.Font("Helvetica", "WinAnsiEncoding");
  const char *name = document.Load(font.Build());
  ASSERT_NE(name, nullptr);
  EXPECT_THAT(name, Matches("Helvetica-[0-9A-F]{8}"));
  EXPECT_NE(document.Font(name), nullptr);
  EXPECT_THAT(document.TakeCodes(), IsEmpty());
}

// The tag and name in every place of the file that has them.
std::set<std::string> NamesInFile(const std::string &saved, const std::string &font = "/F1") {
  const PdfFile file(saved);
  QPDFObjectHandle outer = file.Font(0, font), inner = outer;
  if (outer.hasKey("/DescendantFonts")) inner = outer.getKey("/DescendantFonts").getArrayItem(0);
  return {outer.getKey("/BaseFont").getName(), inner.getKey("/BaseFont").getName(),
          inner.getKey("/FontDescriptor").getKey("/FontName").getName()};
}

TEST(SubsetTag, IsTheSameForTheSameSubsetAndNoOther) {
  for (const char *encoder : {"UTF-8", "WinAnsiEncoding"}) {
    const auto namesOf = [&](const char *text) {
      FontDocument document;
      document.Show(document.Font(document.Load(SyntheticFont().Build()), encoder), text);
      const auto names = NamesInFile(document.SaveToString());
      EXPECT_EQ(names.size(), 1u) << "one name everywhere";
      EXPECT_THAT(*names.begin(), Matches("/[A-Z]{6}\\+Synthetic"));
      return *names.begin();
    };
    EXPECT_EQ(namesOf("AB"), namesOf("AB"));
    EXPECT_NE(namesOf("AB"), namesOf("AC"));
  }
}

TEST(SubsetTag, ChangesWithTheSubset) {
  FontDocument document;
  const char *name = document.Load(SyntheticFont().Build());
  document.Show(document.Font(name), "A");
  const auto first = NamesInFile(document.SaveToString());
  document.Show(document.Font(name, "WinAnsiEncoding"), "B");
  const std::string saved = document.SaveToString();
  EXPECT_EQ(NamesInFile(saved), NamesInFile(saved, "/F2")) << "one subset serves both";
  EXPECT_EQ(NamesInFile(saved).size(), 1u);
  EXPECT_NE(NamesInFile(saved), first);
}

TEST(EmbeddedFont, SameFileLoadedTwiceIsOneFont) {
  FontDocument document;
  const std::string first = document.Load(SyntheticFont().Build());
  const std::string second = document.Load(SyntheticFont().Build());
  EXPECT_EQ(first, second);
  EXPECT_EQ(document.Font(first.c_str()), document.Font(second.c_str()));
}

struct DescribedFont {
  unsigned familyClass;
  const char *style;
  int flags;  // of the descriptor, besides the one for the characters that it shows
};

TEST(EmbeddedFont, DescriptorTellsWhatTheFilesFamilyAndStyleAre) {
  constexpr int kSerif = 2, kScript = 8, kItalic = 64, kCharacters = 4 + 32;
  for (const DescribedFont &font :
       {DescribedFont{0, "Regular", 0}, DescribedFont{1, "Regular", kSerif}, DescribedFont{5, "Regular", kSerif},
        DescribedFont{6, "Regular", 0}, DescribedFont{7, "Regular", kSerif}, DescribedFont{8, "Italic", kItalic},
        DescribedFont{8, "Oblique", kItalic}, DescribedFont{10, "Regular", kScript}}) {
    SyntheticFont file;
    file.SetNames({{2, font.style}, {6, "Described"}});
    file.tables["OS/2"].resize(32);
    file.tables["OS/2"][30] = static_cast<std::uint8_t>(font.familyClass);
    FontDocument document;
    document.Show(document.Font(document.Load(file.Build()), "WinAnsiEncoding"), "ABC");
    const PdfFile pdf(document.SaveToString());
    const auto flags = pdf.Font(0, "/F1").getKey("/FontDescriptor").getKey("/Flags").getIntValueAsInt();
    EXPECT_EQ(flags & ~kCharacters, font.flags) << font.familyClass << ' ' << font.style;
  }
}

TEST(EmbeddedFont, WithoutANameGetsOne) {
  SyntheticFont font;
  font.tables.erase("name");
  FontDocument document;
  const char *name = document.Load(font.Build());
  ASSERT_NE(name, nullptr);
  EXPECT_THAT(name, testing::StartsWith("TrueTypeFont-"));
  document.Show(document.Font(name), "ABC");
  EXPECT_TRUE(test::Flawless(document.SaveToString()));
}

TEST(FontName, WithASuffixIsAnotherEvenWhereTheFileHasNone) {
  SyntheticFont narrow = FontWithAdvance(300);
  narrow.SetNames({});
  const engine::TrueTypeFile font = Parsed(narrow.Build());
  EXPECT_THAT(engine::LibraryNameOf(font, 100), Matches("TrueTypeFont-[0-9A-F]{8}"));
  EXPECT_THAT(engine::LibraryNameWithSuffix(font, 100, 1), Matches("TrueTypeFont-[0-9A-F]{8}"));
  EXPECT_NE(engine::LibraryNameWithSuffix(font, 100, 1), engine::LibraryNameOf(font, 100));
  EXPECT_NE(engine::LibraryNameWithSuffix(font, 100, 1), engine::LibraryNameWithSuffix(font, 100, 2));
}

TEST(EmbeddedFont, WithoutTextOrWithoutOutlinesIsFlawless) {
  for (const char *path : {test::kDejaVuSans, test::kEbGaramond}) {
    QUILLBAR_NEEDS_FONT(path, "fonts-dejavu-core, fonts-ebgaramond");
    FontDocument document;
    const char *name = document.Load(path);
    for (const char *encoder : {"UTF-8", "CP1250"}) EXPECT_NE(document.Font(name, encoder), nullptr);
    EXPECT_TRUE(test::Flawless(document.SaveToString())) << "nothing was shown";
    document.Show(document.Font(name), " ");
    EXPECT_TRUE(test::Flawless(document.SaveToString())) << "nothing but a space was shown";
  }
}

// A dash from 50 to 2500 units, at 20 points from column 40 on.
TEST(EmbeddedFont, WideGlyphOfCffOutlinesIsDrawnAsWide) {
  QUILLBAR_NEEDS_FONT(test::kEbGaramond, "fonts-ebgaramond");
  FontDocument document;
  document.Show(document.Font(document.Load(test::kEbGaramond)), "\u2E3B");
  const std::string saved = document.SaveToString();
  EXPECT_TRUE(test::Flawless(saved));
  const test::Rendering page(saved);
  int first = page.width(), last = 0;
  for (int row = 0; row < page.height(); ++row) {
    for (int column = 0; column < page.width(); ++column) {
      if (page.PixelAt(column, row) != 0) continue;
      first = std::min(first, column);
      last = std::max(last, column);
    }
  }
  EXPECT_NEAR(first, 41, 1);
  EXPECT_NEAR(last, 89, 1);
}

TEST(EmbeddedFont, CompositeGlyphsOfOddPartsKeepThem) {
  SyntheticFont font(20);
  font.SetOutline(2, {});                   // a blank
  font.SetOutline(3, test::FontBytes(12));  // no contours
  for (unsigned glyph = 4; glyph < 15; ++glyph) font.SetOutline(glyph, SyntheticFont::Composite({glyph + 1}));
  font.SetOutline(1, SyntheticFont::Composite({2, 3, 4, 15}));  // deeper than any font that means well
  FontDocument document;
  document.Show(document.Font(document.Load(font.Build())), "A");
  const TrueTypeFile program = Parsed(test::EmbeddedProgram(PdfFile(document.SaveToString())));
  bool isWhole = false;
  EXPECT_EQ(engine::ComponentsOf(program.OutlineOf(1), isWhole).size(), 4U);
  EXPECT_TRUE(isWhole);
}

TEST(EmbeddedFont, DefaultEncodingIsTheOneOfTheFont) {
  FontDocument document;
  EXPECT_STREQ(Call<HPDF_Font_GetEncodingName>(document.Font("Symbol", nullptr)), "FontSpecific");
  EXPECT_STREQ(Call<HPDF_Font_GetEncodingName>(document.Font("Helvetica", nullptr)), "StandardEncoding");
  const char *name = document.Load(SyntheticFont().Build());
  EXPECT_STREQ(Call<HPDF_Font_GetEncodingName>(document.Font(name, nullptr)), "StandardEncoding");
  EXPECT_THAT(document.TakeCodes(), IsEmpty());
}

TEST(EmbeddedFont, HeightOfALetterThatIsBlankIsZero) {
  for (const bool isBlank : {false, true}) {
    SyntheticFont file(60);
    if (isBlank) {
      for (const unsigned letter : {unsigned{'H'}, unsigned{'x'}}) file.SetOutline(letter - 'A' + 1, {});
    }
    FontDocument document;
    document.Show(document.Font(document.Load(file.Build()), "WinAnsiEncoding"), "Hx");
    const std::string saved = document.SaveToString();
    EXPECT_TRUE(test::Flawless(saved));
    const PdfFile read(saved);
    QPDFObjectHandle descriptor = read.Font(0, "/F1").getKey("/FontDescriptor");
    EXPECT_EQ(descriptor.getKey("/XHeight").getIntValue() == 0, isBlank);
  }
}

// A letter with a mark is a glyph composed of both, however odd the letter is.
TEST(EmbeddedFont, LettersOfOddOutlinesTakeMarks) {
  SyntheticFont font(24);
  font.SetCharacterMap(3, 1, SyntheticFont::SegmentMap({{'A', 'D', 1u - 'A'}, {0x300, 0x303, 20u - 0x300}}));
  font.SetOutline(2, {});                   // a blank
  font.SetOutline(3, test::FontBytes(12));  // no contours
  font.SetOutline(4, SyntheticFont::Composite({5, 2, 3}));
  for (unsigned glyph = 5; glyph < 18; ++glyph) font.SetOutline(glyph, SyntheticFont::Composite({glyph + 1}));
  for (const std::size_t profileSize : {32, 20, 6}) {
    font.tables["maxp"].resize(profileSize);
    FontDocument document;
    const HPDF_Font loaded = document.Font(document.Load(font.Build()));
    ASSERT_NE(loaded, nullptr) << profileSize;
    EXPECT_EQ(document.Show(loaded, "A\u0301 B\u0301 C\u0301 D\u0301"), HPDF_OK);
    const std::string saved = document.SaveToString();
    const TrueTypeFile program = Parsed(test::EmbeddedProgram(PdfFile(saved)));
    int composed = 0;
    for (std::uint16_t glyph = 0; glyph < program.GlyphCount(); ++glyph) {
      bool isWhole = false;
      composed += engine::ComponentsOf(program.OutlineOf(glyph), isWhole).empty() ? 0 : 1;
    }
    EXPECT_GE(composed, 4) << "four letters with their marks";
    EXPECT_TRUE(test::Flawless(saved));
  }
}

}  // namespace
}  // namespace quillbar
