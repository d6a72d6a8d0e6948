#pragma once

#include "binding/owned.h"
#include "plugin/bridge/script_types.h"

/// Files that fonts are loaded from.
namespace quillbar::text {

/// Whether a script's file item is a file that is there: not Nil, not missing, not a folder.
bool IsFile(FolderItem *item);

/// The path of a file as the library takes it; UTF-16, which any path can be written in.
class LibraryPath {
 public:
  explicit LibraryPath(FolderItem *file);

  /// False when the host can't tell the path.
  explicit operator bool() const { return static_cast<bool>(utf16_); }
  const char *get() const { return utf16_.bytes(); }

 private:
  OwnedString path_;
  StringData utf16_;
};

}  // namespace quillbar::text
