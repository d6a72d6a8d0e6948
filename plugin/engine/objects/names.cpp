// SPDX-License-Identifier: MIT
// Objects of type name. A name has 1 to 127 bytes, without the slash before it.
#include <hpdf.h>
#include <hpdf_utils.h>

extern "C" {

/// A name object; null, with the error record set, for a null, empty or too long value and when memory is short.
HPDF_Name HPDF_Name_New(HPDF_MMgr memory, const char *value) {
  auto *name = static_cast<HPDF_Name>(HPDF_GetMem(memory, sizeof(HPDF_Name_Rec)));
  if (name == nullptr) return nullptr;
  name->header = HPDF_Obj_Header{};
  name->header.obj_class = HPDF_OCLASS_NAME;
  name->error = memory->error;
  if (HPDF_Name_SetValue(name, value) != HPDF_OK) {
    HPDF_FreeMem(memory, name);
    return nullptr;
  }
  return name;
}

/// HPDF_NAME_INVALID_VALUE for no text, HPDF_NAME_OUT_OF_RANGE for one that is too long; the name is unchanged then.
HPDF_STATUS HPDF_Name_SetValue(HPDF_Name name, const char *value) {
  const HPDF_UINT length = HPDF_StrLen(value, HPDF_LIMIT_MAX_NAME_LEN + 1);
  if (length == 0) return HPDF_SetError(name->error, HPDF_NAME_INVALID_VALUE, 0);
  if (length > HPDF_LIMIT_MAX_NAME_LEN) return HPDF_SetError(name->error, HPDF_NAME_OUT_OF_RANGE, 0);
  HPDF_StrCpy(name->value, value, name->value + length);
  return HPDF_OK;
}

HPDF_STATUS HPDF_Name_Write(HPDF_Name name, HPDF_Stream stream) {
  return HPDF_Stream_WriteEscapeName(stream, name->value);
}

}  // extern "C"
