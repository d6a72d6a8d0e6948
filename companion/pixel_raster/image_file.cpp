// SPDX-License-Identifier: MIT
#include "companion/pixel_raster/image_file.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <new>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "platform/openable_path.h"

namespace quillbar::companion {

namespace {

DecodedImage Decode(std::span<const std::uint8_t> file) {
  using namespace std::string_view_literals;
  const std::string_view start(reinterpret_cast<const char *>(file.data()), std::min<std::size_t>(file.size(), 16));
  if (start.starts_with("\x89PNG\r\n\x1A\n"sv)) return DecodePng(file);
  if (start.starts_with("\xFF\xD8\xFF"sv)) return DecodeJpeg(file);
  if (start.starts_with("II*\0"sv) || start.starts_with("MM\0*"sv) || start.starts_with("II+\0"sv) ||
      start.starts_with("MM\0+"sv)) {
    return DecodeTiff(file);
  }
  if (start.size() >= 12 && start.starts_with("RIFF"sv) && start.substr(8, 4) == "WEBP"sv) return DecodeWebp(file);
  return DecodedImage::Failure(file.empty() ? "the file is empty" : "this is not a PNG, JPEG, TIFF or WebP file");
}

}  // namespace

DecodedImage DecodeImageFile(std::span<const std::uint8_t> file) {
  try {
    return Decode(file);
  } catch (const std::bad_alloc &) {
    return DecodedImage::Failure("there is not enough memory for the picture");
  }
}

DecodedImage LoadImageFile(const char *utf8Path) {
  const std::filesystem::path path(reinterpret_cast<const char8_t *>(utf8Path));
  const auto fail = [&](const std::string &cause) { return DecodedImage::Failure(cause + ": " + utf8Path); };
  const auto failWith = [&](int errorNumber) {
    return fail(errorNumber == 0 ? "the file can't be read" : std::generic_category().message(errorNumber));
  };
  std::error_code ignored;
  if (std::filesystem::is_directory(path, ignored)) return failWith(EISDIR);
  errno = 0;
  std::ifstream file(platform::OpenablePath(path), std::ios::binary | std::ios::ate);
  if (!file) return failWith(errno);
  const std::streamoff size = file.tellg();
  if (size < 0) return failWith(errno);
  std::vector<char> bytes;
  try {
    bytes.resize(std::in_range<std::size_t>(size) ? static_cast<std::size_t>(size) : bytes.max_size() + 1);
  } catch (const std::exception &) {
    return fail("there is not enough memory for the file");
  }
  file.seekg(0);
  if (!file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()))) return failWith(errno);
  return DecodeImageFile({reinterpret_cast<const std::uint8_t *>(bytes.data()), bytes.size()});
}

}  // namespace quillbar::companion
