// SPDX-License-Identifier: MIT
// Streams in memory: what is written is read back, whatever the blocks that it is in, and takes little more memory.
#include "plugin/engine/streams/memory_stream.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cstdlib>
#include <map>

#include "plugin/engine/pages/content_writer.h"
#include "plugin/engine/pages/page_tree.h"
#include "plugin/engine/streams/stream.h"
#include "tests/plugin/engine/driver/library_document.h"

namespace quillbar {
namespace {

using testing::StartsWith;

std::map<void *, HPDF_UINT> blocks;  // that are in use, and their bytes
std::size_t bytesInUse = 0, mostInUse = 0;
int callsUntilFailure = -1;  // of the allocator, which fails once; negative: never

void *Allocate(HPDF_UINT size) {
  if (callsUntilFailure >= 0 && callsUntilFailure-- == 0) return nullptr;
  void *block = std::malloc(size);
  blocks[block] = size;
  bytesInUse += size;
  mostInUse = std::max(mostInUse, bytesInUse);
  return block;
}

void Free(void *block) {
  bytesInUse -= blocks[block];
  blocks.erase(block);
  std::free(block);
}

class MemoryStreams : public testing::Test {
 protected:
  MemoryStreams() {
    blocks.clear();
    bytesInUse = mostInUse = 0;
    callsUntilFailure = -1;
    document_ = HPDF_NewEx([](HPDF_STATUS, HPDF_STATUS, void *) {}, &Allocate, &Free, 0, nullptr);
    before_ = bytesInUse;
    stream_ = HPDF_MemStream_New(document_->mmgr, 0);
  }
  ~MemoryStreams() override {
    HPDF_Stream_Free(stream_);
    EXPECT_EQ(bytesInUse, before_);
    HPDF_Free(document_);
    EXPECT_EQ(bytesInUse, 0U);
  }

  // Appends, in one of the two ways.
  void Write(const std::string &text, bool isContent) {
    if (isContent) {
      engine::ContentWriter content(stream_);
      content.AppendText(text);
      ASSERT_EQ(content.Finish(), HPDF_STATUS{HPDF_OK});
    } else {
      ASSERT_EQ(HPDF_Stream_Write(stream_, reinterpret_cast<const HPDF_BYTE *>(text.data()),
                                  static_cast<HPDF_UINT>(text.size())),
                HPDF_STATUS{HPDF_OK});
    }
    written_ += text;
  }

  // Text that is nowhere the same.
  static std::string Text(std::size_t size) {
    std::string text;
    static unsigned number = 0;
    while (text.size() < size) text += std::to_string(number++) + ' ';
    text.resize(size);
    return text;
  }

