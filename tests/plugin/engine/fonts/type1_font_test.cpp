// SPDX-License-Identifier: MIT
// Type 1 fonts: metrics and programs checked before use, real fonts shown and read back.
#include <gmock/gmock.h>
#include <hpdf_encoder.h>
#include <hpdf_font.h>

#include <algorithm>
#include <filesystem>
#include <map>

#include "plugin/engine/fonts/encodings/glyph_name.h"
#include "plugin/engine/fonts/type1/afm_file.h"
#include "plugin/engine/fonts/type1/stand_in_widths.h"
#include "plugin/engine/fonts/type1/type1_definition.h"
#include "plugin/engine/fonts/type1/type1_program.h"
#include "tests/plugin/engine/driver/font_document.h"
#include "tests/support/process.h"
#include "tests/support/real_fonts.h"

namespace quillbar {
namespace {

using engine::AfmFile;
using engine::FontFault;
using engine::Type1Program;
using test::FontDocument;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kCyrillicMetrics[] = "/usr/share/fonts/X11/Type1/a010013d.afm";
constexpr char kCyrillicProgram[] = "/usr/share/fonts/X11/Type1/a010013d.pfb";

constexpr char kSmallMetrics[] =
    "StartFontMetrics 4.1\nFontName Small\nWeight Bold\nItalicAngle -12.5\nIsFixedPitch true\n"
    "FontBBox -10 -200 900 800\nCapHeight 700\nXHeight 500\nAscender 750\nDescender -250\nStdHW 20\nStdVW "
    "80\n"
    "StartCharMetrics 2\nC 32 ; WX 250 ; N space ; B 0 0 0 0 ;\nCH <41> ; WX 722.5 ; N A ; L x y "
    ";\nEndCharMetrics\n";

engine::Bytes AsBytes(const std::string &text) {
  return {reinterpret_cast<const std::uint8_t *>(text.data()), text.size()};
}

std::optional<FontFault> FaultOf(const std::string &text) {
  const auto result = AfmFile::Read(AsBytes(text));
  const auto *fault = std::get_if<FontFault>(&result);
  return fault ? std::optional(*fault) : std::nullopt;
}

std::string Replaced(std::string text, const std::string &what, const std::string &with) {
  const std::size_t at = text.find(what);
  EXPECT_NE(at, std::string::npos);
  return text.replace(at, what.size(), with);
}

TEST(AfmFile, IsReadWhole) {
  const auto result = AfmFile::Read(AsBytes(kSmallMetrics));
  ASSERT_TRUE(std::holds_alternative<AfmFile>(result));
  const auto &afm = std::get<AfmFile>(result);
  EXPECT_EQ(afm.fontName, "Small");
  EXPECT_TRUE(afm.isBold);
  EXPECT_TRUE(afm.isFixedPitch);
  EXPECT_EQ(afm.italicAngle, -12);
  EXPECT_THAT(afm.boundingBox, ElementsAre(-10, -200, 900, 800));
  EXPECT_EQ(afm.ascender, 750);
  EXPECT_EQ(afm.descender, -250);
  EXPECT_EQ(afm.verticalStem, 80);
  ASSERT_EQ(afm.glyphs.size(), 2u);
  EXPECT_EQ(afm.glyphs[0].width, 250);
  EXPECT_EQ(afm.glyphs[1].code, 0x41);
  EXPECT_EQ(afm.glyphs[1].width, 722);
  EXPECT_EQ(afm.glyphs[1].name, "A");
}

TEST(AfmFile, EveryLineEndingIsUnderstood) {
  for (const char *ending : {"\r\n", "\r"}) {
    std::string text;
    for (const char c : std::string(kSmallMetrics)) text += c == '\n' ? std::string(ending) : std::string(1, c);
    EXPECT_EQ(FaultOf(text), std::nullopt);
  }
}

TEST(AfmFile, OtherFilesAreRefused) {
  EXPECT_EQ(FaultOf(""), FontFault::kMetricsFileHeader);
  EXPECT_EQ(FaultOf("Dear reader"), FontFault::kMetricsFileHeader);
  EXPECT_EQ(FaultOf(std::string(1000, '\0')), FontFault::kMetricsFileHeader);
  EXPECT_EQ(FaultOf(Replaced(kSmallMetrics, "FontName Small\n", "")), FontFault::kMetricsFileHeader);
}

TEST(AfmFile, LinesMayBeLong) {
  for (const std::size_t length : {255, 256, 5000}) {
    EXPECT_EQ(FaultOf(Replaced(kSmallMetrics, "Weight", "Notice " + std::string(length, 'x') + "\nWeight")),
              std::nullopt);
    EXPECT_EQ(FaultOf(Replaced(kSmallMetrics, "N A ;", "N A ; " + std::string(length, ' ') + ";")), std::nullopt);
  }
}

TEST(AfmFile, WhatSaysNothingOfAGlyphIsPassedOver) {
  const std::string text =
      Replaced(Replaced(Replaced(kSmallMetrics, "CH <41>", "\nComment CH <42> ;\nCH <41>"), "WX 722.5", "W0X +722.5"),
               "ItalicAngle -12.5", "ItalicAngle +12.5");
  const auto result = AfmFile::Read(AsBytes(text));
  ASSERT_TRUE(std::holds_alternative<AfmFile>(result));
  const auto &afm = std::get<AfmFile>(result);
  EXPECT_EQ(afm.italicAngle, 12);
  ASSERT_EQ(afm.glyphs.size(), 2u);
  EXPECT_EQ(afm.glyphs[1].width, 722);
}

TEST(AfmFile, NamesMayNotBeEndless) {
  EXPECT_EQ(FaultOf(Replaced(kSmallMetrics, "Small", std::string(100'000, 'x'))), FontFault::kMetricsFileHeader);
}

TEST(AfmFile, CountMustBeThatOfTheMetrics) {
  for (const char *count : {"3", "1", "0", "-1", "4294967295", "99999999999999999999", "many", ""})
    EXPECT_EQ(FaultOf(Replaced(kSmallMetrics, "CharMetrics 2", std::string("CharMetrics ") + count)),
              FontFault::kMetricsFileCount)
        << count;
}

TEST(AfmFile, EveryTruncationIsRefused) {
  const std::string whole = kSmallMetrics;
  for (std::size_t size = 0; size + 1 < whole.size(); ++size)
    EXPECT_NE(FaultOf(whole.substr(0, size)), std::nullopt) << size;
}

TEST(AfmFile, MetricsThatAreNoneAreRefused) {
  for (const auto &[what, with] :
       std::vector<std::pair<std::string, std::string>>{{"WX 250", "WX wide"},
                                                        {"WX 250", "WX 99999"},
                                                        {"WX 250", "WX nan"},
                                                        {"N space", "N "},
                                                        {"C 32", "C x"},
                                                        {"C 32", "D 32"},
                                                        {"<41>", "<41"},
                                                        {"FontBBox -10", "FontBBox"},
                                                        {"Ascender 750", "Ascender 1e9"},
                                                        {"WX 250", "WX -99999"},
                                                        {"WX 250", "WX 2x"},
                                                        {"WX 250 ;", ""},
                                                        {"<41>", "41>"},
                                                        {"<41>", "<>"},
                                                        {"<41>", "<4x>"},
                                                        {"<41>", "<x>"},
                                                        {"FontName Small", "FontName Sm\x7Fll"},
                                                        {"FontName Small", "FontName Sm\xE4ll"}})
    EXPECT_EQ(FaultOf(Replaced(kSmallMetrics, what, with)), FontFault::kMetricsFileLine) << with;
}

std::string Segment(int kind, const std::string &bytes) {
  std::string segment{'\x80', static_cast<char>(kind)};
  for (int shift = 0; shift < 32; shift += 8) segment.push_back(static_cast<char>(bytes.size() >> shift & 0xFF));
  return segment + bytes;
}

constexpr char kClear[] = "%!PS-AdobeFont-1.0: Small\ncurrentfile eexec\n";
const std::string kEncrypted = "\xD9\xD6\x6F\x63\x3B";
const std::string kTrailer = std::string(512, '0') + "\ncleartomark\n";

std::string PortionOf(const std::vector<std::uint8_t> &bytes) { return {bytes.begin(), bytes.end()}; }

TEST(Type1Program, SegmentsArePutIntoPortions) {
  const auto program =
      Type1Program::Read(AsBytes(Segment(1, kClear) + Segment(2, kEncrypted) + Segment(1, kTrailer) + "\x80\x03"));
  ASSERT_TRUE(program);
  EXPECT_EQ(PortionOf(program->clear), kClear);
  EXPECT_EQ(PortionOf(program->encrypted), kEncrypted);
  EXPECT_EQ(PortionOf(program->trailer), kTrailer);
}

TEST(Type1Program, HexadecimalPortionBecomesBinary) {
  const auto program = Type1Program::Read(AsBytes(kClear + std::string("d9d6\n6F63 30") + kTrailer));
  ASSERT_TRUE(program);
  EXPECT_EQ(PortionOf(program->encrypted), "\xD9\xD6\x6F\x63\x30") << "its last zero is not the trailer's";
  EXPECT_EQ(PortionOf(program->clear), kClear);
  EXPECT_EQ(PortionOf(program->trailer), kTrailer);
}

TEST(Type1Program, NeedsNoTrailer) {
  const auto bare = Type1Program::Read(AsBytes(kClear + kEncrypted));
  ASSERT_TRUE(bare);
  EXPECT_EQ(PortionOf(bare->encrypted), kEncrypted);
  EXPECT_TRUE(bare->trailer.empty());
  const auto early = Type1Program::Read(AsBytes("%!PS cleartomark\ncurrentfile eexec\n\t\r " + kEncrypted));
  ASSERT_TRUE(early) << "a word that comes before what is encrypted";
  EXPECT_EQ(PortionOf(early->encrypted), kEncrypted);
}

TEST(Type1Program, OtherFilesAreRefused) {
  EXPECT_FALSE(Type1Program::Read({}));
  EXPECT_FALSE(Type1Program::Read(AsBytes("Dear reader")));
  EXPECT_FALSE(Type1Program::Read(AsBytes(kClear))) << "nothing encrypted";
  EXPECT_FALSE(Type1Program::Read(AsBytes(std::string(kClear) + "d9d66f6x3b" + kTrailer))) << "half hexadecimal";
  EXPECT_FALSE(Type1Program::Read(AsBytes("\x80"))) << "a mark without a segment";
  EXPECT_FALSE(Type1Program::Read(AsBytes(Segment(1, kClear)))) << "nothing encrypted";
  EXPECT_FALSE(Type1Program::Read(AsBytes(Segment(4, kClear) + Segment(2, kEncrypted)))) << "an unknown segment";
  EXPECT_FALSE(Type1Program::Read(AsBytes(Segment(0, kClear) + Segment(2, kEncrypted)))) << "an unknown segment";
  EXPECT_FALSE(Type1Program::Read(AsBytes(Segment(1, kClear) + Segment(2, kEncrypted) + "more"))) << "no segment";
  EXPECT_FALSE(Type1Program::Read(AsBytes(Segment(1, kClear) + Segment(2, kEncrypted) + "\x80"))) << "half a mark";
  EXPECT_FALSE(Type1Program::Read(
      AsBytes(Segment(1, kClear) + Segment(2, kEncrypted) + Segment(1, kTrailer) + Segment(2, kEncrypted))))
      << "encrypted again behind the trailer";
  EXPECT_FALSE(Type1Program::Read(AsBytes(Segment(1, "eexec") + Segment(2, kEncrypted)))) << "no PostScript";
  EXPECT_FALSE(Type1Program::Read(AsBytes(Segment(1, "%! font") + Segment(2, kEncrypted)))) << "nothing announced";
  EXPECT_FALSE(Type1Program::Read(AsBytes(kClear + std::string("d9d6 ~~") + kTrailer))) << "a byte that is no digit";
  std::string cut = Segment(1, kClear) + Segment(2, kEncrypted);
  cut.pop_back();
  EXPECT_FALSE(Type1Program::Read(AsBytes(cut))) << "a segment that is cut off";
}

struct RealType1 {
  const char *name, *package, *metrics, *program, *encoder, *bytes, *text;
};
void PrintTo(const RealType1 &font, std::ostream *out) { *out << font.name; }

class RealType1Test : public testing::TestWithParam<RealType1> {};

TEST_P(RealType1Test, IsEmbeddedAndItsTextComesOut) {
  const RealType1 &font = GetParam();
  QUILLBAR_NEEDS_FONT(font.metrics, font.package);
  FontDocument document;
  const char *name = document.LoadType1(font.metrics, font.program);
  ASSERT_NE(name, nullptr);
  document.Show(document.Font(name, font.encoder), font.bytes);
  const std::string saved = document.SaveToString();
  EXPECT_THAT(document.TakeCodes(), IsEmpty());
  EXPECT_TRUE(test::Flawless(saved));
  EXPECT_EQ(test::Trimmed(test::ExtractedText(saved)), font.text);
  EXPECT_EQ(test::Trimmed(test::MuPdfText(saved)), font.text);
  test::WriteFile(document.Folder() / "saved.pdf", saved);
  const test::ProcessResult listed = test::RunProcess({"pdffonts", document.Folder() / "saved.pdf"});
  EXPECT_THAT(listed.output, testing::ContainsRegex("Type 1 +\\w+ +yes"));
}

INSTANTIATE_TEST_SUITE_P(Forms, RealType1Test,
                         testing::Values(RealType1{"Plain", "fonts-urw-base35", test::kRomanMetrics,
                                                   test::kRomanProgram, "WinAnsiEncoding", "Caf\xE9 \x80", "Café €"},
                                         RealType1{"Segmented", "t1-cyrillic", kCyrillicMetrics, kCyrillicProgram,
                                                   "KOI8-R", "\xF0\xD2\xC9\xD7\xC5\xD4", "Привет"}),
                         [](const auto &made) { return std::string(made.param.name); });

constexpr char kUrwFonts[] = "/usr/share/fonts/type1/urw-base35/";
constexpr char kUrwPackage[] = "fonts-urw-base35";

const char *LoadUrw(FontDocument &document, const std::string &name) {
  return document.LoadType1(kUrwFonts + name + ".afm", kUrwFonts + name + ".t1");
}

// The names that the page's font lists for codes.
std::map<int, std::string> DifferencesOf(const test::PdfFile &file, const std::string &font = "/F1") {
  std::map<int, std::string> names;
  int code = 0;
  for (QPDFObjectHandle item : file.Font(0, font).getKey("/Encoding").getKey("/Differences").getArrayAsVector()) {
    if (item.isInteger()) {
      code = item.getIntValueAsInt();
    } else {
      names[code++] = item.getName();
    }
  }
  return names;
}

HPDF_UINT WidthOf(HPDF_Font font, std::string_view text) {
  return Call<HPDF_Font_TextWidth>(font, reinterpret_cast<const HPDF_BYTE *>(text.data()),
                                   static_cast<HPDF_UINT>(text.size()))
      .width;
}

TEST(Type1Font, GlyphsNamedByTheirNumberAreShownAndCopied) {
  QUILLBAR_NEEDS_FONT(std::string(kUrwFonts) + "NimbusSans-Regular.afm", kUrwPackage);
  FontDocument document;
  const char *name = LoadUrw(document, "NimbusSans-Regular");
  HPDF_Font greek = document.Font(name, "ISO8859-7");
  document.Show(greek, "\xD9\xEC\xC4 \xEA\xE1\xEB\xE7\xEC\xDD\xF1\xE1");
  const std::string saved = document.SaveToString();
  EXPECT_TRUE(test::Flawless(saved));
  EXPECT_EQ(test::Trimmed(test::ExtractedText(saved)), "ΩμΔ καλημέρα");
  EXPECT_EQ(test::Trimmed(test::MuPdfText(saved)), "ΩμΔ καλημέρα");
  EXPECT_EQ(test::Trimmed(test::GhostscriptText(saved)), "ΩμΔ καλημέρα");
  const auto names = DifferencesOf(test::PdfFile(saved));
  EXPECT_EQ(names.at(0xD9), "/uni03A9");
  EXPECT_EQ(names.at(0xEC), "/uni03BC");
  EXPECT_EQ(WidthOf(greek, "\xD9"), 748u);
  EXPECT_EQ(WidthOf(greek, "\xEC"), 576u);
}

TEST(Type1Font, GlyphUnderTheNameOfAnotherCharacterIsShown) {
  QUILLBAR_NEEDS_FONT(std::string(kUrwFonts) + "NimbusSans-Regular.afm", kUrwPackage);
  FontDocument document;
  // The increment sign, for which the font has the glyph Delta.
  HPDF_Font font = document.Font(LoadUrw(document, "NimbusSans-Regular"), "MacRomanEncoding");
  document.Show(font, "x\xC6x");
  const std::string saved = document.SaveToString();
  EXPECT_EQ(DifferencesOf(test::PdfFile(saved)).at(0xC6), "/Delta");
  EXPECT_EQ(test::Trimmed(test::ExtractedText(saved)), "x∆x");
  EXPECT_EQ(WidthOf(font, "\xC6"), 612u);
}

TEST(Type1Font, CharacterWithoutAGlyphShowsNone) {
  QUILLBAR_NEEDS_FONT(std::string(kUrwFonts) + "NimbusSans-Regular.afm", kUrwPackage);
  FontDocument document;
  const char *name = LoadUrw(document, "NimbusSans-Regular");
  document.Show(document.Font(name, "ISO8859-14"), "a\xA1\xA2z");
  const std::string saved = document.SaveToString();
  EXPECT_TRUE(test::Flawless(saved));
  const auto names = DifferencesOf(test::PdfFile(saved));
  EXPECT_EQ(names.at(0xA1), "/space");
  EXPECT_EQ(names.at(0xA2), "/space");
  EXPECT_EQ(names.at(0xD0), "/Wcircumflex");
  // No reader shows what the font has at these codes: the page is that of a text with blanks.
  FontDocument blank;
  blank.Show(blank.Font(LoadUrw(blank, "NimbusSans-Regular"), "ISO8859-14"), "a  z");
  EXPECT_EQ(test::MuPdfPicture(saved), test::MuPdfPicture(blank.SaveToString()));
  // They are copied all the same.
  EXPECT_EQ(test::Trimmed(test::ExtractedText(saved)), "aḂḃz");
  EXPECT_EQ(test::Trimmed(test::MuPdfText(saved)), "aḂḃz");
}

TEST(Type1Font, CharacterOfPdfsOwnEncodingWithoutAGlyphShowsNone) {
  QUILLBAR_NEEDS_FONT(test::kRomanMetrics, kUrwPackage);
  FontDocument document;
  test::WriteFile(document.Folder() / "small.afm", kSmallMetrics);
  const char *name = document.LoadType1(document.Folder() / "small.afm", test::kRomanProgram);
  document.Show(document.Font(name, "WinAnsiEncoding"), "A \xA1");
  const auto names = DifferencesOf(test::PdfFile(document.SaveToString()));
  EXPECT_THAT(names, ElementsAre(std::pair(0xA1, "/space"))) << "only what was shown";
}

TEST(Type1Font, PlainTextNeedsNoMapBackToText) {
  QUILLBAR_NEEDS_FONT(test::kRomanMetrics, kUrwPackage);
  FontDocument document;
  HPDF_Font font = document.Font(document.LoadType1(test::kRomanMetrics, test::kRomanProgram), "ISO8859-15");
  document.Show(font, "plain: \xE4\xA4");
  EXPECT_FALSE(test::PdfFile(document.SaveToString()).Font(0, "/F1").hasKey("/ToUnicode"));
  // A later text brings one.
  document.Show(font, "soft\xADhyphen");
  const std::string saved = document.SaveToString();
  EXPECT_TRUE(test::PdfFile(saved).Font(0, "/F1").hasKey("/ToUnicode"));
  EXPECT_THAT(test::ExtractedText(saved), testing::HasSubstr("soft\u00ADhyphen"));
  EXPECT_THAT(test::ExtractedText(saved), testing::HasSubstr("plain: ä€"));
}

TEST(Type1Font, BytesOfAFontOfSignsAreItsCodes) {
  QUILLBAR_NEEDS_FONT(std::string(kUrwFonts) + "D050000L.afm", kUrwPackage);
  FontDocument document;
  HPDF_Font font = document.Font(LoadUrw(document, "D050000L"), "CP1251");
  document.Show(font, "44444");
  EXPECT_EQ(WidthOf(font, "4"), 846u);
  const std::string saved = document.SaveToString();
  EXPECT_TRUE(test::Flawless(saved));
  const test::PdfFile file(saved);
  EXPECT_EQ(DifferencesOf(file).at('4'), "/a20");
  EXPECT_EQ(file.Font(0, "/F1").getKey("/Widths").getArrayItem('4').getIntValue(), 846);
  const test::Rendering page(saved);
  int dark = 0;
  for (int row = 0; row < page.height(); ++row) {
    for (int column = 0; column < page.width(); ++column) dark += page.PixelAt(column, row) == 0 ? 1 : 0;
  }
  EXPECT_GT(dark, 200);
}

// Each standard font and the face that viewers show for it.
constexpr std::pair<const char *, const char *> kStandIns[] = {
    {"Helvetica", "NimbusSans-Regular"},        {"Helvetica-Bold", "NimbusSans-Bold"},
    {"Helvetica-Oblique", "NimbusSans-Italic"}, {"Helvetica-BoldOblique", "NimbusSans-BoldItalic"},
    {"Times-Roman", "NimbusRoman-Regular"},     {"Times-Bold", "NimbusRoman-Bold"},
    {"Times-Italic", "NimbusRoman-Italic"},     {"Times-BoldItalic", "NimbusRoman-BoldItalic"},
    {"Courier", "NimbusMonoPS-Regular"},        {"Courier-BoldOblique", "NimbusMonoPS-BoldItalic"},
};

TEST(StandardFont, LettersBeyondAdobesMetricsAreAsWideAsInTheStandIn) {
  QUILLBAR_NEEDS_FONT(std::string(kUrwFonts) + "NimbusSans-Regular.afm", kUrwPackage);
  FontDocument document;
  for (const auto &[standard, standIn] : kStandIns) {
    const char *name = LoadUrw(document, standIn);
    ASSERT_NE(name, nullptr) << standIn;
    int compared = 0;
    for (const char *encoder : {"MacRomanEncoding", "ISO8859-2", "ISO8859-3", "ISO8859-4", "ISO8859-5", "ISO8859-7",
                                "ISO8859-9", "ISO8859-10", "ISO8859-13", "ISO8859-14", "ISO8859-15", "CP1250", "CP1251",
                                "CP1253", "CP1254", "CP1257", "CP1258", "KOI8-R"}) {
      HPDF_Font ours = document.Font(standard, encoder), theirs = document.Font(name, encoder);
      const auto &oursAttributes = *static_cast<HPDF_FontAttr>(ours->attr);
      const auto &file = engine::Type1Of(*static_cast<HPDF_FontAttr>(theirs->attr)->fontdef);
      for (int code = 0x80; code < 0x100; ++code) {
        const HPDF_UNICODE character = HPDF_Encoder_ToUnicode(oursAttributes.encoder, static_cast<HPDF_UINT16>(code));
        const bool isAdobes = engine::Type1Of(*oursAttributes.fontdef).MetricsOf(character) != nullptr;
        if (character <= 0xFF || isAdobes || !file.glyphs.contains(character)) continue;
        const std::string text{static_cast<char>(code)};
        EXPECT_EQ(WidthOf(ours, text), WidthOf(theirs, text))
            << standard << " " << encoder << " " << engine::GlyphName(character);
        ++compared;
      }
    }
    EXPECT_GT(compared, 500) << standard;
  }
}

TEST(Type1Font, RefusedFilesLeaveTheReasonInTheErrorRecord) {
  FontDocument document;
  test::WriteFile(document.Folder() / "small.afm", kSmallMetrics);
  test::WriteFile(document.Folder() / "letter.txt", "Dear reader");
  EXPECT_EQ(document.LoadType1(document.Folder() / "letter.txt", document.Folder() / "letter.txt"), nullptr);
  EXPECT_EQ(document.LoadType1(document.Folder() / "small.afm", document.Folder() / "letter.txt"), nullptr);
  EXPECT_EQ(document.LoadType1(document.Folder(), document.Folder()), nullptr);
  EXPECT_EQ(document.LoadType1(document.Folder() / "missing.afm", document.Folder() / "small.afm"), nullptr);
  EXPECT_THAT(document.TakeCodes(), ElementsAre(HPDF_INVALID_AFM_HEADER, HPDF_UNSUPPORTED_TYPE1_FONT,
                                                HPDF_FILE_OPEN_ERROR, HPDF_FILE_OPEN_ERROR));
}

TEST(GlyphName, OfANumberIsThatCharacter) {
  EXPECT_EQ(engine::CharacterOfGlyphName("A"), 0x41);
  EXPECT_EQ(engine::CharacterOfGlyphName("uni20AC"), 0x20AC);
  EXPECT_EQ(engine::CharacterOfGlyphName("u20AC"), 0x20AC);
  EXPECT_EQ(engine::CharacterOfGlyphName("u020AC"), 0x20AC);
  for (const char *name :
       {"nothing", "u20A", "u0020ACC", "uni20A", "uni20AC0", "uni20AG", "uniGGGG", "u1F600", "uD800", "uDFFF", ""})
    EXPECT_EQ(engine::CharacterOfGlyphName(name), 0) << name;
  EXPECT_EQ(engine::CharacterOfGlyphName("uE000"), 0xE000);
}

TEST(Type1Font, FilesThatAreNoFilesOrTooLargeAreRefused) {
  FontDocument document;
  test::WriteFile(document.Folder() / "small.afm", kSmallMetrics);
  test::WriteFile(document.Folder() / "large.afm", kSmallMetrics);
  const LibraryPath large(document.Folder() / "large.afm");
  for (const std::uintmax_t size : {(16U << 20) + 1, 17U << 20}) {
    std::filesystem::resize_file(document.Folder() / "large.afm", size);
    EXPECT_EQ(Call<engine::LoadType1Font>(document.document, large, nullptr), nullptr);
    EXPECT_THAT(document.failures,
                ElementsAre(Failure{HPDF_INVALID_AFM_HEADER, static_cast<HPDF_STATUS>(FontFault::kTooLarge)}));
    document.failures.clear();
  }
  EXPECT_EQ(document.LoadType1(document.Folder(), document.Folder() / "small.afm"), nullptr);
  EXPECT_EQ(document.TakeCodes().size(), 1U);
  EXPECT_EQ(document.LoadType1(document.Folder() / "small.afm", document.Folder()), nullptr);
  EXPECT_EQ(document.TakeCodes().size(), 1U);
  EXPECT_EQ(document.Load(document.Folder()), nullptr);
  EXPECT_EQ(document.TakeCodes().size(), 1U);
  EXPECT_STREQ(Call<engine::LoadType1Font>(document.document, LibraryPath(document.Folder() / "small.afm"), nullptr),
               "Small");
  EXPECT_THAT(document.TakeCodes(), IsEmpty());
}

TEST(Type1Font, TwoOfOneNameAreRefused) {
  FontDocument document;
  test::WriteFile(document.Folder() / "small.afm", kSmallMetrics);
  const LibraryPath metrics(document.Folder() / "small.afm");
  EXPECT_STREQ(Call<engine::LoadType1Font>(document.document, metrics, nullptr), "Small");
  EXPECT_EQ(Call<engine::LoadType1Font>(document.document, metrics, nullptr), nullptr);
  EXPECT_THAT(document.TakeCodes(), ElementsAre(HPDF_FONT_EXISTS));
}

TEST(Type1Font, WithoutAGlyphForTheSpaceShowsTheMissingOne) {
  QUILLBAR_NEEDS_FONT(test::kRomanMetrics, kUrwPackage);
  FontDocument document;
  test::WriteFile(document.Folder() / "small.afm",
                  Replaced(kSmallMetrics, "C 32 ; WX 250 ; N space", "C 32 ; WX 250 ; N B"));
  const char *name = document.LoadType1(document.Folder() / "small.afm", test::kRomanProgram);
  document.Show(document.Font(name, "WinAnsiEncoding"), "A \xA1");
  const auto names = DifferencesOf(test::PdfFile(document.SaveToString()));
  EXPECT_EQ(names.at(0xA1), "/.notdef");
}

TEST(Type1Font, NamesakesOfACharacterServeBothWays) {
  QUILLBAR_NEEDS_FONT(test::kRomanMetrics, kUrwPackage);
  FontDocument document;
  // The font has the mathematical sign; the text asks for the Greek letter.
  test::WriteFile(document.Folder() / "small.afm", Replaced(kSmallMetrics, "N A ;", "N uni2206 ;"));
  const char *name = document.LoadType1(document.Folder() / "small.afm", test::kRomanProgram);
  const HPDF_Font font = document.Font(name, "ISO8859-7");
  document.Show(font, "\xC4");
  EXPECT_EQ(DifferencesOf(test::PdfFile(document.SaveToString())).at(0xC4), "/uni2206");
  EXPECT_EQ(WidthOf(font, "\xC4"), 722u);
}

TEST(Type1Font, HexadecimalPortionMayHaveDigitsOfEitherCase) {
  // Bytes that are no digits stand on each side of the ranges of digits.
  for (const char *digits : {"0123456789abcdef", "0123456789ABCDEF"}) {
    const std::string file = "%!PS-AdobeFont-1.0\neexec\n" + std::string(digits) + "\n";
    const auto program = Type1Program::Read(AsBytes(file));
    ASSERT_TRUE(program.has_value()) << digits;
    EXPECT_THAT(program->encrypted, ElementsAre(0x01, 0x23, 0x45, 0x67, 0x89, 0xAB, 0xCD, 0xEF)) << digits;
  }
}

TEST(Type1Program, PortionIsBinaryUnlessItsFirstFourBytesAreDigits) {
  for (const char beside : {'/', ':', '@', 'G', '`', 'g'}) {
    for (std::size_t place = 0; place < 4; ++place) {
      std::string encrypted = "09AFaf";
      encrypted[place] = beside;
      const auto program = Type1Program::Read(AsBytes(kClear + encrypted + kTrailer));
      ASSERT_TRUE(program) << encrypted;
      EXPECT_EQ(PortionOf(program->encrypted), encrypted);
    }
  }
  EXPECT_FALSE(Type1Program::Read(AsBytes(kClear + std::string(40, '0') + "cleartomark"))) << "nothing but a trailer";
}

TEST(StandardFont, HasNoStandInBeyondItsTable) {
  EXPECT_TRUE(engine::StandInWidth("Helvetica", 0x0416).has_value());
  EXPECT_FALSE(engine::StandInWidth("Courier", 0x0416).has_value());
  for (const HPDF_UNICODE character : {HPDF_UNICODE{0}, HPDF_UNICODE{0x0530}, HPDF_UNICODE{0xFFFF}})
    EXPECT_FALSE(engine::StandInWidth("Helvetica", character).has_value()) << character;
}

TEST(Type1Font, CodeThatAFontOfSignsLacksIsAsWideAsTheMissingGlyph) {
  QUILLBAR_NEEDS_FONT(std::string(kUrwFonts) + "D050000L.afm", kUrwPackage);
  FontDocument document;
  const HPDF_Font font = document.Font(LoadUrw(document, "D050000L"), "CP1251");
  document.Show(font, "4\x01\x1F");
  EXPECT_EQ(WidthOf(font, "\x01"), WidthOf(font, "\x1F"));
  EXPECT_TRUE(test::Flawless(document.SaveToString()));
}

}  // namespace
}  // namespace quillbar
