// SPDX-License-Identifier: MIT
// Symbol and ZapfDingbats, whose bytes are the codes of their glyphs.
#include <algorithm>

#include "tests/plugin/driver/plugin_test.h"
#include "tests/support/judges.h"

namespace quillbar::test {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

class SymbolFont : public PluginTest {
 protected:
  // A page with one line in each of the fonts.
  static ScriptObject Show(const Document &document, std::int64_t encoding, const std::string &symbols,
                           const std::string &dingbats) {
    const ScriptObject page = document.AddPage();
    page.Set("TransformCoordinates", false);
    page.Call("BeginText");
    page.Call("MoveTextPosition", 50, 700);
    page.Call("SetFont", document.GetFont("Symbol", encoding), 40);
    page.Call("ShowText", symbols);
    page.Call("MoveTextPosition", 0, -100);
    page.Call("SetFont", document.GetFont("ZapfDingbats", encoding), 40);
    page.Call("ShowText", dingbats);
    page.Call("EndText");
    return page;
  }
};

// Encodings of several kinds: with a name in PDF, with differences, with letters of other scripts.
constexpr std::int64_t kSeveralEncodings[] = {0, 1, 2, 5, 7, 26, 27, 40, 100};

std::size_t DarkPixels(const Rendering &page, int top, int bottom) {
  std::size_t dark = 0;
  for (int row = top; row < bottom; ++row) {
    for (int column = 0; column < page.width(); ++column) dark += page.PixelAt(column, row) == 0 ? 1U : 0U;
  }
  return dark;
}

TEST_F(SymbolFont, BytesAreTheCodesOfGlyphsInEveryEncoding) {
  // All in one document: starting the judges takes most of the time.
  const Document document = NewDocument();
  for (const std::int64_t encoding : kSeveralEncodings) Show(document, encoding, "abcDW m", "4ln");
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
  const std::string saved = document.Saved();
  EXPECT_TRUE(JudgedFlawless(std::string_view(saved)));
  const std::vector<std::string> texts = ExtractedPages(saved);
  ASSERT_EQ(texts.size(), std::size(kSeveralEncodings));
  for (std::size_t index = 0; index < texts.size(); ++index) {
    SCOPED_TRACE(kSeveralEncodings[index]);
    EXPECT_THAT(texts[index], HasSubstr("αβχΔΩ μ"));
    EXPECT_THAT(texts[index], HasSubstr("✔●■"));
    const Rendering page(saved, static_cast<int>(index) + 1);
    EXPECT_GT(DarkPixels(page, page.height() - 740, page.height() - 680), 500U);
    EXPECT_GT(DarkPixels(page, page.height() - 640, page.height() - 580), 500U);
  }
}

TEST_F(SymbolFont, FileStatesNoEncoding) {
  const Document document = NewDocument();
  Show(document, 2, "a", "4");
  const PdfFile file(document.Saved());
  for (const char *name : {"/F1", "/F2"}) {
    QPDFObjectHandle font = file.Font(0, name);
    EXPECT_FALSE(font.hasKey("/Encoding")) << name;
    EXPECT_TRUE(font.hasKey("/ToUnicode")) << name;
  }
}

TEST_F(SymbolFont, WidthsAreThoseOfTheCodes) {
  const Document document = NewDocument();
  // Alpha and the check mark, as the metrics files of both fonts have them.
  for (const auto &[name, text, width] : {std::tuple{"Symbol", "a", 631}, {"ZapfDingbats", "4", 846}}) {
    const ScriptObject page = document.AddPage();
    page.Call("SetFont", document.GetFont(name, 5), 100);
    std::vector<host::Value> arguments{text, 5000, false, 0.0F};
    host().CallByRef(page.handle(), "MeasureText", arguments);
    EXPECT_FLOAT_EQ(arguments[3].AsSingle() * 10, static_cast<float>(width)) << name;
  }
}

TEST_F(SymbolFont, MacSignsOfAnotherFontStayAsTheyWere) {
  // Codes at which the Mac's table has additions: no letters in these fonts.
  const Document document = NewDocument();
  Show(document, 0, "∞", "∞");
  const ScriptObject page = document.AddPage();
  page.Call("SetFont", document.GetFont("Helvetica", 0), 10);
  const PdfFile file(document.Saved());
  EXPECT_TRUE(file.Font(1, file.Operators(1).at(0).operands.at(0).text).getKey("/Encoding").isName());
}

}  // namespace
}  // namespace quillbar::test
