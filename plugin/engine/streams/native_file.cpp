// SPDX-License-Identifier: MIT
// Files named by a UTF-16 path, in place of libharu's fopen with the bytes of the C library's encoding: the
// host's path can hold any character, and on Windows no byte encoding could carry it. libharu passes the path
// on untouched.
#include "plugin/engine/streams/native_file.h"

#include <cerrno>
#include <cstring>

#include "plugin/engine/streams/seam.h"

namespace quillbar::engine {

std::u16string CopyUtf16(const char *bytes) {
  std::u16string text;
  char16_t unit = 0;
  for (;; bytes += sizeof unit) {
    std::memcpy(&unit, bytes, sizeof unit);
    if (unit == 0) return text;
    text.push_back(unit);
  }
}

}  // namespace quillbar::engine

FILE *QuillbarOpenFile(const char *utf16Path, const char *mode) {
  using namespace quillbar::engine;
  if (utf16Path == nullptr) {
    errno = EINVAL;
    return nullptr;
  }
  const std::optional<NativePath> path = NativePathOf(utf16Path);
  if (!path) return nullptr;
  // What the library reads are fonts: folders have none, and pipes and devices may have no end.
  if (mode[0] == 'r' && LeadsElsewhere(*path)) {
    errno = EINVAL;
    return nullptr;
  }
  return OpenNative(*path, mode);
}
