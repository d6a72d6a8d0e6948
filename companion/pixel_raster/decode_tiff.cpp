// SPDX-License-Identifier: MIT
#include <tiffio.h>

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <memory>
#include <utility>
#include <vector>

#include "companion/pixel_raster/image_file.h"

namespace quillbar::companion {

namespace {

/// A file in memory, as libtiff reads it.
struct TiffSource {
  std::span<const std::uint8_t> file;
  std::uint64_t position = 0;
  std::string error;
};

TiffSource &Source(thandle_t handle) { return *static_cast<TiffSource *>(handle); }

tmsize_t ReadBytes(thandle_t handle, void *to, tmsize_t size) {
  TiffSource &source = Source(handle);
  if (size < 0 || source.position >= source.file.size()) return 0;
  const std::size_t count = std::min<std::size_t>(static_cast<std::size_t>(size),
                                                  source.file.size() - static_cast<std::size_t>(source.position));
  std::memcpy(to, source.file.data() + source.position, count);
  source.position += count;
  return static_cast<tmsize_t>(count);
}

tmsize_t WriteNothing(thandle_t, void *, tmsize_t) { return 0; }

toff_t Seek(thandle_t handle, toff_t offset, int whence) {
  TiffSource &source = Source(handle);
  if (whence == SEEK_CUR) offset += source.position;
  if (whence == SEEK_END) offset += source.file.size();
  source.position = offset;
  return offset;
}

int Close(thandle_t) { return 0; }
toff_t Size(thandle_t handle) { return Source(handle).file.size(); }

int OnError(TIFF *, void *source, const char *, const char *format, va_list arguments) {
  char text[256];
  std::vsnprintf(text, sizeof text, format, arguments);
  std::string &error = static_cast<TiffSource *>(source)->error;
  if (error.empty()) error = text;
  return 1;
}

int OnWarning(TIFF *, void *, const char *, const char *, va_list) { return 1; }

struct CloseTiff {
  void operator()(TIFF *tiff) const { TIFFClose(tiff); }
};
using TiffHandle = std::unique_ptr<TIFF, CloseTiff>;

TiffHandle Open(TiffSource &source) {
  TIFFOpenOptions *options = TIFFOpenOptionsAlloc();
  TIFFOpenOptionsSetErrorHandlerExtR(options, OnError, &source);
  TIFFOpenOptionsSetWarningHandlerExtR(options, OnWarning, nullptr);
  TiffHandle tiff(TIFFClientOpenExt("picture", "rm", &source, ReadBytes, WriteNothing, Seek, Close, Size, nullptr,
                                    nullptr, options));
  TIFFOpenOptionsFree(options);
  return tiff;
}

template <class Value>
Value Field(TIFF *tiff, std::uint32_t tag, Value fallback) {
  Value value{};
  return TIFFGetFieldDefaulted(tiff, tag, &value) == 1 ? value : fallback;
}

/// How the samples of a file become the components of a raster.
struct TiffLayout {
  PixelFormat format;
  int sampleCount = 0;        // of a pixel in the file
  int alphaSample = -1;       // the index of the alpha sample, if any
  bool isMultiplied = false;  // the colours are multiplied by alpha
  bool isInverted = false;    // grey that grows darker
  bool isPlanar = false;

