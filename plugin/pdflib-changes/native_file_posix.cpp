#include <sys/stat.h>
#include <unistd.h>
#include <utf8.h>

#include <cerrno>
#include <cstdlib>
#include <iterator>
#include <memory>

#include "plugin/pdflib-changes/native_file.h"

namespace quillbar::pdflib {

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

bool LeadsElsewhere(const NativePath &path) {
  struct stat status;
  return stat(path.c_str(), &status) == 0 && !S_ISREG(status.st_mode);
}

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

}  // namespace quillbar::pdflib
