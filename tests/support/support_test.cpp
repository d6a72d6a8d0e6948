// SPDX-License-Identifier: MIT
// The tools that judge must themselves tell good from bad.
#include <gmock/gmock.h>
#include <gtest/gtest-spi.h>

#include <limits>

#include "tests/support/document_readers.h"
#include "tests/support/judges.h"
#include "tests/support/pdf_file.h"
#include "tests/support/process.h"
#include "tests/support/qpdf_headers.h"
#include "tests/support/temporary_folder.h"

namespace quillbar::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

// A one-page file with this content stream, written by qpdf.
std::string FileWithContent(const std::string &content) {
  const std::shared_ptr<QPDF> file = QPDF::create();
  file->emptyPDF();
  QPDFObjectHandle page = file->makeIndirectObject(QPDFObjectHandle::parse(
      "<< /Type /Page /MediaBox [0 0 200 100] /Resources << /Font << /F1 << /Type /Font /Subtype /Type1 "
      "/BaseFont /Helvetica >> >> >> >>"));
  page.replaceKey("/Contents", QPDFObjectHandle::newStream(file.get(), content));
  file->addPage(page, false);
  QPDFWriter writer(*file);
  writer.setOutputMemory();
  writer.setStreamDataMode(qpdf_s_uncompress);
  writer.write();
  const std::shared_ptr<Buffer> buffer = writer.getBufferSharedPointer();
  return {reinterpret_cast<const char *>(buffer->getBuffer()), buffer->getSize()};
}

TEST(PdfFile, ReadsOperatorsWithTheirOperands) {
  const PdfFile file(FileWithContent("10 821.89001 m [3 1] 0 d /F1 12 Tf (a\\(b) Tj S"));
  EXPECT_THAT(file.Operators(0), ElementsAre(Op("m", 10, 821.89F), Op("d", std::vector<double>{3, 1}, 0),
                                             Op("Tf", "/F1", 12), Op("Tj", "a(b"), Op("S")));
  EXPECT_THAT(file.MediaBox(0), ElementsAre(0, 0, 200, 100));
}

TEST(PdfFile, OperatorsDifferInNameNumberAndCount) {
  const std::vector<ContentOperator> operators = PdfFile(FileWithContent("10 20.00002 m")).Operators(0);
  EXPECT_THAT(operators, ElementsAre(Op("m", 10, 20.00002F)));
  EXPECT_THAT(operators, Not(ElementsAre(Op("m", 10, 20))));
  EXPECT_THAT(operators, Not(ElementsAre(Op("l", 10, 20.00002F))));
  EXPECT_THAT(operators, Not(ElementsAre(Op("m", 10))));
  EXPECT_THAT(operators, Not(ElementsAre(Op("m", 10, "20.00002"))));
}

TEST(PrintedForm, SmallNumbersKeepFiveDigits) {
  EXPECT_TRUE(IsPrintedForm(0.0012346, 0.00123456F));
  EXPECT_FALSE(IsPrintedForm(0.00123, 0.00123456F));
  EXPECT_TRUE(IsPrintedForm(0.33333, 1.0F / 3));
  EXPECT_FALSE(IsPrintedForm(0.3333, 1.0F / 3));
}

TEST(Judges, AcceptAGoodFile) {
  const std::string good = FileWithContent("BT /F1 12 Tf 10 10 Td (Hello) Tj ET 0 0 m 10 10 l S");
  EXPECT_TRUE(JudgedFlawless(std::string_view(good)));
  EXPECT_THAT(ExtractedText(good), HasSubstr("Hello"));
}

TEST(Judges, RefuseABadFile) {
  const TemporaryFolder folder;
  WriteFile(folder / "bad.pdf", FileWithContent("10 10 m (unfinished 20 l S"));
  EXPECT_FALSE(Judged(Judge::kPoppler, folder / "bad.pdf"));
  EXPECT_FALSE(Judged(Judge::kMuPdf, folder / "bad.pdf"));
  WriteFile(folder / "cut.pdf", FileWithContent("0 0 m").substr(0, 200));
  EXPECT_FALSE(Judged(Judge::kQpdf, folder / "cut.pdf"));
  EXPECT_FALSE(Judged(Judge::kGhostscript, folder / "cut.pdf"));
}

TEST(Rendering, PixelsArePointsFromTheTopLeft) {
  const Rendering page(FileWithContent("1 0 0 rg 0 90 20 10 re f"));
  EXPECT_EQ(page.width(), 200);
  EXPECT_EQ(page.height(), 100);
  EXPECT_EQ(page.PixelAt(5, 5), 0xFF0000U);
  EXPECT_EQ(page.PixelAt(25, 5), 0xFFFFFFU);
  EXPECT_EQ(page.PixelAt(5, 15), 0xFFFFFFU);
}

TEST(Process, GivesBothOutputsAndTheExitStatus) {
  const ProcessResult result = RunProcess({"sh", "-c", "cat; echo wrong >&2; exit 3"}, {.input = "text"});
  EXPECT_EQ(result.exitStatus, 3);
  EXPECT_EQ(result.output, "text");
  EXPECT_EQ(result.errors, "wrong\n");
  EXPECT_THROW(RunProcess({"no-such-program-anywhere"}), std::runtime_error);
}

TEST(Process, EndsAProgramThatTakesTooLong) {
  EXPECT_EQ(RunProcess({"sleep", "30"}, {.timeoutSeconds = 1}).exitStatus, 128 + 9);
}

