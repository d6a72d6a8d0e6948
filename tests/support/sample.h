// SPDX-License-Identifier: MIT
// How much of what is counted in thousands a test takes.
#pragma once

namespace quillbar::test {

/// Whether programs run at a fraction of the processor's speed: under sanitizers, emulators and Wine. Tests over many
/// cases then take a part of them, which shows whether the compiler for another processor or system got something wrong;
/// the native suite takes them all.
#ifdef QUILLBAR_SAMPLED
inline constexpr bool kTakesSamples = true;
#else
inline constexpr bool kTakesSamples = false;
#endif

}  // namespace quillbar::test
