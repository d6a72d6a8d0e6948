// SPDX-License-Identifier: MIT
// What the plugin draws is what HarfBuzz's own program would: the same outlines at the same places, over names of
// countries and languages in their own scripts. Both sides are read by FreeType.
#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "tests/plugin/driver/plugin_test.h"
#include "tests/shaping/drawn_text.h"
#include "tests/shaping/reference_shaper.h"
#include "tests/shaping/samples.h"
#include "tests/support/real_fonts.h"
#include "tests/support/sample.h"

namespace quillbar::test {
namespace {

// hb-shape's glyphs as outlines on a line, in em.
DrawnText Reference(const std::vector<ReferenceGlyph> &glyphs, FontOutlines &font) {
  DrawnText text;
  const double unit = 1.0 / font.UnitsPerEm();
  double x = 0;
  for (const ReferenceGlyph &glyph : glyphs) {
    for (const Contour &contour : font.ContoursOf(glyph.glyph))
      text.contours.push_back({contour.shape, (x + glyph.x + contour.x) * unit, (glyph.y + contour.y) * unit});
    x += glyph.advance;
  }
  text.advance = x * unit;
  return text;
}

// What is different, the first difference only; empty if all contours of both have a partner of the same shape no
// further away than the tolerance, in em.
std::string DifferenceOf(const DrawnText &expected, const DrawnText &drawn, double tolerance) {
  if (std::abs(expected.advance - drawn.advance) > tolerance)
    return "the advance is " + std::to_string(drawn.advance) + " em instead of " + std::to_string(expected.advance);
  if (expected.contours.size() != drawn.contours.size())
    return std::to_string(drawn.contours.size()) + " contours instead of " + std::to_string(expected.contours.size());
  std::vector<Contour> left = drawn.contours;
  for (const Contour &contour : expected.contours) {
    auto nearest = left.end();
    double distance = 1e9;
    for (auto other = left.begin(); other != left.end(); ++other) {
      if (other->shape != contour.shape) continue;
      const double away = std::max(std::abs(other->x - contour.x), std::abs(other->y - contour.y));
      if (away < distance) nearest = other, distance = away;
    }
    if (nearest == left.end()) return "a contour of another shape is drawn";
    if (distance > tolerance) return "a contour is " + std::to_string(distance) + " em away from its place";
    left.erase(nearest);
  }
  return "";
}

class ShapingTest : public PluginTest, public testing::WithParamInterface<Sample> {
 protected:
  // Each text in a text object of its own, on pages of a hundred. What it was measured to take is compared with what
  // it takes.
  std::vector<DrawnText> Drawn(const Document &document, const ScriptObject &font,
                               const std::vector<std::string> &texts) {
    constexpr double kSize = 10;
    std::vector<double> widths;
    constexpr std::size_t kPerPage = 100;
    constexpr double kLine = 20;
    for (std::size_t begin = 0; begin < texts.size(); begin += kPerPage) {
      const ScriptObject page = document.AddPage();
      page.Set("Height", static_cast<float>(kLine * (kPerPage + 1)));
      for (std::size_t i = begin; i < std::min(begin + kPerPage, texts.size()); ++i) {
        page.Call("BeginText");
        page.Call("SetFont", font, kSize);
        page.Call("MoveTextPosition", 20, kLine * static_cast<double>(kPerPage - (i - begin)));
        widths.push_back(MeasuredWidth(page, texts[i]));
        page.Call("ShowText", texts[i]);
        page.Call("EndText");
      }
    }
    EXPECT_THAT(document.TakeFailures(), testing::IsEmpty());
    std::vector<DrawnText> drawn = DrawnTexts(document.Saved()).Read();
    drawn.resize(texts.size());
    std::string differences;
    for (std::size_t i = 0; i < texts.size(); ++i) {
      if (std::abs(widths[i] - drawn[i].advance * kSize) > 0.001)
        differences += texts[i] + " is " + std::to_string(drawn[i].advance * kSize) + " points wide, but measured as " +
                       std::to_string(widths[i]) + "\n";
    }
    EXPECT_EQ(differences.substr(0, 2000), "");
    return drawn;
  }

 private:
  double MeasuredWidth(const ScriptObject &page, const std::string &text) {
    std::vector<host::Value> arguments{text, std::numeric_limits<float>::infinity(), false, 0.0F};
    host().CallByRef(page.handle(), "MeasureText", arguments);
    return static_cast<double>(arguments[3].AsSingle());
  }
};

// All that there are of the scripts that need shaping.
const std::size_t kMostNames = test::TakesSamples() ? 100 : 10000;

// Widths are whole thousandths of an em, cut off: exact in a font of 1000 units.
double Tolerance(const FontOutlines &font, std::size_t glyphs) {
  constexpr double kNumbersInText = 1e-6;
  return kNumbersInText + (font.UnitsPerEm() == 1000 ? 0 : 0.001 * static_cast<double>(glyphs));
}

TEST_P(ShapingTest, OutlinesAreWhereTheReferenceHasThem) {
  const Sample &sample = GetParam();
  for (const std::string &reason : {ReasonForNoNames(), ReasonForNoReference()}) {
    if (!reason.empty()) GTEST_SKIP() << reason;
  }
  QUILLBAR_NEEDS_FONT(sample.path, sample.package);
  FontOutlines outlines{std::filesystem::path(sample.path)};
  const std::vector<std::string> names = EvenlyChosen(
      NamesIn(sample.system, [&](char32_t character) { return outlines.Covers(character) || character == 0x200C; }),
      sample.shaping == Shaping::kNoChoices ? kMostNames / 4 : kMostNames);
  ASSERT_FALSE(names.empty());
  const auto reference = ReferenceShapes(sample.path, names, sample.shaping);

  const Document document = NewDocument();
  const ScriptObject font = document.CallObject("LoadTrueTypeFont", NewFolderItem(sample.path));
  ASSERT_FALSE(font.IsNil());
  std::vector<std::string> texts;
  for (const std::string &name : names) texts.push_back(AsGiven(sample, name));
  const std::vector<DrawnText> drawn = Drawn(document, font, texts);
  std::string differences;
  std::size_t count = 0;
  for (std::size_t i = 0; i < names.size(); ++i) {
    const std::string difference =
        DifferenceOf(Reference(reference[i], outlines), drawn[i], Tolerance(outlines, reference[i].size()));
    if (!difference.empty() && ++count <= 10) differences += names[i] + ": " + difference + "\n";
  }
  EXPECT_EQ(count, 0U) << "of " << names.size() << " names:\n" << differences;
  RecordProperty("names", static_cast<int>(names.size()));
}

INSTANTIATE_TEST_SUITE_P(Names, ShapingTest, testing::ValuesIn(Samples()),
                         [](const auto &made) { return NameOf(made.param); });

}  // namespace
}  // namespace quillbar::test
