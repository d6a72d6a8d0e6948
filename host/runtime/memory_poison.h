// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

#include "platform/sanitizers.h"

#if QUILLBAR_WATCHES_ADDRESSES
#include <sanitizer/asan_interface.h>
#endif

namespace quillbar::host {

/// Whether AddressSanitizer watches every access.
inline constexpr bool kChecksMemory = QUILLBAR_WATCHES_ADDRESSES;

/// Makes AddressSanitizer stop at any access to these bytes, and MemorySanitizer at a use of what they hold until they
/// are set again; does nothing in other builds.
inline void PoisonMemory([[maybe_unused]] void *start, [[maybe_unused]] std::size_t size) {
#if QUILLBAR_WATCHES_ADDRESSES
  __asan_poison_memory_region(start, size);
#elif QUILLBAR_WATCHES_VALUES
  __msan_allocated_memory(start, size);
#endif
}

/// Allows access to these bytes again; their values are as unset as they were.
inline void UnpoisonMemory([[maybe_unused]] void *start, [[maybe_unused]] std::size_t size) {
#if QUILLBAR_WATCHES_ADDRESSES
  __asan_unpoison_memory_region(start, size);
#endif
}

}  // namespace quillbar::host
