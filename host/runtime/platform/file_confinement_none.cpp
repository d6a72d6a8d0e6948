// SPDX-License-Identifier: MIT
#include "host/runtime/platform/file_confinement.h"

namespace quillbar::host::platform {

bool ConfineFiles(const std::filesystem::path &, std::span<const std::filesystem::path>,
                  const std::filesystem::path &) {
  return false;
}

}  // namespace quillbar::host::platform
