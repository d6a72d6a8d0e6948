// SPDX-License-Identifier: MIT
// Small blocks: each is its own, aligned, used again, and given back with the document.
#include "plugin/engine/memory/small_blocks.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <random>
#include <set>
#include <vector>

#include "plugin/engine/memory/large_pages.h"

namespace quillbar {
namespace {

int blocksInUse = 0, fetches = 0;
bool fails = false;
HPDF_UINT longest = 0;  // that isn't refused

void *Allocate(HPDF_UINT size) {
  if (fails || size > longest) return nullptr;
  ++blocksInUse;
  ++fetches;
  return std::malloc(size);
}

void Free(void *block) {
  --blocksInUse;
  std::free(block);
}

class SmallBlocksTest : public testing::Test {
 protected:
  SmallBlocksTest() {
    blocksInUse = fetches = 0;
    fails = false;
    longest = std::numeric_limits<HPDF_UINT>::max();
    manager_.alloc_fn = &Allocate;
    manager_.free_fn = &Free;
  }
  ~SmallBlocksTest() override { EXPECT_EQ(blocksInUse, 0); }

  HPDF_MMgr_Rec manager_{};
};

struct Held {
  unsigned char *bytes;
  HPDF_UINT size;
  unsigned char value;

  bool IsWhole() const {
    return std::all_of(bytes, bytes + size, [this](unsigned char byte) { return byte == value; });
  }
};

TEST_F(SmallBlocksTest, OfAnySizeKeepWhatIsWritten) {
  engine::SmallBlocks blocks(&manager_);
  std::mt19937 random(1);
  std::vector<Held> held;
  for (int step = 0; step < 20'000; ++step) {
    if (!held.empty() && random() % 3 == 0) {
      std::swap(held[random() % held.size()], held.back());
      ASSERT_TRUE(held.back().IsWhole()) << step;
      blocks.Free(held.back().bytes);
      held.pop_back();
      continue;
    }
    const auto size = static_cast<HPDF_UINT>(random() % 4 == 0 ? random() % 3000 : random() % 520);
    auto *bytes = static_cast<unsigned char *>(blocks.Allocate(size));
    ASSERT_NE(bytes, nullptr);
    ASSERT_EQ(reinterpret_cast<std::uintptr_t>(bytes) % 8, 0U);
    const auto value = static_cast<unsigned char>(random());
    if (size != 0) std::memset(bytes, value, size);
    held.push_back({bytes, size, value});
  }
  for (const Held &block : held) {
    ASSERT_TRUE(block.IsWhole());
    blocks.Free(block.bytes);
  }
}

TEST_F(SmallBlocksTest, ThatWereGivenBackAreUsedAgain) {
  engine::SmallBlocks blocks(&manager_);
  std::set<void *> first, second;
  for (int i = 0; i < 5000; ++i) first.insert(blocks.Allocate(40));
  EXPECT_EQ(first.size(), 5000U);
  const int fetchesBefore = fetches;
  for (void *block : first) blocks.Free(block);
  for (int i = 0; i < 5000; ++i) second.insert(blocks.Allocate(37));
  EXPECT_EQ(second, first);
  EXPECT_EQ(fetches, fetchesBefore);
  // Blocks of so much and a word beside each, in slabs of 64 KB.
  EXPECT_LE(fetches, 12);
}

// 24 MB with the word beside each, the last 8 of them beyond what a document needs to get huge slabs. Small also where
// pointers have 32 bits.
constexpr HPDF_UINT kSmall = 200;
constexpr int kManyBlocks = 24 * 1024 * 1024 / 208;

TEST_F(SmallBlocksTest, OfAHugeDocumentComeInHugeSlabsWhereTheSystemHasLargePages) {
  engine::SmallBlocks blocks(&manager_);
  std::vector<Held> held;
  for (int i = 0; i < kManyBlocks; ++i) {
    auto *bytes = static_cast<unsigned char *>(blocks.Allocate(kSmall));
    ASSERT_NE(bytes, nullptr);
    const auto value = static_cast<unsigned char>(i);
    bytes[0] = bytes[kSmall - 1] = value;
    held.push_back({bytes, kSmall, value});
  }
  for (const Held &block : held) ASSERT_TRUE(block.bytes[0] == block.value && block.bytes[kSmall - 1] == block.value);
  // 16 MB in slabs of 64 KB, and those that lead there.
  constexpr int kCommonSlabs = 16 * 16 + 5;
  if (engine::OffersLargePages()) {
    EXPECT_LE(fetches, kCommonSlabs + 1);
  } else {
    EXPECT_GT(fetches, kCommonSlabs + 100);
  }
}

TEST_F(SmallBlocksTest, ComeInCommonSlabsWhereAHugeOneIsRefused) {
  engine::SmallBlocks blocks(&manager_);
  longest = 1 << 20;
  for (int i = 0; i < kManyBlocks; ++i) ASSERT_NE(blocks.Allocate(kSmall), nullptr);
}

TEST_F(SmallBlocksTest, AreRefusedWhenMemoryIsShort) {
  engine::SmallBlocks blocks(&manager_);
  fails = true;
  EXPECT_EQ(blocks.Allocate(8), nullptr);
  EXPECT_EQ(blocks.Allocate(8000), nullptr);
  EXPECT_EQ(blocks.Allocate(std::numeric_limits<HPDF_UINT>::max()), nullptr);
  fails = false;
  void *small = blocks.Allocate(8), *large = blocks.Allocate(8000);
  EXPECT_NE(small, nullptr);
  ASSERT_NE(large, nullptr);
  EXPECT_EQ(blocks.Allocate(std::numeric_limits<HPDF_UINT>::max()), nullptr);
  blocks.Free(large);
}

}  // namespace
}  // namespace quillbar
