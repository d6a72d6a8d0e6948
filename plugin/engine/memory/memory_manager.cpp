// SPDX-License-Identifier: MIT
// The library's memory manager. libharu's pool, which gives nothing back before the document ends, is left out: nothing
// here asks for one.
#include "plugin/engine/memory/memory_manager.h"

#include <hpdf_error.h>

#include <cstdlib>
#include <new>

#include "platform/sanitizers.h"

using namespace quillbar::engine;

namespace {

// Memory that is watched must see every block: how one is used after it was given back, beyond its end, or before it is
// set.
constexpr bool kIsWatched = QUILLBAR_WATCHES_ADDRESSES || QUILLBAR_WATCHES_VALUES;

}  // namespace

void *quillbar::engine::TryToGetMemory(HPDF_MMgr manager, HPDF_UINT size) {
  std::optional<SmallBlocks> &smallBlocks = static_cast<MemoryManager *>(manager)->smallBlocks;
  return smallBlocks ? smallBlocks->Allocate(size) : manager->alloc_fn(size);
}

extern "C" {

/// A manager over the two functions, which each block is fetched from; or, if one is null, over the C library's, from
/// which small blocks are fetched together. The size of libharu's pool doesn't count. Null, with `error` set, when memory
/// is short.
HPDF_MMgr HPDF_MMgr_New(HPDF_Error error, HPDF_UINT, HPDF_Alloc_Func allocate, HPDF_Free_Func free) {
  HPDF_MMgr_Rec functions{};
  functions.error = error;
  const bool areGiven = allocate != nullptr && free != nullptr;
  functions.alloc_fn = areGiven ? allocate : [](HPDF_UINT size) { return std::malloc(size); };
  functions.free_fn = areGiven ? free : [](void *address) { std::free(address); };
  void *const memory = functions.alloc_fn(sizeof(MemoryManager));
  if (memory == nullptr) {
    HPDF_SetError(error, HPDF_FAILD_TO_ALLOC_MEM, 0);
    return nullptr;
  }
  auto *const manager = new (memory) MemoryManager(functions);
  if (!areGiven && !kIsWatched) manager->smallBlocks.emplace(manager);
  return manager;
}

/// Nothing happens for null.
void HPDF_MMgr_Free(HPDF_MMgr manager) {
  if (manager == nullptr) return;
  const HPDF_Free_Func free = manager->free_fn;
  auto *const own = static_cast<MemoryManager *>(manager);
  own->~MemoryManager();
  free(own);
}

/// A block of `size` bytes; null, with the error record set, when memory is short.
void *HPDF_GetMem(HPDF_MMgr manager, HPDF_UINT size) {
  void *const block = TryToGetMemory(manager, size);
  if (block == nullptr) [[unlikely]]
    HPDF_SetError(manager->error, HPDF_FAILD_TO_ALLOC_MEM, 0);
  return block;
}

/// Nothing happens for null.
void HPDF_FreeMem(HPDF_MMgr manager, void *block) {
  if (block == nullptr) return;
  std::optional<SmallBlocks> &smallBlocks = static_cast<MemoryManager *>(manager)->smallBlocks;
  smallBlocks ? smallBlocks->Free(block) : manager->free_fn(block);
}

}  // extern "C"
