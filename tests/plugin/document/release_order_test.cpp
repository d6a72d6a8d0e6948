// SPDX-License-Identifier: MIT
// A script may let go of a document and of what was made with it in any order; what it still has can be used until
// then. A run takes one order in a hundred; QUILLBAR_EVERY_ORDER=1 takes all 40,320.
#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <functional>
#include <numeric>

#include "tests/plugin/driver/plugin_test.h"

namespace quillbar::test {
namespace {

using testing::IsEmpty;

class ReleaseOrder : public PluginTest {
 protected:
  static constexpr std::size_t kObjects = 8;

  struct Kept {
    ScriptObject object;
    std::function<void(const ScriptObject &)> use;
  };

  /// One object of each kind, with a call that reaches the document.
  std::array<Kept, kObjects> MakeObjects() {
    const Document document = NewDocument();
    const ScriptObject page = document.AddPage(), font = document.GetFont("Helvetica");
    const ScriptObject image = document.CallObject("LoadImage", NewObject("PixelRaster", {2, 2, 4}));
    const ScriptObject outline = document.CallObject("CreateOutline", host::Value::Nil(), "Chapter");
    const ScriptObject destination = page.CallObject("CreateDestination");
    const ScriptObject note = page.CallObject("CreateTextAnnotation", "note", 0.0F, 0.0F, 9.0F, 9.0F);
    const ScriptObject state = document.CallObject("CreateExtendedGraphicsState");
    page.Call("BeginText");
    page.Call("SetFont", font, 12.0F);
    page.Call("ShowText", "text");
    page.Call("EndText");
    page.Call("DrawImage", image, 0.0F, 0.0F, 9.0F, 9.0F);
    page.Call("SetExtendedState", state);
    outline.Call("SetDestination", destination);
    EXPECT_THAT(document.TakeFailures(), IsEmpty());
    return {{{document, [](const ScriptObject &o) { EXPECT_FALSE(o.CallObject("AddPage").IsNil()); }},
             {page, [](const ScriptObject &o) { o.Call("SetRGBFill", 1.0F, 0.0F, 0.0F); }},
             {font, [](const ScriptObject &o) { EXPECT_GT(o.GetInteger("Ascent"), 0); }},
             {image, [](const ScriptObject &o) { EXPECT_EQ(o.GetInteger("Width"), 2); }},
             {outline, [](const ScriptObject &o) { o.Set("Opened", false); }},
             {destination, [](const ScriptObject &o) { o.Call("SetLocation", 1.0F, 2.0F, 1.0F); }},
             {note, [](const ScriptObject &o) { o.Call("SetOpened", true); }},
             {state, [](const ScriptObject &o) { o.Call("SetAlphaFill", 0.5F); }}}};
  }
};

TEST_F(ReleaseOrder, MakesNoDifference) {
  const int step = std::getenv("QUILLBAR_EVERY_ORDER") != nullptr ? 1 : 101;
  std::array<std::size_t, kObjects> order;
  std::iota(order.begin(), order.end(), 0);
  int number = 0, tried = 0;
  do {
    if (number++ % step != 0) continue;
    ++tried;
    std::array<Kept, kObjects> objects = MakeObjects();
    for (const std::size_t released : order) {
      objects[released].object = {};
      for (const Kept &kept : objects) {
        if (!kept.object.IsNil()) kept.use(kept.object);
      }
    }
    ASSERT_TRUE(host().InspectLedger().IsBalanced()) << "order " << number << '\n' << host().InspectLedger().Text();
  } while (std::next_permutation(order.begin(), order.end()) && !HasFailure());
  EXPECT_GE(tried, 400);
}

}  // namespace
}  // namespace quillbar::test
