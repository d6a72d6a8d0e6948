// SPDX-License-Identifier: MIT
#include <sys/stat.h>
#include <unistd.h>

#include "tests/support/unwritable_folder.h"

namespace quillbar::test {
namespace {

constexpr uid_t kNobody = 65534;

}  // namespace

void UnwritableFolder::Close() {
  chmod(folder_.c_str(), 0555);
  // The superuser may write everywhere, and may become itself again after having become "nobody".
  if (geteuid() == 0 && seteuid(kNobody) != 0) return;
}

void UnwritableFolder::Open() {
  if (getuid() == 0 && seteuid(0) != 0) return;
  chmod(folder_.c_str(), 0755);
}

}  // namespace quillbar::test
