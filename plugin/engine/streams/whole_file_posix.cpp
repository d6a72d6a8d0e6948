// SPDX-License-Identifier: MIT
#include "plugin/engine/streams/whole_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <utility>

#include "plugin/engine/streams/unused_name_posix.h"

namespace quillbar::engine {

namespace {

// A folder opened only to reach what is in it, which needs no permission to list it.
#ifdef __APPLE__
constexpr int kReachable = O_SEARCH;
#else
constexpr int kReachable = O_PATH;
#endif

// Closes a file descriptor at the end.
class Descriptor {
 public:
  explicit Descriptor(int number) : number_(number) {}
  ~Descriptor() {
    if (IsOpen()) close(number_);
  }
  Descriptor(const Descriptor &) = delete;
  Descriptor &operator=(const Descriptor &) = delete;

  bool IsOpen() const { return number_ >= 0; }
  int number() const { return number_; }

 private:
  int number_;
};

// A path in two parts: the folder, "" for the current one, with the slash at its end; and the name.
struct Place {
  explicit Place(const NativePath &path)
      : folder(path, 0, path.rfind('/') + 1), name(path, folder.size(), NativePath::npos) {}

  NativePath folder, name;
};

// Waits until the disk has what was written. File systems that can't wait are not to blame.
int Sync(int file) {
  int result = 0;
  do {
    result = fsync(file);
  } while (result != 0 && errno == EINTR);
  if (result == 0 || errno == EINVAL || errno == ENOSYS || errno == ENOTSUP) return 0;
  return errno;
}

int SyncStream(std::FILE *stream) { return Sync(fileno(stream)); }

// Without it the file would keep its temporary name after a power cut: what `Commit` has told stays true.
void SyncFolder(int folder) {
  const Descriptor readable(openat(folder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (readable.IsOpen()) Sync(readable.number());
}

class RenamedFile final : public WholeFile {
 public:
  explicit RenamedFile(Place place)
      : folder_(open(place.folder.empty() ? "." : place.folder.c_str(), kReachable | O_DIRECTORY | O_CLOEXEC)),
        name_(std::move(place.name)) {}
  ~RenamedFile() override {
    if (isTemporary_) unlinkat(folder_.number(), temporaryName_.c_str(), 0);
  }

  // Makes the file under a temporary name. Whether that worked; if not, errno is set.
  bool Begin() {
    if (!folder_.IsOpen()) return false;
    int file = -1;
    do {
      temporaryName_ = NextTemporaryName();
      file = openat(folder_.number(), temporaryName_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    } while (file < 0 && errno == EEXIST);
    if (file < 0) return false;
    isTemporary_ = true;
    Write(fdopen(file, "wb"));
    if (stream() == nullptr) close(file);
    return stream() != nullptr;
  }

  int Commit() override {
    int problem = Finish(SyncStream);
    if (problem == 0) problem = RenameToUnusedName(folder_.number(), temporaryName_.c_str(), name_.c_str());
    if (problem == 0) {
      isTemporary_ = false;
      SyncFolder(folder_.number());
    }
    return problem;
  }

 private:
  // Held open, so that the file gets its name where it was begun, however long the path is.
  Descriptor folder_;
  std::string temporaryName_, name_;
  bool isTemporary_ = false;
};

// The path that a chain of symbolic links ends at, whether there is a file or not; `path` if it isn't one.
NativePath EndOfLinks(NativePath path) {
  constexpr int kMostLinks = 40;
  char target[PATH_MAX];
  // The system has followed them already; only a link that is made meanwhile can make them more, or the path longer.
  for (int link = 0; link < kMostLinks; ++link) {  // GCOVR_EXCL_BR_LINE
    const ssize_t size = readlink(path.c_str(), target, sizeof target);
    if (size <= 0 || size == sizeof target) break;  // GCOVR_EXCL_BR_LINE
    const NativePath next(target, static_cast<std::size_t>(size));
    path = next[0] == '/' ? next : Place(path).folder.append(next);
  }
  return path;
}

}  // namespace

std::unique_ptr<WholeFile> WholeFile::Open(const NativePath &path) {
  struct stat status;
  if (stat(path.c_str(), &status) == 0) {
    errno = S_ISDIR(status.st_mode) ? EISDIR : EEXIST;
    const bool canBeRenamedTo = S_ISREG(status.st_mode) || S_ISDIR(status.st_mode);
    return canBeRenamedTo ? nullptr : OpenDirectly(path);
  }
  if (errno != ENOENT || path.empty()) return nullptr;
  // Like a plain open, which makes the file that a link leads to.
  const NativePath end = EndOfLinks(path);
  if (end.back() == '/') {
    errno = EISDIR;
    return nullptr;
  }
  auto file = std::make_unique<RenamedFile>(Place(end));
  if (!file->Begin()) return nullptr;
  return file;
}

}  // namespace quillbar::engine
