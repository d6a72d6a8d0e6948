// SPDX-License-Identifier: MIT
// Text that is shaped or ordered: what is written for it, and how wide it is.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <map>
#include <sstream>

#include "plugin/engine/fonts/font_fault.h"
#include "tests/plugin/engine/driver/font_document.h"
#include "tests/support/process.h"
#include "tests/support/real_fonts.h"

namespace quillbar {
namespace {

using test::ContentOperator;
using test::FontDocument;
using test::Operand;
using test::PdfFile;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kLohit[] = "/usr/share/fonts/truetype/lohit-devanagari/Lohit-Devanagari.ttf";
constexpr char kGaruda[] = "/usr/share/fonts/truetype/tlwg/Garuda.ttf";

// What one operator shows.
struct Shown {
  std::vector<unsigned> codes;
  double distance = 0;  // what TJ takes off the position, in 1/1000 of the font size
};

Shown ShownBy(const ContentOperator &operation) {
  Shown shown;
  const auto add = [&](const Operand &operand) {
    if (operand.kind == Operand::Kind::kNumber) shown.distance += operand.number;
    if (operand.kind != Operand::Kind::kString) return;
    for (std::size_t i = 0; i + 1 < operand.text.size(); i += 2)
      shown.codes.push_back(static_cast<unsigned char>(operand.text[i]) << 8 |
                            static_cast<unsigned char>(operand.text[i + 1]));
  };
  for (const Operand &operand : operation.operands) {
    add(operand);
    for (const Operand &element : operand.elements) add(element);
  }
  return shown;
}

// A saved document with one font of two-byte codes.
class Saved {
 public:
  explicit Saved(const std::string &bytes) : file(bytes) {
    QPDFObjectHandle font = file.Font(0, "/F1");
    QPDFObjectHandle all = font.getKey("/DescendantFonts").getArrayItem(0).getKey("/W");
    for (int i = 0; i + 1 < all.getArrayNItems(); i += 2) {
      QPDFObjectHandle run = all.getArrayItem(i + 1);
      for (int j = 0; j < run.getArrayNItems(); ++j)
        widths[static_cast<unsigned>(all.getArrayItem(i).getIntValue() + j)] = run.getArrayItem(j).getNumericValue();
    }
    const auto data = font.getKey("/ToUnicode").getStreamData(qpdf_dl_all);
    std::istringstream map(std::string(reinterpret_cast<const char *>(data->getBuffer()), data->getSize()));
    for (std::string line; std::getline(map, line);) {
      unsigned code = 0;
      char utf16[9] = "";
      if (std::sscanf(line.c_str(), "<%4X> <%8[0-9A-F]>", &code, utf16) == 2) characters[code] = utf16;
    }
    for (const ContentOperator &operation : file.Operators(0)) {
      if (operation.name == "Tj" || operation.name == "TJ" || operation.name == "'")
        lines.push_back(ShownBy(operation));
    }
  }

  // A line's characters, in the order of its codes, as UTF-16 in hexadecimal digits.
  std::vector<std::string> CharactersOf(std::size_t line) const {
    std::vector<std::string> text;
    for (const unsigned code : lines.at(line).codes) text.push_back(characters.at(code));
    return text;
  }
  double WidthOf(std::size_t line) const {
    double width = -lines.at(line).distance;
    for (const unsigned code : lines.at(line).codes) width += widths.at(code);
    return width;
  }

