// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/asan_interface.h>
#endif

namespace quillbar::host {

/// Whether AddressSanitizer watches every access.
#ifdef __SANITIZE_ADDRESS__
inline constexpr bool kChecksMemory = true;
#else
inline constexpr bool kChecksMemory = false;
#endif

/// Makes AddressSanitizer stop at any access to these bytes; does nothing in other builds.
inline void PoisonMemory([[maybe_unused]] void *start, [[maybe_unused]] std::size_t size) {
#ifdef __SANITIZE_ADDRESS__
  __asan_poison_memory_region(start, size);
#endif
}

/// Allows access to these bytes again.
inline void UnpoisonMemory([[maybe_unused]] void *start, [[maybe_unused]] std::size_t size) {
#ifdef __SANITIZE_ADDRESS__
  __asan_unpoison_memory_region(start, size);
#endif
}

}  // namespace quillbar::host
