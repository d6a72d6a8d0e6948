// SPDX-License-Identifier: MIT
// Where lines may be broken besides at white space: Unicode's own test for East Asian text, and what it leaves open.
#include "plugin/engine/layout/line_breaks.h"

#include <gmock/gmock.h>

#include <string>
#include <string_view>

#include "tests/plugin/engine/layout/unicode_data.h"

namespace quillbar::engine {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

bool IsWhiteSpace(char32_t c) { return c == 0 || c == '\t' || c == '\n' || c == '\f' || c == '\r' || c == ' '; }

// What is said before each character.
std::vector<LineBreak> BreaksOf(std::u32string_view text) {
  LineBreaker breaker;
  std::vector<LineBreak> breaks;
  for (const char32_t character : text) breaks.push_back(breaker.Before(character));
  return breaks;
}

// The text in parts between its breaks, in an emergency or not; breaks after white space are not told.
std::vector<std::u32string> Parts(std::u32string_view text, bool isEmergency = false) {
  const std::vector<LineBreak> breaks = BreaksOf(text);
  std::vector<std::u32string> parts;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool isBroken = breaks[i] == LineBreak::kAllowed || (isEmergency && breaks[i] == LineBreak::kEmergency);
    if (i == 0 || isBroken) parts.emplace_back();
    parts.back() += text[i];
  }
  return parts;
}

// Ideographs, kana, Hangul and their punctuation, as far as the test file has them or they take the place of its
// samples.
bool IsEastAsian(char32_t c) {
  return (c >= 0x1100 && c <= 0x11FF) || (c >= 0x2E80 && c <= 0x9FFF) || (c >= 0xAC00 && c <= 0xD7FF) ||
         (c >= 0xFF00 && c <= 0xFFEF) || (c >= 0x20000 && c <= 0x3FFFD);
}

// A place of Unicode's test file: a sample for each side, and whether a line may be broken between them.
struct Sample {
  char32_t character;
  std::string itsClass;
  bool isBrokenBefore;
};

// "× 0023 ÷ 2014 ÷	#  × [0.3] NUMBER SIGN (AL) ÷ [999.0] EM DASH (B2) ÷ [0.3]"
std::vector<Sample> SamplesOf(std::string_view line) {
  const std::size_t comment = line.find('#');
  const std::vector<std::string> words = test::Words(line.substr(0, comment));
  std::vector<Sample> samples;
  std::size_t at = comment;
  for (std::size_t i = 1; i + 1 < words.size(); i += 2) {
    // The class stands in parentheses before the next sign; names have none of these signs.
    const std::size_t close = std::min(line.find(") \u00D7", at), line.find(") \u00F7", at));
    const std::size_t open = line.rfind('(', close);
    const std::string_view name = line.substr(open + 1, close - open - 1);
    samples.push_back(
        {test::CodePoint(words[i]), std::string(name.substr(name.find('_') + 1)), words[i - 1] == "\u00F7"});
    at = close + 1;
  }
  return samples;
}

bool IsMark(const Sample &sample) { return sample.itsClass == "CM" || sample.itsClass == "ZWJ"; }

// A line of the file.
struct Case {
  std::string line;
  std::vector<Sample> samples;
};

std::vector<Case> UnicodeCases() {
  std::vector<Case> cases;
  for (const std::string_view line : test::UnicodeLines("auxiliary/LineBreakTest.txt")) {
    cases.push_back({std::string(line), SamplesOf(line)});
  }
  return cases;
}

struct Compared {
  int places = 0;
  int breaks = 0;
  int leftOut = 0;
};

// Compares every place beside an East Asian character, or beside one with marks, that isn't after white space; at
// others none must be allowed, but for South East Asian letters after a zero width space. Where `ideograph` is given, it takes the place of the file's sample of class ID.
Compared CompareWithUnicode(const std::vector<Case> &cases, char32_t ideograph) {
  Compared compared;
  for (const auto &[line, samples] : cases) {
    std::u32string text;
    for (const Sample &sample : samples) {
      text += ideograph != 0 && sample.itsClass == "ID" ? ideograph : sample.character;
    }
    const std::vector<LineBreak> breaks = BreaksOf(text);
    bool isAfterEastAsian = IsEastAsian(text[0]);
    for (std::size_t i = 1; i < samples.size(); ++i) {
      const Sample &left = samples[i - 1], &right = samples[i];
      const bool belongs = isAfterEastAsian && (IsMark(right) || right.itsClass == "ZW");
      const bool isEastAsian = isAfterEastAsian || IsEastAsian(text[i]);
      isAfterEastAsian = (IsEastAsian(text[i]) || belongs) && !IsWhiteSpace(text[i]);
      if (IsWhiteSpace(text[i - 1]) || IsWhiteSpace(text[i]) || !isEastAsian) {
        const bool isDivided = left.itsClass == "ZW" && right.isBrokenBefore;
        EXPECT_TRUE(isDivided || breaks[i] != LineBreak::kAllowed) << line << " at " << i;
        continue;
      }
      // The test is for a rule of numbers (example 7 of the annex's section 8.2) that breaks between these; its own
      // rule LB25 doesn't.
      const auto isOneOf = [](const Sample &sample, const char *one, const char *other) {
        return sample.itsClass == one || sample.itsClass == other;
      };
      if (isOneOf(left, "CL", "CP") && isOneOf(right, "PR", "PO")) {
        ++compared.leftOut;
        continue;
      }
      ++compared.places;
      compared.breaks += right.isBrokenBefore ? 1 : 0;
      EXPECT_EQ(breaks[i], right.isBrokenBefore ? LineBreak::kAllowed : LineBreak::kNone) << line << " at " << i;
    }
  }
  return compared;
}

