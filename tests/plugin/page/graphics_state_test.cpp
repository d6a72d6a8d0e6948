// SPDX-License-Identifier: MIT
// Line style, matrices and saved states.
#include "tests/plugin/driver/plugin_test.h"

namespace quillbar::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class GraphicsState : public PluginTest {};

TEST_F(GraphicsState, LineStyleOfANewPage) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  EXPECT_EQ(page.GetSingle("LineWidth"), 1.0F);
  EXPECT_EQ(page.Get("LineCapType"), host().Constant("Page.LineCapTypeEnum.BUTT_END"));
  EXPECT_EQ(page.Get("LineJoinType"), host().Constant("Page.LineJoinTypeEnum.MITER"));
}

TEST_F(GraphicsState, LineStyleIsWrittenAndReadBack) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Set("LineWidth", 0.3F);
  EXPECT_EQ(page.GetSingle("LineWidth"), 0.3F);
  page.Set("LineWidth", 0);
  for (const std::int64_t number : {1, 2, 0}) {
    page.Set("LineCapType", number);
    EXPECT_EQ(page.GetInteger("LineCapType"), number);
    page.Set("LineJoinType", number);
    EXPECT_EQ(page.GetInteger("LineJoinType"), number);
  }
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
  EXPECT_THAT(document.Operators(), ElementsAre(Op("w", 0.3F), Op("w", 0), Op("J", 1), Op("j", 1), Op("J", 2),
                                                Op("j", 2), Op("J", 0), Op("j", 0)));
}

TEST_F(GraphicsState, CapsAndJoinsOutsideTheirEnumerationAreRefused) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  for (const char *property : {"LineCapType", "LineJoinType"}) {
    page.Set(property, 1);
    for (const std::int64_t wrong : {3, 4, 1000}) {
      page.Set(property, wrong);
      const Failure expected{library_error::kOutOfRange, static_cast<std::uint32_t>(wrong)};
      EXPECT_THAT(document.TakeFailures(), ElementsAre(expected)) << property;
      EXPECT_EQ(document.LastFailure(), expected);
    }
    page.Set(property, -1);
    EXPECT_THAT(document.TakeFailures(), ElementsAre(Failure{library_error::kOutOfRange, 4294967295U})) << property;
    EXPECT_EQ(page.GetInteger(property), 1);
  }
  EXPECT_THAT(document.Operators(), ElementsAre(Op("J", 1), Op("j", 1)));
}

TEST_F(GraphicsState, NegativeLineWidthIsRefused) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Set("LineWidth", 2);
  page.Set("LineWidth", -0.001F);
  EXPECT_THAT(document.TakeFailures(), ElementsAre(Failure{library_error::kOutOfRange, 0}));
  EXPECT_EQ(page.GetSingle("LineWidth"), 2.0F);
  page.Set("LineWidth", 3);
  EXPECT_THAT(document.Operators(), ElementsAre(Op("w", 2), Op("w", 3)));
}

TEST_F(GraphicsState, SavedStatesNestAndRestore) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Set("LineWidth", 2);
  page.Call("SaveState");
  page.Set("LineWidth", 3);
  page.Call("SaveState");
  page.Set("LineWidth", 4);
  page.Call("RestoreState");
  EXPECT_EQ(page.GetSingle("LineWidth"), 3.0F);
  page.Call("RestoreState");
  EXPECT_EQ(page.GetSingle("LineWidth"), 2.0F);
  EXPECT_THAT(document.Operators(),
              ElementsAre(Op("w", 2), Op("q"), Op("w", 3), Op("q"), Op("w", 4), Op("Q"), Op("Q")));
}

TEST_F(GraphicsState, RestoreWithoutASavedStateIsRefused) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Call("RestoreState");
  EXPECT_THAT(document.TakeFailures(), ElementsAre(Failure{library_error::kCannotRestoreGState, 0}));
  page.Call("SaveState");
  page.Call("RestoreState");
  page.Call("RestoreState");
  EXPECT_EQ(document.TakeFailures().size(), 1U);
  EXPECT_THAT(document.Operators(), ElementsAre(Op("q"), Op("Q")));
}

TEST_F(GraphicsState, StatesBeyondTheLibrarysDepthAreRefusedOnceEachAndTheRestUnwinds) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  std::size_t refused = 0;
  std::size_t saved = 0;
  for (int count = 0; count < 40; ++count) {
    page.Call("SaveState");
    const std::vector<Failure> failures = document.TakeFailures();
    if (failures.empty()) {
      ++saved;
      continue;
    }
    ++refused;
    EXPECT_EQ(failures.size(), 1U);
    EXPECT_EQ(failures[0].number, library_error::kExceedGStateLimit);
  }
  EXPECT_GT(saved, 20U);
  EXPECT_GT(refused, 5U);
  for (std::size_t count = 0; count < saved; ++count) page.Call("RestoreState");
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
  EXPECT_EQ(document.Operators().size(), 2 * saved);
}

TEST_F(GraphicsState, MatrixWritesItsSixNumbers) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Call("ConcatMatrix", 0.5F, 0.1F, -0.1F, 0.5F, 10.25F, -20.5F);
  page.Call("ConcatMatrix", 0.001F, 0, 0, 0.00025F, 0, 0);
  EXPECT_THAT(document.Operators(),
              ElementsAre(Op("cm", 0.5, 0.1, -0.1, 0.5, 10.25, -20.5), Op("cm", 0.001, 0, 0, 0.00025, 0, 0)));
}

}  // namespace
}  // namespace quillbar::test
