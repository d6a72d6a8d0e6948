// SPDX-License-Identifier: MIT
// Windows neither limits the size of a process's files nor mounts file systems for it.
#include <utility>

#include "tests/support/full_disk.h"

namespace quillbar::test {

FileSizeLimit::FileSizeLimit(std::uintmax_t) {}
FileSizeLimit::~FileSizeLimit() = default;

SmallDisk::SmallDisk(std::filesystem::path mountPoint) : mountPoint_(std::move(mountPoint)) {}
SmallDisk::~SmallDisk() = default;

}  // namespace quillbar::test
