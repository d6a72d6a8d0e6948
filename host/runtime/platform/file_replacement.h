// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <optional>
#include <system_error>

/// Files that get their names once they are whole and on the disk, so that neither the end of the process nor a power
/// cut leaves a part of one under its name.
namespace quillbar::host::platform {

/// A file that is written beside the one that it is to replace.
struct Replacement {
  std::filesystem::path written;   ///< where to write it; an empty file at first
  std::filesystem::path replaced;  ///< the file that it replaces, with links followed
};

/// Begins to replace the file at `path`; the new one has its owner and its permissions. Nothing where a file can only be
/// written in place: there is none, or no ordinary one; it has further names, or attributes beyond its permissions; it
/// or its folder can't be written; or its owner couldn't be kept.
std::optional<Replacement> BeginReplacement(const std::filesystem::path &path);

/// Waits until the disk has the new file, which nobody may have open, and puts it in the place of the old one. Where
/// that fails, the old one stays and nothing else does.
void FinishReplacement(const Replacement &replacement, std::error_code &error);

/// Removes the new file.
void GiveUpReplacement(const Replacement &replacement);

/// Waits until the disk has what was written to a file. What isn't a file, and file systems that can't wait, are no
/// failures.
void WaitForDisk(const std::filesystem::path &path, std::error_code &error);

/// Copies a file. Never replaces one; where it fails there is no part of a copy.
void CopyWholeFile(const std::filesystem::path &from, const std::filesystem::path &to, std::error_code &error);

}  // namespace quillbar::host::platform
