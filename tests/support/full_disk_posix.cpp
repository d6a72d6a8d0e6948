// SPDX-License-Identifier: MIT
#include <sys/mount.h>
#include <sys/resource.h>

#include <csignal>
#include <utility>

#include "tests/support/full_disk.h"

namespace quillbar::test {

FileSizeLimit::FileSizeLimit(std::uintmax_t bytes) {
  rlimit limit{};
  if (getrlimit(RLIMIT_FSIZE, &limit) != 0) return;
  former_ = limit.rlim_cur;
  // Without it the system ends the process at the limit.
  formerAction_ = std::signal(SIGXFSZ, SIG_IGN);
  limit.rlim_cur = static_cast<rlim_t>(bytes);
  isInForce_ = setrlimit(RLIMIT_FSIZE, &limit) == 0;
}

FileSizeLimit::~FileSizeLimit() {
  rlimit limit{};
  if (getrlimit(RLIMIT_FSIZE, &limit) != 0) return;
  limit.rlim_cur = static_cast<rlim_t>(former_);
  setrlimit(RLIMIT_FSIZE, &limit);
  std::signal(SIGXFSZ, formerAction_);
}

SmallDisk::SmallDisk(std::filesystem::path mountPoint) : mountPoint_(std::move(mountPoint)) {
  std::filesystem::create_directory(mountPoint_);
  isInForce_ = mount("none", mountPoint_.c_str(), "tmpfs", 0, "size=64k") == 0;
}

SmallDisk::~SmallDisk() {
  if (isInForce_) umount(mountPoint_.c_str());
}

}  // namespace quillbar::test
