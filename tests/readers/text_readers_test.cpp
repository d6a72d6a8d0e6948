// SPDX-License-Identifier: MIT
// Five readers copy the text that was shown, and copy it again after other programs have rewritten the file.
#include <gmock/gmock.h>

#include <algorithm>
#include <functional>
#include <map>
#include <string>
#include <tuple>
#include <vector>

#include "tests/readers/known_limits.h"
#include "tests/readers/shown_texts.h"
#include "tests/readers/text_readers.h"
#include "tests/readers/treatment.h"
#include "tests/support/qpdf_headers.h"
#include "tests/support/reader_versions.h"
#include "tests/support/real_fonts.h"
#include "tests/support/sample.h"
#include "tests/support/temporary_folder.h"

namespace quillbar::test {
namespace {

namespace fs = std::filesystem;

// The readers to ask. Ghostscript's reader misreads Ghostscript's own files: it reads the ranges that Ghostscript
// writes as another text, whatever program wrote the file it was given.
std::vector<TextReader> ReadersFor(Treatment treatment) {
  std::vector<TextReader> readers;
  for (const TextReader reader : kTextReaders) {
    if (treatment != Treatment::kRewrittenByGhostscript || reader != TextReader::kGhostscript)
      readers.push_back(reader);
  }
  return readers;
}

// Asks each reader that can be used here and names those that can't.
void AskReaders(const std::vector<TextReader> &readers, const std::function<void(TextReader)> &ask) {
  std::string leftOut;
  for (const TextReader reader : readers) {
    const std::string reason = ReasonToLeaveOut(reader);
    if (reason.empty())
      ask(reader);
    else
      leftOut += (leftOut.empty() ? "" : "; ") + reason;
  }
  if (!leftOut.empty()) GTEST_SKIP() << "only some readers were asked: the test " << leftOut;
}

// One line for each line of the page that was copied as another one.
std::string DifferenceOf(const std::string &page, const PageLines &expected, const PageLines &read) {
  std::string text;
  for (std::size_t i = 0; i < std::max(expected.size(), read.size()); ++i) {
    const std::string shown = i < expected.size() ? expected[i] : "nothing";
    const std::string found = i < read.size() ? read[i] : "nothing";
    if (shown != found)
      text += page + ", line " + std::to_string(i + 1) + ": " + shown + " came back as " + found + "\n";
  }
  return text;
}

// The lines of all pages that the reader copies as other ones.
std::string Differences(TextReader reader, Treatment treatment, const fs::path &file,
                        const std::vector<ShownPage> &shown) {
  std::vector<PageLines> read = LinesOf(reader, file);
  if (read.size() != shown.size())
    return std::to_string(read.size()) + " pages instead of " + std::to_string(shown.size());
  std::string differences;
  for (std::size_t i = 0; i < read.size(); ++i) {
    const std::vector<KnownLimit> limits = KnownLimitsOf(reader, treatment, shown[i].name);
    PageLines expected;
    for (const ShownLine &line : shown[i].lines)
      expected.push_back(WithLimits(TurnsRightToLeft(reader) ? line.asRead : line.leftToRight, limits));
    if (reader == TextReader::kMuPdf && MuPdfDividesMarks() && shown[i].name.starts_with("Helvetica in ")) {
      std::ranges::transform(expected, expected.begin(), &WithoutBlanksBesideMarks);
      std::ranges::transform(read[i], read[i].begin(), &WithoutBlanksBesideMarks);
    }
    if (read[i] != expected) differences += DifferenceOf(shown[i].name, expected, read[i]);
  }
  return differences;
}

class TextReadersTest : public PluginTest, public testing::WithParamInterface<std::tuple<FontKind, Treatment>> {};

TEST_P(TextReadersTest, TextComesBackAsItWentIn) {
  const auto [kind, treatment] = GetParam();
  for (const RealFont &font : RealTrueTypeFonts()) QUILLBAR_NEEDS_FONT(font.path, font.package);
  QUILLBAR_NEEDS_FONT(kRomanMetrics, "fonts-urw-base35");
  QUILLBAR_NEEDS_FONT("/usr/share/fonts/X11/Type1/a010013d.afm", "t1-cyrillic");
  const Document document = NewDocument();
  const ShownTexts shown(document, kind);
  EXPECT_THAT(document.TakeFailures(), testing::IsEmpty());
  const TemporaryFolder folder;
  WriteFile(folder / "saved.pdf", document.Saved());
  const fs::path file = Treated(treatment, folder / "saved.pdf");
  AskReaders(ReadersFor(treatment), [&, treatment = treatment](TextReader reader) {
    EXPECT_EQ(Differences(reader, treatment, file, shown.pages()), "") << testing::PrintToString(reader);
  });
}

// Readers and the programs that rewrite are the same ones wherever the plugin runs: the plugin's own file is a sample.
std::vector<Treatment> TreatmentsHere() {
  if (TakesSamples()) return {Treatment::kAsWritten};
  return {Treatment::kAsWritten, Treatment::kRewrittenByGhostscript, Treatment::kLinearizedByQpdf};
}

std::string KindName(FontKind kind) {
  constexpr const char *kNames[] = {"TrueType", "Standard", "Type1"};
  return kNames[static_cast<int>(kind)];
}

INSTANTIATE_TEST_SUITE_P(Fonts, TextReadersTest,
                         testing::Combine(testing::Values(FontKind::kTrueType, FontKind::kStandard, FontKind::kType1),
                                          testing::ValuesIn(TreatmentsHere())),
                         [](const auto &made) {
                           return KindName(std::get<0>(made.param)) + "_" + NameOf(std::get<1>(made.param));
                         });

// A file of another writer: glyphs of Helvetica, each with the character that it means, between two words.
std::string OtherWritersFile(const std::vector<KnownLimit> &limits) {
  struct Glyph {
    const char *name;
    const char *character;  // as UTF-16
    int width;
  };
  static const std::map<std::string, Glyph> kGlyphs{
      {"\u00A0", {"space", "00A0", 278}},   {"\u00AD", {"hyphen", "00AD", 333}}, {"\uFB01", {"fi", "FB01", 500}},
      {"\uFB02", {"fl", "FB02", 500}},      {"\u0394", {"Delta", "0394", 612}},  {"\u03BC", {"mu", "03BC", 556}},
      {"\u25CA", {"lozenge", "25CA", 471}}, {"\u03A9", {"Omega", "03A9", 768}},
  };
  const std::shared_ptr<QPDF> file = QPDF::create();
  file->emptyPDF();
  for (const KnownLimit &limit : limits) {
    const Glyph &glyph = kGlyphs.at(limit.shown);
    const std::string map =
        R"(/CIDInit /ProcSet findresource begin 12 dict begin begincmap /CMapName /Own def /CMapType 2 def
1 begincodespacerange <00> <FF> endcodespacerange
6 beginbfchar <D7> <)" +
        std::string(glyph.character) +
        "> <65> <0065> <6E> <006E> <6F> <006F> <74> <0074> <77> <0077> endbfchar\nendcmap end end";
    std::string widths;
    for (int code = 'e'; code < 0xD7; ++code) widths += code == 'w' ? "722 " : code == 't' ? "278 " : "556 ";
    widths += std::to_string(glyph.width);
    QPDFObjectHandle font = file->makeIndirectObject(QPDFObjectHandle::parse(
        "<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica /FirstChar 101 /LastChar 215 /Widths [" + widths +
        "] /Encoding << /Type /Encoding /BaseEncoding /WinAnsiEncoding /Differences [215 /" + glyph.name + "] >> >>"));
    font.replaceKey("/ToUnicode", QPDFObjectHandle::newStream(file.get(), map));
    QPDFObjectHandle page = file->makeIndirectObject(
        QPDFObjectHandle::parse("<< /Type /Page /MediaBox [0 0 300 100] /Resources << /Font << >> >> >>"));
    page.getKey("/Resources").getKey("/Font").replaceKey("/One", font);
    page.replaceKey("/Contents", QPDFObjectHandle::newStream(file.get(), "BT /One 20 Tf 10 50 Td (one\\327two) Tj ET"));
    file->addPage(page, false);
  }
  QPDFWriter writer(*file);
  writer.setOutputMemory();
  writer.write();
  const std::shared_ptr<Buffer> buffer = writer.getBufferSharedPointer();
  return {reinterpret_cast<const char *>(buffer->getBuffer()), buffer->getSize()};
}

TEST(KnownLimits, AreTheSameWithFilesOfOtherWriters) {
  const TemporaryFolder folder;
  WriteFile(folder / "other.pdf", OtherWritersFile(KnownLimits()));
  for (const Treatment treatment : TreatmentsHere()) {
    const fs::path file = Treated(treatment, folder / "other.pdf");
    AskReaders(ReadersFor(treatment), [&](TextReader reader) {
      const std::vector<PageLines> read = LinesOf(reader, file);
      ASSERT_EQ(read.size(), KnownLimits().size());
      for (std::size_t i = 0; i < read.size(); ++i) {
        const KnownLimit &limit = KnownLimits()[i];
        if (limit.treatments.front() != treatment || std::ranges::find(limit.readers, reader) == limit.readers.end())
          continue;
        // The remains that Ghostscript left may be another limit of the reader.
        const std::string whole = std::string("one") + limit.read + "two";
        EXPECT_THAT(read[i], testing::ElementsAre(WithLimits(whole, KnownLimitsOf(reader, treatment, ""))))
            << testing::PrintToString(reader) << ": " << limit.reason;
      }
    });
  }
}

}  // namespace
}  // namespace quillbar::test
