#include "companion/pixel_raster/image_file.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <vector>

namespace quillbar::companion {

DecodedImage DecodeImageFile(std::span<const std::uint8_t> file) {
  using namespace std::string_view_literals;
  const std::string_view start(reinterpret_cast<const char *>(file.data()),
                               std::min<std::size_t>(file.size(), 16));
  if (start.starts_with("\x89PNG\r\n\x1A\n"sv)) return DecodePng(file);
  if (start.starts_with("\xFF\xD8\xFF"sv)) return DecodeJpeg(file);
  if (start.starts_with("II*\0"sv) || start.starts_with("MM\0*"sv) || start.starts_with("II+\0"sv) ||
      start.starts_with("MM\0+"sv)) {
    return DecodeTiff(file);
  }
  if (start.size() >= 12 && start.starts_with("RIFF"sv) && start.substr(8, 4) == "WEBP"sv)
    return DecodeWebp(file);
  return DecodedImage::Failure(file.empty() ? "the file is empty"
                                            : "this is no PNG, JPEG, TIFF or WebP file");
}

DecodedImage LoadImageFile(const char *utf8Path) {
  const std::filesystem::path path(reinterpret_cast<const char8_t *>(utf8Path));
  std::error_code problem;
  const std::uintmax_t size = std::filesystem::file_size(path, problem);
  if (problem) return DecodedImage::Failure(problem.message() + ": " + utf8Path);
  std::vector<char> bytes;
  try {
    bytes.resize(size);
  } catch (const std::exception &) {
    return DecodedImage::Failure(std::string("memory is short for the file ") + utf8Path);
  }
  std::ifstream file(path, std::ios::binary);
  if (!file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()))) {
    return DecodedImage::Failure(std::string("the file can't be read: ") + utf8Path);
  }
  return DecodeImageFile({reinterpret_cast<const std::uint8_t *>(bytes.data()), bytes.size()});
}

}  // namespace quillbar::companion
