// SPDX-License-Identifier: MIT
#include "host/runtime/platform/file_replacement.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <string_view>

namespace quillbar::host::platform {
namespace {

namespace fs = std::filesystem;

std::error_code LastError() { return {errno, std::generic_category()}; }

/// A new file for its owner alone beside `path`: its descriptor, and its path; -1 with errno set.
int OpenBeside(const fs::path &path, fs::path &opened) {
  static unsigned number = 0;
  int file = -1;
  do {
    opened = path.parent_path() / (".quillbar-" + std::to_string(getpid()) + "-h" + std::to_string(number++) + ".tmp");
    file = open(opened.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
  } while (file < 0 && errno == EEXIST);
  return file;
}

/// Attributes that every file of a system has are no reason against a new one.
bool HasAttributes(const fs::path &path) {
  char names[4096];
#ifdef __APPLE__
  const ssize_t size = listxattr(path.c_str(), names, sizeof names, 0);
#else
  const ssize_t size = listxattr(path.c_str(), names, sizeof names);
#endif
  if (size < 0) return errno == ERANGE;
  for (std::string_view rest(names, static_cast<std::size_t>(size)); !rest.empty();) {
    const std::string_view name = rest.substr(0, rest.find('\0'));
    if (name != "security.selinux" && name != "com.apple.provenance") return true;
    rest.remove_prefix(name.size() + 1);
  }
  return false;
}

/// Whether the new file could be given the owner and the permissions of the old one.
bool TakeAfter(int file, const struct stat &old) {
  struct stat status;
  if (fstat(file, &status) != 0) return false;
  const bool isOwned = status.st_uid == old.st_uid && status.st_gid == old.st_gid;
  return (isOwned || fchown(file, old.st_uid, old.st_gid) == 0) && fchmod(file, old.st_mode & 07777) == 0;
}

bool CannotWait() { return errno == EINVAL || errno == ENOSYS || errno == ENOTSUP || errno == EROFS; }

void Sync(const fs::path &path, int flags, std::error_code &error) {
  const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC | flags);
  if (file < 0) {
    error = LastError();
    return;
  }
  int result = 0;
  do {
    result = fsync(file);
  } while (result != 0 && errno == EINTR);
  if (result != 0 && !CannotWait()) error = LastError();
  close(file);
}

/// Without it a file could have its old name again after a power cut. It has its new one now, so this is no failure.
void SyncFolderOf(const fs::path &path) {
  std::error_code ignored;
  Sync(path.parent_path(), O_DIRECTORY, ignored);
}

}  // namespace

std::optional<Replacement> BeginReplacement(const fs::path &path) {
  struct stat old;
  std::error_code error;
  const fs::path replaced = fs::canonical(path, error);
  if (error || stat(replaced.c_str(), &old) != 0 || !S_ISREG(old.st_mode) || old.st_nlink != 1) return {};
  if (access(replaced.c_str(), W_OK) != 0 || HasAttributes(replaced)) return {};
  Replacement replacement{{}, replaced};
  const int file = OpenBeside(replaced, replacement.written);
  if (file < 0) return {};
  const bool isLike = TakeAfter(file, old);
  close(file);
  if (isLike) return replacement;
  GiveUpReplacement(replacement);
  return {};
}

void FinishReplacement(const Replacement &replacement, std::error_code &error) {
  Sync(replacement.written, 0, error);
  if (!error) fs::rename(replacement.written, replacement.replaced, error);
  if (error) return GiveUpReplacement(replacement);
  SyncFolderOf(replacement.replaced);
}

void GiveUpReplacement(const Replacement &replacement) { unlink(replacement.written.c_str()); }

void WaitForDisk(const fs::path &path, std::error_code &error) {
  struct stat status;
  // It may be gone, or may no longer be readable.
  if (stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode) || access(path.c_str(), R_OK) != 0) return;
  Sync(path, O_NONBLOCK, error);
}

void CopyWholeFile(const fs::path &from, const fs::path &to, std::error_code &error) {
  error.clear();
  if (fs::exists(fs::symlink_status(to, error))) error = std::make_error_code(std::errc::file_exists);
  if (error && error != std::errc::no_such_file_or_directory) return;
  Replacement copy{{}, to};
  const int file = OpenBeside(to, copy.written);
  error = file < 0 ? LastError() : std::error_code();
  if (error) return;
  close(file);
  fs::copy_file(from, copy.written, fs::copy_options::overwrite_existing, error);
  if (!error) Sync(copy.written, 0, error);
  if (!error && link(copy.written.c_str(), to.c_str()) != 0) {
    // File systems without second names.
    error = LastError();
    if (error != std::errc::file_exists && !fs::exists(fs::symlink_status(to))) {
      fs::rename(copy.written, to, error);
      if (!error) return SyncFolderOf(to);
    }
  }
  GiveUpReplacement(copy);
  if (!error) SyncFolderOf(to);
}

}  // namespace quillbar::host::platform
