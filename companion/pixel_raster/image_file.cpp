#include "companion/pixel_raster/image_file.h"

#include <algorithm>
#include <string_view>

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

}  // namespace quillbar::companion
