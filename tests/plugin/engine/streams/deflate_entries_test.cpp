// SPDX-License-Identifier: MIT
// Compression through the process-wide entry points, with zlib behind them.
#include "plugin/engine/streams/deflate_entries.h"
#include "plugin/engine/pages/page_tree.h"

#include <gmock/gmock.h>
#include <zlib.h>

#include "tests/plugin/engine/driver/deflate_scope.h"
#include "tests/plugin/engine/driver/library_document.h"
#include "tests/support/pdf_file.h"
#include "tests/support/stream_record.h"

namespace quillbar {
namespace {

using testing::AllOf;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Le;
using testing::StartsWith;

// What the entry points were called with, and what they are to answer.
struct Recording {
  int level = 0;
  int recordSize = 0;
  std::string version;
  std::vector<unsigned> inputSizes;
  std::vector<unsigned> outputSizes;
  std::vector<int> flushes;
  int begun = 0;
  int ended = 0;
  int answerOfInit = Z_OK;
  int answerOfDeflate = Z_OK;
  bool makesNoProgress = false;
  int answerWithoutProgress = Z_OK;
  bool saysItIsDone = false;  // after all that it takes
  bool goesAway = false;      // after its first step
};
Recording recording;

int RecordInit(z_stream_s *stream, int level, const char *version, int recordSize) {
  recording.level = level;
  recording.version = version;
  recording.recordSize = recordSize;
  if (recording.answerOfInit != Z_OK) return recording.answerOfInit;
  ++recording.begun;
  return deflateInit_(stream, level, version, recordSize);
}

int RecordDeflate(z_stream_s *stream, int flush) {
  recording.inputSizes.push_back(stream->avail_in);
  recording.outputSizes.push_back(stream->avail_out);
  recording.flushes.push_back(flush);
  // So that a call without end fails the test instead of hanging it.
  if (recording.flushes.size() > 10'000) return Z_STREAM_ERROR;
  if (recording.answerOfDeflate != Z_OK) return recording.answerOfDeflate;
  if (recording.makesNoProgress) return recording.answerWithoutProgress;
  if (recording.goesAway) {
    engine::deflateEntry = nullptr;
    engine::deflateEndEntry = nullptr;
  }
  const int result = deflate(stream, flush);
  return recording.saysItIsDone && result == Z_OK ? Z_STREAM_END : result;
}

int RecordEnd(z_stream_s *stream) {
  ++recording.ended;
  return deflateEnd(stream);
}

class DeflateEntries : public testing::Test {
 protected:
  DeflateEntries() { recording = {}; }

  // Lines on a page of the document; more than one chunk of 4096 bytes.
  void DrawOnCompressedPage() {
    ASSERT_EQ(Call<HPDF_SetCompressionMode>(document_.document, HPDF_COMP_ALL), HPDF_OK);
    page_ = Call<engine::AddPage>(document_.document);
    Call<HPDF_Page_MoveTo>(page_, 0.0F, 0.0F);
    for (int i = 0; i < 1000; ++i) {
      Call<HPDF_Page_LineTo>(page_, static_cast<float>(i) * 0.37F, static_cast<float>(i * i % 797));
    }
    Call<HPDF_Page_Stroke>(page_);
  }

  const DeflateScope scope_{&RecordInit, &RecordDeflate, &RecordEnd};
  LibraryDocument document_;
  HPDF_Page page_ = nullptr;
};

TEST(DeflateEntriesAtStart, NoneIsSet) {
  EXPECT_EQ(engine::deflateInitEntry, nullptr);
  EXPECT_EQ(engine::deflateEntry, nullptr);
  EXPECT_EQ(engine::deflateEndEntry, nullptr);
}

TEST_F(DeflateEntries, StreamsAreWrittenThroughThem) {
  DrawOnCompressedPage();
  const std::string content = ContentOf(page_);
  const std::string saved = document_.SaveToString();
  EXPECT_LT(saved.size(), content.size());
  test::PdfFile pdf(saved);
  EXPECT_EQ(pdf.Content(0), content);
  EXPECT_EQ(pdf.Page(0).getKey("/Contents").getDict().getKey("/Filter").unparse(), "[ /FlateDecode ]");
  EXPECT_EQ(recording.begun, recording.ended);
  EXPECT_THAT(document_.TakeCodes(), IsEmpty());
}

TEST_F(DeflateEntries, AreCalledWithTheDefaultLevelTheVersionAndTheRecordsSize) {
  DrawOnCompressedPage();
  document_.SaveToString();
  EXPECT_EQ(recording.level, -1);
  EXPECT_EQ(recording.version, "1.1.3");
  EXPECT_EQ(recording.recordSize, test::kStreamRecordSize);
}

TEST_F(DeflateEntries, InputComesInChunksAndIsFinishedAtTheEnd) {
  DrawOnCompressedPage();
  document_.SaveToString();
  EXPECT_EQ(recording.inputSizes.front(), 4096U);
  EXPECT_EQ(recording.outputSizes.front(), 4518U);
  EXPECT_THAT(recording.inputSizes, Each(Le(4096U)));
  EXPECT_EQ(recording.flushes.front(), Z_NO_FLUSH);
  EXPECT_EQ(recording.flushes.back(), Z_FINISH);
  EXPECT_TRUE(std::is_sorted(recording.flushes.begin(), recording.flushes.end()));
}

TEST_F(DeflateEntries, ANullEntryEndsTheWriteWithTheZlibError) {
  DrawOnCompressedPage();
  for (const int missing : {0, 1, 2}) {
    engine::deflateInitEntry = missing == 0 ? nullptr : &RecordInit;
    engine::deflateEntry = missing == 1 ? nullptr : &RecordDeflate;
    engine::deflateEndEntry = missing == 2 ? nullptr : &RecordEnd;
    EXPECT_EQ(Call<engine::SaveToMemory>(document_.document), HPDF_STATUS{HPDF_ZLIB_ERROR}) << missing;
    EXPECT_THAT(document_.TakeCodes(), ElementsAre(HPDF_ZLIB_ERROR)) << missing;
    EXPECT_EQ(recording.begun, 0) << missing;
  }
}

TEST_F(DeflateEntries, ARefusedStartIsReportedWithTheCompressorsCode) {
  DrawOnCompressedPage();
  recording.answerOfInit = Z_MEM_ERROR;
  EXPECT_EQ(Call<engine::SaveToMemory>(document_.document), HPDF_STATUS{HPDF_ZLIB_ERROR});
  ASSERT_EQ(document_.failures.size(), 1U);
  EXPECT_EQ(static_cast<int>(document_.failures[0].detail), Z_MEM_ERROR);
}

TEST_F(DeflateEntries, AFailedStepIsReportedWithTheCompressorsCodeAndEnded) {
  DrawOnCompressedPage();
  recording.answerOfDeflate = Z_DATA_ERROR;
  EXPECT_EQ(Call<engine::SaveToMemory>(document_.document), HPDF_STATUS{HPDF_ZLIB_ERROR});
  ASSERT_EQ(document_.failures.size(), 1U);
  EXPECT_EQ(static_cast<int>(document_.failures[0].detail), Z_DATA_ERROR);
  EXPECT_EQ(recording.begun, 1);
  EXPECT_EQ(recording.ended, 1);
}

TEST_F(DeflateEntries, ACompressorThatNeverGetsOnIsNotCalledForEver) {
  DrawOnCompressedPage();
  recording.makesNoProgress = true;
  for (const int answer : {Z_OK, Z_STREAM_END}) {
    recording.answerWithoutProgress = answer;
    recording.flushes.clear();
    EXPECT_EQ(Call<engine::SaveToMemory>(document_.document), HPDF_STATUS{HPDF_ZLIB_ERROR}) << answer;
    EXPECT_EQ(recording.flushes.size(), 1U) << answer;
    ASSERT_EQ(document_.failures.size(), 1U) << answer;
    EXPECT_EQ(static_cast<int>(document_.failures[0].detail), Z_BUF_ERROR) << answer;
    document_.failures.clear();
  }
  EXPECT_EQ(recording.begun, recording.ended);
}

TEST_F(DeflateEntries, AllIsHandedToACompressorThatSaysTooEarlyThatItIsDone) {
  DrawOnCompressedPage();
  recording.saysItIsDone = true;
  document_.SaveToString();
  EXPECT_THAT(document_.TakeCodes(), IsEmpty());
  ASSERT_GT(recording.flushes.size(), 2U);
  EXPECT_EQ(recording.flushes.front(), Z_NO_FLUSH);
  EXPECT_EQ(recording.flushes.back(), Z_FINISH);
  EXPECT_EQ(recording.begun, recording.ended);
}

TEST_F(DeflateEntries, ACompressorThatGoesAwayMeanwhileEndsTheWriteWithTheZlibError) {
  DrawOnCompressedPage();
  recording.goesAway = true;
  EXPECT_EQ(Call<engine::SaveToMemory>(document_.document), HPDF_STATUS{HPDF_ZLIB_ERROR});
  EXPECT_EQ(recording.flushes.size(), 1U);
  ASSERT_EQ(document_.failures.size(), 1U);
  EXPECT_EQ(static_cast<int>(document_.failures[0].detail), Z_STREAM_ERROR);
}

TEST_F(DeflateEntries, TheDocumentCanBeSavedAfterAFailure) {
  DrawOnCompressedPage();
  recording.answerOfDeflate = Z_DATA_ERROR;
  EXPECT_EQ(document_.SaveToString(), "");
  recording.answerOfDeflate = Z_OK;
  document_.TakeCodes();
  test::PdfFile pdf(document_.SaveToString());
  EXPECT_EQ(pdf.PageCount(), 1U);
  EXPECT_THAT(document_.TakeCodes(), IsEmpty());
}

}  // namespace
}  // namespace quillbar
