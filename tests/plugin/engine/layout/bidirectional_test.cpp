// SPDX-License-Identifier: MIT
// The order of characters in lines: Unicode's own tests, and what they leave open.
#include "plugin/engine/layout/bidirectional.h"

#include <gmock/gmock.h>

#include <chrono>
#include <map>
#include <optional>
#include <set>

#include "tests/plugin/engine/layout/unicode_data.h"
#include "tests/support/sample.h"

namespace quillbar::engine {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct Order {
  std::vector<std::uint8_t> levels;  // by character of the line
  std::vector<std::size_t> shown;    // characters from left to right

  bool operator==(const Order &) const = default;
};

// What runs say; empty if they don't cover the line, each character once.
Order OrderOf(const std::vector<VisualRun> &runs, std::size_t start, std::size_t length) {
  constexpr std::uint8_t kUnseen = 0xFF;
  Order order;
  order.levels.resize(length, kUnseen);
  for (const VisualRun &run : runs) {
    for (std::size_t i = 0; i < run.length; ++i) {
      const std::size_t index = run.start + (run.IsRightToLeft() ? run.length - 1 - i : i);
      if (index < start || index >= start + length || order.levels[index - start] != kUnseen) return {};
      order.levels[index - start] = run.level;
      order.shown.push_back(index);
    }
  }
  return order.shown.size() == length ? order : Order();
}

// One case of Unicode's: levels, of which those of characters without a level are left open, and the order without
// these.
struct Expected {
  std::vector<std::optional<std::uint8_t>> levels;
  std::vector<std::size_t> shown;
};

std::vector<std::optional<std::uint8_t>> LevelsOf(std::string_view text) {
  std::vector<std::optional<std::uint8_t>> levels;
  for (const std::string &word : test::Words(text)) {
    levels.push_back(word == "x" ? std::nullopt : std::optional(static_cast<std::uint8_t>(std::stoi(word))));
  }
  return levels;
}

std::vector<std::size_t> OrderedBy(std::string_view text) {
  std::vector<std::size_t> order;
  for (const std::string &word : test::Words(text)) order.push_back(std::stoul(word));
  return order;
}

testing::AssertionResult Follows(std::u32string_view text, BaseDirection base, const Expected &expected) {
  const Order order = OrderOf(BidirectionalParagraph(text, base).RunsOfLine(0, text.size()), 0, text.size());
  if (order.levels.size() != text.size()) return testing::AssertionFailure() << "the runs are not the line";
  std::vector<std::size_t> shown;
  for (const std::size_t index : order.shown) {
    if (expected.levels[index]) shown.push_back(index);
  }
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (expected.levels[i] && *expected.levels[i] != order.levels[i])
      return testing::AssertionFailure() << "character " << i << " has level " << int{order.levels[i]};
  }
  if (shown != expected.shown) return testing::AssertionFailure() << "shown as " << testing::PrintToString(shown);
  return testing::AssertionSuccess();
}

// A character of each class; none of them is a bracket.
const std::map<std::string, char32_t> kSamples{
    {"L", U'a'},     {"R", 0x05D0},   {"AL", 0x0627},  {"EN", U'1'},    {"ES", U'+'},    {"ET", U'$'},
    {"AN", 0x0661},  {"CS", U','},    {"NSM", 0x0300}, {"BN", 0x00AD},  {"B", 0x2029},   {"S", U'\t'},
    {"WS", U' '},    {"ON", U'!'},    {"LRE", 0x202A}, {"LRO", 0x202D}, {"RLE", 0x202B}, {"RLO", 0x202E},
    {"PDF", 0x202C}, {"LRI", 0x2066}, {"RLI", 0x2067}, {"FSI", 0x2068}, {"PDI", 0x2069},
};

// Unicode's own tests have 800,000 cases, in an order that a prime number steps across.
const int kOneCaseOf = test::TakesSamples() ? 61 : 1;

