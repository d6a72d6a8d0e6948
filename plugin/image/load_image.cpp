// SPDX-License-Identifier: MIT
#include <hpdf_utils.h>

#include <algorithm>

#include "binding/class_reference.h"
#include "plugin/engine/images/image.h"
#include "plugin/guard/library_call.h"
#include "plugin/image/image_members.h"
#include "plugin/image/new_image.h"
#include "plugin/image/raster_rows.h"

namespace quillbar::image {

namespace {

/// A row of samples in memory of the library's, so that a shortage is reported as the library's own.
class SampleRow {
 public:
  SampleRow(HPDF_MMgr memory, std::size_t size)
      : memory_(memory),
        bytes_(static_cast<std::uint8_t *>(Call<HPDF_GetMem>(memory, static_cast<HPDF_UINT>(size)))),
        size_(size) {}
  ~SampleRow() { Call<HPDF_FreeMem>(memory_, bytes_); }
  SampleRow(const SampleRow &) = delete;
  SampleRow &operator=(const SampleRow &) = delete;

  explicit operator bool() const { return bytes_ != nullptr; }
  std::span<std::uint8_t> bytes() const { return {bytes_, size_}; }

 private:
  HPDF_MMgr memory_;
  std::uint8_t *bytes_;
  std::size_t size_;
};

/// An image of the raster's size without samples; null when memory is short.
HPDF_Image NewEmptyImage(HPDF_Doc document, const RasterLayout &layout, std::size_t componentCount) {
  return Call<engine::NewImage>(document, {{"ColorSpace", engine::DeviceColorSpace(componentCount)},
                                           {"Width", layout.width},
                                           {"Height", layout.height},
                                           {"BitsPerComponent", 8 * layout.componentSize}});
}

bool Append(HPDF_Dict stream, const std::uint8_t *bytes, std::size_t size) {
  return Call<HPDF_Stream_Write>(stream->stream, bytes, static_cast<HPDF_UINT>(size)) == HPDF_OK;
}

/// The rows as the raster has them: in one piece when there is nothing between them.
bool WriteStoredRows(const RasterLayout &layout, HPDF_Dict image) {
  const std::size_t size = layout.ImageRowSize();
  if (layout.stride == static_cast<std::ptrdiff_t>(size)) return Append(image, layout.firstRow, size * layout.height);
  for (std::size_t row = 0; row < layout.height; ++row) {
    if (!Append(image, layout.Row(row), size)) return false;
  }
  return true;
}

/// `mask` is null for a layout without one.
bool WriteConvertedRows(HPDF_Doc document, const RasterLayout &layout, HPDF_Dict image, HPDF_Dict mask) {
  const SampleRow imageRow(document->mmgr, layout.ImageRowSize());
  const SampleRow maskRow(document->mmgr, layout.MaskRowSize());
  if (!imageRow || !maskRow) return false;
  for (std::size_t row = 0; row < layout.height; ++row) {
    ConvertRow(layout, layout.Row(row), imageRow.bytes(), maskRow.bytes());
    if (!Append(image, imageRow.bytes().data(), imageRow.bytes().size())) return false;
    if (mask != nullptr && !Append(mask, maskRow.bytes().data(), maskRow.bytes().size())) return false;
  }
  return true;
}

/// Soft masks came with PDF 1.4, samples of 16 bits with PDF 1.5.
void RaiseVersion(HPDF_Doc document, const RasterLayout &layout) {
  if (layout.hasMask) document->pdf_version = std::max(document->pdf_version, HPDF_VER_14);
  if (layout.componentSize == 2) document->pdf_version = std::max(document->pdf_version, HPDF_VER_15);
}

HPDF_Image MakeImage(HPDF_Doc document, RasterLayout layout) {
  HPDF_Dict image = NewEmptyImage(document, layout, layout.colorCount);
  if (image == nullptr) return nullptr;
  HPDF_Dict mask = layout.hasMask ? NewEmptyImage(document, layout, 1) : nullptr;
  // When memory is too short for a mask, the raster is one without alpha.
  layout.hasMask = mask != nullptr;
  if (layout.WritesSamples()) {
    const bool written =
        layout.RowsAreImageRows() ? WriteStoredRows(layout, image) : WriteConvertedRows(document, layout, image, mask);
    if (!written) return nullptr;
  }
  if (mask != nullptr && Call<HPDF_Dict_Add>(image, "SMask", mask) != HPDF_OK) return nullptr;
  if ((document->compression_mode & HPDF_COMP_IMAGE) != 0) image->filter = HPDF_STREAM_FILTER_FLATE_DECODE;
  RaiseVersion(document, layout);
  return image;
}

/// The raster's data block; null for an object of another class.
const PixelRasterRecord *RecordOf(PixelRaster *raster) {
  const ClassRef rasterClass = ClassReference<"PixelRaster">::Get();
  if (rasterClass == nullptr) return nullptr;
  return static_cast<const PixelRasterRecord *>(CallHost<service::GetPluginData>(raster, rasterClass));
}

}  // namespace

Image *LoadImage(PDFDocument *document, PixelRaster *raster) {
  const HPDF_Doc libraryDocument = DataOf(document).libraryDocument;
  if (raster == nullptr || libraryDocument == nullptr) return nullptr;
  const PixelRasterRecord *record = RecordOf(raster);
  if (record == nullptr) return nullptr;
  const auto layout = ReadRasterLayout(*record);
  return layout ? NewImage(document, MakeImage(libraryDocument, *layout)) : nullptr;
}

}  // namespace quillbar::image
