// SPDX-License-Identifier: MIT
#include "plugin/text/font_file.h"

#include <algorithm>

#include "binding/host_strings.h"
#include "plugin/script/host_version.h"

namespace quillbar::text {

namespace {

/// The first host version in which `FolderItem.Directory` is called `IsFolder`.
constexpr double kIsFolderSince = 2020.0;

}  // namespace

bool AreFiles(std::initializer_list<FolderItem *> items) {
  const char *isFolder = hostVersion >= kIsFolderSince ? "IsFolder" : "Directory";
  return std::ranges::all_of(items, [](FolderItem *item) { return item != nullptr; }) &&
         std::ranges::all_of(items, [](FolderItem *item) { return GetBoolProperty(item, "Exists"); }) &&
         std::ranges::none_of(items, [&](FolderItem *item) { return GetBoolProperty(item, isFolder); });
}

LibraryPath::LibraryPath(FolderItem *file) : path_(GetNativePath(file)), utf16_(path_.get(), TextEncoding::kUtf16) {}

}  // namespace quillbar::text
