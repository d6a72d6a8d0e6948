// SPDX-License-Identifier: MIT
#pragma once

#include <hpdf.h>
#include <hpdf_objects.h>

namespace quillbar::engine {

/// Whether a real object may hold `value`. Asks the rule of such objects, and leaves no error behind.
inline bool IsWritable(HPDF_REAL value) {
  HPDF_Error_Rec scratch{};
  HPDF_Real_Rec number{};
  number.error = &scratch;
  return HPDF_Real_SetValue(&number, value) == HPDF_OK;
}

}  // namespace quillbar::engine
