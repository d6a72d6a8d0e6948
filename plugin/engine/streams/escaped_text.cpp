// SPDX-License-Identifier: MIT
// HPDF_Stream_WriteEscapeText2: text as a literal string. The bytes are those of libharu's, which asks
// fourteen questions about each of them; here one table answers, since this is most of what showing text
// takes.
#include "plugin/engine/streams/escaped_text.h"

#include <hpdf_streams.h>
#include <hpdf_utils.h>

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

extern "C" HPDF_STATUS HPDF_Stream_WriteEscapeText2(HPDF_Stream stream, const char *text, HPDF_UINT length) {
  return quillbar::engine::WriteLiteralString(stream, {text, length});
}
