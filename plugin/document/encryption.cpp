// SPDX-License-Identifier: MIT
#include "plugin/document/encryption.h"

#include "binding/owned.h"
#include "plugin/engine/security/encryption_mode.h"
#include "plugin/guard/library_call.h"
#include "plugin/guard/library_value.h"
#include "plugin/script/document_data.h"

namespace quillbar::document {

void SetPassword(PDFDocument *document, String ownerPassword, String userPassword) {
  DocumentData &data = DataOf(document);
  const StringData owner(ownerPassword, TextEncoding::kUtf8);
  if (!owner) {
    data.lastError = HPDF_ENCRYPT_INVALID_PASSWORD;
    return;
  }
  const StringData user(userPassword, TextEncoding::kUtf8);
  if (user) {
    Call<engine::SetPassword>(data.libraryDocument, user.bytes(), user.bytes());
    return;
  }
  const HPDF_STATUS status = Call<engine::SetPassword>(data.libraryDocument, owner.bytes(), nullptr);
  data.lastError = static_cast<std::uint32_t>(status);
}

void SetEncryptionMode(PDFDocument *document, EncryptMode mode, Integer keyLength) {
  DocumentData &data = DataOf(document);
  const HPDF_STATUS status = Call<engine::SetEncryptionMode>(data.libraryDocument, ToLibrary<HPDF_EncryptMode>(mode),
                                                             ToLibrary<HPDF_UINT>(keyLength));
  data.lastError = static_cast<std::uint32_t>(status);
}

}  // namespace quillbar::document
