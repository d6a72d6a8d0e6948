// SPDX-License-Identifier: MIT
// The calls with which a loaded plugin, or the program, writes files: each can be made to fail, and what is on the disk after each can be
// looked at.
#pragma once

#include <functional>
#include <string_view>

namespace quillbar::test::watched_files {

/// Whether this platform's C library lets a program stand before its functions.
bool IsPossible();

/// What happens at the calls of one plugin: `open`, `openat`, `fopen64`, `fdopen`, `fwrite`, `write`, `writev`,
/// `sendfile`, `fflush`, `fsync`, `fclose`, `close`, `renameat2`, `linkat`, `link`, `renameat` and `rename`. Removing a file
/// never fails.
struct Watch {
  std::string_view plugin{};  ///< the end of its file's path; empty for all callers
  long granted = -1;          ///< calls that succeed before one fails; negative: all
  bool forGood = false;       ///< all calls after it fail too
  int problem = 0;            ///< errno of a call that fails
  /// Called after each call that succeeded, with its name and, for `fsync`, the file's descriptor.
  std::function<void(std::string_view call, int descriptor)> seen{};
  /// A call of this name always fails, so that another way must be found.
  std::string_view lacking{};

  long calls = 0;  ///< so far
};

/// Begins to watch, or ends for null. The watch belongs to the caller.
void Begin(Watch *watch);

}  // namespace quillbar::test::watched_files
