// SPDX-License-Identifier: MIT
// Keeps a plugin for Linux loadable on systems older than the one it is built on. Its code, the libraries and GCC's
// own run-time parts that are linked into it ask the C library for symbols that it has only since glibc 2.17 to 2.43.
// Each is defined here, inside the plugin, in terms of what glibc has always had. Linked into Linux builds that ship.

// Both widths of offsets are defined, each under its own name.
#undef _FILE_OFFSET_BITS
#include <dlfcn.h>
#include <link.h>
#include <pthread.h>
#include <sched.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdarg>
#include <cstddef>
#include <cstdint>

#define QUILLBAR_HIDDEN [[gnu::visibility("hidden")]]

namespace {

struct Search {
  std::uintptr_t address;
  dl_find_object *result;
};

// Ends the walk with 1 at the object that holds the address, if it has tables for exceptions.
int Examine(dl_phdr_info *object, std::size_t, void *data) {
  const Search &search = *static_cast<const Search *>(data);
  bool holds = false;
  const ElfW(Phdr) *tables = nullptr;
  for (int i = 0; i < object->dlpi_phnum; ++i) {
    const ElfW(Phdr) &segment = object->dlpi_phdr[i];
    if (segment.p_type == DLFO_EH_SEGMENT_TYPE) tables = &segment;
    if (segment.p_type != PT_LOAD) continue;
    const std::uintptr_t start = object->dlpi_addr + segment.p_vaddr;
    if (search.address - start >= segment.p_memsz) continue;
    holds = true;
    search.result->dlfo_map_start = reinterpret_cast<void *>(start);
    search.result->dlfo_map_end = reinterpret_cast<void *>(start + segment.p_memsz);
  }
  if (!holds || tables == nullptr) return 0;
  search.result->dlfo_flags = 0;
  search.result->dlfo_link_map = nullptr;
  search.result->dlfo_eh_frame = reinterpret_cast<void *>(object->dlpi_addr + tables->p_vaddr);
  return 1;
}

}  // namespace

