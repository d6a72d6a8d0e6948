// SPDX-License-Identifier: MIT
// The encodings of GetFont: the whole table, and the characters of each single-byte encoding in a saved file.
#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <sstream>

#include "tests/plugin/driver/plugin_test.h"
#include "tests/support/judges.h"
#include "tests/support/process.h"

namespace quillbar::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::int64_t kCp1255 = 30;

struct Encoding {
  std::int64_t value;
  const char *member;
  const char *charset;     // iconv's name
  const char *nameInFile;  // the encoding's name when PDF has one, else null: the file lists differences
};

constexpr Encoding kEncodings[] = {
    {0, "MAC_ROMAN", "MACINTOSH", "/MacRomanEncoding"},
    {1, "WINDOWS_ANSI", "CP1252", "/WinAnsiEncoding"},
    {2, "ISO8859_2", "ISO-8859-2", nullptr},
    {3, "ISO8859_3", "ISO-8859-3", nullptr},
    {4, "ISO8859_4", "ISO-8859-4", nullptr},
    {5, "ISO8859_5", "ISO-8859-5", nullptr},
    {6, "ISO8859_6", "ISO-8859-6", nullptr},
    {7, "ISO8859_7", "ISO-8859-7", nullptr},
    {8, "ISO8859_8", "ISO-8859-8", nullptr},
    {9, "ISO8859_9", "ISO-8859-9", nullptr},
    {10, "ISO8859_10", "ISO-8859-10", nullptr},
    {13, "ISO8859_13", "ISO-8859-13", nullptr},
    {14, "ISO8859_14", "ISO-8859-14", nullptr},
    {15, "ISO8859_15", "ISO-8859-15", nullptr},
    {25, "CP1250", "CP1250", nullptr},
    {26, "CP1251", "CP1251", nullptr},
    {27, "CP1252", "CP1252", nullptr},
    {28, "CP1253", "CP1253", nullptr},
    {29, "CP1254", "CP1254", nullptr},
    {30, "CP1255", "CP1255", nullptr},
    {31, "CP1256", "CP1256", nullptr},
    {32, "CP1257", "CP1257", nullptr},
    {33, "CP1258", "CP1258", nullptr},
    {40, "KOI8_R", "KOI8-R", nullptr},
    {100, "AUTOMATIC", "CP1252", "/WinAnsiEncoding"},
};

constexpr unsigned kFirstByte = 0x20;

// The characters of a charset's bytes from kFirstByte on, in UTF-8; empty where the charset has none.
std::vector<std::string> CharactersOf(const std::string &charset) {
  // Each on a line of its own: some charsets hold a letter back until they know whether an accent follows,
  // and what a byte without a character leaves is an empty line.
  std::string lines;
  for (unsigned byte = kFirstByte; byte < 0x100; ++byte) lines += {static_cast<char>(byte), '\n'};
  const ProcessResult result = RunProcess({"iconv", "-c", "-f", charset, "-t", "UTF-8"}, {.input = std::move(lines)});
  std::vector<std::string> characters;
  std::istringstream stream(result.output);
  for (std::string line; std::getline(stream, line);) characters.push_back(line);
  EXPECT_EQ(characters.size(), 0x100 - kFirstByte) << charset << ": " << result.errors;
  characters.resize(0x100 - kFirstByte);
  return characters;
}

// The character of a byte, as the C library's own program says.
std::string CharacterOf(const std::string &charset, unsigned byte) {
  // Apple's table, where the C library has an older one.
  if (charset == "MACINTOSH" && byte == 0xC6) return "\u2206";
  if (charset == "MACINTOSH" && byte == 0xF0) return "\uF8FF";
  static std::map<std::string, std::vector<std::string>> known;
  const auto [entry, isNew] = known.try_emplace(charset);
  if (isNew) entry->second = CharactersOf(charset);
  return entry->second.at(byte - kFirstByte);
}

// Readers mark where the direction of writing changes: U+202A to U+202C.
std::string WithoutDirectionMarks(std::string text) {
  for (const char *mark : {"\u202A", "\u202B", "\u202C"}) {
    for (std::size_t at = text.find(mark); at != std::string::npos; at = text.find(mark)) text.erase(at, 3);
  }
  return text;
}

