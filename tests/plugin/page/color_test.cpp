// SPDX-License-Identifier: MIT
// Colours: script colours to the library's three numbers and back.
#include "tests/plugin/driver/plugin_test.h"

namespace quillbar::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Colors : public PluginTest {
 protected:
  static std::uint32_t Read(const ScriptObject &page, const char *property) {
    return static_cast<std::uint32_t>(page.Get(property).AsColor());
  }
  static void Write(const ScriptObject &page, const char *property, std::uint32_t color) {
    page.Set(property, static_cast<Color>(color));
  }
};

TEST_F(Colors, ComponentsAreTheBytesDividedBy255) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  Write(page, "FillColor", 0x00FF8000);
  EXPECT_EQ(Read(page, "FillColor"), 0x00FF8000U);
  Write(page, "StrokeColor", 0x00336699);
  EXPECT_EQ(Read(page, "StrokeColor"), 0x00336699U);
  EXPECT_THAT(document.Operators(),
              ElementsAre(Op("rg", 1, 128.0F / 255.0F, 0), Op("RG", 0x33 / 255.0F, 0x66 / 255.0F, 0x99 / 255.0F)));
}

TEST_F(Colors, AlphaIsIgnoredAndReadsBackAsZero) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  for (const char *property : {"FillColor", "StrokeColor"}) {
    Write(page, property, 0xFF336699);
    EXPECT_EQ(Read(page, property), 0x00336699U);
  }
}

TEST_F(Colors, All256LevelsOfEachComponentReadBackAndPrintTheirQuotient) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  for (std::uint32_t level = 0; level < 256; ++level) {
    const std::uint32_t color = level << 16 | (255 - level) << 8 | (level ^ 0x55);
    Write(page, "FillColor", color);
    EXPECT_EQ(Read(page, "FillColor"), color);
    Write(page, "StrokeColor", color);
    EXPECT_EQ(Read(page, "StrokeColor"), color);
  }
  const std::vector<ContentOperator> operators = document.Operators();
  ASSERT_EQ(operators.size(), 512U);
  for (std::uint32_t level = 0; level < 256; ++level) {
    const auto quotient = [](std::uint32_t byte) { return static_cast<float>(byte) / 255.0F; };
    for (std::size_t kind = 0; kind < 2; ++kind) {
      EXPECT_THAT(operators[level * 2 + kind],
                  Op(kind == 0 ? "rg" : "RG", quotient(level), quotient(255 - level), quotient(level ^ 0x55)));
    }
  }
}

TEST_F(Colors, NumbersAreCutToBytesAndNeverRounded) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Call("SetRGBFill", 0.999F, 0.5F, 0.0039F);
  // 254.745, 127.5 and 0.9945
  EXPECT_EQ(Read(page, "FillColor"), 0x00FE7F00U);
  page.Call("SetRGBStroke", 1, 0.9999F, 0.00393F);
  // 255, 254.97 and 1.002
  EXPECT_EQ(Read(page, "StrokeColor"), 0x00FFFE01U);
}

TEST_F(Colors, AreBlackWhileTheyAreNotRgb) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  EXPECT_EQ(Read(page, "FillColor"), 0U);
  EXPECT_EQ(Read(page, "StrokeColor"), 0U);
  Write(page, "FillColor", 0x112233);
  Write(page, "StrokeColor", 0x445566);
  page.Call("SetCMYKFill", 0, 0, 0, 1);
  EXPECT_EQ(Read(page, "FillColor"), 0U);
  EXPECT_EQ(Read(page, "StrokeColor"), 0x445566U);
  page.Call("SetCMYKStroke", 0.5F, 0, 0, 0);
  EXPECT_EQ(Read(page, "StrokeColor"), 0U);
  Write(page, "FillColor", 0x010203);
  EXPECT_EQ(Read(page, "FillColor"), 0x010203U);
}

TEST_F(Colors, MembersWriteTheirComponentsInOrder) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Call("SetRGBFill", 0.125F, 0.25F, 0.5F);
  page.Call("SetRGBStroke", 0.1F, 0.2F, 0.3F);
  page.Call("SetCMYKFill", 0.125F, 0.25F, 0.5F, 0.75F);
  page.Call("SetCMYKStroke", 0.1F, 0.2F, 0.3F, 0.4F);
  EXPECT_THAT(document.Operators(), ElementsAre(Op("rg", 0.125, 0.25, 0.5), Op("RG", 0.1, 0.2, 0.3),
                                                Op("k", 0.125, 0.25, 0.5, 0.75), Op("K", 0.1, 0.2, 0.3, 0.4)));
}

TEST_F(Colors, AreIgnoredInSilenceWhileAPathIsBuilt) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Call("MoveTo", 1, 2);
  Write(page, "FillColor", 0x112233);
  Write(page, "StrokeColor", 0x112233);
  EXPECT_EQ(Read(page, "FillColor"), 0U);
  page.Call("Draw");
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
  EXPECT_THAT(document.Operators(), ElementsAre(Op("m", 1, 2), Op("S")));
}

TEST_F(Colors, ComponentsOutsideZeroToOneAreRefusedAndChangeNothing) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  Write(page, "FillColor", 0x112233);
  Write(page, "StrokeColor", 0x445566);
  const Failure outOfRange{library_error::kOutOfRange, 0};
  for (const float wrong : {-0.01F, 1.01F, 1e30F, -1e30F}) {
    for (int place = 0; place < 4; ++place) {
      SCOPED_TRACE(testing::Message() << wrong << " at " << place);
      const auto at = [&](int index) { return index == place ? wrong : 0.5F; };
      if (place < 3) {
        page.Call("SetRGBFill", at(0), at(1), at(2));
        page.Call("SetRGBStroke", at(0), at(1), at(2));
        EXPECT_THAT(document.TakeFailures(), ElementsAre(outOfRange, outOfRange));
      }
      page.Call("SetCMYKFill", at(0), at(1), at(2), at(3));
      page.Call("SetCMYKStroke", at(0), at(1), at(2), at(3));
      EXPECT_THAT(document.TakeFailures(), ElementsAre(outOfRange, outOfRange));
    }
  }
  EXPECT_EQ(document.LastFailure(), outOfRange);
  EXPECT_EQ(Read(page, "FillColor"), 0x112233U);
  EXPECT_EQ(Read(page, "StrokeColor"), 0x445566U);
  EXPECT_EQ(document.Operators().size(), 2U);
}

TEST_F(Colors, FollowTheStackOfSavedStates) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  Write(page, "FillColor", 0x112233);
  page.Call("SaveState");
  Write(page, "FillColor", 0xFFFFFF);
  page.Call("RestoreState");
  EXPECT_EQ(Read(page, "FillColor"), 0x112233U);
}

}  // namespace
}  // namespace quillbar::test
