// SPDX-License-Identifier: MIT
#include "bench/podofo_image.h"

#include <podofo/podofo.h>

#include <cstddef>

namespace quillbar::bench {

void WritePodofoImage(const std::vector<std::uint8_t> &pixels, std::int32_t width, std::int32_t height,
                      const std::string &file) {
  const std::size_t count = pixels.size() / 4;
  std::vector<char> colors(count * 3), alphas(count);
  for (std::size_t pixel = 0; pixel < count; ++pixel) {
    for (std::size_t color = 0; color < 3; ++color) {
      colors[pixel * 3 + color] = static_cast<char>(pixels[pixel * 4 + color]);
    }
    alphas[pixel] = static_cast<char>(pixels[pixel * 4 + 3]);
  }
  PoDoFo::PdfStreamedDocument document(file.c_str());
  PoDoFo::PdfImage mask(&document);
  PoDoFo::PdfMemoryInputStream alphaStream(alphas.data(), static_cast<PoDoFo::pdf_long>(alphas.size()));
  mask.SetImageColorSpace(PoDoFo::ePdfColorSpace_DeviceGray);
  mask.SetImageDataRaw(static_cast<unsigned>(width), static_cast<unsigned>(height), 8, &alphaStream);
  PoDoFo::PdfImage image(&document);
  image.SetImageSoftmask(&mask);
  image.SetImageColorSpace(PoDoFo::ePdfColorSpace_DeviceRGB);
  PoDoFo::PdfMemoryInputStream colorStream(colors.data(), static_cast<PoDoFo::pdf_long>(colors.size()));
  image.SetImageData(static_cast<unsigned>(width), static_cast<unsigned>(height), 8, &colorStream);
  PoDoFo::PdfPainter painter;
  painter.SetPage(document.CreatePage(PoDoFo::PdfPage::CreateStandardPageSize(PoDoFo::ePdfPageSize_A4)));
  painter.DrawImage(50, 50, &image, 0.1, 0.1);
  painter.FinishPage();
  document.Close();
}

}  // namespace quillbar::bench
