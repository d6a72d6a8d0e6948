// SPDX-License-Identifier: MIT
// Pages as four renderers draw them, against the pictures of HarfBuzz's own program.
#include <algorithm>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "tests/plugin/driver/plugin_test.h"
#include "tests/shaping/font_outlines.h"
#include "tests/shaping/picture.h"
#include "tests/shaping/samples.h"
#include "tests/support/real_fonts.h"
#include "tests/support/sample.h"
#include "tests/support/temporary_folder.h"

namespace quillbar::test {
namespace {

constexpr double kSize = 24;

class PictureTest : public PluginTest, public testing::WithParamInterface<Sample> {
 protected:
  std::string PageWith(const Sample &sample, const std::string &text) {
    const Document document = NewDocument();
    const ScriptObject font = document.CallObject("LoadTrueTypeFont", NewFolderItem(sample.path));
    const ScriptObject page = document.AddPage();
    page.Set("Width", 600.0F);
    page.Set("Height", 150.0F);
    page.Call("BeginText");
    page.Call("SetFont", font, kSize);
    page.Call("MoveTextPosition", 50, 65);
    page.Call("ShowText", AsGiven(sample, text));
    page.Call("EndText");
    EXPECT_THAT(document.TakeFailures(), testing::IsEmpty());
    return document.Saved();
  }
};

// With the same outlines in the same places, what is left are the renderers' ways of rounding: of pixels, and of widths
// in a thousandth of an em where a font has other units.
constexpr double kLeast = 0.9;

// hb-view cuts off what is above the font's ascent, as vowels of Tibetan are.
std::vector<Sample> PicturedSamples() {
  std::vector<Sample> samples = ShapedSamples();
  std::erase_if(samples, [](const Sample &sample) { return std::string_view(sample.system.name) == "Tibetan"; });
  return samples;
}

// All renderers, or one for each picture in turn.
std::vector<Renderer> RenderersOf(const Sample &sample) {
  const std::vector<Renderer> all(std::begin(kRenderers), std::end(kRenderers));
  if (!TakesSamples()) return all;
  const std::vector<Sample> samples = PicturedSamples();
  const auto place = std::ranges::find(samples, NameOf(sample), [](const Sample &one) { return NameOf(one); });
  return {all[static_cast<std::size_t>(place - samples.begin()) % all.size()]};
}

TEST_P(PictureTest, HasItsInkWhereTheReferenceHasIt) {
  const Sample &sample = GetParam();
  for (const std::string &reason : {ReasonForNoNames(), ReasonForNoReference()}) {
    if (!reason.empty()) GTEST_SKIP() << reason;
  }
  QUILLBAR_NEEDS_FONT(sample.path, sample.package);
  const FontOutlines outlines{std::filesystem::path(sample.path)};
  std::vector<std::string> names =
      NamesIn(sample.system, [&](char32_t character) { return outlines.Covers(character); });
  std::erase_if(names, [](const std::string &name) { return CharactersOf(name).size() > 16; });
  ASSERT_FALSE(names.empty());
  const std::string name =
      *std::ranges::max_element(names, {}, [](const std::string &text) { return CharactersOf(text).size(); });
  const Ink reference = ReferencePicture(sample.path, kSize, name, sample.shaping);
  ASSERT_FALSE(reference.pixels.empty());
  const TemporaryFolder folder;
  WriteFile(folder / "saved.pdf", PageWith(sample, name));
  for (const Renderer renderer : RenderersOf(sample)) {
    if (const std::string reason = ReasonToLeaveOut(renderer); !reason.empty()) GTEST_SKIP() << reason;
    const double share = CommonInk(reference, DrawnBy(renderer, folder / "saved.pdf"));
    EXPECT_GE(share, kLeast) << name << " by " << testing::PrintToString(renderer);
    RecordProperty(testing::PrintToString(renderer), std::to_string(share));
  }
}

INSTANTIATE_TEST_SUITE_P(Names, PictureTest, testing::ValuesIn(PicturedSamples()),
                         [](const auto &made) { return NameOf(made.param); });

}  // namespace
}  // namespace quillbar::test
