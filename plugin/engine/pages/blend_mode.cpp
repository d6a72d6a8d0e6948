// SPDX-License-Identifier: MIT
// HPDF_ExtGState_SetBlendMode refuses the number that follows the last blend mode; libharu reads beyond its
// table of names for it.
#include <hpdf.h>

extern "C" {

HPDF_STATUS Libharu_HPDF_ExtGState_SetBlendMode(HPDF_ExtGState state, HPDF_BlendMode mode);

HPDF_STATUS HPDF_ExtGState_SetBlendMode(HPDF_ExtGState state, HPDF_BlendMode mode) {
  const bool writable = state != nullptr && state->header.obj_class == (HPDF_OSUBCLASS_EXT_GSTATE | HPDF_OCLASS_DICT);
  if (writable && static_cast<HPDF_UINT>(mode) >= HPDF_BM_EOF) {
    return HPDF_RaiseError(state->error, HPDF_EXT_GSTATE_OUT_OF_RANGE, 0);
  }
  return Libharu_HPDF_ExtGState_SetBlendMode(state, mode);
}

}  // extern "C"
