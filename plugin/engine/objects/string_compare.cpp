// SPDX-License-Identifier: MIT
// HPDF_StrCmp, in place of libharu's, which steps over the ends of two empty texts and compares what lies
// behind.
#include <hpdf_utils.h>

#include <cstring>

// Less than, equal to or greater than 0 as `a` is to `b`; a null equals nothing, itself included.
extern "C" HPDF_INT HPDF_StrCmp(const char *a, const char *b) {
  if (a == nullptr || b == nullptr) return a == nullptr && b != nullptr ? -1 : 1;
  return std::strcmp(a, b);
}
