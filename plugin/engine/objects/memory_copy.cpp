// SPDX-License-Identifier: MIT
// HPDF_MemCpy, in place of libharu's, which copies one byte at a time: every stream that is written passes
// through it.
#include <hpdf_utils.h>

#include <cstring>

// Returns where the copy ends.
extern "C" HPDF_BYTE *HPDF_MemCpy(HPDF_BYTE *to, const HPDF_BYTE *from, HPDF_UINT count) {
  if (count != 0) std::memmove(to, from, count);
  return to + count;
}
