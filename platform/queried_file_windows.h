// SPDX-License-Identifier: MIT
#pragma once

#include "platform/openable_path.h"

namespace quillbar::platform {

/// What a path leads to, opened only to ask about it: a file, a folder or a device. Others may do with it what they
/// like meanwhile. Closed at the end.
class QueriedFile {
 public:
  explicit QueriedFile(const std::wstring &path)
      : handle_(CreateFileW(OpenablePath(path).c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                            nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr)) {}
  QueriedFile(const QueriedFile &) = delete;
  QueriedFile &operator=(const QueriedFile &) = delete;
  ~QueriedFile() {
    if (IsOpen()) CloseHandle(handle_);
  }

  bool IsOpen() const { return handle_ != INVALID_HANDLE_VALUE; }
  HANDLE handle() const { return handle_; }

  /// Whether it is a file on a disk, not a folder or a device. It must be open.
  bool IsRegular() const {
    BY_HANDLE_FILE_INFORMATION information;
    return GetFileType(handle_) == FILE_TYPE_DISK && GetFileInformationByHandle(handle_, &information) != FALSE &&
           (information.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
  }

 private:
  HANDLE handle_;
};

}  // namespace quillbar::platform
