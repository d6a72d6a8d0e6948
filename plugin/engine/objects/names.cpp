// SPDX-License-Identifier: MIT
// Objects of type name. A name has 1 to 127 bytes, without the slash before it.
#include <hpdf.h>
#include <hpdf_utils.h>

#include <cstddef>

extern "C" {

/// A name object, with room for its value only, which is never changed. Null, with the error record set, for no text
/// (HPDF_NAME_INVALID_VALUE), for one that is too long (HPDF_NAME_OUT_OF_RANGE) and when memory is short.
HPDF_Name HPDF_Name_New(HPDF_MMgr memory, const char *value) {
  const HPDF_UINT length = HPDF_StrLen(value, HPDF_LIMIT_MAX_NAME_LEN + 1);
  if (length == 0 || length > HPDF_LIMIT_MAX_NAME_LEN) {
    HPDF_SetError(memory->error, length == 0 ? HPDF_NAME_INVALID_VALUE : HPDF_NAME_OUT_OF_RANGE, 0);
    return nullptr;
  }
  constexpr HPDF_UINT kHead = offsetof(HPDF_Name_Rec, value);
  auto *name = static_cast<HPDF_Name>(HPDF_GetMem(memory, kHead + length + 1));
  if (name == nullptr) return nullptr;
  name->header = HPDF_Obj_Header{};
  name->header.obj_class = HPDF_OCLASS_NAME;
  name->error = memory->error;
  HPDF_StrCpy(name->value, value, name->value + length);
  return name;
}

HPDF_STATUS HPDF_Name_Write(HPDF_Name name, HPDF_Stream stream) {
  return HPDF_Stream_WriteEscapeName(stream, name->value);
}

}  // extern "C"
