// SPDX-License-Identifier: MIT
#include "plugin/engine/security/encryption_mode.h"

#include <hpdf_encryptdict.h>

#include <utility>

#include "plugin/engine/objects/enumeration_numbers.h"

namespace quillbar::engine {

FixedEncryption *FixedEncryption::first_ = nullptr;

FixedEncryption::FixedEncryption(HPDF_Doc document) : document_(document), next_(std::exchange(first_, this)) {}

// Documents that are written at the same time need not end in order.
FixedEncryption::~FixedEncryption() {
  FixedEncryption **link = &first_;
  while (*link != this) link = &(*link)->next_;
  *link = next_;
}

bool FixedEncryption::IsOn(HPDF_Doc document) {
  const FixedEncryption *each = first_;
  while (each != nullptr && each->document_ != document) each = each->next_;
  return each != nullptr;
}

HPDF_STATUS SetPassword(HPDF_Doc document, const char *ownerPassword, const char *userPassword) {
  if (FixedEncryption::IsOn(document)) return HPDF_RaiseError(&document->error, HPDF_INVALID_OPERATION, 0);
  return HPDF_SetPassword(document, ownerPassword, userPassword);
}

QUILLBAR_ANY_ENUMERATION_NUMBER HPDF_STATUS SetEncryptionMode(HPDF_Doc document, HPDF_EncryptMode mode,
                                                              HPDF_UINT keyLength) {
  if (HPDF_Doc_Validate(document) == HPDF_FALSE) return HPDF_DOC_INVALID_OBJECT;
  if (FixedEncryption::IsOn(document)) return HPDF_RaiseError(&document->error, HPDF_INVALID_OPERATION, 0);
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
