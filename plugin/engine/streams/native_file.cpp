// SPDX-License-Identifier: MIT
#include "plugin/engine/streams/native_file.h"

#include <cerrno>
#include <cstring>

namespace quillbar::engine {

std::optional<NativePath> NativePathOf(const char *utf16Path) {
  if (utf16Path == nullptr) {
    errno = EINVAL;
    return std::nullopt;
  }
  std::u16string text;
  char16_t unit = 0;
  for (;; utf16Path += sizeof unit) {
    std::memcpy(&unit, utf16Path, sizeof unit);
    if (unit == 0) return NativePathOf(text);
    text.push_back(unit);
  }
}

}  // namespace quillbar::engine
