// SPDX-License-Identifier: MIT
// Which sanitizer watches memory in this build, for code that must let it see what it does. GCC defines a macro, clang
// answers a question.
#pragma once

#include <cstddef>

#ifdef __has_feature
#define QUILLBAR_HAS_FEATURE(feature) __has_feature(feature)
#else
#define QUILLBAR_HAS_FEATURE(feature) 0
#endif

/// AddressSanitizer: every access to memory.
#if defined(__SANITIZE_ADDRESS__) || QUILLBAR_HAS_FEATURE(address_sanitizer)
#define QUILLBAR_WATCHES_ADDRESSES 1
#else
#define QUILLBAR_WATCHES_ADDRESSES 0
#endif

/// MemorySanitizer: every use of a value that nobody set.
#if QUILLBAR_HAS_FEATURE(memory_sanitizer)
#define QUILLBAR_WATCHES_VALUES 1
#else
#define QUILLBAR_WATCHES_VALUES 0
#endif

#if QUILLBAR_WATCHES_VALUES
#include <sanitizer/msan_interface.h>
#endif

namespace quillbar {

/// Tells MemorySanitizer that these bytes are set: by code that it can't see into, or before they were poisoned. Does
/// nothing in other builds.
inline void MarkAsSet([[maybe_unused]] const void *start, [[maybe_unused]] std::size_t size) {
#if QUILLBAR_WATCHES_VALUES
  __msan_unpoison(start, size);
#endif
}

}  // namespace quillbar