TEST(LineBreaks, PassUnicodesTestAroundEastAsianCharacters) {
  QUILLBAR_NEEDS_UNICODE_DATA();
  const std::string version = test::UnicodeVersionOf("auxiliary/LineBreakTest.txt");
  if (!version.starts_with("15.0"))
    GTEST_SKIP() << "the rules are those of Unicode 15.0, and the installed test is for " << version;
  const std::vector<Case> cases = UnicodeCases();
  const Compared own = CompareWithUnicode(cases, 0);
  RecordProperty("places", own.places);
  EXPECT_GT(own.places, 1500);
  EXPECT_GT(own.breaks, 500);
  EXPECT_LT(own.leftOut, own.places / 20);
  // The file's sample of class ID is a picture.
  for (const char32_t ideograph : {char32_t{0x4E00}, char32_t{0x3042}, char32_t{0x20000}, char32_t{0xFF21}}) {
    EXPECT_GT(CompareWithUnicode(cases, ideograph).places, own.places + 200);
  }
}

TEST(LineBreaks, StandBetweenIdeographsKanaAndHangul) {
  EXPECT_THAT(Parts(U"日本語テキスト한국어"),
              ElementsAre(U"日", U"本", U"語", U"テ", U"キ", U"ス", U"ト", U"한", U"국", U"어"));
  EXPECT_THAT(Parts(U"第12章PDF、ok"), ElementsAre(U"第", U"12", U"章", U"PDF、", U"ok"));
  EXPECT_THAT(Parts(U"漢 字"), ElementsAre(U"漢 字")) << "after the blank there is a break anyway";
}

TEST(LineBreaks, KeepPunctuationOffTheWrongEndOfALine) {
  EXPECT_THAT(Parts(U"「東京」、と。"), ElementsAre(U"「東", U"京」、", U"と。"));
  EXPECT_THAT(Parts(U"（大）（小）"), ElementsAre(U"（大）", U"（小）"));
  EXPECT_THAT(Parts(U"你好，世界！"), ElementsAre(U"你", U"好，", U"世", U"界！"));
  EXPECT_THAT(Parts(U"人々ちょっとコーヒー"), ElementsAre(U"人々", U"ちょっ", U"と", U"コー", U"ヒー"));
  EXPECT_THAT(Parts(U"ｺｰﾋｰ｡"), ElementsAre(U"ｺｰ", U"ﾋｰ｡"));
  EXPECT_THAT(Parts(U"￥100と50％"), ElementsAre(U"￥100", U"と", U"50％"));
}

TEST(LineBreaks, LeaveWordsOfOtherScriptsWhole) {
  for (const std::u32string_view text :
       {U"well-known e-mail", U"a/b\u2013c \u201Cd\u201D\u2026", U"\u0645\u0631\u062D\u0628\u0627",
        U"\u0928\u092E\u0938\u094D\u0924\u0947", U"naive\u0308te\u0301-x", U"\U0001F600\U0001F601a\U0001F1E9\U0001F1EA",
        U"\u0F56\u0F7C\u0F51\u0F0B\u0F61\u0F72\u0F42", U"a\u200Bb", U"a\u00ADb"}) {
    EXPECT_THAT(Parts(text, true), ElementsAre(std::u32string(text)));
  }
  EXPECT_THAT(Parts(U"", true), IsEmpty());
}

TEST(LineBreaks, SeeWhatCameBeforeAnIdeograph) {
  EXPECT_THAT(Parts(U"(漢)"), ElementsAre(U"(漢)"));
  EXPECT_THAT(Parts(U"abcdefghijkl((漢"), ElementsAre(U"abcdefghijkl((漢"));
  EXPECT_THAT(Parts(U"abcdefghijkl漢"), ElementsAre(U"abcdefghijkl", U"漢"));
  EXPECT_THAT(Parts(U"漢abcdefghijklmno(漢"), ElementsAre(U"漢", U"abcdefghijklmno(漢"));
  EXPECT_THAT(Parts(U"a\u00A0漢"), ElementsAre(U"a\u00A0漢")) << "a blank that doesn't break";
  EXPECT_THAT(Parts(U"漢\u2060字"), ElementsAre(U"漢\u2060字")) << "a word joiner";
  EXPECT_THAT(Parts(U"漢\u0301\u0302字"), ElementsAre(U"漢\u0301\u0302", U"字"));
  EXPECT_THAT(Parts(U"\u05D0-漢"), ElementsAre(U"\u05D0-漢"));
  EXPECT_THAT(Parts(U"( 漢"), ElementsAre(U"( 漢"));
}

