// SPDX-License-Identifier: MIT
#include "tests/support/unwritable_folder.h"

#include <fstream>
#include <utility>

namespace quillbar::test {

UnwritableFolder::UnwritableFolder(std::filesystem::path folder) : folder_(std::move(folder)) { Close(); }

UnwritableFolder::~UnwritableFolder() { Open(); }

bool UnwritableFolder::IsInForce() const {
  const std::filesystem::path attempt = folder_ / "attempt";
  if (!std::ofstream(attempt)) return true;
  std::filesystem::remove(attempt);
  return false;
}

}  // namespace quillbar::test
