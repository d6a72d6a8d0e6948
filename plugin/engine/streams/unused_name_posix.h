// SPDX-License-Identifier: MIT
/// How a finished file gets a name that no other file has.
#pragma once

namespace quillbar::engine {

/// The ways, the best first. Each fails for a name that is taken, and none replaces a file. Not every system and file
/// system has the first two.
enum class Naming {
  kRename,  // renameat2 (Linux 3.15)
  kLink,    // a second name, after which the first one is removed
  kClaim,   // an empty file takes the name and is then replaced: a crash just between leaves it empty
};

/// Renames the file `from` of an open folder to `to`, in one of the ways. 0 or an errno.
int Rename(Naming way, int folder, const char *from, const char *to);

/// The same in the best way that the file system has.
int RenameToUnusedName(int folder, const char *from, const char *to);

}  // namespace quillbar::engine
