// SPDX-License-Identifier: MIT
#include "plugin/engine/images/jpeg_image.h"

#include "plugin/engine/images/image.h"
#include "plugin/engine/images/jpeg_frame.h"
#include "plugin/engine/objects/new_entry.h"

namespace quillbar::engine {

namespace {

// The entry "Decode" that inverts four components once more.
HPDF_STATUS AddInvertedDecode(HPDF_Image image) {
  const HPDF_Array decode = NewArrayIn(image, "Decode");
  if (decode == nullptr) return HPDF_Error_GetCode(image->error);
  HPDF_STATUS status = HPDF_OK;
  for (int bound = 0; bound < 8 && status == HPDF_OK; ++bound) {
    status = HPDF_Array_AddNumber(decode, bound % 2 == 0 ? 1 : 0);
  }
  return status;
}

// The header has been read before anything is made, so that a file that is refused leaves no object in the document.
HPDF_Image MakeImage(HPDF_Doc document, const JpegFrame &frame, std::span<const std::uint8_t> file) {
  const HPDF_Image image = NewImage(document, {{"Height", frame.height},
                                               {"Width", frame.width},
                                               {"ColorSpace", DeviceColorSpace(frame.componentCount)},
                                               {"BitsPerComponent", 8}});
  if (image == nullptr) return nullptr;
  image->filter = HPDF_STREAM_FILTER_DCT_DECODE;
  HPDF_STATUS status = HPDF_OK;
  // Files of four components without an Adobe segment don't invert them.
  if (frame.componentCount == 4 && frame.hasAdobeSegment) status = AddInvertedDecode(image);
  if (status == HPDF_OK) {
    status = HPDF_Stream_Write(image->stream, file.data(), static_cast<HPDF_UINT>(file.size()));
  }
  return status == HPDF_OK ? image : nullptr;
}

}  // namespace

HPDF_Image LoadJpegImage(HPDF_Doc document, std::span<const std::uint8_t> file) {
  if (HPDF_HasDoc(document) == HPDF_FALSE) return nullptr;
  const JpegFrame frame = ReadJpegFrame(file);
  if (frame.verdict != JpegVerdict::kGood) {
    HPDF_RaiseError(&document->error,
                    frame.verdict == JpegVerdict::kInvalid ? HPDF_INVALID_JPEG_DATA : HPDF_UNSUPPORTED_JPEG_FORMAT, 0);
    return nullptr;
  }
  const HPDF_Image image = MakeImage(document, frame, file);
  if (image == nullptr) HPDF_CheckError(&document->error);
  return image;
}

}  // namespace quillbar::engine
