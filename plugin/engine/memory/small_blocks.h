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

  /// A block of `size` bytes, small or not, aligned for pointers and for numbers of 8 bytes. Null when memory is short;
  /// no error is set.
  void *Allocate(HPDF_UINT size);

  /// Takes a block of `Allocate` back, which must not be null.
  void Free(void *block);

 private:
  // Before each block: how many steps it takes with that number; 0 for one that is not small.
  using Head = std::uint32_t;
  static constexpr std::size_t kStep = 8;
  static constexpr std::size_t kMostSteps = 64;

  struct Slab {
    Slab *next;
  };
  struct Waiting {
    Waiting *next;
  };

  static constexpr std::size_t StepsFor(std::size_t bytes) { return (bytes + kStep - 1) / kStep; }
  static constexpr std::size_t kLeastSteps = (sizeof(Waiting) + sizeof(Head) + kStep - 1) / kStep;

  bool AddSlab();
  bool AddSlab(std::size_t size);

  HPDF_MMgr manager_;
  Slab *slabs_ = nullptr;
  std::size_t slabSize_ = 4096;  // of the next one, unless it is a huge one
  std::size_t inSlabs_ = 0;      // bytes of all
  // Where the next block's head comes, right before a multiple of `kStep`, and where the slab ends.
  std::byte *next_ = nullptr, *end_ = nullptr;
  std::array<Waiting *, kMostSteps + 1> waiting_{};
};

}  // namespace quillbar::engine