TEST(LineBreaks, StandBetweenClustersOfSouthEastAsianScriptsInAnEmergency) {
  EXPECT_THAT(Parts(U"ภาษาไทยนี้"), ElementsAre(U"ภาษาไทยนี้"));
  // Thai: marks, vowels that follow, vowels that go before, the sign of repetition.
  EXPECT_THAT(Parts(U"ภาษาไทยนี้น้ำเก่าๆ", true), ElementsAre(U"ภา", U"ษา", U"ไท", U"ย", U"นี้", U"น้ำ", U"เก่าๆ"));
  EXPECT_THAT(Parts(U"ພາສາລາວແມ່ນ", true), ElementsAre(U"ພາ", U"ສາ", U"ລາ", U"ວ", U"ແມ່", U"ນ"));
  // Khmer and Myanmar: consonants below others.
  EXPECT_THAT(Parts(U"ភាសាខ្មែរ", true), ElementsAre(U"ភា", U"សា", U"ខ្មែ", U"រ"));
  EXPECT_THAT(Parts(U"မြန်မာဘာသာပစ္စည်း", true), ElementsAre(U"မြ", U"န်", U"မာ", U"ဘာ", U"သာ", U"ပ", U"စ္စ", U"ည်း"));
  EXPECT_THAT(Parts(U"ไทย(กข)abกข12๓๔ฯ", true), ElementsAre(U"ไท", U"ย", U"(ก", U"ข)ab", U"ก", U"ข", U"12๓๔ฯ"));
}

TEST(LineBreaks, ZeroWidthSpaceDividesWords) {
  EXPECT_THAT(Parts(U"ភាសា\u200Bខ្មែរ"), ElementsAre(U"ភាសា\u200B", U"ខ្មែរ"));
  EXPECT_THAT(Parts(U"漢、\u200B。"), ElementsAre(U"漢、\u200B", U"。"));
}

// The table of what is attached to a letter has every mark of these scripts.
TEST(LineBreaks, NeverStandBeforeAMark) {
  QUILLBAR_NEEDS_UNICODE_DATA();
  const std::string version = test::UnicodeVersionOf("auxiliary/LineBreakTest.txt");
  if (!version.starts_with("15.")) GTEST_SKIP() << "the table is of Unicode 15, and the installed data of " << version;
  int marks = 0;
  for (const std::string_view line : test::UnicodeLines("UnicodeData.txt")) {
    if (line.find(";M") == std::string_view::npos) continue;
    const std::vector<std::string> fields = test::Fields(line);
    const char32_t mark = test::CodePoint(fields.at(0));
    // Those of Tai scripts stand among letters of their own.
    const bool isTai = (mark >= 0x1950 && mark <= 0x1AAF) || (mark >= 0xAA80 && mark <= 0xAADF) ||
                       (mark >= 0x11700 && mark <= 0x1174F);
    if (fields.at(2).front() != 'M' || isTai) continue;
    ++marks;
    for (const char32_t letter : {U'\u0E01', U'\u0E81', U'\u1000', U'\u1780', U'\u4E00', U'\u3042', U'a'}) {
      ASSERT_EQ(BreaksOf(std::u32string{letter, mark})[1], LineBreak::kNone) << test::NameOf(mark);
    }
  }
  EXPECT_GT(marks, 2000);
}

TEST(LineBreaks, NumbersThatAreNoCharactersAreHarmless) {
  const std::u32string text{0xFFFFFFFF, 0x4E00, 0xD800, 0x4E01, 0x110000, 0x0E01, 0xFFFF, 0x0E02};
  EXPECT_EQ(BreaksOf(text).size(), text.size());
}

TEST(LineBreaks, AreNoneBesideWhiteSpaceOfAnyKind) {
  for (const char32_t space : {U'\0', U'\t', U'\n', U'\f', U'\r', U' '}) {
    const std::u32string text{0x6F22, space, 0x5B57, 0x5B57};
    EXPECT_THAT(BreaksOf(text),
                testing::ElementsAre(LineBreak::kNone, LineBreak::kNone, LineBreak::kNone, LineBreak::kAllowed))
        << static_cast<unsigned>(space);
  }
}

// A text that is begun in the middle, as that of a line is, has the same breaks.
TEST(LineBreaks, DontDependOnWhereALineBegins) {
  const std::u32string text = U"これは「PDF」、日本語（テスト）です。ภาษาไทยPDF한국어12kg、ok(漢)";
  const std::vector<LineBreak> whole = BreaksOf(text);
  for (std::size_t start = 1; start < text.size(); ++start) {
    if (whole[start] == LineBreak::kNone) continue;
    const std::vector<LineBreak> rest = BreaksOf(std::u32string_view(text).substr(start));
    EXPECT_EQ(std::vector<LineBreak>(whole.begin() + static_cast<std::ptrdiff_t>(start) + 1, whole.end()),
              std::vector<LineBreak>(rest.begin() + 1, rest.end()))
        << start;
  }
}

}  // namespace
}  // namespace quillbar::engine