extern "C" {

// Whether libstdc++ may count references without atomic operations (glibc 2.32): it may not.
QUILLBAR_HIDDEN extern char __libc_single_threaded;
char __libc_single_threaded = 0;

// The tables for exceptions of the code at an address (glibc 2.35), which the unwinder asks for.
QUILLBAR_HIDDEN int _dl_find_object(void *address, dl_find_object *result) noexcept {
  Search search{reinterpret_cast<std::uintptr_t>(address), result};
  return dl_iterate_phdr(&Examine, &search) == 1 ? 0 : -1;
}

// Moved by glibc 2.34 from the threads library, which a program may not have loaded.
QUILLBAR_HIDDEN int pthread_once(pthread_once_t *control, void (*routine)()) {
  enum { kNotYet = PTHREAD_ONCE_INIT, kRunning, kDone };
  pthread_once_t state = kNotYet;
  if (__atomic_compare_exchange_n(control, &state, kRunning, false, __ATOMIC_ACQUIRE, __ATOMIC_ACQUIRE)) {
    routine();
    __atomic_store_n(control, kDone, __ATOMIC_RELEASE);
  } else {
    while (__atomic_load_n(control, __ATOMIC_ACQUIRE) != kDone) sched_yield();
  }
  return 0;
}

// As above. Its address tells libstdc++ whether there may be threads; nothing calls it.
QUILLBAR_HIDDEN int __pthread_key_create(pthread_key_t *, void (*)(void *)) noexcept { return EAGAIN; }

// What glibc calls its first version for a processor, and its name for the record that `stat` fills in.
#if defined(__x86_64__)
#define QUILLBAR_FIRST_GLIBC "GLIBC_2.2.5"
constexpr int kStatVersion = 1;
#elif defined(__aarch64__)
#define QUILLBAR_FIRST_GLIBC "GLIBC_2.17"
constexpr int kStatVersion = 0;
#elif defined(__arm__)
#define QUILLBAR_FIRST_GLIBC "GLIBC_2.4"
constexpr int kStatVersion = 3;
#endif

#ifdef QUILLBAR_FIRST_GLIBC
#define QUILLBAR_OLD(name, symbol) __asm__(".symver " #name "," #symbol "@" QUILLBAR_FIRST_GLIBC)

// Symbols of their own since glibc 2.33; before that, and still today, programs were linked with these. Code that
// wants offsets of 64 bits calls those that end in 64.
QUILLBAR_OLD(OldStat, __xstat);
QUILLBAR_OLD(OldFstat, __fxstat);
QUILLBAR_OLD(OldLstat, __lxstat);
QUILLBAR_OLD(OldStat64, __xstat64);
QUILLBAR_OLD(OldFstat64, __fxstat64);
QUILLBAR_OLD(OldLstat64, __lxstat64);
int OldStat(int version, const char *path, struct stat *status);
int OldFstat(int version, int file, struct stat *status);
int OldLstat(int version, const char *path, struct stat *status);
int OldStat64(int version, const char *path, struct stat64 *status);
int OldFstat64(int version, int file, struct stat64 *status);
int OldLstat64(int version, const char *path, struct stat64 *status);

QUILLBAR_HIDDEN int stat(const char *path, struct stat *status) noexcept { return OldStat(kStatVersion, path, status); }
QUILLBAR_HIDDEN int fstat(int file, struct stat *status) noexcept { return OldFstat(kStatVersion, file, status); }
QUILLBAR_HIDDEN int lstat(const char *path, struct stat *status) noexcept {
  return OldLstat(kStatVersion, path, status);
}
QUILLBAR_HIDDEN int stat64(const char *path, struct stat64 *status) noexcept {
  return OldStat64(kStatVersion, path, status);
}
QUILLBAR_HIDDEN int fstat64(int file, struct stat64 *status) noexcept { return OldFstat64(kStatVersion, file, status); }
QUILLBAR_HIDDEN int lstat64(const char *path, struct stat64 *status) noexcept {
  return OldLstat64(kStatVersion, path, status);
}

// glibc 2.29 has versions of these (2.35 one of `hypotf`, 2.38 one of `fmod`, 2.43 one of `remainder`) that leave
// out an old way to report errors, which nobody used; the results are the same. The compiler knows the functions
// itself, and visible ones, so these have names of their own in the source.
QUILLBAR_OLD(OldExp, exp);
QUILLBAR_OLD(OldLog, log);
QUILLBAR_OLD(OldPow, pow);
QUILLBAR_OLD(OldFmod, fmod);
QUILLBAR_OLD(OldRemainder, remainder);
QUILLBAR_OLD(OldHypotf, hypotf);
double OldExp(double x);
double OldLog(double x);
double OldPow(double x, double y);
double OldFmod(double x, double y);
double OldRemainder(double x, double y);
float OldHypotf(float x, float y);
QUILLBAR_HIDDEN double Exp(double x) __asm__("exp");
QUILLBAR_HIDDEN double Log(double x) __asm__("log");
QUILLBAR_HIDDEN double Pow(double x, double y) __asm__("pow");
QUILLBAR_HIDDEN double Fmod(double x, double y) __asm__("fmod");
QUILLBAR_HIDDEN double Remainder(double x, double y) __asm__("remainder");
QUILLBAR_HIDDEN float Hypotf(float x, float y) __asm__("hypotf");

double Exp(double x) { return OldExp(x); }
double Log(double x) { return OldLog(x); }
double Pow(double x, double y) { return OldPow(x, y); }
double Fmod(double x, double y) { return OldFmod(x, y); }
double Remainder(double x, double y) { return OldRemainder(x, y); }
float Hypotf(float x, float y) { return OldHypotf(x, y); }

// What the headers of glibc 2.38 call for `strtoul` and `sscanf`; they take binary numbers as well, which nobody here
// writes.
QUILLBAR_OLD(OldStrtoul, strtoul);
unsigned long OldStrtoul(const char *text, char **end, int base);
QUILLBAR_HIDDEN unsigned long __isoc23_strtoul(const char *text, char **end, int base) noexcept {
  return OldStrtoul(text, end, base);
}
QUILLBAR_OLD(OldVsscanf, vsscanf);
int OldVsscanf(const char *text, const char *format, std::va_list arguments);
QUILLBAR_HIDDEN int __isoc23_sscanf(const char *text, const char *format, ...) noexcept {
  std::va_list arguments;
  va_start(arguments, format);
  const int count = OldVsscanf(text, format, arguments);
  va_end(arguments);
  return count;
}

#ifndef __aarch64__
// Its name before glibc 2.17. GCC's C++ library reads its own settings with it.
QUILLBAR_OLD(OldSecureGetenv, __secure_getenv);
char *OldSecureGetenv(const char *name);
QUILLBAR_HIDDEN char *secure_getenv(const char *name) noexcept { return OldSecureGetenv(name); }
#endif

#endif
}
