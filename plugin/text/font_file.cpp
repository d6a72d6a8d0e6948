#include "plugin/text/font_file.h"

#include "binding/host_strings.h"
#include "plugin/bridge/host_version.h"

namespace quillbar::text {

namespace {

/// The first host version in which `FolderItem.Directory` is called `IsFolder`.
constexpr double kIsFolderSince = 2020.0;

}  // namespace

bool IsFile(FolderItem *item) {
  if (item == nullptr || !GetBoolProperty(item, "Exists")) return false;
  return !GetBoolProperty(item, hostVersion >= kIsFolderSince ? "IsFolder" : "Directory");
}

LibraryPath::LibraryPath(FolderItem *file)
    : path_(GetNativePath(file)), utf16_(path_.get(), TextEncoding::kUtf16) {}

}  // namespace quillbar::text
