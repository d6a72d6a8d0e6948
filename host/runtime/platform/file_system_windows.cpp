// SPDX-License-Identifier: MIT
#include "host/runtime/platform/file_system.h"

#include <algorithm>
#include <optional>

#include "host/runtime/platform/file_replacement.h"
#include "host/runtime/platform/wide_text_windows.h"
#include "platform/openable_path.h"
#include "platform/queried_file_windows.h"

namespace quillbar::host::platform {

namespace fs = std::filesystem;

using quillbar::platform::FullPath;
using quillbar::platform::OpenablePath;
using quillbar::platform::QueriedFile;

namespace {

std::error_code LastError() { return {static_cast<int>(GetLastError()), std::system_category()}; }

/// For calls that return FALSE when they fail.
std::error_code ErrorUnless(BOOL succeeded) { return succeeded != FALSE ? std::error_code() : LastError(); }

struct Attributes {
  DWORD flags;
  std::uint64_t size;

  bool IsFolder() const { return (flags & FILE_ATTRIBUTE_DIRECTORY) != 0; }
  bool IsLink() const { return (flags & FILE_ATTRIBUTE_REPARSE_POINT) != 0; }
};

std::uint64_t SizeOf(DWORD high, DWORD low) { return std::uint64_t{high} << 32 | low; }

/// Attributes of the path itself; those of a link, when it is one.
std::optional<Attributes> AttributesOf(const fs::path &path) {
  WIN32_FILE_ATTRIBUTE_DATA data;
  if (GetFileAttributesExW(OpenablePath(path).c_str(), GetFileExInfoStandard, &data) == FALSE) return {};
  return Attributes{data.dwFileAttributes, SizeOf(data.nFileSizeHigh, data.nFileSizeLow)};
}

/// Attributes of what the path leads to.
std::optional<Attributes> TargetAttributesOf(const fs::path &path) {
  const std::optional<Attributes> own = AttributesOf(path);
  if (!own || !own->IsLink()) return own;
  const QueriedFile target(path.native());
  BY_HANDLE_FILE_INFORMATION data;
  if (!target.IsOpen() || GetFileInformationByHandle(target.handle(), &data) == FALSE) return {};
  return Attributes{data.dwFileAttributes, SizeOf(data.nFileSizeHigh, data.nFileSizeLow)};
}

/// The path without the leading "\\?\", where it means the same without it.
std::wstring PlainPath(const std::wstring &path) {
  constexpr std::wstring_view kPrefix = LR"(\\?\)";
  constexpr std::wstring_view kSharePrefix = LR"(\\?\UNC\)";
  std::wstring plain;
  if (path.starts_with(kSharePrefix)) {
    plain = LR"(\\)" + path.substr(kSharePrefix.size());
  } else if (path.starts_with(kPrefix) && path.size() > kPrefix.size() + 2 && path[kPrefix.size() + 1] == L':') {
    plain = path.substr(kPrefix.size());
  } else {
    return path;
  }
  return FullPath(plain) == plain ? plain : path;
}

}  // namespace

fs::path PathFromUtf8(std::string_view utf8) { return WideFromUtf8(utf8); }
std::string Utf8Path(const fs::path &path) { return Utf8FromWide(path.native()); }

std::string ErrorText(const std::error_code &error) {
  if (error.category() != std::system_category()) return error.message();
  return SystemMessage(static_cast<unsigned long>(error.value()));
}

fs::path NormalPath(const fs::path &path) {
  const fs::path normal = PlainPath(FullPath(path.native()));
  return normal.has_filename() || !normal.has_relative_path() ? normal : normal.parent_path();
}

fs::path CanonicalPath(const fs::path &path, std::error_code &error) {
  const QueriedFile file(path.native());
  if (!file.IsOpen()) {
    error = LastError();
    return {};
  }
  std::wstring canonical(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length = GetFinalPathNameByHandleW(file.handle(), canonical.data(),
                                                   static_cast<DWORD>(canonical.size()), FILE_NAME_NORMALIZED);
    // Some network file systems don't have such names.
    if (length == 0) return NormalPath(path);
    const bool fits = length < canonical.size();
    canonical.resize(length);
    if (fits) return PlainPath(canonical);
  }
}

FileKind KindOf(const fs::path &path) {
  const std::optional<Attributes> attributes = TargetAttributesOf(path);
  if (!attributes) return FileKind::kNone;
  if ((attributes->flags & FILE_ATTRIBUTE_DEVICE) != 0) return FileKind::kOther;
  return attributes->IsFolder() ? FileKind::kFolder : FileKind::kFile;
}

bool IsTaken(const fs::path &path) { return AttributesOf(path).has_value(); }

std::uint64_t FileSize(const fs::path &path) {
  const std::optional<Attributes> attributes = TargetAttributesOf(path);
  return attributes && !attributes->IsFolder() ? attributes->size : 0;
}

std::vector<fs::path> ListFolder(const fs::path &path, std::error_code &error) {
  // A "\\?\" path can't have an empty part, so the pattern is appended before the form is chosen.
  const std::wstring pattern = OpenablePath((path / L"*").native());
  WIN32_FIND_DATAW entry;
  const HANDLE search = FindFirstFileW(pattern.c_str(), &entry);
  std::vector<fs::path> children;
  if (search == INVALID_HANDLE_VALUE) {
    // The root of an empty volume has not even "." and "..".
    error = GetLastError() == ERROR_FILE_NOT_FOUND ? std::error_code() : LastError();
    return children;
  }
  do {
    const std::wstring_view name(entry.cFileName);
    if (name != L"." && name != L"..") children.push_back(path / name);
  } while (FindNextFileW(search, &entry) != FALSE);
  error = GetLastError() == ERROR_NO_MORE_FILES ? std::error_code() : LastError();
  FindClose(search);
  std::ranges::sort(children);
  return children;
}

void Rename(const fs::path &from, const fs::path &to, std::error_code &error) {
  error = ErrorUnless(MoveFileExW(OpenablePath(from).c_str(), OpenablePath(to).c_str(),
                                  MOVEFILE_REPLACE_EXISTING | MOVEFILE_COPY_ALLOWED));
}

bool Remove(const fs::path &path, std::error_code &error) {
  error.clear();
  const std::optional<Attributes> attributes = AttributesOf(path);
  if (!attributes) return false;
  const fs::path openable = OpenablePath(path);
  error = ErrorUnless(attributes->IsFolder() ? RemoveDirectoryW(openable.c_str()) : DeleteFileW(openable.c_str()));
  return !error;
}

void CreateFolder(const fs::path &path, std::error_code &error) {
  error = ErrorUnless(CreateDirectoryW(OpenablePath(path).c_str(), nullptr));
  if (error && KindOf(path) == FileKind::kFolder) error.clear();
}

void Copy(const fs::path &from, const fs::path &to, std::error_code &error) {
  if (KindOf(from) != FileKind::kFolder) return CopyWholeFile(from, to, error);
  // Listed before the copy is made, which may be inside.
  const std::vector<fs::path> children = ListFolder(from, error);
  if (!error) CreateFolder(to, error);
  for (const fs::path &child : children) {
    if (error) return;
    Copy(child, to / child.filename(), error);
  }
}

}  // namespace quillbar::host::platform
