// SPDX-License-Identifier: MIT
// HPDF_Image_LoadJpegImageFromMem, in place of libharu's: the file's header is read before anything is made
// of it.
//
// libharu makes the image's objects first and then looks for the frame. Data cut before the frame passes as
// an image without size or colour space, frames of 12 bits and of 0 × 0 pixels pass too, and a file that is
// refused leaves an object in the document. It also keeps the file twice in memory while it copies it, and
// takes every four-colour file for an inverted one, as only those with an Adobe segment are.
#include <hpdf.h>
#include <hpdf_utils.h>

#include "plugin/engine/images/jpeg_frame.h"
#include "plugin/engine/objects/new_entry.h"

namespace {

using quillbar::engine::JpegFrame;
using quillbar::engine::JpegVerdict;

const char *ColorSpaceOf(const JpegFrame &frame) {
  switch (frame.componentCount) {
    case 1:
      return "DeviceGray";
    case 3:
      return "DeviceRGB";
    default:
      return "DeviceCMYK";
  }
}

// The entry "Decode" that turns four inverted components round.
HPDF_STATUS AddInvertedDecode(HPDF_Dict image) {
  HPDF_Array decode = quillbar::engine::NewArrayIn(image, "Decode");
  if (decode == nullptr) return HPDF_Error_GetCode(image->error);
  HPDF_STATUS status = HPDF_OK;
  for (int bound = 0; bound < 8 && status == HPDF_OK; ++bound) {
    status = HPDF_Array_AddNumber(decode, bound % 2 == 0 ? 1 : 0);
  }
  return status;
}

HPDF_STATUS DescribeImage(HPDF_Dict image, const JpegFrame &frame) {
  HPDF_STATUS status = HPDF_Dict_AddName(image, "Type", "XObject");
  if (status == HPDF_OK) status = HPDF_Dict_AddName(image, "Subtype", "Image");
  if (status == HPDF_OK) status = HPDF_Dict_AddNumber(image, "Height", frame.height);
  if (status == HPDF_OK) status = HPDF_Dict_AddNumber(image, "Width", frame.width);
  if (status == HPDF_OK) status = HPDF_Dict_AddName(image, "ColorSpace", ColorSpaceOf(frame));
  if (status == HPDF_OK) status = HPDF_Dict_AddNumber(image, "BitsPerComponent", 8);
  if (status == HPDF_OK && frame.componentCount == 4 && frame.hasAdobeSegment) status = AddInvertedDecode(image);
  return status;
}

}  // namespace

extern "C" HPDF_Image HPDF_Image_LoadJpegImageFromMem(HPDF_MMgr memory, const HPDF_BYTE *file, HPDF_UINT size,
                                                      HPDF_Xref xref) {
  const JpegFrame frame = quillbar::engine::ReadJpegFrame({file, size});
  if (frame.verdict != JpegVerdict::kGood) {
    HPDF_SetError(memory->error,
                  frame.verdict == JpegVerdict::kInvalid ? HPDF_INVALID_JPEG_DATA : HPDF_UNSUPPORTED_JPEG_FORMAT, 0);
    return nullptr;
  }
  HPDF_Dict image = HPDF_DictStream_New(memory, xref);
  if (image == nullptr) return nullptr;
  image->header.obj_class |= HPDF_OSUBCLASS_XOBJECT;
  image->filter = HPDF_STREAM_FILTER_DCT_DECODE;
  if (DescribeImage(image, frame) != HPDF_OK) return nullptr;
  return HPDF_Stream_Write(image->stream, file, size) == HPDF_OK ? image : nullptr;
}
