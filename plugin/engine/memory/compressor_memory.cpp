// SPDX-License-Identifier: MIT
#include "plugin/engine/memory/compressor_memory.h"

#include <limits>

namespace quillbar::engine {

namespace {

// zlib's compressor has five. More than these are of a compressor that asks for other sizes each time.
constexpr std::size_t kMostKept = 16;

}  // namespace

CompressorMemory::~CompressorMemory() {
  while (first_ != nullptr) Discard(first_);
}

void *CompressorMemory::Allocate(unsigned items, unsigned size) {
  constexpr std::size_t kMost = std::numeric_limits<HPDF_UINT>::max() - sizeof(Block);
  if (size != 0 && items > kMost / size) return nullptr;
  const std::size_t bytes = std::size_t{items} * size;
  for (Block *block = first_; block != nullptr; block = block->next) {
    if (block->isInUse || block->size != bytes) continue;
    block->isInUse = true;
    --keptCount_;
    return block + 1;
  }
  auto *block = static_cast<Block *>(manager_->alloc_fn(static_cast<HPDF_UINT>(sizeof(Block) + bytes)));
  if (block == nullptr) return nullptr;
  *block = {nullptr, first_, bytes, true};
  if (first_ != nullptr) first_->previous = block;
  first_ = block;
  ++blockCount_;
  return block + 1;
}

void CompressorMemory::Free(void *address) {
  if (address == nullptr) return;
  Block *block = static_cast<Block *>(address) - 1;
  block->isInUse = false;
  if (++keptCount_ > kMostKept) {
    --keptCount_;
    Discard(block);
  }
}

void CompressorMemory::Discard(Block *block) {
  (block->previous != nullptr ? block->previous->next : first_) = block->next;
  if (block->next != nullptr) block->next->previous = block->previous;
  --blockCount_;
  manager_->free_fn(block);
}

}  // namespace quillbar::engine
