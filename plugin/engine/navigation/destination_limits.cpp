// SPDX-License-Identifier: MIT
// HPDF_Destination_SetXYZ refuses coordinates beyond what the library writes before it touches the
// destination; libharu has emptied it by then, and leaves a view without numbers.
#include <hpdf.h>

#include "plugin/engine/objects/writable_number.h"

extern "C" {

HPDF_STATUS Libharu_HPDF_Destination_SetXYZ(HPDF_Destination destination, HPDF_REAL left, HPDF_REAL top,
                                            HPDF_REAL zoom);

HPDF_STATUS HPDF_Destination_SetXYZ(HPDF_Destination destination, HPDF_REAL left, HPDF_REAL top, HPDF_REAL zoom) {
  using quillbar::engine::IsWritable;
  if (destination != nullptr && !(IsWritable(left) && IsWritable(top))) {
    return HPDF_RaiseError(destination->error, HPDF_REAL_OUT_OF_RANGE, 0);
  }
  return Libharu_HPDF_Destination_SetXYZ(destination, left, top, zoom);
}

}  // extern "C"
