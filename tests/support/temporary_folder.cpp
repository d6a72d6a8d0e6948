// SPDX-License-Identifier: MIT
#include "tests/support/temporary_folder.h"

#include <fstream>
#include <random>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>

#include "tests/support/utf8_path.h"

namespace quillbar::test {

TemporaryFolder::TemporaryFolder(const std::filesystem::path &parent) {
  std::random_device random;
  do {
    path_ = parent / ("quillbar-test-" + std::to_string(random()));
  } while (!std::filesystem::create_directory(path_));
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

std::filesystem::path TemporaryFolder::operator/(std::string_view utf8Name) const { return path_ / PathOf(utf8Name); }

std::string ReadFile(const std::filesystem::path &file) {
  std::ifstream stream(file, std::ios::binary);
  if (!stream) throw std::runtime_error("cannot read " + Utf8(file));
  // Byte by byte, by iterators, would take a hundred times as long in what isn't optimized.
  std::ostringstream bytes;
  bytes << stream.rdbuf();
  return std::move(bytes).str();
}

void WriteFile(const std::filesystem::path &file, std::string_view bytes) {
  std::ofstream stream(file, std::ios::binary);
  stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  if (!stream.flush()) throw std::runtime_error("cannot write " + Utf8(file));
}

}  // namespace quillbar::test
