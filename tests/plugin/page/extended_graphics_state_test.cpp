// SPDX-License-Identifier: MIT
// Opacity and blend modes, in the file and on rendered pages.
#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <deque>
#include <limits>

#include "tests/plugin/driver/plugin_test.h"
#include "tests/support/judges.h"

namespace quillbar::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::uint32_t kOutOfRange = 4224;
constexpr std::uint32_t kReadOnly = 4226;

class GraphicsStateTest : public PluginTest {
 protected:
  static ScriptObject NewState(const Document &document) { return document.CallObject("CreateExtendedGraphicsState"); }
  /// The state that the first page uses, read back.
  QPDFObjectHandle Written(const Document &document) {
    return files_.emplace_back(document.Saved()).Page(0).getKey("/Resources").getKey("/ExtGState").getKey("/E1");
  }

 private:
  std::deque<PdfFile> files_;  // alive while a test looks at their objects
};

TEST_F(GraphicsStateTest, OpacitiesAreWritten) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage(), state = NewState(document);
  state.Call("SetAlphaFill", 0.5F);
  state.Call("SetAlphaStroke", 0.25F);
  page.Call("SetExtendedState", state);
  QPDFObjectHandle written = Written(document);
  EXPECT_EQ(written.getKey("/ca").getNumericValue(), 0.5);
  EXPECT_EQ(written.getKey("/CA").getNumericValue(), 0.25);
  EXPECT_THAT(document.Operators(), ElementsAre(Op("gs", "/E1")));
  const std::string saved = document.Saved();
  EXPECT_EQ(saved.substr(5, 3), "1.4");
  EXPECT_TRUE(JudgedFlawless(std::string_view(saved)));
}

TEST_F(GraphicsStateTest, OpacitiesOutOfRangeRecordAnErrorAndChangeNothing) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage(), state = NewState(document);
  state.Call("SetAlphaFill", 1.0F);
  state.Call("SetAlphaStroke", 0.0F);
  for (const float value : {1.5F, -0.5F, 1.0000001F, -1e30F}) {
    state.Call("SetAlphaFill", value);
    state.Call("SetAlphaStroke", value);
    EXPECT_THAT(document.TakeFailures(), ElementsAre(Failure{kOutOfRange, 0}, Failure{kOutOfRange, 0})) << value;
  }
  for (const float value : {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity()}) {
    state.Call("SetAlphaFill", value);
    EXPECT_THAT(document.TakeFailures(), ElementsAre(Failure{library_error::kInvalidParameter, 0}));
  }
  page.Call("SetExtendedState", state);
  EXPECT_EQ(Written(document).getKey("/ca").getNumericValue(), 1);
  EXPECT_EQ(Written(document).getKey("/CA").getNumericValue(), 0);
}

TEST_F(GraphicsStateTest, BlendModesAreWrittenByName) {
  const char *names[] = {"/Normal",     "/Multiply",  "/Screen",    "/Overlay",   "/Darken",     "/Lighten",
                         "/ColorDodge", "/ColorBurn", "/HardLight", "/SoftLight", "/Difference", "/Exclusion"};
  for (std::int64_t mode = 0; mode < 12; ++mode) {
    const Document document = NewDocument();
    const ScriptObject page = document.AddPage(), state = NewState(document);
    state.Call("SetBlendMode", mode);
    page.Call("SetExtendedState", state);
    EXPECT_EQ(Written(document).getKey("/BM").getName(), names[mode]);
  }
  EXPECT_EQ(host().Constant("ExtendedGraphicsState.BlendModeEnum.EXCLUSHON").AsInteger(), 11);
}

TEST_F(GraphicsStateTest, BlendModesBeyondTheEnumerationRecordAnError) {
  const Document document = NewDocument();
  const ScriptObject state = NewState(document);
  for (const std::int64_t mode : {std::int64_t{12}, std::int64_t{13}, std::int64_t{-1}, kHighBitOnly}) {
    state.Call("SetBlendMode", mode);
    EXPECT_THAT(document.TakeFailures(), ElementsAre(Failure{kOutOfRange, 0})) << mode;
    EXPECT_EQ(document.LastFailure().number, kOutOfRange);
  }
}

TEST_F(GraphicsStateTest, AppliedStatesAreReadOnly) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage(), state = NewState(document);
  state.Call("SetAlphaStroke", 0.5F);
  page.Call("SetExtendedState", state);
  state.Call("SetAlphaStroke", 0.25F);
  state.Call("SetAlphaFill", 0.25F);
  state.Call("SetBlendMode", std::int64_t{1});
  EXPECT_THAT(document.TakeFailures(),
              ElementsAre(Failure{kReadOnly, 0}, Failure{kReadOnly, 0}, Failure{kReadOnly, 0}));
  EXPECT_EQ(document.LastFailure().number, kReadOnly);
  EXPECT_EQ(Written(document).getKey("/CA").getNumericValue(), 0.5);
  EXPECT_FALSE(Written(document).hasKey("/ca"));
}

