// SPDX-License-Identifier: MIT
// Strings and names as they are written in a PDF file (ISO 32000-1, 7.3.4 and 7.3.5).
//
// One table answers for each byte whether it needs an escape: showing text takes little more than that.
#include "plugin/engine/streams/escaped_text.h"

#include <hpdf.h>
#include <hpdf_utils.h>

#include <algorithm>
#include <array>
#include <utility>

namespace quillbar::engine {

namespace {

constexpr std::array<HPDF_BYTE, 256> kNeedsEscape = [] {
  std::array<HPDF_BYTE, 256> table{};
  for (unsigned byte = 0; byte < table.size(); ++byte) {
    const auto c = static_cast<HPDF_BYTE>(byte);
    table[byte] = HPDF_NEEDS_ESCAPE(c) ? 1 : 0;
  }
  return table;
}();

constexpr std::size_t kStride = 8;

bool AnyNeedsEscape(const char *stride) {
  return [stride]<std::size_t... Place>(std::index_sequence<Place...>) {
    return (kNeedsEscape[static_cast<unsigned char>(stride[Place])] | ...) != 0;
  }
  (std::make_index_sequence<kStride>());
}

constexpr char kHexDigits[] = "0123456789ABCDEF";

char *AppendHex(unsigned char byte, char *end) {
  *end++ = kHexDigits[byte >> 4];
  *end++ = kHexDigits[byte & 0xF];
  return end;
}

// A backslash and three octal digits.
char *AppendEscape(unsigned char byte, char *end) {
  *end++ = '\\';
  *end++ = static_cast<char>('0' + (byte >> 6));
  *end++ = static_cast<char>('0' + (byte >> 3 & 7));
  *end++ = static_cast<char>('0' + (byte & 7));
  return end;
}

char *AppendEscaped(std::string_view text, char *end) {
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (kNeedsEscape[byte] != 0) [[unlikely]] {
      end = AppendEscape(byte, end);
    } else {
      *end++ = c;
    }
  }
  return end;
}

HPDF_STATUS Write(HPDF_Stream stream, const char *begin, const char *end) {
  return HPDF_Stream_Write(stream, reinterpret_cast<const HPDF_BYTE *>(begin), static_cast<HPDF_UINT>(end - begin));
}

}  // namespace

bool NeedsEscape(char byte) { return kNeedsEscape[static_cast<unsigned char>(byte)] != 0; }

char *EscapeText(std::string_view text, char *end) {
  for (; text.size() >= kStride; text.remove_prefix(kStride)) {
    if (AnyNeedsEscape(text.data())) {
      end = AppendEscaped(text.substr(0, kStride), end);
    } else {
      end += text.copy(end, kStride);
    }
  }
  return AppendEscaped(text, end);
}

char *WriteHexDigits(std::string_view bytes, char *end) {
  for (const char byte : bytes) end = AppendHex(static_cast<unsigned char>(byte), end);
  return end;
}

}  // namespace quillbar::engine

using namespace quillbar::engine;

extern "C" {

HPDF_STATUS HPDF_Stream_WriteEscapeText2(HPDF_Stream stream, const char *bytes, HPDF_UINT length) {
  constexpr std::size_t kBlock = 256;
  // Room for a block of nothing but escapes and the parentheses.
  char buffer[kBlock * kLongestEscape + 2];
  char *end = buffer;
  *end++ = '(';
  std::string_view text(bytes, length);
  for (; text.size() > kBlock; text.remove_prefix(kBlock)) {
    end = EscapeText(text.substr(0, kBlock), end);
    if (const HPDF_STATUS status = Write(stream, buffer, end); status != HPDF_OK) return status;
    end = buffer;
  }
  end = EscapeText(text, end);
  *end++ = ')';
  return Write(stream, buffer, end);
}

/// The first 65,535 bytes of a text; an empty string for null.
HPDF_STATUS HPDF_Stream_WriteEscapeText(HPDF_Stream stream, const char *text) {
  return HPDF_Stream_WriteEscapeText2(stream, text, HPDF_StrLen(text, HPDF_LIMIT_MAX_STRING_LEN));
}

/// A slash and the first 127 bytes of a name. A space would end it (ISO 32000-1, 7.3.5); libharu writes it as it is.
HPDF_STATUS HPDF_Stream_WriteEscapeName(HPDF_Stream stream, const char *name) {
  char text[1 + HPDF_LIMIT_MAX_NAME_LEN * 3];
  char *end = text;
  *end++ = '/';
  for (const char c : std::string_view(name, HPDF_StrLen(name, HPDF_LIMIT_MAX_NAME_LEN))) {
    const auto byte = static_cast<unsigned char>(c);
    if (kNeedsEscape[byte] != 0 || c == ' ') {
      *end++ = '#';
      end = AppendHex(byte, end);
    } else {
      *end++ = c;
    }
  }
  return Write(stream, text, end);
}

/// Bytes in hexadecimal digits, encrypted unless `encryption` is null; without the angle brackets.
HPDF_STATUS HPDF_Stream_WriteBinary(HPDF_Stream stream, const HPDF_BYTE *bytes, HPDF_UINT size,
                                    HPDF_Encrypt encryption) {
  constexpr HPDF_UINT kBlock = 256;
  for (HPDF_UINT count = 0; size != 0; bytes += count, size -= count) {
    count = std::min(size, kBlock);
    HPDF_BYTE encrypted[kBlock];
    if (encryption != nullptr) HPDF_Encrypt_CryptBuf(encryption, bytes, encrypted, count);
    const HPDF_BYTE *const block = encryption != nullptr ? encrypted : bytes;
    char text[2 * kBlock];
    const char *const end = WriteHexDigits({reinterpret_cast<const char *>(block), count}, text);
    if (const HPDF_STATUS status = Write(stream, text, end); status != HPDF_OK) return status;
  }
  return HPDF_OK;
}

}  // extern "C"
