// SPDX-License-Identifier: MIT
#include "plugin/engine/streams/whole_file.h"

#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>

#include <cerrno>

#include "platform/openable_path.h"
#include "platform/queried_file_windows.h"

namespace quillbar::engine {

using platform::FullPath;
using platform::OpenablePath;
using platform::QueriedFile;

namespace {

int ProblemOf(DWORD error) {
  switch (error) {
    case ERROR_FILE_EXISTS:
    case ERROR_ALREADY_EXISTS:
      return EEXIST;
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
      return ENOENT;
    case ERROR_ACCESS_DENIED:
    case ERROR_SHARING_VIOLATION:
      return EACCES;
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
      return ENOSPC;
    default:
      return EIO;
  }
}

// Waits until the disk has what was written. File systems that can't wait are not to blame.
int SyncStream(std::FILE *stream) {
  if (FlushFileBuffers(reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(stream)))) != FALSE) return 0;
  const DWORD error = GetLastError();
  return error == ERROR_INVALID_FUNCTION || error == ERROR_NOT_SUPPORTED ? 0 : ProblemOf(error);
}

// Virus scanners and indexers look into a file as soon as it is closed, and keep it from being renamed
// meanwhile: it is tried for a second.
int Rename(const std::wstring &from, const std::wstring &to) {
  DWORD error = ERROR_SUCCESS;
  for (DWORD pause = 1; pause < 1024; pause *= 2) {
    if (MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_WRITE_THROUGH) != FALSE) return 0;
    error = GetLastError();
    if (error != ERROR_ACCESS_DENIED && error != ERROR_SHARING_VIOLATION) break;
    Sleep(pause);
  }
  return ProblemOf(error);
}

// A path in two parts: the folder with what parts it from the name, and the name.
struct Place {
  explicit Place(const NativePath &path)
      : folder(path, 0, path.find_last_of(L"\\/:") + 1), name(path, folder.size(), NativePath::npos) {}

  NativePath folder, name;
};

class RenamedFile final : public WholeFile {
 public:
  explicit RenamedFile(const NativePath &path) : folder_(Place(path).folder), path_(OpenablePath(path)) {}
  ~RenamedFile() override {
    Close();
    if (isTemporary_) DeleteFileW(temporaryPath_.c_str());
  }

  // Makes the file under a temporary name. Whether that worked; if not, errno is set.
  bool Begin() {
    int file = -1;
    do {
      const std::string name = NextTemporaryName();
      temporaryPath_ = OpenablePath(folder_ + std::wstring(name.begin(), name.end()));
      file = _wopen(temporaryPath_.c_str(), _O_WRONLY | _O_CREAT | _O_EXCL | _O_BINARY | _O_NOINHERIT,
                    _S_IREAD | _S_IWRITE);
    } while (file < 0 && errno == EEXIST);
    if (file < 0) return false;
    isTemporary_ = true;
    Write(_fdopen(file, "wb"));
    if (stream() == nullptr) _close(file);
    return stream() != nullptr;
  }

  int Commit() override {
    int problem = Finish(SyncStream);
    if (problem == 0) problem = Rename(temporaryPath_, path_);
    if (problem == 0) isTemporary_ = false;
    return problem;
  }

 private:
  std::wstring folder_, path_, temporaryPath_;
  bool isTemporary_ = false;
};

// Whether the path's form alone says that no file can be renamed to it: a device's or a pipe's, whose mere
// opening would be noticed, or that of a stream beside a file's own content.
bool NamesNoFile(const NativePath &path) { return path.starts_with(LR"(\\.\)") || Place(path).folder.ends_with(L':'); }

bool IsLink(const NativePath &path) {
  const DWORD attributes = GetFileAttributesW(OpenablePath(path).c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
}

// No file system has longer names. What opening one gives is not what looking for one gives.
bool HasNameTooLong(const NativePath &path) { return Place(path).name.size() > 255; }

}  // namespace

std::unique_ptr<WholeFile> WholeFile::Open(const NativePath &askedPath) {
  const NativePath path = FullPath(askedPath);
  if (NamesNoFile(path) || HasNameTooLong(path)) return OpenDirectly(askedPath);
  {
    const QueriedFile found(path);
    const DWORD error = GetLastError();
    if (found.IsOpen() && found.IsRegular()) {
      errno = EEXIST;
      return nullptr;
    }
    // Devices; what can't be opened, for the system's own error number; links to files that are not there
    // yet, which renaming would not follow.
    if (found.IsOpen() || error != ERROR_FILE_NOT_FOUND || IsLink(path)) return OpenDirectly(askedPath);
  }
  auto file = std::make_unique<RenamedFile>(path);
  if (!file->Begin()) return nullptr;
  return file;
}

}  // namespace quillbar::engine
