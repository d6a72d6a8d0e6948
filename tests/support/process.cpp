// SPDX-License-Identifier: MIT
#include "tests/support/process.h"

#include "tests/support/utf8_path.h"

namespace quillbar::test {

std::string ProcessArgument::Text() const {
  const std::filesystem::path *path = AsPath();
  return path != nullptr ? Utf8(*path) : std::get<std::string>(word_);
}

}  // namespace quillbar::test