TEST_F(GraphicsStateTest, NilAndStatesOfAnotherDocumentHaveNoEffect) {
  const Document document = NewDocument(), other = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Call("SetExtendedState", host::Value::Nil());
  page.Call("SetExtendedState", NewState(other));
  EXPECT_THAT(document.Operators(), IsEmpty());
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
}

TEST_F(GraphicsStateTest, KeepsItsDocument) {
  ScriptObject state;
  {
    const Document document = NewDocument();
    state = NewState(document);
  }
  state.Call("SetAlphaFill", 0.5F);
}

/// How PDF defines the modes, for a component of what is below and of what comes on top.
double Blend(int mode, double below, double top) {
  const auto hardLight = [](double b, double s) { return s <= 0.5 ? b * 2 * s : b + (2 * s - 1) - b * (2 * s - 1); };
  switch (mode) {
    case 1:
      return below * top;
    case 2:
      return below + top - below * top;
    case 3:
      return hardLight(top, below);
    case 4:
      return std::min(below, top);
    case 5:
      return std::max(below, top);
    case 6:
      return below == 0 ? 0 : top < 1 ? std::min(1.0, below / (1 - top)) : 1;
    case 7:
      return below == 1 ? 1 : top > 0 ? 1 - std::min(1.0, (1 - below) / top) : 0;
    case 8:
      return hardLight(below, top);
    case 9: {
      if (top <= 0.5) return below - (1 - 2 * top) * below * (1 - below);
      const double d = below <= 0.25 ? ((16 * below - 12) * below + 4) * below : std::sqrt(below);
      return below + (2 * top - 1) * (d - below);
    }
    case 10:
      return std::abs(below - top);
    case 11:
      return below + top - 2 * below * top;
    default:
      return top;
  }
}

TEST_F(GraphicsStateTest, RenderedColorsFollowTheDefinitionOfEachBlendMode) {
  constexpr unsigned kBelow = 0x3399CC, kTop = 0xE08040;
  constexpr float kOpacities[] = {1.0F, 0.5F};
  // A page for each opacity, with a row for each mode: the colour below, and both on the right.
  const Document document = NewDocument();
  for (const float opacity : kOpacities) {
    const ScriptObject page = document.AddPage();
    page.Set("FillColor", Color{kBelow});
    page.Call("Rectangle", 0.0F, 0.0F, 100.0F, 240.0F);
    page.Call("Fill");
    page.Set("FillColor", Color{kTop});
    for (int mode = 0; mode < 12; ++mode) {
      const ScriptObject state = NewState(document);
      state.Call("SetBlendMode", std::int64_t{mode});
      state.Call("SetAlphaFill", opacity);
      page.Call("SetExtendedState", state);
      page.Call("Rectangle", 50.0F, static_cast<float>(20 * mode), 50.0F, 20.0F);
      page.Call("Fill");
    }
  }
  const std::string saved = document.Saved();
  for (int number = 0; number < 2; ++number) {
    const Rendering rendered(saved, number + 1);
    for (int mode = 0; mode < 12; ++mode) {
      const float opacity = kOpacities[number];
      const int row = rendered.height() - 20 * mode - 10;
      EXPECT_EQ(rendered.PixelAt(20, row), kBelow);
      const unsigned mixed = rendered.PixelAt(75, row);
      for (const int shift : {0, 8, 16}) {
        const double below = (kBelow >> shift & 0xFF) / 255.0, top = (kTop >> shift & 0xFF) / 255.0;
        const double expected = below + (Blend(mode, below, top) - below) * opacity;
        EXPECT_NEAR((mixed >> shift & 0xFF) / 255.0, expected, 3 / 255.0)
            << "mode " << mode << ", opacity " << opacity << ", shift " << shift;
      }
    }
  }
}

TEST_F(GraphicsStateTest, StrokeOpacityIsItsOwn) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage(), state = NewState(document);
  state.Call("SetAlphaStroke", 0.5F);
  page.Call("SetExtendedState", state);
  page.Set("StrokeColor", Color{0x000000});
  page.Set("FillColor", Color{0x000000});
  page.Set("LineWidth", 20.0F);
  page.Call("MoveTo", 0.0F, 50.0F);
  page.Call("LineTo", 100.0F, 50.0F);
  page.Call("Draw");
  page.Call("Rectangle", 0.0F, 80.0F, 100.0F, 20.0F);
  page.Call("Fill");
  const Rendering rendered(document.Saved());
  EXPECT_NEAR(static_cast<int>(rendered.PixelAt(50, rendered.height() - 50) & 0xFF), 128, 2);
  EXPECT_EQ(rendered.PixelAt(50, rendered.height() - 90), 0U);
}

}  // namespace
}  // namespace quillbar::test
