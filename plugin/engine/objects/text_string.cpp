// SPDX-License-Identifier: MIT
// HPDF_String_Write for strings that the document's UTF-8 encoder writes: document information, notes and
// titles of outlines outside ASCII.
//
// libharu turns them into UTF-16 one unit a character, so that a character outside the basic plane becomes a
// space, and bytes that are no UTF-8 shift what follows.
#include <hpdf.h>
#include <hpdf_utils.h>
#include <utf8.h>

#include <new>
#include <string>
#include <string_view>

extern "C" {

HPDF_STATUS Libharu_HPDF_String_Write(HPDF_String string, HPDF_Stream stream, HPDF_Encrypt encryption);

}  // extern "C"

namespace {

// UTF-16 with its byte order mark, the most significant byte first; what is no UTF-8 becomes U+FFFD.
std::string TextStringBytes(std::string_view utf8) {
  const std::u16string units = utf8::utf8to16(utf8::replace_invalid(utf8));
  std::string bytes = "\xFE\xFF";
  bytes.reserve(2 + 2 * units.size());
  for (const char16_t unit : units) {
    bytes += static_cast<char>(unit >> 8);
    bytes += static_cast<char>(unit & 0xFF);
  }
  return bytes;
}

HPDF_STATUS WriteTextString(HPDF_String string, HPDF_Stream stream, HPDF_Encrypt encryption) {
  const std::string bytes = TextStringBytes({reinterpret_cast<const char *>(string->value), string->len});
  if (encryption != nullptr) HPDF_Encrypt_Reset(encryption);
  HPDF_STATUS status = HPDF_Stream_WriteChar(stream, '<');
  if (status == HPDF_OK) {
    status = HPDF_Stream_WriteBinary(stream, reinterpret_cast<const HPDF_BYTE *>(bytes.data()),
                                     static_cast<HPDF_UINT>(bytes.size()), encryption);
  }
  return status == HPDF_OK ? HPDF_Stream_WriteChar(stream, '>') : status;
}

}  // namespace

extern "C" HPDF_STATUS HPDF_String_Write(HPDF_String string, HPDF_Stream stream, HPDF_Encrypt encryption) {
  if (string->encoder == nullptr || std::string_view(string->encoder->name) != "UTF-8") {
    return Libharu_HPDF_String_Write(string, stream, encryption);
  }
  try {
    return WriteTextString(string, stream, encryption);
  } catch (const std::bad_alloc &) {
    return HPDF_SetError(string->error, HPDF_FAILD_TO_ALLOC_MEM, 0);
  }
}
