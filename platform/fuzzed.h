// SPDX-License-Identifier: MIT
/// Whether this process is a fuzz target. An input that asks for much memory or loops for ever is no finding, so a few
/// limits are lower there (fuzz/README.md).
#pragma once

#ifdef QUILLBAR_FUZZ

#include <cstddef>
#include <cstdint>

// Every fuzz target has this function; plugins find that of the program that loads them.
extern "C" __attribute__((weak, visibility("default"))) int LLVMFuzzerTestOneInput(const std::uint8_t *data,
                                                                                   std::size_t size);

#endif

namespace quillbar {

#ifdef QUILLBAR_FUZZ
inline bool IsFuzzed() { return LLVMFuzzerTestOneInput != nullptr; }
#else
constexpr bool IsFuzzed() { return false; }
#endif

}  // namespace quillbar
