// SPDX-License-Identifier: MIT
// Text in every script as five readers copy it: names of countries and languages, and sentences.
#include <algorithm>
#include <array>
#include <filesystem>
#include <functional>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "tests/plugin/driver/plugin_test.h"
#include "tests/readers/agreement.h"
#include "tests/readers/text_readers.h"
#include "tests/shaping/font_outlines.h"
#include "tests/shaping/samples.h"
#include "tests/support/reader_versions.h"
#include "tests/support/real_fonts.h"
#include "tests/support/temporary_folder.h"

namespace quillbar::test {
namespace {

using enum Agreement;
using enum TextReader;

// How well each reader may copy a line at worst, in the order of kTextReaders.
using WorstOfReaders = std::array<Agreement, std::size(kTextReaders)>;

constexpr WorstOfReaders kAllExact{kExact, kExact, kExact, kExact, kExact};
// pdf.js composes letters with their marks.
constexpr WorstOfReaders kComposed{kExact, kExact, kExact, kNormalized, kExact};
// Text on a page runs in the order in which it is seen. MuPDF and Ghostscript leave it there; PDFium turns it, and
// takes brackets for their mirrored forms, which they are not in the text.
constexpr WorstOfReaders kRightToLeft{kMarks, kOrder, kOrder, kBlanks, kOrder};
// Lines from left to right with a part from right to left.
constexpr WorstOfReaders kMixed{kMarks, kOrder, kOrder, kExact, kMarks};
// PDFium leaves several words of such a part in the order in which they are seen.
constexpr WorstOfReaders kMixedWords{kMarks, kOrder, kOrder, kExact, kOrder};

bool HasJoiner(const std::string &text) { return text.find("\u200C") != text.npos || text.find("\u200D") != text.npos; }

// pdf.js leaves joiners out.
Agreement Worst(TextReader reader, const std::string &line, const WorstOfReaders &worst) {
  const Agreement agreement = worst[static_cast<std::size_t>(reader)];
  return reader == kPdfJs && HasJoiner(line) ? std::max(agreement, kZeroWidth) : agreement;
}

// PDFium takes the second one for a shadow of the first.
bool HasDoubledVirama(const std::string &text) {
  const std::u32string characters = CharactersOf(text);
  return std::ranges::adjacent_find(characters, [](char32_t one, char32_t other) {
           return one == other && one >= 0x900 && one < 0xE00 && (one & 0x7F) == 0x4D;
         }) != characters.end();
}

// A page with one line below the other, far enough apart for scripts with tall letters.
void ShowLines(const Document &document, const ScriptObject &font, const std::vector<std::string> &lines) {
  constexpr double kLine = 44;
  const ScriptObject page = document.AddPage();
  page.Set("Height", static_cast<float>(kLine * static_cast<double>(lines.size() + 1)));
  page.Set("Width", 1200.0F);
  page.Call("BeginText");
  page.Call("SetFont", font, 20);
  page.Call("MoveTextPosition", 40, kLine * static_cast<double>(lines.size()));
  for (const std::string &line : lines) {
    page.Call("ShowText", line);
    page.Call("MoveTextPosition", 0, -kLine);
  }
  page.Call("EndText");
}

// The lines that came back worse than expected.
std::string Disagreements(TextReader reader, const std::vector<std::string> &shown, const PageLines &read,
                          const WorstOfReaders &worst) {
  std::string differences;
  if (read.size() != shown.size())
    differences = std::to_string(read.size()) + " lines instead of " + std::to_string(shown.size()) + "\n";
  for (std::size_t i = 0; i < std::min(shown.size(), read.size()); ++i) {
    const Agreement agreement = AgreementOf(shown[i], read[i]);
    if (agreement > Worst(reader, shown[i], worst))
      differences += shown[i] + " came back as " + read[i] + ": " + testing::PrintToString(agreement) + "\n";
  }
  return differences;
}

std::string Joined(const std::vector<std::string> &lines) {
  std::string text;
  for (const std::string &line : lines) text += line;
  return text;
}

// Asks each reader that can be used here for the pages of a document, and names one that can't.
void AskReaders(const Document &document,
                const std::function<void(TextReader, const std::vector<PageLines> &)> &judge) {
  const TemporaryFolder folder;
  WriteFile(folder / "saved.pdf", document.Saved());
  std::string leftOut;
  for (const TextReader reader : kTextReaders) {
    const std::string reason = ReasonToLeaveOut(reader);
    if (reason.empty())
      judge(reader, LinesOf(reader, folder / "saved.pdf"));
    else
      leftOut = reason;
  }
  if (!leftOut.empty()) GTEST_SKIP() << "only some readers were asked: the test " << leftOut;
}

class CopiedNamesTest : public PluginTest {};

// A page of a document: names in one script, as a reader must find them.
struct PageOfNames {
  Sample sample;
  std::vector<std::string> lines;
};

// pdf.js and newer MuPDF take a mark at the left end of a line to the line before, and all words of Thaana end in one.
void JudgeNames(TextReader reader, const PageOfNames &shown, const PageLines &read) {
  const bool dividesMarks = reader == kPdfJs || (reader == kMuPdf && MuPdfDividesMarks());
  if (dividesMarks && std::string_view(shown.sample.system.name) == "Thaana") {
    EXPECT_LE(AgreementOf(Joined(shown.lines), Joined(read)), kOrder) << testing::PrintToString(reader);
    return;
  }
  EXPECT_EQ(Disagreements(reader, shown.lines, read, shown.sample.system.isRightToLeft ? kRightToLeft : kAllExact), "")
      << NameOf(shown.sample) << " by " << testing::PrintToString(reader);
}

// All in one document: starting the readers takes most of the time.
TEST_F(CopiedNamesTest, ComeBackAsTheyWentIn) {
  if (const std::string reason = ReasonForNoNames(); !reason.empty()) GTEST_SKIP() << reason;
  const Document document = NewDocument();
  std::vector<PageOfNames> shown;
  std::string lacking;
  for (const Sample &sample : ShapedSamples()) {
    SCOPED_TRACE(NameOf(sample));
    if (!std::filesystem::exists(sample.path)) {
      lacking += NameOf(sample) + " needs Debian's package " + sample.package + "; ";
      continue;
    }
    const FontOutlines outlines{std::filesystem::path(sample.path)};
    std::vector<std::string> names =
        NamesIn(sample.system, [&](char32_t character) { return outlines.Covers(character); });
    std::erase_if(names, HasDoubledVirama);
    const std::vector<std::string> lines = EvenlyChosen(names, 40);
    ASSERT_FALSE(lines.empty());
    const ScriptObject font = document.CallObject("LoadTrueTypeFont", NewFolderItem(sample.path));
    ASSERT_FALSE(font.IsNil());
    std::vector<std::string> given;
    for (const std::string &line : lines) given.push_back(AsGiven(sample, line));
    ShowLines(document, font, given);
    shown.push_back({sample, lines});
  }
  if (shown.empty()) GTEST_SKIP() << lacking;
  EXPECT_THAT(document.TakeFailures(), testing::IsEmpty());
  AskReaders(document, [&](TextReader reader, const std::vector<PageLines> &pages) {
    ASSERT_EQ(pages.size(), shown.size());
    for (std::size_t i = 0; i < pages.size(); ++i) JudgeNames(reader, shown[i], pages[i]);
  });
  if (!lacking.empty()) GTEST_SKIP() << "only some scripts were shown: " << lacking;
}

constexpr char kLohitDevanagari[] = "/usr/share/fonts/truetype/lohit-devanagari/Lohit-Devanagari.ttf";
#define NOTO(name) "/usr/share/fonts/truetype/noto/" name "-Regular.ttf"

struct Sentence {
  const char *name;
  const char *package;
  const char *font;
  const char *given;  // with its directional mark
  WorstOfReaders worst;
};

const std::vector<Sentence> &Sentences() {
  static const std::vector<Sentence> sentences{
      {"Vietnamese, taken apart", "fonts-dejavu-core", kDejaVuSans, "Tie\u0302\u0301ng Vie\u0323\u0302t", kComposed},
      {"CFF outlines", "fonts-ebgaramond", kEbGaramond, "Office x\u0301 a\u0308 m\u0304 fl\u00E2ner", kComposed},
      {"A variable font", "fonts-inter-variable", kInterVariable, "Office x\u0301 a\u0308 m\u0304", kComposed},
      {"A collection", "fonts-wqy-microhei", kMicroHei, "天地玄黄，宇宙洪荒。", kAllExact},
      {"Hindi", "fonts-lohit-deva", kLohitDevanagari, "सभी मनुष्यों को गौरव और अधिकारों के मामले में जन्मजात स्वतन्त्रता",
       kAllExact},
      {"Hindi with joiners", "fonts-noto-core", NOTO("NotoSansDevanagari"), "क्\u200Dष क्\u200Cष र्\u200Dय", kAllExact},
      {"Sinhala with joiners", "fonts-noto-core", NOTO("NotoSansSinhala"), "ශ්\u200Dරී ලංකා ප්\u200Dරජාතන්ත්\u200Dරවාදී",
       kAllExact},
      {"Tamil", "fonts-noto-core", NOTO("NotoSansTamil"), "மனிதப் பிறிவியினர் சகலரும் சுதந்திரமாகவே", kAllExact},
      {"Thai", "fonts-tlwg-garuda-ttf", kGaruda, "ที่นี่น้ำใจผู้ใหญ่ปั้นก๊วยเตี๋ยว", kAllExact},
      {"Khmer", "fonts-noto-core", NOTO("NotoSansKhmer"), "មនុស្សទាំងអស់កើតមកមានសេរីភាពនិងភាពស្មើៗគ្នា", kAllExact},
      {"Myanmar", "fonts-noto-core", NOTO("NotoSansMyanmar"), "လူတိုင်းသည်တူညီလွတ်လပ်သောဂုဏ်သိက္ခာဖြင့်", kAllExact},
      {"Tibetan", "fonts-noto-core", NOTO("NotoSerifTibetan"), "འགྲོ་བ་མིའི་རིགས་རྒྱུད་ཡོངས་ལ་", kAllExact},
      {"Arabic with digits and brackets", "fonts-hosny-amiri", kAmiri, "\u200Fالعدد 123 (مئة) هنا", kRightToLeft},
      {"Arabic, vocalised", "fonts-hosny-amiri", kAmiri, "\u200Fمُحَمَّدٌ رَسُولُ", kRightToLeft},
      {"Hebrew with digits and brackets", "fonts-dejavu-core", kDejaVuSans, "\u200Fשלום 2024 (עולם), תודה.",
       kRightToLeft},
      {"Hebrew, pointed", "fonts-sil-ezra", kEzra, "\u200Fבְּרֵאשִׁית", kRightToLeft},
      {"Urdu", "fonts-noto-core", NOTO("NotoNastaliqUrdu"), "\u200Fتمام انسان آزاد", kRightToLeft},
      {"Persian with joiners", "fonts-hosny-amiri", kAmiri, "\u200Fمی\u200Cخواهم خانه\u200Cها", kRightToLeft},
      {"An Arabic percentage",
       "fonts-hosny-amiri",
       kAmiri,
       "\u200Fالنسبة ٤٥٪ فقط",
       {kMarks, kOrder, kOrder, kOrder, kOrder}},
      {"English with a Hebrew word", "fonts-dejavu-core", kDejaVuSans, "\u200EThe word שלום means peace", kMixed},
      {"English with Hebrew in brackets", "fonts-dejavu-core", kDejaVuSans, "\u200EPeace (שלום עולם) in brackets",
       kMixedWords},
  };
  return sentences;
}

class CopiedSentencesTest : public PluginTest {};

TEST_F(CopiedSentencesTest, ComeBackAsWellAsReadersCan) {
  const Document document = NewDocument();
  for (const Sentence &sentence : Sentences()) {
    QUILLBAR_NEEDS_FONT(sentence.font, sentence.package);
    const ScriptObject font = document.CallObject("LoadTrueTypeFont", NewFolderItem(sentence.font));
    ASSERT_FALSE(font.IsNil()) << sentence.name;
    ShowLines(document, font, {sentence.given});
  }
  EXPECT_THAT(document.TakeFailures(), testing::IsEmpty());
  AskReaders(document, [](TextReader reader, const std::vector<PageLines> &pages) {
    ASSERT_EQ(pages.size(), Sentences().size());
    for (std::size_t i = 0; i < pages.size(); ++i) {
      const Sentence &sentence = Sentences()[i];
      std::string text = sentence.given;
      for (const std::string_view mark : {"\u200E", "\u200F"}) {
        if (text.starts_with(mark)) text.erase(0, mark.size());
      }
      EXPECT_EQ(Disagreements(reader, {text}, pages[i], sentence.worst), "")
          << sentence.name << " by " << testing::PrintToString(reader);
    }
  });
}

}  // namespace
}  // namespace quillbar::test
