// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <span>

namespace quillbar::host::platform {

/// Has the system keep every file that this process opens from now on below a folder, with what the C library reads on
/// its own: time zones, character tables, random numbers. `readable` and `writable` are files besides. False where the
/// system can't, and nothing has changed then.
bool ConfineFiles(const std::filesystem::path &folder, std::span<const std::filesystem::path> readable,
                  const std::filesystem::path &writable);

}  // namespace quillbar::host::platform
