// SPDX-License-Identifier: MIT
#pragma once

#include "plugin/script/script_types.h"

/// `Image`: how images come into a document and onto a page.
namespace quillbar::image {

/// "LoadImage(image as PixelRaster) as Image": the raster's pixels become samples of 8 or 16 bits, its alpha
/// a soft mask. Nil for Nil, for an object of another class, for a raster that no image can be made of (see
/// `ReadRasterLayout`) and when memory is short. The raster is not kept.
Image *LoadImage(PDFDocument *document, PixelRaster *image);

/// "LoadJPEGImage(imageBuffer as String) as Image": a whole JPEG file, which goes into the document as it is.
/// Nil for a nil or empty string, silently, and with the library's error for a file that PDF can't hold.
Image *LoadJPEGImage(PDFDocument *document, String imageBuffer);

/// "DrawImage(image as Image, x as Single, y as Single, width as Single, height as Single)" of `Page`: in
/// points; (x, y) is the lower left corner, the upper left one on a page that works from the top. Nothing for
/// Nil or for an image of another document; the library refuses it outside of page description and at the
/// deepest saved state.
void DrawImage(Page *page, Image *image, Single x, Single y, Single width, Single height);

}  // namespace quillbar::image
