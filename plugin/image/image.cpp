#include "plugin/image/image.h"

#include "plugin/document/library_call.h"
#include "plugin/document/owned_by_document.h"
#include "plugin/image/image_data.h"

namespace quillbar::image {

void Initialize(Object object) { DataOf(static_cast<Image *>(object)).document = nullptr; }

void Finalize(Object object) { Let(DataOf(static_cast<Image *>(object)).document); }

void Constructor(Image *image) { DataOf(image).document = nullptr; }

Integer GetHeight(Image *image) {
  return static_cast<Integer>(Call<HPDF_Image_GetHeight>(DataOf(image).imageHandle));
}

Integer GetWidth(Image *image) {
  return static_cast<Integer>(Call<HPDF_Image_GetWidth>(DataOf(image).imageHandle));
}

Image *LoadImage(PDFDocument *, PixelRaster *) { return nullptr; }

Image *LoadJPEGImage(PDFDocument *, String) { return nullptr; }

void DrawImage(Page *, Image *, Single, Single, Single, Single) {}

}  // namespace quillbar::image
