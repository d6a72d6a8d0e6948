// SPDX-License-Identifier: MIT
#pragma once

#include <hpdf.h>
#include <hpdf_mmgr.h>

#include <array>
#include <cstddef>
#include <cstdint>

namespace quillbar::engine {

/// The small blocks of a document: a page is some fifty of them.
///
/// They are cut from slabs one after the other, so that what belongs together lies together, and a block that was given
/// back waits for the next one of its size. The slabs go back with the document, at once: the C library would look at
/// the neighbours of each block to join them, which takes as long as all else that is done with a page, and longer the
/// more pages there are. A document of many thousand pages gets slabs of large pages where the system has them.
class SmallBlocks {
 public:
  /// Slabs come from `manager`, which must live longer.
  explicit SmallBlocks(HPDF_MMgr manager) : manager_(manager) {}
  ~SmallBlocks();
  SmallBlocks(const SmallBlocks &) = delete;
  SmallBlocks &operator=(const SmallBlocks &) = delete;

  /// A block of `size` bytes, small or not, aligned as the system aligns blocks. Null when memory is short; no error is
  /// set.
  void *Allocate(HPDF_UINT size);

  /// Takes a block of `Allocate` back, which must not be null.
  void Free(void *block);

 private:
  // The word before each block: how many steps it takes with that word; 0 for one that is not small.
  using Head = std::uintptr_t;
  static constexpr std::size_t kStep = 2 * sizeof(void *);
  static constexpr std::size_t kMostSteps = 32;

  struct Slab {
    Slab *next;
    void *unused;  // so that what comes after it is aligned
  };
  struct Waiting {
    Waiting *next;
  };
  static_assert(sizeof(Slab) == kStep && sizeof(Waiting) + sizeof(Head) <= kStep);

  bool AddSlab();
  bool AddSlab(std::size_t size);

  HPDF_MMgr manager_;
  Slab *slabs_ = nullptr;
  std::size_t slabSize_ = 4096;  // of the next one, unless it is a huge one
  std::size_t inSlabs_ = 0;      // bytes of all
  // Where the next block's head comes, one word before a multiple of `kStep`, and where the slab ends.
  std::byte *next_ = nullptr, *end_ = nullptr;
  std::array<Waiting *, kMostSteps + 1> waiting_{};
};

}  // namespace quillbar::engine
