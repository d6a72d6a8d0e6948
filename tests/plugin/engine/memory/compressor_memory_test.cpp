// SPDX-License-Identifier: MIT
// The blocks in which compressors work: kept from one stream to the next, and given back with the document.
#include "plugin/engine/memory/compressor_memory.h"

#include <gmock/gmock.h>
#include <hpdf_doc.h>
#include <zlib.h>

#include <cstdlib>
#include <cstring>
#include <limits>
#include <vector>

#include "plugin/engine/memory/memory_manager.h"
#include "plugin/engine/pages/page_tree.h"
#include "tests/plugin/engine/driver/deflate_scope.h"
#include "tests/plugin/engine/driver/library_document.h"

namespace quillbar {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// What an entry point may ask for; a page asks for far less.
constexpr HPDF_UINT kLarge = 1 << 15;

int largeBlocks = 0;  // fetched so far
int blocksInUse = 0;  // of the whole document
bool failsIfLarge = false;

void *Allocate(HPDF_UINT size) {
  if (size > kLarge) {
    if (failsIfLarge) return nullptr;
    ++largeBlocks;
  }
  ++blocksInUse;
  return std::malloc(size);
}

void Free(void *block) {
  --blocksInUse;
  std::free(block);
}

std::vector<HPDF_STATUS> failures;  // codes and details, in turn

class CompressorBlocks : public testing::Test {
 protected:
  CompressorBlocks() {
    largeBlocks = blocksInUse = 0;
    failsIfLarge = false;
    failures.clear();
    const HPDF_Error_Handler note = [](HPDF_STATUS code, HPDF_STATUS detail, void *) {
      failures.insert(failures.end(), {code, detail});
    };
    document_ = HPDF_NewEx(note, &Allocate, &Free, 0, nullptr);
    Call<HPDF_SetCompressionMode>(document_, HPDF_COMP_ALL);
    for (int i = 0; i < 20; ++i) {
      const HPDF_Page page = Call<engine::AddPage>(document_);
      Call<HPDF_Page_Rectangle>(page, 1.0F, 2.0F, 3.0F, 4.0F);
      Call<HPDF_Page_Fill>(page);
    }
  }
  ~CompressorBlocks() override {
    HPDF_Free(document_);
    EXPECT_EQ(blocksInUse, 0);
  }

  HPDF_Doc document_;
};

TEST_F(CompressorBlocks, AreFetchedOnceForAllStreamsAndSaves) {
  const DeflateScope scope;
  EXPECT_EQ(Call<engine::SaveToMemory>(document_), HPDF_STATUS{HPDF_OK});
  const int fetched = largeBlocks;
  const std::size_t count = engine::CompressorMemoryOf(document_->mmgr).BlockCount();
  // zlib has a window, two tables and a buffer.
  EXPECT_GE(fetched, 3);
  EXPECT_LE(fetched, 6);
  EXPECT_EQ(Call<engine::SaveToMemory>(document_), HPDF_STATUS{HPDF_OK});
  EXPECT_EQ(largeBlocks, fetched);
  EXPECT_EQ(engine::CompressorMemoryOf(document_->mmgr).BlockCount(), count);
  EXPECT_THAT(failures, IsEmpty());
}

TEST_F(CompressorBlocks, ThatCannotBeHadAreTheCompressorsError) {
  const DeflateScope scope;
  failsIfLarge = true;
  EXPECT_EQ(Call<engine::SaveToMemory>(document_), HPDF_STATUS{HPDF_ZLIB_ERROR});
  EXPECT_THAT(failures, ElementsAre(HPDF_ZLIB_ERROR, static_cast<HPDF_STATUS>(Z_MEM_ERROR)));
  failsIfLarge = false;
  EXPECT_EQ(Call<engine::SaveToMemory>(document_), HPDF_STATUS{HPDF_OK});
}

// The destructor finds out whether they are given back all the same.
TEST_F(CompressorBlocks, ThatACompressorForgetsGoWithTheDocument) {
  const DeflateScope scope(&deflateInit_, &deflate, [](z_stream_s *) { return Z_OK; });
  EXPECT_EQ(Call<engine::SaveToMemory>(document_), HPDF_STATUS{HPDF_OK});
  EXPECT_GT(engine::CompressorMemoryOf(document_->mmgr).BlockCount(), 20U);
}

TEST_F(CompressorBlocks, OfManySizesAreNotAllKept) {
  engine::CompressorMemory &memory = engine::CompressorMemoryOf(document_->mmgr);
  for (unsigned size = 1; size <= 100; ++size) {
    void *block = memory.Allocate(1, size);
    ASSERT_NE(block, nullptr);
    std::memset(block, 0xFF, size);
    memory.Free(block);
  }
  EXPECT_EQ(memory.BlockCount(), 16U);
  memory.Free(nullptr);
}

TEST_F(CompressorBlocks, BeyondWhatCanBeCountedAreRefused) {
  engine::CompressorMemory &memory = engine::CompressorMemoryOf(document_->mmgr);
  constexpr unsigned kMost = std::numeric_limits<unsigned>::max();
  EXPECT_EQ(memory.Allocate(kMost, 1), nullptr);
  EXPECT_EQ(memory.Allocate(1, kMost), nullptr);
  EXPECT_EQ(memory.Allocate(1U << 16, 1U << 16), nullptr);
  void *none = memory.Allocate(0, 8);
  EXPECT_NE(none, nullptr);
  memory.Free(none);
}

TEST_F(CompressorBlocks, AreGivenBackInAnyOrder) {
  engine::CompressorMemory &memory = engine::CompressorMemoryOf(document_->mmgr);
  std::vector<void *> blocks;
  for (unsigned size = 1; size <= 40; ++size) blocks.push_back(memory.Allocate(size, size % 2 == 0 ? 0 : size));
  // From the middle outwards.
  for (std::size_t i = 0; i < 20; ++i) {
    memory.Free(blocks[20 + i]);
    memory.Free(blocks[19 - i]);
  }
  EXPECT_EQ(memory.BlockCount(), 16U);
  void *block = memory.Allocate(7, 100);
  ASSERT_NE(block, nullptr);
  std::memset(block, 0xFF, 700);
  EXPECT_EQ(memory.BlockCount(), 17U);
  memory.Free(block);
}

}  // namespace
}  // namespace quillbar
