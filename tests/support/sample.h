// SPDX-License-Identifier: MIT
// How much of what is counted in thousands a test takes.
#pragma once

#include <cstdlib>

namespace quillbar::test {

/// Whether tests over many cases take a part of them: where programs run at a fraction of the processor's speed, under
/// sanitizers, emulators and Wine, and where the environment has QUILLBAR_SAMPLES, for a quick answer. A part shows
/// whether the compiler for another processor or system got something wrong; the whole native suite takes all.
inline bool TakesSamples() {
#ifdef QUILLBAR_SAMPLED
  return true;
#else
  static const bool isAsked = std::getenv("QUILLBAR_SAMPLES") != nullptr;
  return isAsked;
#endif
}

}  // namespace quillbar::test
