// SPDX-License-Identifier: MIT
#include "plugin/engine/streams/whole_file.h"

#include <cerrno>
#include <utility>

#ifdef _WIN32
#include <process.h>
#else
#include <unistd.h>
#endif

namespace quillbar::engine {

namespace {

int ProblemOf(int result) {
  if (result == 0) return 0;
  return errno != 0 ? errno : EIO;
}

class DirectFile final : public WholeFile {
 public:
  explicit DirectFile(const NativePath &path) { Write(OpenNative(path, "wb")); }
  int Commit() override { return Finish(nullptr); }
};

}  // namespace

int WholeFile::Finish(int (*sync)(std::FILE *)) {
  errno = 0;
  int problem = ProblemOf(std::fflush(stream_));
  if (problem == 0 && sync != nullptr) problem = sync(stream_);
  const int closing = Close();
  return problem != 0 ? problem : closing;
}

int WholeFile::Close() {
  if (stream_ == nullptr) return 0;
  errno = 0;
  return ProblemOf(std::fclose(std::exchange(stream_, nullptr)));
}

std::unique_ptr<WholeFile> OpenDirectly(const NativePath &path) {
  auto file = std::make_unique<DirectFile>(path);
  if (file->stream() == nullptr) return nullptr;
  return file;
}

std::string NextTemporaryName() {
  static unsigned number = 0;
#ifdef _WIN32
  const int process = _getpid();
#else
  const int process = getpid();
#endif
  return ".quillbar-" + std::to_string(process) + "-" + std::to_string(number++) + ".tmp";
}

}  // namespace quillbar::engine
