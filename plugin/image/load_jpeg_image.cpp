// SPDX-License-Identifier: MIT
#include <limits>
#include <span>

#include "binding/host_strings.h"
#include "plugin/engine/images/jpeg_image.h"
#include "plugin/guard/library_call.h"
#include "plugin/image/image_members.h"
#include "plugin/image/new_image.h"

namespace quillbar::image {

Image *LoadJPEGImage(PDFDocument *document, String imageBuffer) {
  Integer length = 0;
  const char *bytes = GetCString(imageBuffer, &length);
  // The library counts bytes in 32 bits.
  if (bytes == nullptr || length <= 0 || length > std::numeric_limits<std::int32_t>::max()) return nullptr;
  const std::span file(reinterpret_cast<const std::uint8_t *>(bytes), static_cast<std::size_t>(length));
  return NewImage(document, Call<engine::LoadJpegImage>(DataOf(document).libraryDocument, file));
}

}  // namespace quillbar::image
