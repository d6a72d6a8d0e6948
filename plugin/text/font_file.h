// SPDX-License-Identifier: MIT
#pragma once

#include <initializer_list>

#include "binding/owned.h"
#include "plugin/script/script_types.h"

/// Files that fonts are loaded from.
namespace quillbar::text {

/// Whether a script's file items are files that are there: not Nil, not missing, not folders. Each question
/// is put to all of them before the next one, until an answer is no.
bool AreFiles(std::initializer_list<FolderItem *> items);

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
