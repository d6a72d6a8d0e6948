// SPDX-License-Identifier: MIT
#include "plugin/engine/streams/unused_name_posix.h"

#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <initializer_list>

namespace quillbar::engine {

namespace {

int ProblemOf(long result) { return result == 0 ? 0 : errno; }

// On Linux without the C library, whose renameat2 came with glibc 2.28.
int RenameAlone(int folder, const char *from, const char *to) {
#if defined(__APPLE__)
  return ProblemOf(renameatx_np(folder, from, folder, to, RENAME_EXCL));
#elif defined(SYS_renameat2)
  constexpr unsigned kNoReplace = 1;
  return ProblemOf(syscall(SYS_renameat2, folder, from, folder, to, kNoReplace));
#else
  static_cast<void>(folder), static_cast<void>(from), static_cast<void>(to);
  return ENOSYS;
#endif
}

int LinkAndUnlink(int folder, const char *from, const char *to) {
  if (const int problem = ProblemOf(linkat(folder, from, folder, to, 0))) return problem;
  unlinkat(folder, from, 0);
  return 0;
}

int ClaimAndRename(int folder, const char *from, const char *to) {
  const int claim = openat(folder, to, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
  if (claim < 0) return errno;
  close(claim);
  const int problem = ProblemOf(renameat(folder, from, folder, to));
  if (problem != 0) unlinkat(folder, to, 0);
  return problem;
}

}  // namespace

int Rename(Naming way, int folder, const char *from, const char *to) {
  switch (way) {
    case Naming::kRename:
      return RenameAlone(folder, from, to);
    case Naming::kLink:
      return LinkAndUnlink(folder, from, to);
    default:
      return ClaimAndRename(folder, from, to);
  }
}

int RenameToUnusedName(int folder, const char *from, const char *to) {
  int problem = 0;
  for (const Naming way : {Naming::kRename, Naming::kLink, Naming::kClaim}) {
    problem = Rename(way, folder, from, to);
    // Whatever a file system says about a way that it lacks, the last way tells what is really wrong.
    if (problem == 0 || problem == EEXIST) break;
  }
  return problem;
}

}  // namespace quillbar::engine
