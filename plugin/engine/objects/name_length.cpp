// SPDX-License-Identifier: MIT
// HPDF_Name_New refuses a name of more than 127 bytes.
//
// libharu's reports it and returns the object all the same, with undefined text.
#include <hpdf.h>
#include <hpdf_utils.h>

extern "C" {

HPDF_Name Libharu_HPDF_Name_New(HPDF_MMgr memory, const char *value);

HPDF_Name HPDF_Name_New(HPDF_MMgr memory, const char *value) {
  if (HPDF_StrLen(value, HPDF_LIMIT_MAX_NAME_LEN + 1) > HPDF_LIMIT_MAX_NAME_LEN) {
    HPDF_SetError(memory->error, HPDF_NAME_OUT_OF_RANGE, 0);
    return nullptr;
  }
  return Libharu_HPDF_Name_New(memory, value);
}

}  // extern "C"
