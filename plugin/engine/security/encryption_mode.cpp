// SPDX-License-Identifier: MIT
// HPDF_SetEncryptionMode refuses revisions and key lengths that it does not know before it changes anything.
//
// libharu takes any revision; for those other than 2 and 3 it writes no version into the file, which no
// viewer then opens. A key length out of range is reported, but the document's version has been raised by
// then.
#include <hpdf.h>
#include <hpdf_encryptdict.h>

extern "C" {

HPDF_STATUS Libharu_HPDF_SetEncryptionMode(HPDF_Doc document, HPDF_EncryptMode mode, HPDF_UINT keyLength);

HPDF_STATUS HPDF_SetEncryptionMode(HPDF_Doc document, HPDF_EncryptMode mode, HPDF_UINT keyLength) {
  // Without a password there is nothing to set yet, which libharu reports.
  if (HPDF_Doc_Validate(document) && HPDF_EncryptDict_GetAttr(document->encrypt_dict) != nullptr) {
    if (mode != HPDF_ENCRYPT_R2 && mode != HPDF_ENCRYPT_R3) {
      return HPDF_RaiseError(&document->error, HPDF_INVALID_PARAMETER, static_cast<HPDF_STATUS>(mode));
    }
    if (mode == HPDF_ENCRYPT_R3 && keyLength != 0 && (keyLength < 5 || keyLength > 16)) {
      return HPDF_RaiseError(&document->error, HPDF_INVALID_ENCRYPT_KEY_LEN, 0);
    }
  }
  return Libharu_HPDF_SetEncryptionMode(document, mode, keyLength);
}

}  // extern "C"
