// SPDX-License-Identifier: MIT
#pragma once

#include <hpdf.h>

#include <cstddef>

namespace quillbar::engine {

/// The blocks that compressors work in, through zlib's `zalloc` and `zfree`.
///
/// A compressor asks for a quarter of a megabyte for each stream and gives it back after it. Blocks that were given
/// back are kept for the next stream, which asks for the same sizes: a page's content is often so short that fetching
/// fresh memory from the system would take longer than compressing it.
class CompressorMemory {
 public:
  /// Blocks come from `manager`, which must live longer.
  explicit CompressorMemory(HPDF_MMgr manager) : manager_(manager) {}
  /// Gives all blocks back, those too that a compressor forgot.
  ~CompressorMemory();
  CompressorMemory(const CompressorMemory &) = delete;
  CompressorMemory &operator=(const CompressorMemory &) = delete;

  /// A block of `items` times `size` bytes, aligned as the system aligns blocks, with any content. Null when memory is short; that
  /// is the compressor's to report, no error is set.
  void *Allocate(unsigned items, unsigned size);

  /// Takes a block of `Allocate` back, or null.
  void Free(void *address);

  /// How many blocks there are, in use or kept.
  std::size_t BlockCount() const { return blockCount_; }

 private:
  // As allocations are aligned on every platform, and on none more strictly.
  struct alignas(2 * sizeof(void *)) Block {
    Block *previous, *next;
    std::size_t size;  // of what follows, in bytes
    bool isInUse;
  };

  void Discard(Block *block);

  HPDF_MMgr manager_;
  Block *first_ = nullptr;
  std::size_t blockCount_ = 0;
  std::size_t keptCount_ = 0;
};

}  // namespace quillbar::engine