TEST(Bidirectional, PassesUnicodesTestOfClasses) {
  QUILLBAR_NEEDS_UNICODE_DATA();
  Expected expected;
  int lines = 0, cases = 0, failures = 0;
  for (const std::string_view line : test::UnicodeLines("BidiTest.txt")) {
    if (line.starts_with("@Levels:")) expected.levels = LevelsOf(line.substr(8));
    if (line.starts_with("@Reorder:")) expected.shown = OrderedBy(line.substr(9));
    if (line.front() == '@' || lines++ % kOneCaseOf != 0) continue;
    const std::vector<std::string> fields = test::Fields(line);
    ASSERT_EQ(fields.size(), 2u) << line;
    std::u32string text;
    for (const std::string &name : test::Words(fields[0])) text += kSamples.at(name);
    const int directions = std::stoi(fields[1], nullptr, 16);
    for (const auto &[bit, base] : {std::pair{1, BaseDirection::kAutomatic}, std::pair{2, BaseDirection::kLeftToRight},
                                    std::pair{4, BaseDirection::kRightToLeft}}) {
      if ((directions & bit) == 0) continue;
      ++cases;
      const testing::AssertionResult result = Follows(text, base, expected);
      if (!result && ++failures < 10) ADD_FAILURE() << line << " bit " << bit << ": " << result.message();
    }
  }
  EXPECT_EQ(failures, 0);
  EXPECT_GT(cases, 700'000 / kOneCaseOf);
}

TEST(Bidirectional, PassesUnicodesTestOfCharacters) {
  QUILLBAR_NEEDS_UNICODE_DATA();
  int lines = 0, cases = 0, failures = 0;
  for (const std::string_view line : test::UnicodeLines("BidiCharacterTest.txt")) {
    if (lines++ % kOneCaseOf != 0) continue;
    const std::vector<std::string> fields = test::Fields(line);
    ASSERT_GE(fields.size(), 4u) << line;
    std::u32string text;
    for (const std::string &code : test::Words(fields[0])) text += test::CodePoint(code);
    constexpr BaseDirection kBases[] = {BaseDirection::kLeftToRight, BaseDirection::kRightToLeft,
                                        BaseDirection::kAutomatic};
    const BaseDirection base = kBases[std::stoi(fields[1])];
    const Expected expected{LevelsOf(fields[3]), fields.size() > 4 ? OrderedBy(fields[4]) : std::vector<std::size_t>()};
    ++cases;
    testing::AssertionResult result = Follows(text, base, expected);
    if (result && BidirectionalParagraph(text, base).IsRightToLeft() != (fields[2] == "1"))
      result = testing::AssertionFailure() << "the paragraph has the other direction";
    if (!result && ++failures < 10) ADD_FAILURE() << line << ": " << result.message();
  }
  EXPECT_EQ(failures, 0);
  EXPECT_GT(cases, 90'000 / kOneCaseOf);
}

TEST(Bidirectional, MirrorsWhatUnicodeMirrors) {
  QUILLBAR_NEEDS_UNICODE_DATA();
  std::map<char32_t, char32_t> pairs;
  for (const std::string_view line : test::UnicodeLines("BidiMirroring.txt")) {
    const std::vector<std::string> fields = test::Fields(line.substr(0, line.find('#')));
    pairs[test::CodePoint(fields.at(0))] = test::CodePoint(fields.at(1));
  }
  EXPECT_GT(pairs.size(), 300u);
  // One expectation for all characters: so many would take most of the test's time.
  std::map<char32_t, char32_t> mirrored;
  for (char32_t character = 0; character <= 0x110010; ++character) {
    const char32_t other = MirroredCharacter(character);
    if (other != character) mirrored[character] = other;
  }
  EXPECT_EQ(mirrored, pairs);
  EXPECT_EQ(MirroredCharacter(0xFFFFFFFF), 0xFFFFFFFF);
}

TEST(Bidirectional, MarksAreUnicodesBidirectionalControls) {
  QUILLBAR_NEEDS_UNICODE_DATA();
  std::set<char32_t> marks;
  for (const std::string_view line : test::UnicodeLines("PropList.txt")) {
    const std::vector<std::string> fields = test::Fields(line.substr(0, line.find('#')));
    if (fields.size() < 2 || fields[1] != "Bidi_Control") continue;
    const std::size_t dots = fields[0].find("..");
    const char32_t first = test::CodePoint(fields[0].substr(0, dots));
    const char32_t last = dots == std::string::npos ? first : test::CodePoint(fields[0].substr(dots + 2));
    for (char32_t mark = first; mark <= last; ++mark) marks.insert(mark);
  }
  EXPECT_EQ(marks.size(), 12u);
  std::set<char32_t> known, found;
  std::u32string text = U"a ";
  for (char32_t character = 0; character <= 0x10FFFF; ++character) {
    text[1] = character;
    if (IsDirectionalMark(character)) known.insert(character);
    if (HasDirectionalMark(text)) found.insert(character);
  }
  EXPECT_EQ(known, marks);
  EXPECT_EQ(found, marks);
  EXPECT_FALSE(HasDirectionalMark(U""));
}

constexpr std::u32string_view kMark = U"\u200F", kAlef = U"\u05D0", kBet = U"\u05D1";

TEST(Bidirectional, MarkAtTheStartMakesTheParagraphRunFromRightToLeft) {
  const std::u32string text = std::u32string(kMark) + U"abc " + std::u32string(kAlef);
  const BidirectionalParagraph paragraph(text);
  EXPECT_TRUE(paragraph.IsRightToLeft());
  EXPECT_THAT(paragraph.RunsOfLine(0, text.size()),
              ElementsAre(VisualRun{4, 2, 1}, VisualRun{1, 3, 2}, VisualRun{0, 1, 1}));
  EXPECT_FALSE(BidirectionalParagraph(U"abc").IsRightToLeft());
  EXPECT_FALSE(BidirectionalParagraph(U"12").IsRightToLeft());
  EXPECT_TRUE(BidirectionalParagraph(U"\u061C 12").IsRightToLeft());
}

TEST(Bidirectional, EachLineOfAParagraphIsOrderedByItself) {
  const std::u32string text = std::u32string(kAlef) + U"b c " + std::u32string(kBet) + U" d";
  const BidirectionalParagraph paragraph(text);
  // The blank at the end of the first line is at its left end, on the side where the line ends.
  EXPECT_THAT(paragraph.RunsOfLine(0, 5), ElementsAre(VisualRun{4, 1, 1}, VisualRun{1, 3, 2}, VisualRun{0, 1, 1}));
  EXPECT_THAT(paragraph.RunsOfLine(5, 3), ElementsAre(VisualRun{7, 1, 2}, VisualRun{5, 2, 1}));
  EXPECT_THAT(paragraph.RunsOfLine(5, 0), IsEmpty());
}

TEST(Bidirectional, CountsCharactersAndNotCodeUnits) {
  const std::u32string text = U"\U0001F600\u200F\U0001F600\u05D0\U00010900!";
  const std::vector<VisualRun> runs = BidirectionalParagraph(text, BaseDirection::kLeftToRight).RunsOfLine(0, 6);
  EXPECT_THAT(runs, ElementsAre(VisualRun{0, 1, 0}, VisualRun{1, 4, 1}, VisualRun{5, 1, 0}));
  EXPECT_THAT(BidirectionalParagraph(text, BaseDirection::kLeftToRight).RunsOfLine(2, 2),
              ElementsAre(VisualRun{2, 2, 1}));
}

TEST(Bidirectional, LineEndsInsideCountAsTabs) {
  const std::u32string text = std::u32string(kAlef) + U"\nb";
  EXPECT_THAT(BidirectionalParagraph(text).RunsOfLine(0, 3), ElementsAre(VisualRun{2, 1, 2}, VisualRun{0, 2, 1}));
}

TEST(Bidirectional, NumbersThatAreNoCharactersAreHarmless) {
  const std::u32string text{0xD800, 0xDFFF, 0x110000, 0xFFFFFFFF, 0x05D0, 0, 0xFFFE};
  EXPECT_EQ(OrderOf(BidirectionalParagraph(text).RunsOfLine(0, text.size()), 0, text.size()).shown.size(), text.size());
  EXPECT_THAT(BidirectionalParagraph(U"").RunsOfLine(0, 0), IsEmpty());
}

TEST(Bidirectional, PairsSixtyThreeBracketsThatAreOpenAtOnce) {
  // The bracket at the end is of the "a" before it if it belongs to a pair, and of the paragraph if not.
  for (const auto &[open, level] : {std::pair{62, 2}, std::pair{63, 1}}) {
    const std::u32string text = std::u32string(kAlef) + std::u32string(static_cast<std::size_t>(open), U'[') + U"a(b)";
    EXPECT_EQ(OrderOf(BidirectionalParagraph(text).RunsOfLine(0, text.size()), 0, text.size()).levels.back(), level)
        << open;
  }
}

TEST(Bidirectional, EndOfAnEmbeddingInsideIsolatesThatAreTooDeepEndsNone) {
  const std::u32string deep(130, U'\u2067'), ends(130, U'\u2069');
  // The letter is in the embedding still, and after its real end in the paragraph.
  const std::u32string text = U"\u202B" + deep + U"\u202C" + ends + U"a\u202Cb";
  const std::vector<std::uint8_t> levels =
      OrderOf(BidirectionalParagraph(text, BaseDirection::kLeftToRight).RunsOfLine(0, text.size()), 0, text.size())
          .levels;
  ASSERT_EQ(levels.size(), text.size());
  EXPECT_EQ(levels[text.size() - 3], 2);
  EXPECT_EQ(levels[text.size() - 1], 0);
}

// Time that grows with the square of such texts would be minutes. In proportion to them it is a tenth of a second, and
// some seconds where the machine has ten times as much to do, or a sanitizer looks on.
TEST(Bidirectional, TakesTimeInProportionToTheText) {
  const std::size_t length = test::TakesSamples() ? 100'000 : 400'000;
  for (const std::u32string_view part :
       {U"(", U"(]", U"\u2067", U"\u2068", U"\u202B", U"a\u05D0", U"\u2067\u2069", U"\u0300", U"(!", U"[a]\u05D0(",
        U"\u202B(\u202C", U"\u2067(\u2069)", U"\u05D01)"}) {
    std::u32string text(U"\u05D0(");
    while (text.size() < length) text += part;
    const auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(BidirectionalParagraph(text).RunsOfLine(0, text.size()).empty());
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(30)) << test::NameOf(part[0]);
  }
}

}  // namespace
}  // namespace quillbar::engine
