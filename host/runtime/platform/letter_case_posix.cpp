// SPDX-License-Identifier: MIT
#include <clocale>
#include <cwctype>

#include <wctype.h>
#ifdef __APPLE__
#include <xlocale.h>
#endif

#include "host/runtime/platform/letter_case.h"

namespace quillbar::host::platform {
namespace {

locale_t UnicodeLocale() {
  // A locale of the C library's own, which every installation has.
#ifdef __APPLE__
  constexpr const char *kName = "UTF-8";
#else
  constexpr const char *kName = "C.UTF-8";
#endif
  static const locale_t locale = newlocale(LC_CTYPE_MASK, kName, nullptr);
  return locale;
}

}  // namespace

char32_t UpperCase(char32_t character) {
  if (character < 0x80) return character >= 'a' && character <= 'z' ? character - 32 : character;
  const locale_t locale = UnicodeLocale();
  return locale == nullptr ? character : static_cast<char32_t>(towupper_l(static_cast<wint_t>(character), locale));
}

char32_t LowerCase(char32_t character) {
  if (character < 0x80) return character >= 'A' && character <= 'Z' ? character + 32 : character;
  const locale_t locale = UnicodeLocale();
  return locale == nullptr ? character : static_cast<char32_t>(towlower_l(static_cast<wint_t>(character), locale));
}

}  // namespace quillbar::host::platform
