#include <io.h>

#include <cstring>

#include "platform/openable_path.h"
#include "plugin/pdflib-changes/native_file.h"

namespace quillbar::pdflib {

using platform::OpenablePath;

namespace {

FileIdentity IdentityOf(HANDLE handle) {
  BY_HANDLE_FILE_INFORMATION information;
  if (GetFileType(handle) != FILE_TYPE_DISK || GetFileInformationByHandle(handle, &information) == FALSE ||
      (information.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
    return {};
  }
  return {true, information.dwVolumeSerialNumber,
          std::uint64_t{information.nFileIndexHigh} << 32 | information.nFileIndexLow};
}

// A file, folder or device opened for questions about it only.
class Questioned {
 public:
  explicit Questioned(const NativePath &path)
      : handle_(CreateFileW(OpenablePath(path).c_str(), 0,
                            FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                            FILE_FLAG_BACKUP_SEMANTICS, nullptr)) {}
  Questioned(const Questioned &) = delete;
  Questioned &operator=(const Questioned &) = delete;
  ~Questioned() {
    if (exists()) CloseHandle(handle_);
  }

  bool exists() const { return handle_ != INVALID_HANDLE_VALUE; }
  FileIdentity identity() const { return exists() ? IdentityOf(handle_) : FileIdentity(); }

 private:
  HANDLE handle_;
};

}  // namespace

std::optional<NativePath> NativePathOf(const char *utf16Path) {
  const std::u16string text = CopyUtf16(utf16Path);
  return NativePath(text.begin(), text.end());
}

std::FILE *OpenNative(const NativePath &path, const char *mode) {
  return _wfopen(OpenablePath(path).c_str(), std::wstring(mode, mode + std::strlen(mode)).c_str());
}

bool LeadsElsewhere(const NativePath &path) {
  const Questioned file(path);
  return file.exists() && !file.identity().regular;
}

FileIdentity IdentityOf(std::FILE *file) {
  return IdentityOf(reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(file))));
}

void RemoveIfSame(const NativePath &path, const FileIdentity &identity) {
  if (!identity.regular) return;
  const FileIdentity found = Questioned(path).identity();
  if (found.regular && found.device == identity.device && found.number == identity.number) {
    DeleteFileW(OpenablePath(path).c_str());
  }
}

}  // namespace quillbar::pdflib
