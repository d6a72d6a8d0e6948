// SPDX-License-Identifier: MIT
// The library's memory manager. libharu's pool, which gives nothing back before the document ends, is left out: nothing
// here asks for one.
#include "plugin/engine/memory/memory_manager.h"

#include <hpdf_error.h>

#include <cstdlib>
#include <new>

using namespace quillbar::engine;

extern "C" {

/// A manager over the two functions, or over the C library's if one is null. `poolSize` must be 0. Null, with `error`
/// set, when memory is short.
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
  return new (memory) MemoryManager(functions);
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
  void *const block = manager->alloc_fn(size);
  if (block == nullptr) [[unlikely]]
    HPDF_SetError(manager->error, HPDF_FAILD_TO_ALLOC_MEM, 0);
  return block;
}

/// Nothing happens for null.
void HPDF_FreeMem(HPDF_MMgr manager, void *block) {
  if (block != nullptr) manager->free_fn(block);
}

}  // extern "C"