  HPDF_Doc document_;
  std::size_t before_;
  HPDF_Stream stream_;
  std::string written_;
};

TEST_F(MemoryStreams, GiveBackWhatPiecesOfAnySizeWrote) {
  for (const unsigned size :
       {0U, 1U, 250U, 5U, 1U, 255U, 256U, 3327U, 1U, 4096U, 4095U, 8193U, 40000U, 65536U, 1U, 200000U}) {
    for (const bool isContent : {false, true}) {
      Write(Text(size), isContent);
      ASSERT_TRUE(ContentOf(stream_) == written_) << size;
    }
  }
}

TEST_F(MemoryStreams, GoOnWhereTheyWereCutBack) {
  Write(Text(150'000), false);
  for (const HPDF_UINT size : {131'073U, 131'072U, 131'071U, 65'537U, 65'536U, 65'535U, 8192U, 4097U, 4096U, 4095U,
                               257U, 256U, 255U, 1U, 0U}) {
    engine::AsMemoryStream(stream_).CutBack(size);
    written_.resize(size);
    ASSERT_TRUE(ContentOf(stream_) == written_) << size;
    Write(Text(5), true);
    Write(Text(9000), false);
    ASSERT_TRUE(ContentOf(stream_) == written_) << size;
  }
}

// One block that isn't got, whichever it is, and the next one is there again.
TEST_F(MemoryStreams, HaveAllOfAWriteOrNothingWhenMemoryIsShortForAMoment) {
  bool failed = true;
  for (int call = 0; failed; ++call) {
    SCOPED_TRACE(call);
    callsUntilFailure = call;
    failed = false;
    for (const std::size_t size : {10U, 300U, 700U, 5000U, 20'000U, 70'000U, 140'000U}) {
      const std::string text = Text(size);
      const HPDF_STATUS status =
          HPDF_Stream_Write(stream_, reinterpret_cast<const HPDF_BYTE *>(text.data()), static_cast<HPDF_UINT>(size));
      HPDF_Error_Reset(document_->mmgr->error);
      if (status == HPDF_OK) {
        written_ += text;
      } else {
        EXPECT_EQ(status, HPDF_STATUS{HPDF_FAILD_TO_ALLOC_MEM});
        failed = true;
      }
      ASSERT_TRUE(ContentOf(stream_) == written_) << size;
    }
    ASSERT_LT(call, 200) << "the writes never all succeed";
    engine::AsMemoryStream(stream_).CutBack(0);
    written_.clear();
  }
}

TEST_F(MemoryStreams, TakeLittleMoreThanTheirContent) {
  Write("q 1 0 0 1 50 50 cm", true);
  EXPECT_LE(bytesInUse - before_, 500U);
  while (written_.size() < 300'000) {
    Write(Text(100), true);
    // Twice a short content, and a block and the list of blocks more than a long one.
    EXPECT_LE(bytesInUse - before_, std::min(2 * written_.size() + 500, written_.size() * 102 / 100 + 70'000));
  }
}

TEST_F(MemoryStreams, GiveSpareRoomBackAndGoOn) {
  engine::AsMemoryStream(stream_).GiveBackSpareRoom();
  for (const std::size_t size : {1U, 70U, 300U, 5000U, 70'000U, 140'000U}) {
    Write(Text(size), true);
    engine::AsMemoryStream(stream_).GiveBackSpareRoom();
    ASSERT_TRUE(ContentOf(stream_) == written_) << size;
    // An eighth of the last block may stay, and the list of blocks.
    EXPECT_LE(bytesInUse - before_, written_.size() + std::min(written_.size() / 7, std::size_t{9000}) + 500) << size;
    // Small pieces: the block grows again from any size.
    for (int piece = 0; piece < 300; ++piece) Write(Text(7), piece % 2 == 0);
    ASSERT_TRUE(ContentOf(stream_) == written_) << size;
  }
  callsUntilFailure = 0;
  engine::AsMemoryStream(stream_).GiveBackSpareRoom();
  EXPECT_LT(callsUntilFailure, 0);
  EXPECT_TRUE(ContentOf(stream_) == written_);
}

TEST_F(MemoryStreams, AreMovedBlockByBlock) {
  Write(Text(1'000'000), false);
  std::string moved(written_.size(), '\0');
  mostInUse = bytesInUse;
  const std::size_t atMost = bytesInUse;
  engine::AsMemoryStream(stream_).MoveTo(reinterpret_cast<HPDF_BYTE *>(moved.data()));
  EXPECT_TRUE(moved == written_);
  EXPECT_EQ(mostInUse, atMost);
  EXPECT_EQ(stream_->size, 0U);
  EXPECT_LE(bytesInUse - before_, 1000U);
  written_.clear();
  Write(Text(10'000), true);
  EXPECT_TRUE(ContentOf(stream_) == written_);
}

TEST_F(MemoryStreams, HoldASavedDocumentOnceUntilItIsTaken) {
  const HPDF_Page page = Call<engine::AddPage>(document_);
  const std::string content = Text(500'000);
  HPDF_Stream_WriteStr(static_cast<HPDF_PageAttr>(page->attr)->stream, content.c_str());
  const std::size_t unsaved = bytesInUse;
  ASSERT_EQ(Call<engine::SaveToMemory>(document_), HPDF_STATUS{HPDF_OK});
  const HPDF_UINT32 size = Call<HPDF_GetStreamSize>(document_);
  EXPECT_LE(mostInUse - unsaved, size + 70'000U);
  std::string file(size, '\0');
  Call<engine::TakeSaved>(document_, reinterpret_cast<HPDF_BYTE *>(file.data()));
  EXPECT_THAT(file, StartsWith("%PDF-1."));
  EXPECT_NE(file.find(content), std::string::npos);
  EXPECT_LE(bytesInUse - unsaved, 2000U);
  HPDF_Stream_Free(stream_);
  stream_ = HPDF_MemStream_New(document_->mmgr, 0);
  before_ = bytesInUse - sizeof(engine::MemoryStream);
}

TEST_F(MemoryStreams, AreReadFromAnyPlace) {
  Write("0123456789", false);
  const auto readAfter = [this](HPDF_INT position, HPDF_WhenceMode mode) {
    char byte = '?';
    HPDF_UINT size = 1;
    const HPDF_STATUS status = HPDF_Stream_Seek(stream_, position, mode);
    if (status == HPDF_OK) HPDF_Stream_Read(stream_, reinterpret_cast<HPDF_BYTE *>(&byte), &size);
    HPDF_Error_Reset(stream_->error);
    return status == HPDF_OK ? byte : '!';
  };
  EXPECT_EQ(readAfter(4, HPDF_SEEK_SET), '4');
  EXPECT_EQ(readAfter(2, HPDF_SEEK_CUR), '7');
  EXPECT_EQ(readAfter(1, HPDF_SEEK_END), '9');
  EXPECT_EQ(readAfter(-1, HPDF_SEEK_SET), '!') << "before the beginning";
  EXPECT_EQ(readAfter(11, HPDF_SEEK_SET), '!') << "behind the end";
  EXPECT_EQ(readAfter(11, HPDF_SEEK_END), '!');
}

TEST_F(MemoryStreams, WaitForTheErrorToBeHandled) {
  Write("text", false);
  HPDF_SetError(stream_->error, HPDF_INVALID_OPERATION, 0);
  const HPDF_BYTE byte = 0;
  EXPECT_EQ(HPDF_Stream_Seek(stream_, 0, HPDF_SEEK_SET), HPDF_STATUS{HPDF_THIS_FUNC_WAS_SKIPPED});
  EXPECT_EQ(HPDF_Stream_Write(stream_, &byte, 1), HPDF_STATUS{HPDF_THIS_FUNC_WAS_SKIPPED});
  HPDF_Error_Reset(stream_->error);
  EXPECT_EQ(ContentOf(stream_), "text");
}

// Streams can do what their functions do.
TEST_F(MemoryStreams, OfNoKindCanDoNothing) {
  HPDF_Stream_Rec *stream = engine::NewStream(document_->mmgr, HPDF_STREAM_UNKNOWN);
  ASSERT_NE(stream, nullptr);
  HPDF_BYTE byte = 0;
  HPDF_UINT size = 1;
  EXPECT_EQ(HPDF_Stream_Read(stream, &byte, &size), HPDF_STATUS{HPDF_INVALID_OPERATION});
  EXPECT_EQ(HPDF_Stream_Seek(stream, 0, HPDF_SEEK_SET), HPDF_STATUS{HPDF_INVALID_OPERATION});
  EXPECT_EQ(HPDF_Stream_Write(stream, &byte, 1), HPDF_STATUS{HPDF_INVALID_OPERATION});
  HPDF_Error_Reset(stream->error);
  EXPECT_EQ(HPDF_Stream_WriteToStream(stream, stream_, 0, nullptr), HPDF_STATUS{HPDF_INVALID_OBJECT});
  HPDF_Error_Reset(stream->error);
  EXPECT_EQ(HPDF_Stream_WriteToStream(stream_, stream, 0, nullptr), HPDF_STATUS{HPDF_INVALID_OBJECT});
  HPDF_Error_Reset(stream->error);
  EXPECT_EQ(HPDF_Stream_WriteToStream(stream_, nullptr, 0, nullptr), HPDF_STATUS{HPDF_INVALID_OBJECT});
  HPDF_Error_Reset(stream->error);
  EXPECT_EQ(HPDF_Stream_Validate(stream), HPDF_STATUS{HPDF_TRUE});
  stream->sig_bytes = 0;
  EXPECT_EQ(HPDF_Stream_Validate(stream), HPDF_STATUS{HPDF_FALSE});
  EXPECT_EQ(HPDF_Stream_Validate(nullptr), HPDF_STATUS{HPDF_FALSE});
  HPDF_MemStream_FreeData(stream);
  HPDF_MemStream_FreeData(nullptr);
  HPDF_Stream_Free(stream);
  HPDF_Stream_Free(nullptr);
}

TEST_F(MemoryStreams, AreNotCopiedWhileAnErrorIsToBeHandled) {
  Write("text", false);
  const HPDF_Stream copy = HPDF_MemStream_New(document_->mmgr, 0);
  HPDF_SetError(stream_->error, HPDF_INVALID_OPERATION, 0);
  EXPECT_EQ(HPDF_Stream_WriteToStream(stream_, copy, 0, nullptr), HPDF_STATUS{HPDF_THIS_FUNC_WAS_SKIPPED});
  HPDF_Error_Reset(stream_->error);
  EXPECT_EQ(ContentOf(copy), "");
  EXPECT_EQ(HPDF_Stream_WriteToStream(stream_, copy, 0, nullptr), HPDF_STATUS{HPDF_OK});
  EXPECT_EQ(ContentOf(copy), "text");
  HPDF_Stream_Free(copy);
}

}  // namespace
}  // namespace quillbar
