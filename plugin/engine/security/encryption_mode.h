// SPDX-License-Identifier: MIT
#pragma once

#include <hpdf.h>

namespace quillbar::engine {

/// Sets how a document with a password is encrypted: revision 2 with a key of 5 bytes, or revision 3, which takes PDF
/// 1.4, with `keyLength` bytes, 5 to 16 and 16 for 0. HPDF_DOC_ENCRYPTDICT_NOT_FOUND before there is a password,
/// HPDF_INVALID_PARAMETER for another mode, with its number as detail, HPDF_INVALID_ENCRYPT_KEY_LEN; then nothing is
/// changed.
HPDF_STATUS SetEncryptionMode(HPDF_Doc document, HPDF_EncryptMode mode, HPDF_UINT keyLength);

}  // namespace quillbar::engine
