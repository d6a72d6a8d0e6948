// SPDX-License-Identifier: MIT
// Page sizes.
#include "tests/plugin/driver/plugin_test.h"

namespace quillbar::test {
namespace {

using testing::ElementsAre;
using testing::FloatEq;
using testing::IsEmpty;

class PageSize : public PluginTest {};

struct NamedSize {
  const char *name;
  float width;
  float height;
};

// In points: the sizes' definitions in inches (72 points) and millimetres (72/25.4 points).
constexpr NamedSize kSizes[] = {
    {"LETTER", 612, 792},       {"LEGAL", 612, 1008},       {"A3", 841.89F, 1190.551F}, {"A4", 595.276F, 841.89F},
    {"A5", 419.528F, 595.276F}, {"B4", 708.661F, 1000.63F}, {"B5", 498.898F, 708.661F}, {"EXECUTIVE", 522, 756},
    {"US4x6", 288, 432},        {"US4x8", 288, 576},        {"US5x7", 360, 504},        {"COMM10", 297, 684},
};

TEST_F(PageSize, EveryNamedSizeHasItsPointsInBothDirections) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  for (const NamedSize &size : kSizes) {
    SCOPED_TRACE(size.name);
    const host::Value number = host().Constant(std::string("Page.PageSizeEnum.") + size.name);
    page.Call("SetSize", number, host().Constant("Page.PageDirectionEnum.PORTRAIT"));
    EXPECT_NEAR(page.GetSingle("Width"), size.width, 0.01F);
    EXPECT_NEAR(page.GetSingle("Height"), size.height, 0.01F);
    page.Call("SetSize", number, host().Constant("Page.PageDirectionEnum.LANDSCAPE"));
    EXPECT_NEAR(page.GetSingle("Width"), size.height, 0.01F);
    EXPECT_NEAR(page.GetSingle("Height"), size.width, 0.01F);
  }
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
}

TEST_F(PageSize, IsWrittenAsTheMediaBox) {
  const Document document = NewDocument();
  document.AddPage().Call("SetSize", 3, 1);
  const ScriptObject second = document.AddPage();
  second.Set("Width", 123.25F);
  second.Set("Height", 456.5F);
  const PdfFile file(document.Saved());
  EXPECT_THAT(file.MediaBox(0),
              ElementsAre(0, 0, testing::DoubleNear(841.89, 1e-3), testing::DoubleNear(595.276, 1e-3)));
  EXPECT_THAT(file.MediaBox(1), ElementsAre(0, 0, 123.25, 456.5));
}

TEST_F(PageSize, SizesAndDirectionsBeyondTheBoundAreIgnoredInSilence) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Set("Width", 100);
  page.Set("Height", 200);
  for (const std::int64_t size : {std::int64_t{13}, std::int64_t{14}, std::int64_t{-1}, std::int64_t{1} << 31}) {
    page.Call("SetSize", size, 0);
  }
  for (const std::int64_t direction : {2, 3, -1}) page.Call("SetSize", 3, direction);
  EXPECT_EQ(page.GetSingle("Width"), 100.0F);
  EXPECT_EQ(page.GetSingle("Height"), 200.0F);
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
  EXPECT_EQ(document.LastFailure(), Failure{});
}

TEST_F(PageSize, NumbersCountWithTheir32LowerBits) {
  if (sizeof(void *) == 4) GTEST_SKIP() << "an Integer has no more bits here";
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Call("SetSize", kHighBitOnly + 2, kHighBitOnly + 1);
  EXPECT_THAT(page.GetSingle("Width"), FloatEq(1190.551F));
  EXPECT_THAT(page.GetSingle("Height"), FloatEq(841.89F));
  page.Call("SetSize", kHighBitOnly + 13, 0);
  page.Call("SetSize", 0, kHighBitOnly + 2);
  EXPECT_THAT(page.GetSingle("Width"), FloatEq(1190.551F));
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
}

TEST_F(PageSize, TwelveReachesTheLibraryWhichRefusesIt) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Set("Width", 100);
  page.Set("Height", 200);
  for (const std::int64_t direction : {0, 1}) {
    page.Call("SetSize", 12, direction);
    const std::vector<Failure> failures = document.TakeFailures();
    ASSERT_EQ(failures.size(), 1U);
    EXPECT_EQ(failures[0].number, library_error::kInvalidSize);
    EXPECT_EQ(document.LastFailure(), failures[0]);
  }
  EXPECT_EQ(page.GetSingle("Width"), 100.0F);
  EXPECT_EQ(page.GetSingle("Height"), 200.0F);
}

TEST_F(PageSize, WidthAndHeightOutsideTheLibrarysRangeAreRefused) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Set("Width", 100);
  page.Set("Height", 200);
  for (const char *property : {"Width", "Height"}) {
    for (const float value : {0.0F, -1.0F, 2.99F, 14400.1F, 1e30F}) {
      SCOPED_TRACE(testing::Message() << property << " = " << value);
      page.Set(property, value);
      EXPECT_THAT(document.TakeFailures(), ElementsAre(Failure{library_error::kInvalidSize, 0}));
    }
  }
  EXPECT_EQ(page.GetSingle("Width"), 100.0F);
  EXPECT_EQ(page.GetSingle("Height"), 200.0F);
  page.Set("Width", 3);
  page.Set("Height", 14400);
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
  EXPECT_EQ(page.GetSingle("Width"), 3.0F);
  EXPECT_EQ(page.GetSingle("Height"), 14400.0F);
}

TEST_F(PageSize, ReadsBackTheExactSingle) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  for (const float value : {3.0000002F, 123.45678F, 595.27563F, 14399.999F}) {
    page.Set("Height", value);
    page.Set("Width", value);
    EXPECT_EQ(page.GetSingle("Height"), value);
    EXPECT_EQ(page.GetSingle("Width"), value);
  }
}

}  // namespace
}  // namespace quillbar::test
