// SPDX-License-Identifier: MIT
#include "plugin/image/image.h"

#include "plugin/engine/images/image.h"
#include "plugin/guard/library_call.h"
#include "plugin/image/image_data.h"
#include "plugin/page/coordinates.h"
#include "plugin/script/owned_by_document.h"

namespace quillbar::image {

void Initialize(Object object) { DataOf(static_cast<Image *>(object)).document = nullptr; }

void Finalize(Object object) { Let(DataOf(static_cast<Image *>(object)).document); }

void Constructor(Image *image) { DataOf(image).document = nullptr; }

Integer GetHeight(Image *image) { return static_cast<Integer>(Call<engine::ImageHeight>(DataOf(image).imageHandle)); }

Integer GetWidth(Image *image) { return static_cast<Integer>(Call<engine::ImageWidth>(DataOf(image).imageHandle)); }

void DrawImage(Page *page, Image *image, Single x, Single y, Single width, Single height) {
  const PageData &data = DataOf(page);
  if (image == nullptr || DataOf(image).libraryDocument != data.libraryDocument) return;
  Call<HPDF_Page_DrawImage>(data.pageHandle, DataOf(image).imageHandle, x, FlipRectangleY(data, y, height), width,
                            height);
}

}  // namespace quillbar::image
