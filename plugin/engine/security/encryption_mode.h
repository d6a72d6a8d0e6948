// SPDX-License-Identifier: MIT
#pragma once

#include <hpdf.h>

namespace quillbar::engine {

/// Whether and how a document is encrypted can't change as long as this is there: while it is being written.
class FixedEncryption {
 public:
  explicit FixedEncryption(HPDF_Doc document);
  ~FixedEncryption();
  FixedEncryption(const FixedEncryption &) = delete;
  FixedEncryption &operator=(const FixedEncryption &) = delete;

  static bool IsOn(HPDF_Doc document);

 private:
  static FixedEncryption *first_;

  HPDF_Doc document_;
  FixedEncryption *next_;
};

/// Protects a document with an owner's password and, unless it is null or empty, a user's, as HPDF_SetPassword does.
/// HPDF_INVALID_OPERATION where the encryption is fixed; nothing is changed then.
HPDF_STATUS SetPassword(HPDF_Doc document, const char *ownerPassword, const char *userPassword);

/// Sets how a document with a password is encrypted: revision 2 with a key of 5 bytes, or revision 3, which takes PDF
/// 1.4, with `keyLength` bytes, 5 to 16 and 16 for 0. HPDF_DOC_ENCRYPTDICT_NOT_FOUND before there is a password,
/// HPDF_INVALID_PARAMETER for another mode, with its number as detail, HPDF_INVALID_ENCRYPT_KEY_LEN, and
/// HPDF_INVALID_OPERATION where the encryption is fixed; then nothing is changed.
HPDF_STATUS SetEncryptionMode(HPDF_Doc document, HPDF_EncryptMode mode, HPDF_UINT keyLength);

}  // namespace quillbar::engine
