// SPDX-License-Identifier: MIT
#pragma once

#include <hpdf.h>

#include <type_traits>

#include "plugin/engine/errors/error_state.h"

namespace quillbar::engine {

/// Returns what `work` returns, which is a status or a pointer. Where it throws, `error` records
/// HPDF_FAILD_TO_ALLOC_MEM, and that status or null is returned: what is thrown says that memory is short or can't hold
/// as much, and may not reach libharu's functions.
template <typename Work>
std::invoke_result_t<Work> OrOutOfMemory(HPDF_Error error, Work work) {
  try {
    return work();
  } catch (...) {
    const HPDF_STATUS status = NoteShortage(error);
    if constexpr (std::is_pointer_v<std::invoke_result_t<Work>>) {
      return nullptr;
    } else {
      return status;
    }
  }
}

}  // namespace quillbar::engine
