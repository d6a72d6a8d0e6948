// SPDX-License-Identifier: MIT
#include "fuzz/image_seeds.h"

#include <png.h>
#include <tiffio.h>
#include <webp/encode.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

namespace quillbar::fuzz {

namespace {

constexpr int kWidth = 7, kHeight = 5;

/// Pixels of any kind, with as many bytes each.
std::vector<std::uint8_t> Pixels(std::size_t pixelSize) {
  std::vector<std::uint8_t> pixels(kWidth * kHeight * pixelSize);
  for (std::size_t i = 0; i < pixels.size(); ++i) pixels[i] = static_cast<std::uint8_t>(i * 37);
  return pixels;
}

std::string Png(png_uint_32 format) {
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  image.width = kWidth;
  image.height = kHeight;
  image.format = format;
  const auto pixels = Pixels(PNG_IMAGE_PIXEL_SIZE(format));
  // A palette of 256 colours, for pixels that name one.
  std::uint8_t colors[4 * 256] = {};
  image.colormap_entries = 256;
  png_alloc_size_t size = 0;
  png_image_write_to_memory(&image, nullptr, &size, 0, pixels.data(), 0, colors);
  std::string file(size, '\0');
  png_image_write_to_memory(&image, file.data(), &size, 0, pixels.data(), 0, colors);
  file.resize(size);
  return file;
}

struct TiffKind {
  const char *name;
  int photometric;
  int samples;
  int bits;
  int compression = COMPRESSION_NONE;
  int planar = PLANARCONFIG_CONTIG;
  bool tiled = false;
};

std::string Tiff(const TiffKind &kind) {
  char path[] = "/tmp/quillbar-seed-XXXXXX";
  const int descriptor = mkstemp(path);
  if (descriptor < 0) return {};
  TIFF *tiff = TIFFFdOpen(descriptor, path, "w");
  TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, kWidth);
  TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, kHeight);
  TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, kind.bits);
  TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, kind.samples);
  TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, kind.photometric);
  TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, kind.planar);
  TIFFSetField(tiff, TIFFTAG_COMPRESSION, kind.compression);
  TIFFSetField(tiff, TIFFTAG_ORIENTATION, ORIENTATION_BOTRIGHT);
  if (kind.photometric == PHOTOMETRIC_RGB && kind.samples == 4) {
    const std::uint16_t alpha[] = {EXTRASAMPLE_ASSOCALPHA};
    TIFFSetField(tiff, TIFFTAG_EXTRASAMPLES, 1, alpha);
  }
  if (kind.photometric == PHOTOMETRIC_PALETTE) {
    std::vector<std::uint16_t> colors(std::size_t{1} << kind.bits, 0x8080);
    TIFFSetField(tiff, TIFFTAG_COLORMAP, colors.data(), colors.data(), colors.data());
  }
  const int planes = kind.planar == PLANARCONFIG_SEPARATE ? kind.samples : 1;
  if (kind.tiled) {
    TIFFSetField(tiff, TIFFTAG_TILEWIDTH, 16);
    TIFFSetField(tiff, TIFFTAG_TILELENGTH, 16);
    std::vector<std::uint8_t> tile(static_cast<std::size_t>(TIFFTileSize(tiff)), 0x55);
    for (int plane = 0; plane < planes; ++plane)
      TIFFWriteTile(tiff, tile.data(), 0, 0, 0, static_cast<std::uint16_t>(plane));
  } else {
    std::vector<std::uint8_t> row(static_cast<std::size_t>(TIFFScanlineSize(tiff)), 0x55);
    for (int plane = 0; plane < planes; ++plane) {
      for (std::uint32_t y = 0; y < kHeight; ++y)
        TIFFWriteScanline(tiff, row.data(), y, static_cast<std::uint16_t>(plane));
    }
  }
  TIFFClose(tiff);
  std::ifstream file(path, std::ios::binary);
  std::string bytes{std::istreambuf_iterator<char>(file), {}};
  std::filesystem::remove(path);
  return bytes;
}

std::string Webp(bool isLossless) {
  const auto pixels = Pixels(4);
  std::uint8_t *bytes = nullptr;
  const std::size_t size = isLossless ? WebPEncodeLosslessRGBA(pixels.data(), kWidth, kHeight, 4 * kWidth, &bytes)
                                      : WebPEncodeRGBA(pixels.data(), kWidth, kHeight, 4 * kWidth, 60, &bytes);
  std::string file(reinterpret_cast<const char *>(bytes), size);
  WebPFree(bytes);
  return file;
}

}  // namespace

void ForEachImageSeed(const std::function<void(const std::string &name, std::string_view file)> &take) {
  take("png-grey", Png(PNG_FORMAT_GRAY));
  take("png-colour-alpha", Png(PNG_FORMAT_RGBA));
  take("png-16", Png(PNG_FORMAT_LINEAR_RGB_ALPHA));
  take("png-palette", Png(PNG_FORMAT_RGBA_COLORMAP));
  for (const TiffKind &kind : {
           TiffKind{"tiff-grey", PHOTOMETRIC_MINISWHITE, 1, 8},
           TiffKind{"tiff-grey-16", PHOTOMETRIC_MINISBLACK, 1, 16, COMPRESSION_LZW},
           TiffKind{"tiff-bits", PHOTOMETRIC_MINISBLACK, 1, 1, COMPRESSION_CCITTFAX4},
           TiffKind{"tiff-colour", PHOTOMETRIC_RGB, 3, 8, COMPRESSION_PACKBITS},
           TiffKind{"tiff-alpha", PHOTOMETRIC_RGB, 4, 8, COMPRESSION_ADOBE_DEFLATE},
           TiffKind{"tiff-planes", PHOTOMETRIC_RGB, 3, 8, COMPRESSION_NONE, PLANARCONFIG_SEPARATE},
           TiffKind{"tiff-cmyk", PHOTOMETRIC_SEPARATED, 4, 8},
           TiffKind{"tiff-palette", PHOTOMETRIC_PALETTE, 1, 4},
           TiffKind{"tiff-tiles", PHOTOMETRIC_RGB, 3, 16, COMPRESSION_LZW, PLANARCONFIG_CONTIG, true},
           TiffKind{"tiff-tiled-planes", PHOTOMETRIC_RGB, 3, 8, COMPRESSION_NONE, PLANARCONFIG_SEPARATE, true},
       }) {
    take(kind.name, Tiff(kind));
  }
  take("webp-lossy", Webp(false));
  take("webp-lossless", Webp(true));
}

}  // namespace quillbar::fuzz
