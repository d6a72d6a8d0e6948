// SPDX-License-Identifier: MIT
#include <limits>

#include "binding/host_strings.h"
#include "plugin/guard/library_call.h"
#include "plugin/image/image.h"
#include "plugin/image/new_image.h"

namespace quillbar::image {

Image *LoadJPEGImage(PDFDocument *document, String imageBuffer) {
  Integer length = 0;
  const char *bytes = GetCString(imageBuffer, &length);
  // The library counts bytes in 32 bits.
  if (bytes == nullptr || length <= 0 || length > std::numeric_limits<std::int32_t>::max()) return nullptr;
  const HPDF_Image handle = Call<HPDF_LoadJpegImageFromMem>(
      DataOf(document).libraryDocument, reinterpret_cast<const HPDF_BYTE *>(bytes), static_cast<HPDF_UINT>(length));
  return NewImage(document, handle);
}

}  // namespace quillbar::image
