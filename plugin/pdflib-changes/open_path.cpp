// Files named by a UTF-16 path, in place of libharu's fopen with the bytes of the C library's encoding: the
// host's path can hold any character, and on Windows no byte encoding could carry it. libharu passes the path
// on untouched.
#include "plugin/pdflib-changes/open_path.h"

#include <cerrno>
#include <cstring>

#include "plugin/pdflib-changes/seam.h"
#undef fopen

#ifndef _WIN32
#include <utf8.h>
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

#endif

}  // namespace quillbar::pdflib

FILE *QuillbarOpenFile(const char *utf16Path, const char *mode) {
  using namespace quillbar::pdflib;
  if (utf16Path == nullptr) {
    errno = EINVAL;
    return nullptr;
  }
  const std::optional<NativePath> path = NativePathOf(utf16Path);
  return path ? OpenNative(*path, mode) : nullptr;
}
