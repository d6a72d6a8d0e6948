// Files named by a UTF-16 path, in place of libharu's fopen with the bytes of the C library's encoding: the
// host's path can hold any character, and on Windows no byte encoding could carry it. libharu passes the path
// on untouched.
#include "plugin/pdflib-changes/native_file.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>

#include "plugin/pdflib-changes/seam.h"
#undef fopen

#include <sys/stat.h>

#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#include <utf8.h>

#include <cstdlib>
#include <iterator>
#include <memory>
#endif

namespace quillbar::pdflib {

namespace {

// The caller's text need not lie on an even address.
std::u16string CopyUtf16(const char *bytes) {
  std::u16string text;
  char16_t unit = 0;
  for (;; bytes += sizeof unit) {
    std::memcpy(&unit, bytes, sizeof unit);
    if (unit == 0) return text;
    text.push_back(unit);
  }
}

}  // namespace

#ifdef _WIN32

std::optional<NativePath> NativePathOf(const char *utf16Path) {
  const std::u16string text = CopyUtf16(utf16Path);
  return NativePath(text.begin(), text.end());
}

std::FILE *OpenNative(const NativePath &path, const char *mode) {
  return _wfopen(path.c_str(), std::wstring(mode, mode + std::strlen(mode)).c_str());
}

FileIdentity IdentityOf(std::FILE *file) {
  struct _stat64 status;
  // Windows has no file numbers here; it also refuses to remove or replace a file that someone else has open.
  return {_fstat64(_fileno(file), &status) == 0 && (status.st_mode & _S_IFREG) != 0};
}

void RemoveIfSame(const NativePath &path, const FileIdentity &identity) {
  struct _stat64 status;
  if (identity.regular && _wstat64(path.c_str(), &status) == 0 && (status.st_mode & _S_IFREG) != 0) {
    _wremove(path.c_str());
  }
}

#else

std::optional<NativePath> NativePathOf(const char *utf16Path) {
  const std::u16string text = CopyUtf16(utf16Path);
  NativePath path;
  try {
    utf8::utf16to8(text.begin(), text.end(), std::back_inserter(path));
  } catch (const utf8::exception &) {
    errno = EILSEQ;
    return std::nullopt;
  }
  return path;
}

std::FILE *OpenNative(const NativePath &path, const char *mode) { return std::fopen(path.c_str(), mode); }

FileIdentity IdentityOf(std::FILE *file) {
  struct stat status;
  if (fstat(fileno(file), &status) != 0) return {};
  return {S_ISREG(status.st_mode), status.st_dev, status.st_ino};
}

void RemoveIfSame(const NativePath &path, const FileIdentity &identity) {
  if (!identity.regular) return;
  // The path may be a symbolic link to the file that was written.
  const std::unique_ptr<char, decltype(&std::free)> resolved(realpath(path.c_str(), nullptr), &std::free);
  struct stat status;
  if (resolved == nullptr || lstat(resolved.get(), &status) != 0) return;
  if (status.st_dev == identity.device && status.st_ino == identity.number) unlink(resolved.get());
}

#endif

}  // namespace quillbar::pdflib

FILE *QuillbarOpenFile(const char *utf16Path, const char *mode) {
  using namespace quillbar::pdflib;
  if (utf16Path == nullptr) {
    errno = EINVAL;
    return nullptr;
  }
  const std::optional<NativePath> path = NativePathOf(utf16Path);
  if (!path) return nullptr;
  // What the library reads are fonts: folders have none, and pipes and devices may have no end.
  std::error_code problem;
  if (mode[0] == 'r' && !std::filesystem::is_regular_file(*path, problem)) {
    if (!problem) errno = EINVAL;
    return nullptr;
  }
  return OpenNative(*path, mode);
}
