// SPDX-License-Identifier: MIT
#include <sys/stat.h>
#include <utf8.h>

#include <cerrno>

#include "plugin/engine/streams/native_file.h"

namespace quillbar::engine {

std::optional<NativePath> NativePathOf(const std::u16string &path) {
  try {
    return utf8::utf16to8(path);
  } catch (const utf8::exception &) {
    errno = EILSEQ;
    return std::nullopt;
  }
}

std::FILE *OpenNative(const NativePath &path, const char *mode) { return std::fopen(path.c_str(), mode); }

bool LeadsElsewhere(const NativePath &path) {
  struct stat status;
  return stat(path.c_str(), &status) == 0 && !S_ISREG(status.st_mode);
}

}  // namespace quillbar::engine
