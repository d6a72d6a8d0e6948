// SPDX-License-Identifier: MIT
// Strings and names as they are written in a PDF file (ISO 32000-1, 7.3.4 and 7.3.5).
//
// One table answers for each byte whether it needs an escape: showing text takes little more than that.
#include "plugin/engine/streams/escaped_text.h"

#include <hpdf_streams.h>
#include <hpdf_utils.h>

#include <algorithm>
#include <array>
#include <span>
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

HPDF_STATUS WriteLiteralString(HPDF_Stream stream, std::string_view text, std::string_view after) {
  constexpr std::size_t kBlock = 256;
  constexpr std::size_t kLongestAfter = 16;
  // Room for a block of nothing but escapes, the parentheses and what follows.
  char buffer[kBlock * 4 + 2 + kLongestAfter];
  char *end = buffer;
  *end++ = '(';
  for (;;) {
    std::string_view block = text.substr(0, kBlock);
    for (; block.size() >= kStride; block.remove_prefix(kStride)) {
      if (AnyNeedsEscape(block.data())) {
        end = AppendEscaped(block.substr(0, kStride), end);
      } else {
        end += block.copy(end, kStride);
      }
    }
    end = AppendEscaped(block, end);
    if (text.size() <= kBlock) break;
    text.remove_prefix(kBlock);
    if (const HPDF_STATUS status = Write(stream, buffer, end); status != HPDF_OK) return status;
    end = buffer;
  }
  *end++ = ')';
  if (after.size() <= kLongestAfter) {
    end += after.copy(end, after.size());
    return Write(stream, buffer, end);
  }
  const HPDF_STATUS status = Write(stream, buffer, end);
  return status == HPDF_OK ? Write(stream, after.data(), after.data() + after.size()) : status;
}

}  // namespace quillbar::engine

using namespace quillbar::engine;

extern "C" {

HPDF_STATUS HPDF_Stream_WriteEscapeText2(HPDF_Stream stream, const char *text, HPDF_UINT length) {
  return WriteLiteralString(stream, {text, length});
}

/// The first 65,535 bytes of a text; an empty string for null.
HPDF_STATUS HPDF_Stream_WriteEscapeText(HPDF_Stream stream, const char *text) {
  return WriteLiteralString(stream, {text, HPDF_StrLen(text, HPDF_LIMIT_MAX_STRING_LEN)});
}

/// A slash and the first 127 bytes of a name.
HPDF_STATUS HPDF_Stream_WriteEscapeName(HPDF_Stream stream, const char *name) {
  char text[1 + HPDF_LIMIT_MAX_NAME_LEN * 3];
  char *end = text;
  *end++ = '/';
  for (const char c : std::string_view(name, HPDF_StrLen(name, HPDF_LIMIT_MAX_NAME_LEN))) {
    const auto byte = static_cast<unsigned char>(c);
    if (kNeedsEscape[byte] != 0) {
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
    char text[2 * kBlock];
    char *end = text;
    for (const HPDF_BYTE byte : std::span(encryption != nullptr ? encrypted : bytes, count)) end = AppendHex(byte, end);
    if (const HPDF_STATUS status = Write(stream, text, end); status != HPDF_OK) return status;
  }
  return HPDF_OK;
}

}  // extern "C"
