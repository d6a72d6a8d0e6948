// SPDX-License-Identifier: MIT
// The plugin and unmodified libharu side by side: random calls do the same in both, apart from intended differences.
//
// QUILLBAR_DIFFERENTIAL_CALLS is the number of calls in all (50,000 by default, 15,000 under sanitizers),
// QUILLBAR_DIFFERENTIAL_SEED the first seed of the sequences.
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

#include "tests/differential/judge.h"
#include "tests/differential/standard_fonts.h"
#include "tests/plugin/driver/plugin_test.h"
#include "tests/support/sample.h"

namespace quillbar::differential {
namespace {

class Differential : public test::PluginTest {};

std::uint64_t NumberFromEnvironment(const char *name, std::uint64_t otherwise) {
  const char *text = std::getenv(name);
  return text == nullptr ? otherwise : std::strtoull(text, nullptr, 10);
}

const std::uint64_t kCalls = test::TakesSamples() ? 15'000 : 50'000;

// In parts, so that they can run in parallel.
constexpr int kParts = 5;
class DifferentialPart : public Differential, public testing::WithParamInterface<int> {};

TEST_P(DifferentialPart, RandomCallsDoWhatTheLibraryDoes) {
  constexpr std::uint64_t kSeedsOfAPart = 100'000'000;
  constexpr int kMostFindings = 3;
  const std::uint64_t wanted = NumberFromEnvironment("QUILLBAR_DIFFERENTIAL_CALLS", kCalls) / kParts;
  std::uint64_t seed =
      NumberFromEnvironment("QUILLBAR_DIFFERENTIAL_SEED", 1) + kSeedsOfAPart * static_cast<std::uint64_t>(GetParam());
  Judge judge(host());
  int findings = 0;
  std::uint64_t calls = 0;
  for (; calls < wanted && findings < kMostFindings; ++seed) {
    Sequence sequence;
    if (const auto finding = judge.JudgeRandomCalls(seed, sequence)) {
      ++findings;
      ADD_FAILURE() << judge.Report(seed, sequence, *finding);
    }
    calls += sequence.calls.size();
    ASSERT_TRUE(findings > 0 || !HasFailure()) << "seed " << seed;
  }
  EXPECT_TRUE(calls >= wanted || findings > 0);
  RecordProperty("calls", std::to_string(calls));
}

INSTANTIATE_TEST_SUITE_P(Parts, DifferentialPart, testing::Range(0, kParts));

TEST_F(Differential, EveryStandardFontMeasuresInEveryEncodingAsInTheLibrary) {
  Judge judge(host());
  for (const char *name : kStandardFonts) {
    for (const EncodingChoice &encoding : kEncodings) {
      SCOPED_TRACE(std::string(name) + ", encoding " + std::to_string(encoding.number));
      const FontChoice choice{name, encoding.number};
      const Sequence sequence{{choice, choice, choice}, {}};
      const LibraryPage page(sequence, {},
                             [&](const FontChoice &font) -> const Widths & { return judge.WidthsOf(font); });
      EXPECT_THAT(page.WrongWidths(), testing::IsEmpty());

      const HPDF_Font expected = page.Fonts()[0];
      const HPDF_Box box = HPDF_Font_GetBBox(expected);
      const test::Document document = NewDocument();
      const test::ScriptObject font = document.GetFont(name, encoding.number);
      EXPECT_EQ(font.GetString("Name"), HPDF_Font_GetFontName(expected));
      EXPECT_EQ(font.GetInteger("Ascent"), HPDF_Font_GetAscent(expected));
      EXPECT_EQ(font.GetInteger("Descent"), HPDF_Font_GetDescent(expected));
      EXPECT_EQ(font.GetSingle("BoundingBoxLeft"), box.left);
      EXPECT_EQ(font.GetSingle("BoundingBoxBottom"), box.bottom);
      EXPECT_EQ(font.GetSingle("BoundingBoxRight"), box.right);
      EXPECT_EQ(font.GetSingle("BoundingBoxTop"), box.top);
    }
  }
}

class IntendedDifferenceTest : public Differential, public testing::WithParamInterface<DifferenceDescription> {};

// An entry that nothing needs any more must leave the table.
TEST_P(IntendedDifferenceTest, IsStillNeeded) {
  constexpr std::uint64_t kSequences = 2000;
  IntendedDifferences differences;
  differences.Disallow(GetParam().difference);
  Judge judge(host(), differences);
  bool isNeeded = false;
  for (std::uint64_t seed = 1; seed <= kSequences && !isNeeded; ++seed) {
    Sequence sequence;
    isNeeded = judge.JudgeRandomCalls(seed, sequence).has_value();
  }
  EXPECT_TRUE(isNeeded) << GetParam().where;
}

INSTANTIATE_TEST_SUITE_P(Table, IntendedDifferenceTest,
                         testing::ValuesIn(AllIntendedDifferences().begin(), AllIntendedDifferences().end()),
                         [](const auto &one) { return std::string(one.param.name); });

TEST_F(Differential, TableOfIntendedDifferencesIsInTheDocumentation) {
  std::ifstream file(QUILLBAR_DIFFERENCES_PAGE);
  const std::string page{std::istreambuf_iterator<char>(file), {}};
  EXPECT_NE(page.find("\n\n" + TableOfIntendedDifferences() + "\n"), std::string::npos)
      << "docs/differences.md should hold this table:\n\n"
      << TableOfIntendedDifferences();
}

}  // namespace
}  // namespace quillbar::differential
