// SPDX-License-Identifier: MIT
// The standard fonts: names, metrics and ownership.
#include "tests/plugin/driver/plugin_test.h"
#include "tests/support/judges.h"

namespace quillbar::test {
namespace {

using testing::IsEmpty;

class BaseFont : public PluginTest {};

// Metrics as Adobe published them (Core 14 AFM files): ascender, descender, and the bounding box in the order
// left, bottom, right, top, all in 1/1000 of the size. Symbol and ZapfDingbats state no ascender and
// descender.
struct Metrics {
  const char *name;
  int ascent;
  int descent;
  float box[4];
};

constexpr Metrics kMetrics[] = {
    {"Courier", 629, -157, {-23, -250, 715, 805}},
    {"Courier-Bold", 629, -157, {-113, -250, 749, 801}},
    {"Courier-Oblique", 629, -157, {-27, -250, 849, 805}},
    {"Courier-BoldOblique", 629, -157, {-57, -250, 869, 801}},
    {"Helvetica", 718, -207, {-166, -225, 1000, 931}},
    {"Helvetica-Bold", 718, -207, {-170, -228, 1003, 962}},
    {"Helvetica-Oblique", 718, -207, {-170, -225, 1116, 931}},
    {"Helvetica-BoldOblique", 718, -207, {-174, -228, 1114, 962}},
    {"Times-Roman", 683, -217, {-168, -218, 1000, 898}},
    {"Times-Bold", 683, -217, {-168, -218, 1000, 935}},
    {"Times-Italic", 683, -217, {-169, -217, 1010, 883}},
    {"Times-BoldItalic", 683, -217, {-200, -218, 996, 921}},
    {"Symbol", 0, 0, {-180, -293, 1090, 1010}},
    {"ZapfDingbats", 0, 0, {-1, -143, 981, 820}},
};

TEST_F(BaseFont, AllFourteenHaveTheirNameAndMetrics) {
  const Document document = NewDocument();
  for (const Metrics &expected : kMetrics) {
    SCOPED_TRACE(expected.name);
    const ScriptObject font = document.GetFont(expected.name);
    ASSERT_FALSE(font.IsNil());
    EXPECT_EQ(font.GetString("Name"), expected.name);
    EXPECT_EQ(font.GetInteger("Ascent"), expected.ascent);
    EXPECT_EQ(font.GetInteger("Descent"), expected.descent);
    EXPECT_EQ(font.GetSingle("BoundingBoxLeft"), expected.box[0]);
    EXPECT_EQ(font.GetSingle("BoundingBoxBottom"), expected.box[1]);
    EXPECT_EQ(font.GetSingle("BoundingBoxRight"), expected.box[2]);
    EXPECT_EQ(font.GetSingle("BoundingBoxTop"), expected.box[3]);
  }
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
}

TEST_F(BaseFont, AllFourteenShowTextInAFileThatReadersTake) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Set("TransformCoordinates", false);
  float y = 750;
  for (const Metrics &metrics : kMetrics) {
    page.Call("BeginText");
    page.Call("SetFont", document.GetFont(metrics.name), 12);
    page.Call("MoveTextPosition", 50, y -= 20);
    page.Call("ShowText", metrics.name);
    page.Call("EndText");
  }
  const std::string saved = document.Saved();
  EXPECT_TRUE(JudgedFlawless(std::string_view(saved)));
  const std::string text = ExtractedText(saved);
  EXPECT_THAT(text, testing::HasSubstr("Helvetica-BoldOblique"));
  EXPECT_THAT(text, testing::HasSubstr("Times-BoldItalic"));
}

// Letters that Adobe's metrics lack, with their widths in the metrics files of Nimbus Sans, Roman and Mono.
struct StandInLetter {
  const char *font;
  std::int64_t encoding;
  const char *letter;
  unsigned code;
  int width;
};

constexpr StandInLetter kStandInLetters[] = {
    {"Helvetica", 7, "α", 0xE1, 578},
    {"Helvetica", 7, "Ω", 0xD9, 748},
    {"Helvetica", 7, "μ", 0xEC, 576},
    {"Helvetica-Oblique", 7, "α", 0xE1, 570},
    {"Helvetica-Bold", 28, "Ξ", 0xCE, 644},
    {"Helvetica-BoldOblique", 26, "Ж", 0xC6, 927},
    {"Times-Roman", 26, "Ж", 0xC6, 896},
    {"Times-Bold", 5, "Ж", 0xB6, 989},
    {"Times-Italic", 40, "Ж", 0xF6, 916},
    {"Times-BoldItalic", 40, "Ж", 0xF6, 918},
    {"Courier", 7, "α", 0xE1, 600},
    {"Courier-BoldOblique", 26, "Ж", 0xC6, 600},
    {"Helvetica", 3, "Ħ", 0xA1, 722},
    {"Helvetica", 0, "∞", 0xB0, 713},
    // And letters that they have.
    {"Helvetica", 2, "ť", 0xBB, 316},
    {"Helvetica", 7, "A", 0x41, 667},
};

TEST_F(BaseFont, LettersBeyondAdobesMetricsAreAsWideAsInTheStandIn) {
  const Document document = NewDocument();
  std::vector<float> measured;
  for (const StandInLetter &one : kStandInLetters) {
    const ScriptObject page = document.AddPage();
    page.Call("BeginText");
    page.Call("SetFont", document.GetFont(one.font, one.encoding), 100);
    page.Call("ShowText", one.letter);
    page.Call("EndText");
    std::vector<host::Value> arguments{one.letter, 500, false, 0.0F};
    host().CallByRef(page.handle(), "MeasureText", arguments);
    measured.push_back(arguments[3].AsSingle() * 10);
  }
  const PdfFile file(document.Saved());
  for (std::size_t page = 0; page < std::size(kStandInLetters); ++page) {
    const StandInLetter &one = kStandInLetters[page];
    SCOPED_TRACE(std::string(one.font) + " " + one.letter);
    EXPECT_FLOAT_EQ(measured[page], static_cast<float>(one.width));
    QPDFObjectHandle font = file.Font(page, file.Operators(page).at(1).operands.at(0).text);
    const int first = font.getKey("/FirstChar").getIntValueAsInt();
    EXPECT_EQ(font.getKey("/Widths").getArrayItem(static_cast<int>(one.code) - first).getIntValue(), one.width);
  }
}

TEST_F(BaseFont, UnknownAndEmptyNamesGiveNil) {
  const Document document = NewDocument();
  EXPECT_TRUE(document.GetFont("No Such Font").IsNil());
  EXPECT_EQ(document.TakeFailures().size(), 1U);
  // The host passes an empty string as nil.
  EXPECT_TRUE(document.GetFont("").IsNil());
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
  EXPECT_FALSE(document.GetFont("Helvetica").IsNil());
}

TEST_F(BaseFont, SameNameTwiceGivesTwoObjectsOfOneFont) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  const ScriptObject first = document.GetFont("Helvetica");
  const ScriptObject second = document.GetFont("Helvetica");
  EXPECT_NE(first.handle(), second.handle());
  page.Call("SetFont", first, 10);
  page.Call("SetFont", second, 11);
  const std::vector<ContentOperator> operators = document.Operators();
  ASSERT_EQ(operators.size(), 2U);
  EXPECT_EQ(operators[0].operands[0].text, operators[1].operands[0].text);
}

TEST_F(BaseFont, MembersAreReadOnly) {
  for (const char *property :
       {"Name", "Ascent", "Descent", "BoundingBoxLeft", "BoundingBoxRight", "BoundingBoxTop", "BoundingBoxBottom"}) {
    EXPECT_TRUE(host().Class("Font").FindProperty(property)->IsReadOnly()) << property;
  }
}

TEST_F(BaseFont, OutlivesEveryOtherReferenceToItsDocument) {
  ScriptObject font;
  {
    const Document document = NewDocument();
    font = document.GetFont("Times-Roman");
  }
  EXPECT_EQ(font.GetString("Name"), "Times-Roman");
  EXPECT_EQ(font.GetSingle("BoundingBoxTop"), 898.0F);
}

}  // namespace
}  // namespace quillbar::test
