// SPDX-License-Identifier: MIT
#include "plugin/engine/memory/small_blocks.h"

#include <algorithm>
#include <cstring>
#include <limits>

#include "plugin/engine/memory/large_pages.h"

namespace quillbar::engine {

namespace {

constexpr std::size_t kCommonSlab = std::size_t{1} << 16;
// Before a block that is not small: what keeps it aligned as the system aligned it.
constexpr std::size_t kLargeHead = 2 * sizeof(void *);
// Of a document that has as much in slabs already. Memory that isn't used yet only takes addresses.
constexpr std::size_t kHugeSlab = std::size_t{1} << 24;

}  // namespace

SmallBlocks::~SmallBlocks() {
  while (slabs_ != nullptr) {
    Slab *const next = slabs_->next;
    manager_->free_fn(slabs_);
    slabs_ = next;
  }
}

void *SmallBlocks::Allocate(HPDF_UINT size) {
  if (size > kMostSteps * kStep - sizeof(Head)) [[unlikely]] {
    if (size > std::numeric_limits<HPDF_UINT>::max() - kLargeHead) return nullptr;
    auto *block = static_cast<std::byte *>(manager_->alloc_fn(static_cast<HPDF_UINT>(size + kLargeHead)));
    if (block == nullptr) return nullptr;
    block += kLargeHead;
    constexpr Head kNotSmall = 0;
    std::memcpy(block - sizeof(Head), &kNotSmall, sizeof(Head));
    return block;
  }
  const std::size_t steps = std::max(StepsFor(size + sizeof(Head)), kLeastSteps);
  if (Waiting *const block = waiting_[steps]; block != nullptr) {
    waiting_[steps] = block->next;
    return block;
  }
  if (static_cast<std::size_t>(end_ - next_) < steps * kStep && !AddSlab()) return nullptr;
  std::byte *const block = next_ + sizeof(Head);
  const auto head = static_cast<Head>(steps);
  std::memcpy(next_, &head, sizeof(Head));
  next_ += steps * kStep;
  return block;
}

void SmallBlocks::Free(void *block) {
  Head steps;
  std::memcpy(&steps, static_cast<std::byte *>(block) - sizeof(Head), sizeof(Head));
  if (steps == 0) return manager_->free_fn(static_cast<std::byte *>(block) - kLargeHead);
  auto *const waiting = static_cast<Waiting *>(block);
  waiting->next = waiting_[steps];
  waiting_[steps] = waiting;
}

// The rest of the slab before is given up: less than the largest of the small blocks.
bool SmallBlocks::AddSlab() {
  const bool isHuge = inSlabs_ >= kHugeSlab && OffersLargePages();
  if (isHuge && AddSlab(kHugeSlab)) {
    PreferLargePages(slabs_, kHugeSlab);
    return true;
  }
  if (!AddSlab(slabSize_)) return false;
  slabSize_ = std::min(2 * slabSize_, kCommonSlab);
  return true;
}

bool SmallBlocks::AddSlab(std::size_t size) {
  auto *const slab = static_cast<Slab *>(manager_->alloc_fn(static_cast<HPDF_UINT>(size)));
  if (slab == nullptr) return false;
  slab->next = slabs_;
  slabs_ = slab;
  inSlabs_ += size;
  auto *const bytes = reinterpret_cast<std::byte *>(slab);
  next_ = bytes + StepsFor(sizeof(Slab) + sizeof(Head)) * kStep - sizeof(Head);
  end_ = bytes + size;
  return true;
}

}  // namespace quillbar::engine
