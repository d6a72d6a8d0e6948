// SPDX-License-Identifier: MIT
#include "host/runtime/platform/file_replacement.h"

#include <string>

#include "platform/openable_path.h"
#include "platform/queried_file_windows.h"

namespace quillbar::host::platform {
namespace {

namespace fs = std::filesystem;

using quillbar::platform::OpenablePath;
using quillbar::platform::QueriedFile;

std::error_code LastError() { return {static_cast<int>(GetLastError()), std::system_category()}; }

fs::path UnusedBeside(const fs::path &path) {
  static unsigned number = 0;
  return path.parent_path() /
         (L".quillbar-" + std::to_wstring(GetCurrentProcessId()) + L"-h" + std::to_wstring(number++) + L".tmp");
}

void Sync(const fs::path &path, std::error_code &error) {
  const HANDLE file =
      CreateFileW(OpenablePath(path).c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                  nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) {
    error = LastError();
    return;
  }
  if (FlushFileBuffers(file) == FALSE) {
    const DWORD problem = GetLastError();
    if (problem != ERROR_INVALID_FUNCTION && problem != ERROR_NOT_SUPPORTED) {
      error = {static_cast<int>(problem), std::system_category()};
    }
  }
  CloseHandle(file);
}

bool IsOnlyName(const QueriedFile &file) {
  BY_HANDLE_FILE_INFORMATION data;
  return file.IsOpen() && file.IsRegular() && GetFileInformationByHandle(file.handle(), &data) != FALSE &&
         data.nNumberOfLinks == 1 &&
         (data.dwFileAttributes & (FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM)) == 0;
}

}  // namespace

std::optional<Replacement> BeginReplacement(const fs::path &path) {
  const DWORD attributes = GetFileAttributesW(OpenablePath(path).c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0) return {};
  if (!IsOnlyName(QueriedFile(path.native()))) return {};
  Replacement replacement{UnusedBeside(path), path};
  const HANDLE file = CreateFileW(OpenablePath(replacement.written).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                  FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) return {};
  CloseHandle(file);
  return replacement;
}

void FinishReplacement(const Replacement &replacement, std::error_code &error) {
  Sync(replacement.written, error);
  if (!error) {
    const fs::path written = OpenablePath(replacement.written), replaced = OpenablePath(replacement.replaced);
    // It keeps the old file's permissions, which no renaming does.
    if (ReplaceFileW(replaced.c_str(), written.c_str(), nullptr, REPLACEFILE_IGNORE_MERGE_ERRORS, nullptr, nullptr) !=
            FALSE ||
        MoveFileExW(written.c_str(), replaced.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != FALSE) {
      return;
    }
    // A file that somebody has open can be written all the same.
    if (CopyFileW(written.c_str(), replaced.c_str(), FALSE) == FALSE) error = LastError();
  }
  GiveUpReplacement(replacement);
}

void GiveUpReplacement(const Replacement &replacement) { DeleteFileW(OpenablePath(replacement.written).c_str()); }

void WaitForDisk(const fs::path &path, std::error_code &error) {
  const DWORD attributes = GetFileAttributesW(OpenablePath(path).c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_DEVICE)) != 0) {
    return;
  }
  std::error_code ignored;
  // The file may be one that only its stream may write.
  Sync(path, error);
  if (error.value() == ERROR_ACCESS_DENIED || error.value() == ERROR_SHARING_VIOLATION) error = ignored;
}

void CopyWholeFile(const fs::path &from, const fs::path &to, std::error_code &error) {
  error.clear();
  if (GetFileAttributesW(OpenablePath(to).c_str()) != INVALID_FILE_ATTRIBUTES) {
    error = {ERROR_FILE_EXISTS, std::system_category()};
    return;
  }
  const Replacement copy{UnusedBeside(to), to};
  if (CopyFileW(OpenablePath(from).c_str(), OpenablePath(copy.written).c_str(), TRUE) == FALSE) {
    error = LastError();
    // What was there of that name isn't ours.
    if (error.value() != ERROR_FILE_EXISTS) GiveUpReplacement(copy);
    return;
  }
  // A copy of a file that is read only can't be waited for.
  std::error_code ignored;
  Sync(copy.written, ignored);
  if (MoveFileExW(OpenablePath(copy.written).c_str(), OpenablePath(to).c_str(), MOVEFILE_WRITE_THROUGH) == FALSE) {
    error = LastError();
    GiveUpReplacement(copy);
  }
}

}  // namespace quillbar::host::platform