class Encodings : public PluginTest {};

TEST_F(Encodings, AreTheMembersOfTheEnumeration) {
  const host::EnumerationInfo *enumeration = host().registry().FindEnumeration("Font.FontEncodingEnum");
  ASSERT_NE(enumeration, nullptr);
  ASSERT_EQ(enumeration->members.size(), std::size(kEncodings));
  for (std::size_t index = 0; index < std::size(kEncodings); ++index) {
    EXPECT_EQ(enumeration->members[index].name, kEncodings[index].member);
    EXPECT_EQ(enumeration->members[index].value, kEncodings[index].value);
  }
}

TEST_F(Encodings, EveryOtherValueGivesNilInSilence) {
  const Document document = NewDocument();
  for (std::int64_t value = -200; value <= 400; ++value) {
    const bool isMember = std::ranges::any_of(kEncodings, [&](const Encoding &one) { return one.value == value; });
    EXPECT_EQ(document.GetFont("Helvetica", value).IsNil(), !isMember) << value;
  }
  for (const std::int64_t value : {kHighBitOnly, kHighBitOnly + 1, -kHighBitOnly}) {
    EXPECT_TRUE(document.GetFont("Helvetica", value).IsNil()) << value;
  }
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
}

TEST_F(Encodings, AreNamedInTheFileWherePdfHasANameForThem) {
  const Document document = NewDocument();
  for (const Encoding &encoding : kEncodings) {
    const ScriptObject page = document.AddPage();
    page.Call("BeginText");
    page.Call("SetFont", document.GetFont("Helvetica", encoding.value), 12);
    page.Call("ShowText", "A");
    page.Call("EndText");
  }
  const std::string saved = document.Saved();
  const PdfFile file(saved);
  for (std::size_t page = 0; page < std::size(kEncodings); ++page) {
    SCOPED_TRACE(kEncodings[page].member);
    QPDFObjectHandle font = file.Font(page, file.Operators(page).at(1).operands.at(0).text);
    EXPECT_EQ(font.getKey("/BaseFont").getName(), "/Helvetica");
    QPDFObjectHandle encoding = font.getKey("/Encoding");
    if (kEncodings[page].nameInFile != nullptr) {
      ASSERT_TRUE(encoding.isName());
      EXPECT_EQ(encoding.getName(), kEncodings[page].nameInFile);
    } else {
      ASSERT_TRUE(encoding.isDictionary());
      EXPECT_TRUE(encoding.getKey("/Differences").isArray());
    }
  }
}

// Each character of an encoding on a line of its own; what comes out again must be the same characters.
TEST_F(Encodings, CharactersComeOutAgain) {
  const Document document = NewDocument();
  std::vector<std::vector<std::pair<unsigned, std::string>>> shown;
  for (const Encoding &encoding : kEncodings) {
    const ScriptObject page = document.AddPage();
    page.Set("Height", 5000);
    page.Call("BeginText");
    page.Call("SetFont", document.GetFont("Helvetica", encoding.value), 12);
    page.Call("MoveTextPosition", 50, 4900);
    shown.emplace_back();
    for (unsigned byte = 0x21; byte <= 0xFF; ++byte) {
      const std::string character = CharacterOf(encoding.charset, byte);
      // A no-break space is white like any other.
      if (character == "\u00A0") continue;
      // Directional marks are not shown.
      if (character == "\u200E" || character == "\u200F") continue;
      if (character.empty() || byte == 0x7F || (byte >= 0x80 && byte < 0xA0 && character[0] == '\xC2')) continue;
      page.Call("ShowText", "x" + character + "x");
      page.Call("MoveTextPosition", 0, -20);
      shown.back().emplace_back(byte, character);
    }
    page.Call("EndText");
  }
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
  const std::string saved = document.Saved();
  EXPECT_TRUE(JudgedFlawless(std::string_view(saved)));

  const PdfFile file(saved);
  const std::vector<std::string> texts = ExtractedPages(saved);
  ASSERT_EQ(texts.size(), std::size(kEncodings));
  for (std::size_t page = 0; page < std::size(kEncodings); ++page) {
    SCOPED_TRACE(kEncodings[page].member);
    // The bytes are the encoding's own.
    std::vector<std::string> bytes;
    for (const ContentOperator &operation : file.Operators(page)) {
      if (operation.name == "Tj") bytes.push_back(operation.operands.at(0).text);
    }
    ASSERT_EQ(bytes.size(), shown[page].size());
    for (std::size_t index = 0; index < bytes.size(); ++index) {
      EXPECT_EQ(bytes[index], (std::string{'x', static_cast<char>(shown[page][index].first), 'x'}))
          << shown[page][index].second;
    }
    // And readers find the characters again.
    std::istringstream lines(texts[page]);
    std::set<std::string> found;
    for (std::string line; std::getline(lines, line);) found.insert(WithoutDirectionMarks(line));
    std::string missing;
    for (const auto &[byte, character] : shown[page]) {
      if (!found.contains("x" + character + "x")) missing += character + ' ';
    }
    EXPECT_EQ(missing, "");
  }
}

