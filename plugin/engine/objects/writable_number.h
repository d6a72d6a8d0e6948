// SPDX-License-Identifier: MIT
// Whether the library can write a number.
#pragma once

#include <hpdf.h>
#include <hpdf_objects.h>

namespace quillbar::engine {

// Asks the library's own rule, without leaving an error behind.
inline bool IsWritable(HPDF_REAL value) {
  HPDF_Error_Rec scratch{};
  HPDF_Real_Rec number{};
  number.error = &scratch;
  return HPDF_Real_SetValue(&number, value) == HPDF_OK;
}

}  // namespace quillbar::engine
