// SPDX-License-Identifier: MIT
#include <cstring>

#include "platform/openable_path.h"
#include "platform/queried_file_windows.h"
#include "plugin/engine/streams/native_file.h"

namespace quillbar::engine {

using platform::OpenablePath;
using platform::QueriedFile;

std::optional<NativePath> NativePathOf(const std::u16string &path) { return NativePath(path.begin(), path.end()); }

std::FILE *OpenNative(const NativePath &path, const char *mode) {
  return _wfopen(OpenablePath(path).c_str(), std::wstring(mode, mode + std::strlen(mode)).c_str());
}

bool LeadsElsewhere(const NativePath &path) {
  const QueriedFile file(path);
  return file.IsOpen() && !file.IsRegular();
}

}  // namespace quillbar::engine
