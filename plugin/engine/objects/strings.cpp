// SPDX-License-Identifier: MIT
// Objects of type string: a text of at most 65,535 bytes, with the encoder that turns it into Unicode or without one.
//
// A string without an encoder is written as it is: as a literal string, or encrypted in hexadecimal digits. One with
// an encoder becomes UTF-16 with a byte order mark, in hexadecimal digits (ISO 32000-1, 7.9.2.2, text strings). The
// UTF-8 encoder has one unit for a character, so UTF-8 is decoded here: characters outside the basic plane keep both
// of their units, and every broken sequence becomes U+FFFD.
#include <hpdf.h>
#include <hpdf_utils.h>
#include <utf8.h>

#include <new>
#include <string>
#include <string_view>

namespace {

void AppendUnit(std::string &bytes, char16_t unit) {
  bytes += static_cast<char>(unit >> 8);
  bytes += static_cast<char>(unit & 0xFF);
}

void AppendUtf8(std::string &bytes, std::string_view utf8) {
  const std::u16string units = utf8::utf8to16(utf8::replace_invalid(utf8));
  bytes.reserve(bytes.size() + 2 * units.size());
  for (const char16_t unit : units) AppendUnit(bytes, unit);
}

void AppendEncoded(std::string &bytes, const HPDF_String_Rec &string) {
  HPDF_ParseText_Rec state;
  HPDF_Encoder_SetParseText(string.encoder, &state, string.value, string.len);
  for (HPDF_UINT i = 0; i < string.len; ++i) {
    const HPDF_ByteType type = HPDF_Encoder_ByteType(string.encoder, &state);
    if (type == HPDF_BYTE_TYPE_TRIAL) continue;
    unsigned code = string.value[i];
    if (type == HPDF_BYTE_TYPE_LEAD) code = code * 256 + string.value[i + 1];
    AppendUnit(bytes, HPDF_Encoder_ToUnicode(string.encoder, static_cast<HPDF_UINT16>(code)));
  }
}

// UTF-16 with its byte order mark, the most significant byte first.
std::string TextStringBytes(const HPDF_String_Rec &string) {
  std::string bytes = "\xFE\xFF";
  if (std::string_view(string.encoder->name) == "UTF-8") {
    AppendUtf8(bytes, {reinterpret_cast<const char *>(string.value), string.len});
  } else {
    AppendEncoded(bytes, string);
  }
  return bytes;
}

HPDF_STATUS WriteHexadecimal(HPDF_Stream stream, const HPDF_BYTE *bytes, HPDF_UINT size, HPDF_Encrypt encryption) {
  HPDF_STATUS status = HPDF_Stream_WriteChar(stream, '<');
  if (status == HPDF_OK) status = HPDF_Stream_WriteBinary(stream, bytes, size, encryption);
  return status == HPDF_OK ? HPDF_Stream_WriteChar(stream, '>') : status;
}

}  // namespace

extern "C" {

/// A string object with a copy of `value`, empty for null. Null, with the error record set, for a text that is too
/// long (HPDF_STRING_OUT_OF_RANGE) and when memory is short. `encoder` may be null; it is not owned.
HPDF_String HPDF_String_New(HPDF_MMgr memory, const char *value, HPDF_Encoder encoder) {
  const HPDF_UINT length = HPDF_StrLen(value, HPDF_LIMIT_MAX_STRING_LEN + 1);
  if (length > HPDF_LIMIT_MAX_STRING_LEN) {
    HPDF_SetError(memory->error, HPDF_STRING_OUT_OF_RANGE, 0);
    return nullptr;
  }
  auto *string = static_cast<HPDF_String>(HPDF_GetMem(memory, sizeof(HPDF_String_Rec)));
  if (string == nullptr) return nullptr;
  *string = HPDF_String_Rec{};
  string->header.obj_class = HPDF_OCLASS_STRING;
  string->mmgr = memory;
  string->error = memory->error;
  string->encoder = encoder;
  string->len = length;
  string->value = static_cast<HPDF_BYTE *>(HPDF_GetMem(memory, length + 1));
  if (string->value == nullptr) {
    HPDF_FreeMem(memory, string);
    return nullptr;
  }
  auto *text = reinterpret_cast<char *>(string->value);
  HPDF_StrCpy(text, value, text + length);
  return string;
}

/// Nothing happens for null.
void HPDF_String_Free(HPDF_String string) {
  if (string == nullptr) return;
  HPDF_FreeMem(string->mmgr, string->value);
  HPDF_FreeMem(string->mmgr, string);
}

HPDF_STATUS HPDF_String_Write(HPDF_String string, HPDF_Stream stream, HPDF_Encrypt encryption) {
  if (encryption != nullptr) HPDF_Encrypt_Reset(encryption);
  if (string->encoder == nullptr) {
    return encryption != nullptr ? WriteHexadecimal(stream, string->value, string->len, encryption)
                                 : HPDF_Stream_WriteEscapeText(stream, reinterpret_cast<const char *>(string->value));
  }
  try {
    const std::string bytes = TextStringBytes(*string);
    return WriteHexadecimal(stream, reinterpret_cast<const HPDF_BYTE *>(bytes.data()),
                            static_cast<HPDF_UINT>(bytes.size()), encryption);
  } catch (const std::bad_alloc &) {
    return HPDF_SetError(string->error, HPDF_FAILD_TO_ALLOC_MEM, 0);
  }
}

}  // extern "C"
