#pragma once

#include "plugin/bridge/script_types.h"

/// `Image`: how images come into a document and onto a page.
namespace quillbar::image {

void Initialize(Object image);
void Finalize(Object image);
void Constructor(Image *image);

/// In pixels.
Integer GetHeight(Image *image);
Integer GetWidth(Image *image);

Image *LoadImage(PDFDocument *document, PixelRaster *image);
Image *LoadJPEGImage(PDFDocument *document, String imageBuffer);

void DrawImage(Page *page, Image *image, Single x, Single y, Single width, Single height);

}  // namespace quillbar::image