// Hebrew in the encoding of Windows: E0 is alef, FE the mark.
TEST_F(Encodings, TextWithADirectionalMarkIsOrderedAndTheMarkIsNotShown) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Call("BeginText");
  page.Call("SetFont", document.GetFont("Helvetica", kCp1255), 12);
  page.Call("ShowText", "\u200F\u05D0\u05D1 (\u05D2) 12 AB");
  page.Call("ShowText", "\u05D0\u05D1 (\u05D2) 12 AB");
  page.Call("EndText");
  std::vector<std::string> shown;
  for (const ContentOperator &operation : PdfFile(document.Saved()).Operators(0)) {
    if (operation.name == "Tj") shown.push_back(operation.operands.at(0).text);
  }
  EXPECT_THAT(shown, ElementsAre("AB 12 (\xE2) \xE1\xE0", "\xE0\xE1 (\xE2) 12 AB"));
  const auto widthOf = [&](const char *text) {
    std::vector<host::Value> arguments{text, 1000, false, 0.0F};
    host().CallByRef(page.handle(), "MeasureText", arguments);
    return arguments[3].AsSingle();
  };
  EXPECT_GT(widthOf("\u05D0\u05D1"), 0);
  EXPECT_EQ(widthOf("\u200F\u05D0\u05D1"), widthOf("\u05D0\u05D1"));
}

TEST_F(Encodings, CharacterThatTheEncodingLacksIsShownAsAQuestionMark) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Call("BeginText");
  page.Call("SetFont", document.GetFont("Helvetica", 1), 12);
  page.Call("ShowText", "a\u0416b");
  page.Call("EndText");
  const std::vector<ContentOperator> operators = document.Operators();
  EXPECT_THAT(operators.at(2), Op("Tj", "a?b"));
}

TEST_F(Encodings, TextComesFromEveryEncodingOfTheHost) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Call("BeginText");
  page.Call("SetFont", document.GetFont("Helvetica", 2), 12);
  const auto utf16 = std::u16string(u"\u0141\u00F3d\u017A");
  page.Call("ShowText", host::StringHandle::FromBytes({reinterpret_cast<const char *>(utf16.data()), utf16.size() * 2},
                                                      TextEncoding::kUtf16));
  page.Call("ShowText", host::StringHandle::FromBytes("\x8F\x97"
                                                      "d",
                                                      TextEncoding::kMacRoman));
  page.Call("EndText");
  const std::vector<ContentOperator> operators = document.Operators();
  EXPECT_THAT(operators.at(2), Op("Tj",
                                  "\xA3\xF3"
                                  "d\xBC"));
  // Mac Roman's e grave is no letter of ISO 8859-2, its o acute is one.
  EXPECT_THAT(operators.at(3), Op("Tj",
                                  "?\xF3"
                                  "d"));
}

}  // namespace
}  // namespace quillbar::test
