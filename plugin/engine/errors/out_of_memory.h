// SPDX-License-Identifier: MIT
#pragma once

#include <hpdf.h>

#include <new>
#include <type_traits>

namespace quillbar::engine {

/// Returns what `work` returns, which is a status or a pointer. Where it throws std::bad_alloc, `error` records
/// HPDF_FAILD_TO_ALLOC_MEM, and that status or null is returned.
template <typename Work>
std::invoke_result_t<Work> OrOutOfMemory(HPDF_Error error, Work work) {
  try {
    return work();
  } catch (const std::bad_alloc &) {
    const HPDF_STATUS status = HPDF_SetError(error, HPDF_FAILD_TO_ALLOC_MEM, 0);
    if constexpr (std::is_pointer_v<std::invoke_result_t<Work>>) {
      return nullptr;
    } else {
      return status;
    }
  }
}

}  // namespace quillbar::engine
