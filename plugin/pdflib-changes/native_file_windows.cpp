#include <io.h>

#include <cstring>

#include "platform/openable_path.h"
#include "platform/queried_file_windows.h"
#include "plugin/pdflib-changes/native_file.h"

namespace quillbar::pdflib {

using platform::OpenablePath;
using platform::QueriedFile;

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

FileIdentity IdentityOf(const QueriedFile &file) {
  return file.isOpen() ? IdentityOf(file.handle()) : FileIdentity();
}

}  // namespace

std::optional<NativePath> NativePathOf(const char *utf16Path) {
  const std::u16string text = CopyUtf16(utf16Path);
  return NativePath(text.begin(), text.end());
}

std::FILE *OpenNative(const NativePath &path, const char *mode) {
  return _wfopen(OpenablePath(path).c_str(), std::wstring(mode, mode + std::strlen(mode)).c_str());
}

bool LeadsElsewhere(const NativePath &path) {
  const QueriedFile file(path);
  return file.isOpen() && !IdentityOf(file).regular;
}

FileIdentity IdentityOf(std::FILE *file) {
  return IdentityOf(reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(file))));
}

void RemoveIfSame(const NativePath &path, const FileIdentity &identity) {
  if (!identity.regular) return;
  const FileIdentity found = IdentityOf(QueriedFile(path));
  if (found.regular && found.device == identity.device && found.number == identity.number) {
    DeleteFileW(OpenablePath(path).c_str());
  }
}

}  // namespace quillbar::pdflib