  /// The component to which a sample belongs; -1 for one that is left out.
  int ComponentOf(int sample) const {
    if (sample < format.ColorCount()) return sample;
    return sample == alphaSample ? format.ColorCount() : -1;
  }
};

/// The first extra sample that is alpha, and whether the colours are multiplied by it.
void FindAlpha(TIFF *tiff, TiffLayout &layout) {
  std::uint16_t count = 0;
  const std::uint16_t *kinds = nullptr;
  if (TIFFGetField(tiff, TIFFTAG_EXTRASAMPLES, &count, &kinds) != 1) return;
  for (int extra = 0; extra < count; ++extra) {
    if (kinds[extra] != EXTRASAMPLE_ASSOCALPHA && kinds[extra] != EXTRASAMPLE_UNASSALPHA) continue;
    layout.alphaSample = layout.format.ColorCount() + extra;
    layout.isMultiplied = kinds[extra] == EXTRASAMPLE_ASSOCALPHA;
    layout.format.hasAlpha = layout.alphaSample < layout.sampleCount;
    return;
  }
}

/// The layout of the samples; nothing for files whose samples need libtiff's own conversion.
std::optional<TiffLayout> ReadLayout(TIFF *tiff) {
  const auto bits = Field<std::uint16_t>(tiff, TIFFTAG_BITSPERSAMPLE, 1);
  if (bits != 8 && bits != 16) return std::nullopt;
  if (Field<std::uint16_t>(tiff, TIFFTAG_SAMPLEFORMAT, SAMPLEFORMAT_UINT) != SAMPLEFORMAT_UINT) return std::nullopt;
  TiffLayout layout;
  layout.format.bits = bits;
  layout.sampleCount = Field<std::uint16_t>(tiff, TIFFTAG_SAMPLESPERPIXEL, 1);
  layout.isPlanar = Field<std::uint16_t>(tiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG) == PLANARCONFIG_SEPARATE;
  switch (Field<std::uint16_t>(tiff, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISBLACK)) {
    case PHOTOMETRIC_MINISWHITE:
      layout.isInverted = true;
      [[fallthrough]];
    case PHOTOMETRIC_MINISBLACK:
      layout.format.model = ColorModel::kGrey;
      break;
    case PHOTOMETRIC_RGB:
      layout.format.model = ColorModel::kRgb;
      break;
    case PHOTOMETRIC_SEPARATED:
      if (Field<std::uint16_t>(tiff, TIFFTAG_INKSET, INKSET_CMYK) != INKSET_CMYK) return std::nullopt;
      layout.format.model = ColorModel::kCmyk;
      break;
    default:
      return std::nullopt;
  }
  if (layout.sampleCount < layout.format.ColorCount()) return std::nullopt;
  FindAlpha(tiff, layout);
  return layout;
}

/// Copies samples of `count` pixels from `from` to the raster at (x, y). `sample` is the plane that they belong to, -1
/// for interleaved ones. libtiff gives 16 bits in the machine's order.
void CopySamples(const TiffLayout &layout, const std::uint8_t *from, int sample, std::size_t count, RasterImage &image,
                 int x, int y) {
  const std::size_t size = layout.format.ComponentSize();
  const int samples = sample < 0 ? layout.sampleCount : 1;
  for (std::size_t pixel = 0; pixel < count; ++pixel) {
    for (int i = 0; i < samples; ++i, from += size) {
      const int component = layout.ComponentOf(sample < 0 ? i : sample);
      if (component < 0) continue;
      std::uint16_t value = *from;
      if (size == 2) std::memcpy(&value, from, 2);
      if (layout.isInverted && component == 0) value = static_cast<std::uint16_t>((size == 1 ? 0xFF : 0xFFFF) - value);
      image.SetComponent(x + static_cast<int>(pixel), y, component, value);
    }
  }
}

/// Whether libtiff's buffers of this size are worth making: a few bytes of a file can ask for any size.
bool IsBufferSize(tmsize_t size) { return size > 0 && std::cmp_less_equal(size, RasterImage::MaxSize()); }

bool ReadStrips(TIFF *tiff, const TiffLayout &layout, RasterImage &image) {
  const tmsize_t rowSize = TIFFScanlineSize(tiff);
  const std::size_t samples = layout.isPlanar ? 1 : static_cast<std::size_t>(layout.sampleCount);
  const std::size_t needed = static_cast<std::size_t>(image.width()) * samples * layout.format.ComponentSize();
  if (!IsBufferSize(rowSize) || static_cast<std::size_t>(rowSize) < needed) return false;
  std::vector<std::uint8_t> row(static_cast<std::size_t>(rowSize));
  for (int plane = 0; plane < (layout.isPlanar ? layout.sampleCount : 1); ++plane) {
    for (int y = 0; y < image.height(); ++y) {
      if (TIFFReadScanline(tiff, row.data(), static_cast<std::uint32_t>(y), static_cast<std::uint16_t>(plane)) < 0) {
        return false;
      }
      CopySamples(layout, row.data(), layout.isPlanar ? plane : -1, static_cast<std::size_t>(image.width()), image, 0,
                  y);
    }
  }
  return true;
}

bool ReadTiles(TIFF *tiff, const TiffLayout &layout, RasterImage &image) {
  const auto tileWidth = Field<std::uint32_t>(tiff, TIFFTAG_TILEWIDTH, 0);
  const auto tileHeight = Field<std::uint32_t>(tiff, TIFFTAG_TILELENGTH, 0);
  const tmsize_t tileSize = TIFFTileSize(tiff), rowSize = TIFFTileRowSize(tiff);
  if (tileWidth == 0 || tileHeight == 0 || rowSize <= 0 || !IsBufferSize(tileSize)) return false;
  const std::size_t samples = layout.isPlanar ? 1 : static_cast<std::size_t>(layout.sampleCount);
  if (static_cast<std::size_t>(rowSize) < tileWidth * samples * layout.format.ComponentSize()) return false;
  std::vector<std::uint8_t> tile(static_cast<std::size_t>(tileSize));
  const auto width = static_cast<std::uint32_t>(image.width()), height = static_cast<std::uint32_t>(image.height());
  for (int plane = 0; plane < (layout.isPlanar ? layout.sampleCount : 1); ++plane) {
    for (std::uint32_t top = 0; top < height; top += tileHeight) {
      for (std::uint32_t left = 0; left < width; left += tileWidth) {
        if (TIFFReadTile(tiff, tile.data(), left, top, 0, static_cast<std::uint16_t>(plane)) < 0) return false;
        for (std::uint32_t y = 0; y < std::min(tileHeight, height - top); ++y) {
          CopySamples(layout, tile.data() + static_cast<std::size_t>(rowSize) * y, layout.isPlanar ? plane : -1,
                      std::min(tileWidth, width - left), image, static_cast<int>(left), static_cast<int>(top + y));
        }
      }
    }
  }
  return true;
}

/// libtiff's first message, or `otherwise` when there is none: it refuses some files without a message.
DecodedImage Failure(const TiffSource &source, const char *otherwise) {
  return DecodedImage::Failure("TIFF: " + (source.error.empty() ? otherwise : source.error));
}

/// Decodes through libtiff's own conversion to words of red, green, blue and alpha, with the colours multiplied by
/// alpha.
DecodedImage ReadConverted(TIFF *tiff, const TiffSource &source, std::uint32_t width, std::uint32_t height) {
  char reason[1024] = {};
  if (TIFFRGBAImageOK(tiff, reason) == 0) return DecodedImage::Failure(std::string("TIFF: ") + reason);
  std::uint16_t extraCount = 0;
  const std::uint16_t *extraKinds = nullptr;
  TIFFGetField(tiff, TIFFTAG_EXTRASAMPLES, &extraCount, &extraKinds);
  auto image = RasterImage::Create(width, height, {ColorModel::kRgb, extraCount > 0, 8});
  if (!image) return DecodedImage::Failure("TIFF: the picture is too large");
  std::vector<std::uint32_t> words(static_cast<std::size_t>(width) * height);
  if (TIFFReadRGBAImageOriented(tiff, width, height, words.data(), ORIENTATION_TOPLEFT, 1) == 0) {
    return Failure(source, "libtiff can't convert it, and gives no cause");
  }
  std::uint8_t *to = image->bytes().data();
  for (const std::uint32_t word : words) {
    *to++ = static_cast<std::uint8_t>(TIFFGetR(word));
    *to++ = static_cast<std::uint8_t>(TIFFGetG(word));
    *to++ = static_cast<std::uint8_t>(TIFFGetB(word));
    if (extraCount > 0) *to++ = static_cast<std::uint8_t>(TIFFGetA(word));
  }
  DivideByAlpha(*image);
  return {std::move(*image), {}};
}

}  // namespace

DecodedImage DecodeTiff(std::span<const std::uint8_t> file) {
  TiffSource source{file, 0, {}};
  const TiffHandle tiff = Open(source);
  if (!tiff) return Failure(source, "there is no picture in the file");
  const auto width = Field<std::uint32_t>(tiff.get(), TIFFTAG_IMAGEWIDTH, 0);
  const auto height = Field<std::uint32_t>(tiff.get(), TIFFTAG_IMAGELENGTH, 0);
  const std::optional<TiffLayout> layout = ReadLayout(tiff.get());
  if (!layout) return ReadConverted(tiff.get(), source, width, height);

  auto image = RasterImage::Create(width, height, layout->format);
  if (!image) return DecodedImage::Failure("TIFF: the picture has no pixels or is too large");
  const bool done =
      TIFFIsTiled(tiff.get()) != 0 ? ReadTiles(tiff.get(), *layout, *image) : ReadStrips(tiff.get(), *layout, *image);
  if (!done) return Failure(source, "its rows have an impossible size");
  if (layout->isMultiplied) DivideByAlpha(*image);
  const auto orientation = Field<std::uint16_t>(tiff.get(), TIFFTAG_ORIENTATION, ORIENTATION_TOPLEFT);
  return {Oriented(std::move(*image), orientation), {}};
}

}  // namespace quillbar::companion
