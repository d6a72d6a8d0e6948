// SPDX-License-Identifier: MIT
#include "host/runtime/platform/file_system.h"

#include <algorithm>

#include "host/runtime/platform/file_replacement.h"

namespace quillbar::host::platform {

namespace fs = std::filesystem;

// Paths are bytes here, and the bytes are UTF-8 by convention.
fs::path PathFromUtf8(std::string_view utf8) { return fs::path(std::string(utf8)); }
std::string Utf8Path(const fs::path &path) { return path.native(); }

std::string ErrorText(const std::error_code &error) { return error.message(); }

fs::path NormalPath(const fs::path &path) {
  const fs::path normal = fs::absolute(path).lexically_normal();
  return normal.has_filename() || !normal.has_relative_path() ? normal : normal.parent_path();
}

fs::path CanonicalPath(const fs::path &path, std::error_code &error) { return fs::canonical(path, error); }

FileKind KindOf(const fs::path &path) {
  std::error_code error;
  switch (fs::status(path, error).type()) {
    case fs::file_type::regular:
      return FileKind::kFile;
    case fs::file_type::directory:
      return FileKind::kFolder;
    case fs::file_type::none:
    case fs::file_type::not_found:
      return FileKind::kNone;
    default:
      return FileKind::kOther;
  }
}

bool IsTaken(const fs::path &path) {
  std::error_code error;
  return fs::exists(fs::symlink_status(path, error));
}

std::uint64_t FileSize(const fs::path &path) {
  std::error_code error;
  const std::uintmax_t size = fs::file_size(path, error);
  return error ? 0 : size;
}

std::vector<fs::path> ListFolder(const fs::path &path, std::error_code &error) {
  std::vector<fs::path> children;
  for (fs::directory_iterator entry(path, error), end; !error && entry != end; entry.increment(error)) {
    children.push_back(entry->path());
  }
  std::ranges::sort(children);
  return children;
}

void Rename(const fs::path &from, const fs::path &to, std::error_code &error) { fs::rename(from, to, error); }

bool Remove(const fs::path &path, std::error_code &error) { return fs::remove(path, error); }

void CreateFolder(const fs::path &path, std::error_code &error) { fs::create_directory(path, error); }

void Copy(const fs::path &from, const fs::path &to, std::error_code &error) {
  if (KindOf(from) != FileKind::kFolder) return CopyWholeFile(from, to, error);
  // Listed before the copy is made, which may be inside.
  const std::vector<fs::path> children = ListFolder(from, error);
  if (!error) fs::create_directory(to, from, error);
  for (const fs::path &child : children) {
    if (error) return;
    Copy(child, to / child.filename(), error);
  }
}

}  // namespace quillbar::host::platform
