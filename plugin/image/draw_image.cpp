// SPDX-License-Identifier: MIT
#include "plugin/image/image_members.h"

#include "plugin/guard/library_call.h"
#include "plugin/image/image_data.h"
#include "plugin/page/coordinates.h"

namespace quillbar::image {

void DrawImage(Page *page, Image *image, Single x, Single y, Single width, Single height) {
  const PageData &data = DataOf(page);
  if (image == nullptr || DataOf(image).libraryDocument != data.libraryDocument) return;
  Call<HPDF_Page_DrawImage>(data.pageHandle, DataOf(image).imageHandle, x, FlipRectangleY(data, y, height), width,
                            height);
}

}  // namespace quillbar::image
