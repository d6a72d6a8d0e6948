// The tools that judge must themselves tell good from bad.
#include <gmock/gmock.h>

#include <limits>
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFWriter.hh>

#include "tests/support/judges.h"
#include "tests/support/pdf_file.h"
#include "tests/support/process.h"
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

}  // namespace
}  // namespace quillbar::test