  PdfFile file;
  std::map<unsigned, double> widths;
  std::map<unsigned, std::string> characters;
  std::vector<Shown> lines;
};

TEST(ShapedText, EachCodeIsOneCharacterInTheOrderOfTheText) {
  QUILLBAR_NEEDS_FONT(kLohit, "fonts-lohit-deva");
  FontDocument document;
  document.Show(document.Font(document.Load(kLohit)), "हिन्दी");
  const std::string bytes = document.SaveToString();
  EXPECT_TRUE(test::Flawless(bytes));
  EXPECT_THAT(Saved(bytes).CharactersOf(0), ElementsAre("0939", "093F", "0928", "094D", "0926", "0940"));
  EXPECT_EQ(test::Trimmed(test::MuPdfText(bytes)), "हिन्दी");
  EXPECT_EQ(test::Trimmed(test::GhostscriptText(bytes)), "हिन्दी");
}

TEST(ShapedText, NoCodeOfAClusterIsWithoutWidth) {
  QUILLBAR_NEEDS_FONT(kLohit, "fonts-lohit-deva");
  FontDocument document;
  document.Show(document.Font(document.Load(kLohit)), "राष्ट्रीय क्षत्रिय");
  const Saved saved(document.SaveToString());
  for (const unsigned code : saved.lines.at(0).codes) EXPECT_GT(saved.widths.at(code), 0) << saved.characters.at(code);
}

TEST(ShapedText, MeasuredWidthIsTheAdvanceThatIsWritten) {
  for (const auto &[path, text] :
       {std::pair{kLohit, "नया घर तैयार है, हमारे यहाँ आना!"}, std::pair{kGaruda, "เพื่อนที่รัก บ้านใหม่เสร็จแล้ว"},
        std::pair{test::kDejaVuSans, "\u200Fالسلام عليكم (123) AB"},
        std::pair{test::kDejaVuSans, "Cafe\u0301 d\u0323\u0307 AVAV"}}) {
    QUILLBAR_NEEDS_FONT(path, "fonts-lohit-deva, fonts-tlwg-garuda-ttf, fonts-dejavu-core");
    FontDocument document;
    HPDF_Font font = document.Font(document.Load(path));
    document.Show(font, text);
    const std::string bytes = document.SaveToString();
    const HPDF_TextWidth measured = Call<HPDF_Font_TextWidth>(font, reinterpret_cast<const HPDF_BYTE *>(text),
                                                              static_cast<HPDF_UINT>(std::strlen(text)));
    EXPECT_GT(measured.width, 0u);
    EXPECT_NEAR(Saved(bytes).WidthOf(0), measured.width, 1e-6) << text;
  }
}

TEST(ShapedText, LettersOfSimpleScriptsAreWhereTheyWereWithoutMarks) {
  QUILLBAR_NEEDS_FONT(test::kDejaVuSans, "fonts-dejavu-core");
  FontDocument document;
  HPDF_Font font = document.Font(document.Load(test::kDejaVuSans));
  document.Show(font, "AVAV fi To");
  document.Show(font, "AVAV fi To e\u0301");
  const Saved saved(document.SaveToString());
  const std::vector<unsigned> &plain = saved.lines.at(0).codes, &marked = saved.lines.at(1).codes;
  ASSERT_EQ(plain.size(), 10u);
  EXPECT_EQ(std::vector(marked.begin(), marked.begin() + 10), plain);
  EXPECT_EQ(saved.lines.at(1).distance, 0);
}

TEST(ShapedText, CharactersThatTheFontLacksAreBoxesSideBySide) {
  QUILLBAR_NEEDS_FONT(test::kDejaVuSans, "fonts-dejavu-core");
  FontDocument document;
  document.Show(document.Font(document.Load(test::kDejaVuSans)), "नमस्ते");
  const Saved saved(document.SaveToString());
  EXPECT_THAT(saved.CharactersOf(0), ElementsAre("0928", "092E", "0938", "094D", "0924", "0947"));
  for (const unsigned code : saved.lines.at(0).codes) EXPECT_EQ(saved.widths.at(code), saved.widths.at(0));
}

TEST(ShapedText, TextWithoutADirectionalMarkKeepsItsOrder) {
  QUILLBAR_NEEDS_FONT(test::kDejaVuSans, "fonts-dejavu-core");
  FontDocument document;
  document.Show(document.Font(document.Load(test::kDejaVuSans)), "אב (ג) سلام");
  EXPECT_THAT(Saved(document.SaveToString()).CharactersOf(0),
              ElementsAre("05D0", "05D1", "0020", "0028", "05D2", "0029", "0020", "0633", "0644", "0627", "0645"));
}

TEST(ShapedText, TextWithADirectionalMarkIsOrderedAndSaysSoToReaders) {
  QUILLBAR_NEEDS_FONT(test::kDejaVuSans, "fonts-dejavu-core");
  FontDocument document;
  HPDF_Font font = document.Font(document.Load(test::kDejaVuSans));
  document.Show(font, "\u200Fאב (ג)");
  document.Show(font, "\u200Fאב 12 ג");
  document.Show(font, "\u200Eab גד ef");
  const Saved saved(document.SaveToString());
  EXPECT_THAT(saved.CharactersOf(0), ElementsAre("0029", "05D2", "0028", "0020", "05D1", "05D0"))
      << "one direction needs no marks";
  EXPECT_THAT(saved.CharactersOf(1), ElementsAre("05D2", "0020", "200F", "0031", "0032", "0020", "05D1", "05D0"));
  EXPECT_THAT(saved.CharactersOf(2),
              ElementsAre("0061", "0062", "0020", "05D3", "05D2", "200E", "0020", "0065", "0066"));
  for (const auto &[code, character] : saved.characters) {
    if (character.starts_with("200")) {
      EXPECT_EQ(saved.widths.at(code), 0);
    }
  }
}

TEST(ShapedText, ArabicLettersAreJoinedWhereTheTextIsOrdered) {
  QUILLBAR_NEEDS_FONT(test::kDejaVuSans, "fonts-dejavu-core");
  FontDocument document;
  HPDF_Font font = document.Font(document.Load(test::kDejaVuSans));
  const auto widthOf = [&](std::string_view text) {
    return Call<HPDF_Font_TextWidth>(font, reinterpret_cast<const HPDF_BYTE *>(text.data()),
                                     static_cast<HPDF_UINT>(text.size()))
        .width;
  };
  EXPECT_LT(widthOf("\u200Fههه"), widthOf("ههه"));
}

TEST(ShapedText, BrokenAndHostileTextIsShownInTimeProportionalToIt) {
  QUILLBAR_NEEDS_FONT(test::kDejaVuSans, "fonts-dejavu-core");
  FontDocument document;
  HPDF_Font font = document.Font(document.Load(test::kDejaVuSans));
  const auto repeated = [](std::string_view part, std::size_t bytes) {
    std::string text;
    while (text.size() + part.size() <= bytes) text += part;
    return text;
  };
  const auto start = std::chrono::steady_clock::now();
  for (const std::string &text :
       {std::string("\u0301"), repeated("\u0301", 65'000), "a" + repeated("\u0301", 65'000),
        "a" + repeated("\u200D", 65'000), std::string("\xED\xA0\x80\xED\xB0\x80 \xC3 \xF4\x90\x80\x80"),
        repeated("\u202E", 65'000), repeated("\u2067(", 65'000), "\u200F" + repeated("\u0628\u064E", 65'000),
        repeated("\u0939\u094D", 65'000), repeated("\U000E0100", 65'000)})
    EXPECT_EQ(document.Show(font, text), HPDF_STATUS{HPDF_OK}) << text.substr(0, 6);
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(60));
  EXPECT_THAT(document.TakeCodes(), IsEmpty());
  EXPECT_TRUE(test::Flawless(document.SaveToString()));
}

TEST(ShapedText, TextAddedAfterASaveKeepsTheCodesOfClusters) {
  QUILLBAR_NEEDS_FONT(kLohit, "fonts-lohit-deva");
  FontDocument document;
  HPDF_Font font = document.Font(document.Load(kLohit));
  document.Show(font, "हिन्दी");
  document.SaveToString();
  document.Show(font, "क्षत्रिय हिन्दी");
  const std::string bytes = document.SaveToString();
  EXPECT_TRUE(test::Flawless(bytes));
  EXPECT_EQ(test::Trimmed(test::MuPdfText(bytes)), "हिन्दी\nक्षत्रिय हिन्दी");
  const Saved saved(bytes);
  const std::vector<unsigned> &first = saved.lines.at(0).codes, &second = saved.lines.at(1).codes;
  EXPECT_EQ(std::vector(second.end() - static_cast<std::ptrdiff_t>(first.size()), second.end()), first);
}

// A box of 240 points with lines that don't reach its right edge by the width of a word.
std::vector<std::string> LinesInBox(FontDocument &document, HPDF_Font font, const std::string &text,
                                    HPDF_TextAlignment alignment) {
  Call<HPDF_Page_BeginText>(document.page);
  Call<HPDF_Page_SetFontAndSize>(document.page, font, 20.0F);
  HPDF_UINT length = 0;
  EXPECT_EQ(Call<HPDF_Page_TextRect>(document.page, 40.0F, 700.0F, 280.0F, 100.0F, text.c_str(), alignment, &length),
            HPDF_STATUS{HPDF_OK});
  Call<HPDF_Page_EndText>(document.page);
  EXPECT_EQ(length, text.size());
  const Saved saved(document.SaveToString());
  std::vector<std::string> lines;
  for (std::size_t line = 0; line < saved.lines.size(); ++line) {
    lines.emplace_back();
    for (const std::string &character : saved.CharactersOf(line)) lines.back() += character + ' ';
  }
  return lines;
}

TEST(ShapedText, LinesOfABoxAreOrderedAsTheirParagraphIs) {
  QUILLBAR_NEEDS_FONT(test::kDejaVuSans, "fonts-dejavu-core");
  FontDocument document;
  HPDF_Font font = document.Font(document.Load(test::kDejaVuSans));
  // The second line has no mark of its own, and begins with a Latin word.
  const std::vector<std::string> lines =
      LinesInBox(document, font, "\u200Fאבגדהוזחטיכלמנסעפצק AB אב", HPDF_TALIGN_RIGHT);
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_EQ(lines[1], "05D1 05D0 0020 200F 0041 0042 ");
}

TEST(ShapedText, JustifiedLinesOfJoinedLettersAreSpacedBetweenWords) {
  QUILLBAR_NEEDS_FONT(kLohit, "fonts-lohit-deva");
  FontDocument document;
  HPDF_Font font = document.Font(document.Load(kLohit));
  LinesInBox(document, font, "नया घर तैयार है हमारे यहाँ आना नया घर तैयार है", HPDF_TALIGN_JUSTIFY);
  const Saved saved(document.SaveToString());
  ASSERT_GT(saved.lines.size(), 1u);
  EXPECT_NEAR(saved.WidthOf(0) * 20 / 1000, 240, 0.01);
  for (const ContentOperator &operation : saved.file.Operators(0)) EXPECT_NE(operation.name, "Tc");
}

TEST(ShapedText, ThaiLinesAreBrokenBetweenClusters) {
  QUILLBAR_NEEDS_FONT(kGaruda, "fonts-tlwg-garuda-ttf");
  FontDocument document;
  HPDF_Font font = document.Font(document.Load(kGaruda));
  std::string text;
  for (int i = 0; i < 12; ++i) text += "บ้านใหม่เสร็จแล้วที่รัก";
  const std::vector<std::string> lines = LinesInBox(document, font, text, HPDF_TALIGN_LEFT);
  EXPECT_GT(lines.size(), 5u);
  for (const std::string &line : lines) {
    const auto first = std::stoul(line.substr(0, 4), nullptr, 16);
    EXPECT_FALSE((first >= 0x0E31 && first != 0x0E32 && first <= 0x0E3A) || (first >= 0x0E47 && first <= 0x0E4E))
        << line;
  }
}

// A font format, and text that is not of its first glyphs alone.
struct Format {
  const char *name;
  const char *package;
  const char *path;
  const char *type;  // as pdffonts has it
  const char *text;
};
void PrintTo(const Format &format, std::ostream *out) { *out << format.name; }

class FontFormat : public testing::TestWithParam<Format> {};

TEST_P(FontFormat, IsShownAndCopiedByEveryReader) {
  const Format &format = GetParam();
  QUILLBAR_NEEDS_FONT(format.path, format.package);
  FontDocument document;
  HPDF_Font font = document.Font(document.Load(format.path));
  ASSERT_NE(font, nullptr);
  document.Show(font, format.text);
  const std::string bytes = document.SaveToString();
  EXPECT_TRUE(test::Flawless(bytes));
  EXPECT_LT(bytes.size(), 60'000u);
  EXPECT_EQ(test::Trimmed(test::MuPdfText(bytes)), format.text);
  EXPECT_EQ(test::Trimmed(test::GhostscriptText(bytes)), format.text);
  test::WriteFile(document.Folder() / "saved.pdf", bytes);
  const std::string listed = test::RunProcess({"pdffonts", document.Folder() / "saved.pdf"}).output;
  EXPECT_THAT(listed, testing::ContainsRegex(std::string(format.type) + " +Identity-H +yes +yes +yes"));
}

TEST_P(FontFormat, ServesOneByteEncodings) {
  const Format &format = GetParam();
  QUILLBAR_NEEDS_FONT(format.path, format.package);
  FontDocument document;
  document.Show(document.Font(document.Load(format.path), "WinAnsiEncoding"),
                "Gr\xFC\xDF"
                "e 12");
  const std::string bytes = document.SaveToString();
  EXPECT_TRUE(test::Flawless(bytes));
  EXPECT_EQ(test::Trimmed(test::MuPdfText(bytes)), "Grüße 12");
}

INSTANTIATE_TEST_SUITE_P(
    Formats, FontFormat,
    testing::Values(Format{"Cff", "fonts-ebgaramond", "/usr/share/fonts/opentype/ebgaramond/EBGaramond12-Regular.otf",
                           "CID Type 0C", "Cafe\u0301 fin Ωμέγα"},
                    Format{"Collection", "fonts-wqy-microhei", "/usr/share/fonts/truetype/wqy/wqy-microhei.ttc",
                           "CID TrueType", "文泉驿微米黑 Grüße"},
                    Format{"Variable", "fonts-inter-variable", "/usr/share/fonts/truetype/inter-vf/Inter.var.ttf",
                           "CID TrueType", "Variable Grüße e\u0323"}),
    [](const auto &made) { return std::string(made.param.name); });

TEST(FontFormats, CffOutlinesThatCannotBeReadAreRefused) {
  FontDocument document;
  test::SyntheticFont font;
  font.tables["CFF "] = {1, 0, 4, 4, 0xFF, 0xFF, 0xFF};
  font.signature = 0x4F54544F;  // OTTO
  test::FontBytes bytes = font.Build();
  for (const std::string_view tag : {"glyf", "loca"})
    *std::search(bytes.begin(), bytes.end(), tag.begin(), tag.end()) = 'x';
  EXPECT_EQ(document.Load(bytes), nullptr);
  EXPECT_THAT(document.failures,
              ElementsAre(Failure{HPDF_TTF_INVALID_FOMAT, static_cast<HPDF_STATUS>(engine::FontFault::kCffOutlines)}));
}

// How much of a text fits into a line is found by laying out ever more of it.
struct RepeatedLetter {
  const char *name;
  const char *mark;  // at the beginning; Arabic letters are joined where the text is ordered
  const char *letter;
};

void PrintTo(const RepeatedLetter &repeated, std::ostream *out) { *out << repeated.name; }

class LongWord : public testing::TestWithParam<RepeatedLetter> {
 protected:
  void SetUp() override {
    QUILLBAR_NEEDS_FONT(test::kDejaVuSans, "fonts-dejavu-core");
    font_ = document_.Font(document_.Load(test::kDejaVuSans));
    text_ = TextOf(260);
  }

  static std::string TextOf(std::size_t letters) {
    std::string text = GetParam().mark;
    for (std::size_t i = 0; i < letters; ++i) text += GetParam().letter;
    return text;
  }
  // In points, set in 10 points.
  float PointsOf(std::string_view text) const {
    return static_cast<float>(Call<HPDF_Font_TextWidth>(font_, reinterpret_cast<const HPDF_BYTE *>(text.data()),
                                                        static_cast<HPDF_UINT>(text.size()))
                                  .width) /
           100;
  }
  // How many letters fit; fails where it is no whole number.
  std::size_t Fitting(float width, float *reached) const {
    const std::size_t bytes =
        HPDF_Font_MeasureText(font_, reinterpret_cast<const HPDF_BYTE *>(text_.data()),
                              static_cast<HPDF_UINT>(text_.size()), width, 10, 0, 0, HPDF_FALSE, reached);
    const std::size_t mark = TextOf(0).size(), letter = TextOf(1).size() - mark;
    if (bytes <= mark) return 0;
    EXPECT_EQ((bytes - mark) % letter, 0U) << "between clusters";
    return (bytes - mark) / letter;
  }

  FontDocument document_;
  HPDF_Font font_ = nullptr;
  std::string text_;
};

TEST_P(LongWord, FillsALineAsWideAsAPartOfIt) {
  for (std::size_t letters = 0; letters <= 260; letters += letters < 80 || letters > 200 ? 9 : 1) {
    const float width = PointsOf(TextOf(letters)) + 0.05F;
    float reached = -1;
    const std::size_t fitting = Fitting(width, &reached);
    EXPECT_EQ(fitting, letters);
    EXPECT_EQ(Fitting(width, nullptr), fitting);
    EXPECT_NEAR(reached, PointsOf(TextOf(fitting)), 0.01) << letters;
  }
}

// The last letter may be wider than within a word, which is known only once the word is cut.
TEST_P(LongWord, IsNeverCutWiderThanTheLine) {
  const float most = PointsOf(TextOf(60));
  for (float width = 0.3F; width < most; width += 0.83F) {
    float reached = -1;
    const std::size_t fitting = Fitting(width, &reached);
    EXPECT_LE(PointsOf(TextOf(fitting)), width + 0.005) << width;
    EXPECT_NEAR(reached, PointsOf(TextOf(fitting)), 0.01) << width;
    EXPECT_GT(PointsOf(TextOf(fitting + 1)), width) << "one more would fit";
  }
}

TEST_P(LongWord, EndsAtALineFeedWhereverItIs) {
  for (std::size_t letters = 70; letters < 130; ++letters) {
    const std::string text = TextOf(letters) + "\n" + GetParam().letter;
    float reached = -1;
    EXPECT_EQ(HPDF_Font_MeasureText(font_, reinterpret_cast<const HPDF_BYTE *>(text.data()),
                                    static_cast<HPDF_UINT>(text.size()), 100'000, 10, 0, 0, HPDF_FALSE, &reached),
              TextOf(letters).size() + 1);
    EXPECT_NEAR(reached, PointsOf(TextOf(letters)), 0.01);
  }
}

INSTANTIATE_TEST_SUITE_P(Letters, LongWord,
                         testing::Values(RepeatedLetter{"Heh", "\u200F", "ه"}, RepeatedLetter{"Seen", "\u200F", "س"},
                                         RepeatedLetter{"Alone", "", "ه"}, RepeatedLetter{"WithMark", "", "e\u0301"}),
                         [](const auto &made) { return std::string(made.param.name); });

// Joiners are seen nowhere; a font without even a space has no glyph to stand for them.
TEST(ShapedText, JoinersAloneTakeNoRoom) {
  FontDocument document;
  const HPDF_Font font = document.Font(document.Load(test::SyntheticFont().Build()));
  for (const std::string_view text : {"\u200F\u200D\u200D", "\u200F\u200C"}) {
    const auto *bytes = reinterpret_cast<const HPDF_BYTE *>(text.data());
    const HPDF_UINT width = HPDF_Font_TextWidth(font, bytes, static_cast<HPDF_UINT>(text.size())).width;
    EXPECT_EQ(width, 0U);
    EXPECT_EQ(document.Show(font, text), HPDF_OK);
  }
  EXPECT_TRUE(test::Flawless(document.SaveToString()));
}

TEST(ShapedText, EachParagraphOfOrderedTextHasItsOwnDirection) {
  QUILLBAR_NEEDS_FONT(test::kDejaVuSans, "fonts-dejavu-core");
  for (const char *end : {"\n", "\r", "\u2029"}) {
    FontDocument document;
    const HPDF_Font font = document.Font(document.Load(test::kDejaVuSans));
    // U+061C is the third mark of direction. Without one the second paragraph runs as its first letter does.
    document.Show(font, std::string("\u061Cא!") + end + "b!");
    const Saved saved(document.SaveToString());
    std::vector<std::string> characters = saved.CharactersOf(0);
    std::erase_if(characters, [](const std::string &c) { return c != "05D0" && c != "0021" && c != "0062"; });
    EXPECT_THAT(characters, ElementsAre("0021", "05D0", "0062", "0021")) << end;
  }
}

TEST(ShapedText, TextThatEndsWithinACharacterIsMeasured) {
  QUILLBAR_NEEDS_FONT(test::kDejaVuSans, "fonts-dejavu-core");
  FontDocument document;
  const HPDF_Font font = document.Font(document.Load(test::kDejaVuSans));
  const std::string_view euro = "\u20AC";
  const auto widthOf = [font](std::string_view text) {
    return HPDF_Font_TextWidth(font, reinterpret_cast<const HPDF_BYTE *>(text.data()),
                               static_cast<HPDF_UINT>(text.size()));
  };
  EXPECT_EQ(widthOf(euro.substr(0, 2)).width, widthOf("\uFFFD").width);
  EXPECT_EQ(widthOf(euro.substr(0, 2)).numchars, 1U);
  EXPECT_NE(widthOf(euro).width, widthOf("\uFFFD").width);
}

TEST(ShapedText, LineWithoutRoomForALetterHasNone) {
  QUILLBAR_NEEDS_FONT(test::kDejaVuSans, "fonts-dejavu-core");
  FontDocument document;
  const HPDF_Font font = document.Font(document.Load(test::kDejaVuSans));
  const std::string text = "ههه";
  float reached = -1;
  for (const HPDF_BOOL breaksAtWords : {HPDF_FALSE, HPDF_TRUE}) {
    EXPECT_EQ(HPDF_Font_MeasureText(font, reinterpret_cast<const HPDF_BYTE *>(text.data()),
                                    static_cast<HPDF_UINT>(text.size()), 0.01F, 10, 0, 0, breaksAtWords, &reached),
              0U);
    EXPECT_EQ(reached, 0.0F);
  }
}

}  // namespace
}  // namespace quillbar
