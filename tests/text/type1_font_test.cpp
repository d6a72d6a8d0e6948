// Type 1 fonts: metrics and programs checked before use, real fonts shown and read back.
#include <gmock/gmock.h>

#include "plugin/pdflib-changes/afm_file.h"
#include "plugin/pdflib-changes/type1_program.h"
#include "tests/support/process.h"
#include "tests/text/font_document.h"
#include "tests/text/real_fonts.h"

namespace quillbar {
namespace {

using pdflib::AfmFile;
using pdflib::FontFault;
using pdflib::Type1Program;
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

pdflib::Bytes AsBytes(const std::string &text) {
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
    for (const char c : std::string(kSmallMetrics))
      text += c == '\n' ? std::string(ending) : std::string(1, c);
    EXPECT_EQ(FaultOf(text), std::nullopt);
  }
}

TEST(AfmFile, OtherFilesAreRefused) {
  EXPECT_EQ(FaultOf(""), FontFault::kMetricsFileHeader);
  EXPECT_EQ(FaultOf("Dear reader"), FontFault::kMetricsFileHeader);
  EXPECT_EQ(FaultOf(std::string(1000, '\0')), FontFault::kMetricsFileHeader);
  EXPECT_EQ(FaultOf(Replaced(kSmallMetrics, "FontName Small\n", "")), FontFault::kMetricsFileHeader);
}

TEST(AfmFile, LongLinesAreRefused) {
  const auto withComment = [](std::size_t length) {
    return Replaced(kSmallMetrics, "Weight", "Comment " + std::string(length - 8, 'x') + "\nWeight");
  };
  EXPECT_EQ(FaultOf(withComment(255)), std::nullopt);
  EXPECT_EQ(FaultOf(withComment(256)), FontFault::kMetricsFileLine);
  EXPECT_EQ(FaultOf(withComment(512)), FontFault::kMetricsFileLine);
  EXPECT_EQ(FaultOf(Replaced(kSmallMetrics, "N A", "N " + std::string(512, 'A'))),
            FontFault::kMetricsFileLine);
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
                                                        {"Ascender 750", "Ascender 1e9"}})
    EXPECT_EQ(FaultOf(Replaced(kSmallMetrics, what, with)), FontFault::kMetricsFileLine) << with;
}

std::string Segment(int kind, const std::string &bytes) {
  std::string segment{'\x80', static_cast<char>(kind)};
  for (int shift = 0; shift < 32; shift += 8)
    segment.push_back(static_cast<char>(bytes.size() >> shift & 0xFF));
  return segment + bytes;
}

constexpr char kClear[] = "%!PS-AdobeFont-1.0: Small\ncurrentfile eexec\n";
const std::string kEncrypted = "\xD9\xD6\x6F\x63\x3B";
const std::string kTrailer = std::string(512, '0') + "\ncleartomark\n";

std::string PortionOf(const std::vector<std::uint8_t> &bytes) { return {bytes.begin(), bytes.end()}; }

TEST(Type1Program, SegmentsArePutIntoPortions) {
  const auto program = Type1Program::Read(
      AsBytes(Segment(1, kClear) + Segment(2, kEncrypted) + Segment(1, kTrailer) + "\x80\x03"));
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

TEST(Type1Program, OtherFilesAreRefused) {
  EXPECT_FALSE(Type1Program::Read({}));
  EXPECT_FALSE(Type1Program::Read(AsBytes("Dear reader")));
  EXPECT_FALSE(Type1Program::Read(AsBytes(kClear))) << "nothing encrypted";
  EXPECT_FALSE(Type1Program::Read(AsBytes(std::string(kClear) + "d9d66f6x3b" + kTrailer)))
      << "half hexadecimal";
  EXPECT_FALSE(Type1Program::Read(AsBytes("\x80"))) << "a mark without a segment";
  EXPECT_FALSE(Type1Program::Read(AsBytes(Segment(1, kClear)))) << "nothing encrypted";
  EXPECT_FALSE(Type1Program::Read(AsBytes(Segment(4, kClear) + Segment(2, kEncrypted))))
      << "an unknown segment";
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

INSTANTIATE_TEST_SUITE_P(
    Forms, RealType1Test,
    testing::Values(RealType1{"Plain", "fonts-urw-base35", test::kRomanMetrics, test::kRomanProgram,
                              "WinAnsiEncoding", "Caf\xE9 \x80", "Café €"},
                    RealType1{"Segmented", "t1-cyrillic", kCyrillicMetrics, kCyrillicProgram, "KOI8-R",
                              "\xF0\xD2\xC9\xD7\xC5\xD4", "Привет"}),
    [](const auto &made) { return std::string(made.param.name); });

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

}  // namespace
}  // namespace quillbar
