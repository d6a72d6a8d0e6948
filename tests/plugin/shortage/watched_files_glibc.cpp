// SPDX-License-Identifier: MIT
// The program's own functions stand before those of the C library, for all libraries that it loads. Who calls is told by
// the address to which a function returns.
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/sendfile.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <string_view>
#include <utility>

#include "tests/plugin/shortage/watched_files.h"

namespace {

using quillbar::test::watched_files::Watch;

Watch *watch = nullptr;

template <class Function>
Function *Next(const char *name) {
  return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, name));
}

/// Whether the plugin that is watched called; what is done about that is not watched itself.
bool IsWatched(const void *caller) {
  if (watch == nullptr) return false;
  Dl_info library;
  return dladdr(caller, &library) != 0 && std::string_view(library.dli_fname).ends_with(watch->plugin);
}

bool Fails(std::string_view call) {
  bool fails = call == watch->lacking;
  ++watch->calls;
  if (watch->granted > 0) {
    --watch->granted;
  } else if (watch->granted == 0) {
    fails = true;
    if (!watch->forGood) watch->granted = -1;
  }
  if (fails) errno = watch->problem;
  return fails;
}

void Tell(std::string_view call, int descriptor = -1) {
  if (!watch->seen) return;
  Watch *const watched = std::exchange(watch, nullptr);
  const int problem = errno;
  watched->seen(call, descriptor);
  errno = problem;
  watch = watched;
}

/// Makes the real call, or fails in its place.
template <class Function, class Failure, class... Arguments>
auto Make(const char *name, const void *caller, Failure failure, int descriptor, Arguments... arguments) {
  using Result = decltype(std::declval<Function *>()(arguments...));
  Function *const next = Next<Function>(name);
  if (!IsWatched(caller)) return next(arguments...);
  if (Fails(name)) return static_cast<Result>(failure);
  const Result result = next(arguments...);
  Tell(name, descriptor);
  return result;
}

mode_t ModeOf(int flags, va_list arguments) {
  return (flags & O_CREAT) != 0 ? static_cast<mode_t>(va_arg(arguments, unsigned)) : mode_t{};
}

}  // namespace

#define QUILLBAR_STANDS_BEFORE __attribute__((visibility("default")))
#define QUILLBAR_CALLER __builtin_return_address(0)

