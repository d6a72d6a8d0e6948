// SPDX-License-Identifier: MIT
// HPDF_StrLen, in place of libharu's, which looks at one byte at a time: every text passes through it, long
// ones whole even where the first line is all that is measured.
#include <hpdf_utils.h>

#include <cstring>

// The bytes before the terminating nul, at most `limit` of them unless that is negative; 0 for null.
extern "C" HPDF_UINT HPDF_StrLen(const char *text, HPDF_INT limit) {
  if (text == nullptr) return 0;
  if (limit < 0) return static_cast<HPDF_UINT>(std::strlen(text));
  const void *end = std::memchr(text, '\0', static_cast<std::size_t>(limit));
  return end == nullptr ? static_cast<HPDF_UINT>(limit) : static_cast<HPDF_UINT>(static_cast<const char *>(end) - text);
}
