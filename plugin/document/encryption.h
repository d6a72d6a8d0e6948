// SPDX-License-Identifier: MIT
#pragma once

#include "plugin/script/script_types.h"

/// Passwords and the encryption revision.
namespace quillbar::document {

/// "SetPassword(ownerPassword as String, userPassword as String)": protects the document with the owner
/// password. A nil owner password stores the invalid-password error (4113) without an event. Given a user
/// password too, the library is handed that text for both, which it refuses with 4113: the document stays
/// unprotected.
void SetPassword(PDFDocument *document, String ownerPassword, String userPassword);

/// "SetEncryptionMode(mode as PDFDocument.EncryptModeEnum, keyLength as Integer)": `keyLength` in bytes.
/// Stores the library's status as the last error, 0 for success; the detail is left alone.
void SetEncryptionMode(PDFDocument *document, EncryptMode mode, Integer keyLength);

}  // namespace quillbar::document
