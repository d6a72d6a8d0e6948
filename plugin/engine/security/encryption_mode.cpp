// SPDX-License-Identifier: MIT
#include "plugin/engine/security/encryption_mode.h"

#include <hpdf_encryptdict.h>

#include "plugin/engine/objects/enumeration_numbers.h"

namespace quillbar::engine {

QUILLBAR_ANY_ENUMERATION_NUMBER HPDF_STATUS SetEncryptionMode(HPDF_Doc document, HPDF_EncryptMode mode,
                                                              HPDF_UINT keyLength) {
  if (HPDF_Doc_Validate(document) == HPDF_FALSE) return HPDF_DOC_INVALID_OBJECT;
  const HPDF_Encrypt encryption = HPDF_EncryptDict_GetAttr(document->encrypt_dict);
  if (encryption == nullptr) return HPDF_RaiseError(&document->error, HPDF_DOC_ENCRYPTDICT_NOT_FOUND, 0);
  if (mode == HPDF_ENCRYPT_R2) {
    encryption->key_len = 5;
  } else if (mode != HPDF_ENCRYPT_R3) {
    return HPDF_RaiseError(&document->error, HPDF_INVALID_PARAMETER, static_cast<HPDF_STATUS>(mode));
  } else if (keyLength != 0 && (keyLength < 5 || keyLength > 16)) {
    return HPDF_RaiseError(&document->error, HPDF_INVALID_ENCRYPT_KEY_LEN, 0);
  } else {
    encryption->key_len = keyLength == 0 ? 16 : keyLength;
    document->pdf_version = HPDF_VER_14;
  }
  encryption->mode = mode;
  return HPDF_OK;
}

}  // namespace quillbar::engine
