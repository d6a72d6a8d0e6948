// SPDX-License-Identifier: MIT
// The library's functions on bytes and on texts ended by a nul, over those of the C library, which work at the speed of
// memory: every stream that is written and every text that is shown passes through them.
#include <hpdf_utils.h>

#include <algorithm>
#include <cstring>

extern "C" {

/// Copies `count` bytes. Returns where the copy ends.
HPDF_BYTE *HPDF_MemCpy(HPDF_BYTE *to, const HPDF_BYTE *from, HPDF_UINT count) {
  if (count != 0) std::memmove(to, from, count);
  return to + count;
}

/// Sets `count` bytes to `value`. Returns where they end.
void *HPDF_MemSet(void *bytes, HPDF_BYTE value, HPDF_UINT count) {
  if (count != 0) std::memset(bytes, value, count);
  return static_cast<HPDF_BYTE *>(bytes) + count;
}

/// The bytes before the nul, at most `limit` of them unless that is negative; 0 for null.
HPDF_UINT HPDF_StrLen(const char *text, HPDF_INT limit) {
  if (text == nullptr) return 0;
  if (limit < 0) return static_cast<HPDF_UINT>(std::strlen(text));
  const void *end = std::memchr(text, '\0', static_cast<std::size_t>(limit));
  return end == nullptr ? static_cast<HPDF_UINT>(limit) : static_cast<HPDF_UINT>(static_cast<const char *>(end) - text);
}

/// Copies `text`, nothing for null, to `to` and a nul after it, which comes no later than at `last`. Returns where the
/// nul is.
HPDF_BYTE *HPDF_StrCpy(char *to, const char *text, char *last) {
  const auto room = static_cast<HPDF_INT>(std::max<std::ptrdiff_t>(last - to, 0));
  HPDF_BYTE *end = HPDF_MemCpy(reinterpret_cast<HPDF_BYTE *>(to), reinterpret_cast<const HPDF_BYTE *>(text),
                               HPDF_StrLen(text, room));
  *end = '\0';
  return end;
}

/// Less than, equal to or greater than 0 as `a` is to `b`. A null equals nothing, not even a null.
HPDF_INT HPDF_StrCmp(const char *a, const char *b) {
  if (a == nullptr || b == nullptr) return a == nullptr && b != nullptr ? -1 : 1;
  return std::strcmp(a, b);
}

}  // extern "C"