extern "C" {

QUILLBAR_STANDS_BEFORE int open(const char *path, int flags, ...) {
  va_list arguments;
  va_start(arguments, flags);
  const mode_t mode = ModeOf(flags, arguments);
  va_end(arguments);
  return Make<int(const char *, int, ...)>("open", QUILLBAR_CALLER, -1, -1, path, flags, mode);
}

QUILLBAR_STANDS_BEFORE int openat(int folder, const char *path, int flags, ...) {
  va_list arguments;
  va_start(arguments, flags);
  const mode_t mode = ModeOf(flags, arguments);
  va_end(arguments);
  return Make<int(int, const char *, int, ...)>("openat", QUILLBAR_CALLER, -1, -1, folder, path, flags, mode);
}

// The C++ library calls the one or the other: they are the same where every offset has 64 bits.
QUILLBAR_STANDS_BEFORE FILE *fopen(const char *path, const char *mode) {
  return Make<FILE *(const char *, const char *)>("fopen", QUILLBAR_CALLER, nullptr, -1, path, mode);
}

QUILLBAR_STANDS_BEFORE FILE *fopen64(const char *path, const char *mode) {
  return Make<FILE *(const char *, const char *)>("fopen64", QUILLBAR_CALLER, nullptr, -1, path, mode);
}

QUILLBAR_STANDS_BEFORE ssize_t write(int file, const void *bytes, std::size_t size) {
  return Make<ssize_t(int, const void *, std::size_t)>("write", QUILLBAR_CALLER, -1, -1, file, bytes, size);
}

QUILLBAR_STANDS_BEFORE ssize_t writev(int file, const iovec *parts, int count) {
  return Make<ssize_t(int, const iovec *, int)>("writev", QUILLBAR_CALLER, -1, -1, file, parts, count);
}

QUILLBAR_STANDS_BEFORE ssize_t sendfile(int to, int from, off_t *offset, std::size_t size) noexcept {
  return Make<ssize_t(int, int, off_t *, std::size_t)>("sendfile", QUILLBAR_CALLER, -1, -1, to, from, offset, size);
}

QUILLBAR_STANDS_BEFORE FILE *fdopen(int descriptor, const char *mode) noexcept {
  return Make<FILE *(int, const char *)>("fdopen", QUILLBAR_CALLER, nullptr, -1, descriptor, mode);
}

QUILLBAR_STANDS_BEFORE std::size_t fwrite(const void *bytes, std::size_t size, std::size_t count, FILE *stream) {
  return Make<std::size_t(const void *, std::size_t, std::size_t, FILE *)>("fwrite", QUILLBAR_CALLER, 0, -1, bytes,
                                                                           size, count, stream);
}

QUILLBAR_STANDS_BEFORE int fflush(FILE *stream) {
  return Make<int(FILE *)>("fflush", QUILLBAR_CALLER, EOF, -1, stream);
}

QUILLBAR_STANDS_BEFORE int fsync(int descriptor) {
  return Make<int(int)>("fsync", QUILLBAR_CALLER, -1, descriptor, descriptor);
}

// These two end what they are given even when they fail.
QUILLBAR_STANDS_BEFORE int fclose(FILE *stream) {
  const int result = Next<int(FILE *)>("fclose")(stream);
  if (!IsWatched(QUILLBAR_CALLER)) return result;
  if (Fails("fclose")) return EOF;
  Tell("fclose");
  return result;
}

QUILLBAR_STANDS_BEFORE int close(int descriptor) {
  const int result = Next<int(int)>("close")(descriptor);
  if (!IsWatched(QUILLBAR_CALLER)) return result;
  if (Fails("close")) return -1;
  Tell("close");
  return result;
}

// It reads more arguments than there may be, as the C library's does.
__attribute__((no_sanitize("address"))) QUILLBAR_STANDS_BEFORE long syscall(long number, ...) noexcept {
  va_list list;
  va_start(list, number);
  long arguments[6];
  for (long &argument : arguments) argument = va_arg(list, long);
  va_end(list);
  const auto next = Next<long(long, ...)>("syscall");
  const auto make = [&] {
    return next(number, arguments[0], arguments[1], arguments[2], arguments[3], arguments[4], arguments[5]);
  };
  if (number != SYS_renameat2 || !IsWatched(QUILLBAR_CALLER)) return make();
  if (Fails("renameat2")) return -1;
  const long result = make();
  Tell("renameat2");
  return result;
}

QUILLBAR_STANDS_BEFORE int linkat(int from, const char *fromName, int to, const char *toName, int flags) noexcept {
  return Make<int(int, const char *, int, const char *, int)>("linkat", QUILLBAR_CALLER, -1, -1, from, fromName, to,
                                                              toName, flags);
}

QUILLBAR_STANDS_BEFORE int link(const char *from, const char *to) noexcept {
  return Make<int(const char *, const char *)>("link", QUILLBAR_CALLER, -1, -1, from, to);
}

QUILLBAR_STANDS_BEFORE int rename(const char *from, const char *to) noexcept {
  return Make<int(const char *, const char *)>("rename", QUILLBAR_CALLER, -1, -1, from, to);
}

QUILLBAR_STANDS_BEFORE int renameat(int from, const char *fromName, int to, const char *toName) noexcept {
  return Make<int(int, const char *, int, const char *)>("renameat", QUILLBAR_CALLER, -1, -1, from, fromName, to,
                                                         toName);
}

}  // extern "C"

namespace quillbar::test::watched_files {

bool IsPossible() { return true; }
void Begin(Watch *toWatch) { watch = toWatch; }

}  // namespace quillbar::test::watched_files