class DocumentReaderTest : public testing::TestWithParam<DocumentReader> {
 protected:
  // Two pages with everything that is read, written by qpdf.
  static std::string FileWithEverything() {
    const std::string onePage = FileWithContent("BT /F1 12 Tf 10 50 Td (one) Tj 0 -20 Td (two) Tj ET");
    const std::shared_ptr<QPDF> file = QPDF::create();
    file->processMemoryFile("page", onePage.data(), onePage.size());
    const QPDFObjectHandle first = file->getAllPages().at(0);
    file->addPage(file->makeIndirectObject(QPDFObjectHandle::parse("<< /Type /Page /MediaBox [0 0 200 100] >>")),
                  false);
    QPDFObjectHandle second = file->getAllPages().at(1);
    const auto made = [&](const std::string &text) { return file->makeIndirectObject(QPDFObjectHandle::parse(text)); };
    QPDFObjectHandle note = made("<< /Type /Annot /Subtype /Text /Rect [0 0 9 9] /Contents <FEFF03A9D83DDE00> >>");
    QPDFObjectHandle web =
        made("<< /Type /Annot /Subtype /Link /Rect [9 0 19 9] /A << /S /URI /URI (https://example.org/a?b) >> >>");
    QPDFObjectHandle inner = made("<< /Type /Annot /Subtype /Link /Rect [9 0 19 9] >>");
    QPDFObjectHandle toSecond = QPDFObjectHandle::newArray({second, QPDFObjectHandle::newName("/Fit")});
    inner.replaceKey("/Dest", toSecond);
    second.replaceKey("/Annots", QPDFObjectHandle::newArray({note, web, inner}));
    QPDFObjectHandle outlines = made("<< /Type /Outlines /Count 1 >>");
    QPDFObjectHandle upper = made("<< /Title <FEFF00E900F1> /Count -1 >>");
    QPDFObjectHandle lower = made("<< /Title (lower) >>");
    for (const char *end : {"/First", "/Last"}) {
      outlines.replaceKey(end, upper);
      upper.replaceKey(end, lower);
    }
    upper.replaceKey("/Parent", outlines);
    upper.replaceKey("/Dest", QPDFObjectHandle::newArray({first, QPDFObjectHandle::newName("/Fit")}));
    lower.replaceKey("/Parent", upper);
    lower.replaceKey("/Dest", toSecond);
    file->getRoot().replaceKey("/Outlines", outlines);
    file->getTrailer().replaceKey("/Info", made("<< /Title <FEFF65E5672C> >>"));
    QPDFWriter writer(*file);
    writer.setOutputMemory();
    writer.write();
    const std::shared_ptr<Buffer> buffer = writer.getBufferSharedPointer();
    return {reinterpret_cast<const char *>(buffer->getBuffer()), buffer->getSize()};
  }
};

TEST_P(DocumentReaderTest, FindsWhatTheFileHas) {
  QUILLBAR_NEEDS_READER(GetParam());
  const ReadDocument read = ReadBy(GetParam(), FileWithEverything());
  ASSERT_EQ(read.pages.size(), 2u);
  EXPECT_THAT(read.pages[0].text, testing::MatchesRegex("one\r?\ntwo"));
  EXPECT_EQ(read.pages[1].text, "");
  EXPECT_THAT(read.pages[0].annotations, testing::IsEmpty());
  const std::vector<ReadAnnotation> &annotations = read.pages[1].annotations;
  ASSERT_EQ(annotations.size(), 3u);
  EXPECT_EQ(annotations[0].kind, "Text");
  EXPECT_EQ(annotations[0].contents, "\u03A9\U0001F600");
  EXPECT_EQ(annotations[1].kind, "Link");
  EXPECT_EQ(annotations[1].address, "https://example.org/a?b");
  EXPECT_EQ(annotations[1].page, 0);
  EXPECT_EQ(annotations[2].address, "");
  EXPECT_EQ(annotations[2].page, 2);
  ASSERT_EQ(read.bookmarks.size(), 1u);
  EXPECT_EQ(read.bookmarks[0].title, "\u00E9\u00F1");
  EXPECT_EQ(read.bookmarks[0].page, 1);
  ASSERT_EQ(read.bookmarks[0].children.size(), 1u);
  EXPECT_EQ(read.bookmarks[0].children[0].title, "lower");
  EXPECT_EQ(read.bookmarks[0].children[0].page, 2);
  EXPECT_EQ(read.information.at("Title"), "\u65E5\u672C");
}

TEST_P(DocumentReaderTest, ReadsManyFilesInTheirOrder) {
  QUILLBAR_NEEDS_READER(GetParam());
  const TemporaryFolder folder;
  std::vector<std::filesystem::path> files;
  for (const char *text : {"first", "second", "third"}) {
    files.push_back(folder / (text + std::string(".pdf")));
    WriteFile(files.back(), FileWithContent("BT /F1 12 Tf 10 50 Td (" + std::string(text) + ") Tj ET"));
  }
  const std::vector<ReadDocument> read = ReadBy(GetParam(), files);
  ASSERT_EQ(read.size(), 3u);
  EXPECT_EQ(read[0].pages.at(0).text, "first");
  EXPECT_EQ(read[2].pages.at(0).text, "third");
}

TEST_P(DocumentReaderTest, FailsOnAFileThatIsNone) {
  QUILLBAR_NEEDS_READER(GetParam());
  testing::TestPartResultArray failures;
  {
    const testing::ScopedFakeTestPartResultReporter reporter(
        testing::ScopedFakeTestPartResultReporter::INTERCEPT_ONLY_CURRENT_THREAD, &failures);
    ReadBy(GetParam(), "no PDF");
  }
  EXPECT_GT(failures.size(), 0);
}

INSTANTIATE_TEST_SUITE_P(Readers, DocumentReaderTest, testing::ValuesIn(kAllDocumentReaders),
                         [](const auto &made) { return NameOf(made.param); });

}  // namespace
}  // namespace quillbar::test
