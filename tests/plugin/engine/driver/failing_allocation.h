// SPDX-License-Identifier: MIT
// Memory that runs out at every point of a call.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>

#include "plugin/engine/pages/page_tree.h"
#include "plugin/guard/library_call.h"

namespace quillbar {

/// Allocations that may still succeed; negative: all of them.
inline long allowed = -1;

inline void *Allocate(HPDF_UINT size) {
  if (allowed == 0) return nullptr;
  if (allowed > 0) --allowed;
  return std::malloc(size);
}

/// Runs the call with ever more allocations until it needs no more than it gets.
inline void FailAtEveryAllocation(const std::function<bool(HPDF_Doc, HPDF_Page)> &call) {
  for (long limit = 0;; ++limit) {
    ASSERT_LT(limit, 2000) << "the call never succeeds";
    allowed = -1;
    HPDF_Doc document = HPDF_NewEx([](HPDF_STATUS, HPDF_STATUS, void *) {}, Allocate, std::free, 0, nullptr);
    ASSERT_NE(document, nullptr);
    HPDF_Page page = Call<engine::AddPage>(document);
    allowed = limit;
    const bool done = call(document, page);
    allowed = -1;
    HPDF_Free(document);
    if (done) return;
  }
}

}  // namespace quillbar
