// SPDX-License-Identifier: MIT
// Image files of every colour type, written by the formats' own libraries and read into rasters.
#include "companion/pixel_raster/image_file.h"

#include <gmock/gmock.h>
#include <png.h>
#include <tiffio.h>
#include <webp/encode.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <functional>
#include <map>
#include <random>

#include "companion/pixel_raster/exif_orientation.h"
#include "tests/support/jpeg_maker.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/utf8_path.h"

namespace quillbar::companion {
namespace {

using testing::AnyOf;
using testing::HasSubstr;

DecodedImage Decode(std::string_view file) {
  return DecodeImageFile({reinterpret_cast<const std::uint8_t *>(file.data()), file.size()});
}

/// The value of a component of a pixel of the test pictures, with this many bits.
unsigned Sample(int x, int y, int component, int bits) {
  const unsigned value = static_cast<unsigned>(x * 2311 + y * 977 + component * 15013 + 40);
  return value & ((1U << bits) - 1U);
}

// -- PNG ------------------------------------------------------------------------------------------

struct PngOptions {
  int type;
  int bits;
  bool interlaced = false;
  bool transparentColor = false;
  int width = 13;
  int height = 9;
};

std::string MakePng(const PngOptions &options) {
  std::string file;
  png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
  png_infop info = png_create_info_struct(png);
  png_set_write_fn(
      png, &file,
      [](png_structp writer, png_bytep bytes, std::size_t size) {
        static_cast<std::string *>(png_get_io_ptr(writer))->append(reinterpret_cast<const char *>(bytes), size);
      },
      nullptr);
  png_set_IHDR(png, info, static_cast<png_uint_32>(options.width), static_cast<png_uint_32>(options.height),
               options.bits, options.type, options.interlaced ? PNG_INTERLACE_ADAM7 : PNG_INTERLACE_NONE,
               PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
  if (options.type == PNG_COLOR_TYPE_PALETTE) {
    png_color colors[256];
    for (int i = 0; i < 256; ++i) {
      colors[i] = {static_cast<png_byte>(i), static_cast<png_byte>(255 - i), static_cast<png_byte>(i / 2)};
    }
    png_set_PLTE(png, info, colors, 1 << options.bits);
    if (options.transparentColor) {
      png_byte alpha[2] = {0, 128};
      png_set_tRNS(png, info, alpha, 2, nullptr);
    }
  } else if (options.transparentColor) {
    png_color_16 color{};
    color.gray = static_cast<png_uint_16>(Sample(0, 0, 0, options.bits));
    color.red = color.gray;
    color.green = static_cast<png_uint_16>(Sample(0, 0, 1, options.bits));
    color.blue = static_cast<png_uint_16>(Sample(0, 0, 2, options.bits));
    png_set_tRNS(png, info, nullptr, 0, &color);
  }
  png_write_info(png, info);
  const int components = png_get_channels(png, info);
  const std::size_t rowSize = png_get_rowbytes(png, info);
  std::vector<png_byte> pixels(rowSize * static_cast<std::size_t>(options.height));
  std::vector<png_bytep> rows;
  for (int y = 0; y < options.height; ++y) {
    png_byte *row = pixels.data() + rowSize * static_cast<std::size_t>(y);
    rows.push_back(row);
    for (int x = 0; x < options.width; ++x) {
      for (int component = 0; component < components; ++component) {
        const unsigned value = Sample(x, y, component, options.bits);
        const int bit = (x * components + component) * options.bits;
        if (options.bits == 16) {
          StoreComponent16(row + bit / 8, value);
        } else {
          row[bit / 8] = static_cast<png_byte>(row[bit / 8] | value << (8 - options.bits - bit % 8));
        }
      }
    }
  }
  png_write_image(png, rows.data());
  png_write_end(png, nullptr);
  png_destroy_write_struct(&png, &info);
  return file;
}

TEST(ImageFile, PngOfEveryColorTypeAndDepth) {
  const std::vector<std::pair<int, std::vector<int>>> kinds = {{PNG_COLOR_TYPE_GRAY, {1, 2, 4, 8, 16}},
                                                               {PNG_COLOR_TYPE_RGB, {8, 16}},
                                                               {PNG_COLOR_TYPE_PALETTE, {1, 2, 4, 8}},
                                                               {PNG_COLOR_TYPE_GRAY_ALPHA, {8, 16}},
                                                               {PNG_COLOR_TYPE_RGB_ALPHA, {8, 16}}};
  for (const auto &[type, depths] : kinds) {
    for (const int bits : depths) {
      for (const bool interlaced : {false, true}) {
        SCOPED_TRACE(testing::Message() << "type " << type << ", " << bits << " bits, interlaced " << interlaced);
        const DecodedImage decoded = Decode(MakePng({type, bits, interlaced}));
        ASSERT_TRUE(decoded.ok()) << decoded.error;
        const RasterImage &image = decoded.image;
        const bool isPalette = type == PNG_COLOR_TYPE_PALETTE;
        const bool isColor = (type & PNG_COLOR_MASK_COLOR) != 0;
        EXPECT_EQ(image.format(), (PixelFormat{isColor ? ColorModel::kRgb : ColorModel::kGrey,
                                               (type & PNG_COLOR_MASK_ALPHA) != 0, bits == 16 ? 16 : 8}));
        ASSERT_EQ(image.width(), 13);
        ASSERT_EQ(image.height(), 9);
        for (int y = 0; y < image.height(); ++y) {
          for (int x = 0; x < image.width(); ++x) {
            for (int component = 0; component < image.format().ComponentCount(); ++component) {
              unsigned expected = Sample(x, y, isPalette ? 0 : component, bits);
              if (isPalette) {
                const unsigned index = expected;
                expected = component == 0 ? index : component == 1 ? 255 - index : index / 2;
              } else if (bits < 8) {
                expected = expected * 255 / ((1U << bits) - 1);
              }
              ASSERT_EQ(image.Component(x, y, component), expected) << x << ", " << y << ", " << component;
            }
          }
        }
      }
    }
  }
}

TEST(ImageFile, PngTransparencyBecomesAlpha) {
  for (const int type : {PNG_COLOR_TYPE_GRAY, PNG_COLOR_TYPE_RGB, PNG_COLOR_TYPE_PALETTE}) {
    for (const int bits : {8, 16}) {
      if (type == PNG_COLOR_TYPE_PALETTE && bits == 16) continue;
      PngOptions options{type, bits};
      options.transparentColor = true;
      const DecodedImage decoded = Decode(MakePng(options));
      ASSERT_TRUE(decoded.ok()) << decoded.error;
      ASSERT_TRUE(decoded.image.format().hasAlpha);
      const int alpha = decoded.image.format().ColorCount();
      const unsigned opaque = bits == 16 ? 65535 : 255;
      if (type != PNG_COLOR_TYPE_PALETTE) {
        EXPECT_EQ(decoded.image.Component(0, 0, alpha), 0U);
      }
      EXPECT_EQ(decoded.image.Component(3, 4, alpha), opaque);
    }
  }
}

// -- JPEG -----------------------------------------------------------------------------------------

TEST(ImageFile, JpegOfEveryColorCount) {
  for (const int components : {1, 3, 4}) {
    for (const bool progressive : {false, true}) {
      for (const bool adobe : {true, false}) {
        SCOPED_TRACE(testing::Message() << components << " components");
        const DecodedImage decoded = Decode(
            MakeJpeg({.components = components, .progressive = progressive, .adobeSegment = adobe, .quality = 100}));
        ASSERT_TRUE(decoded.ok()) << decoded.error;
        EXPECT_EQ(decoded.image.format().ComponentCount(), components);
        EXPECT_EQ(decoded.image.format().model, components == 1   ? ColorModel::kGrey
                                                : components == 3 ? ColorModel::kRgb
                                                                  : ColorModel::kCmyk);
        for (int component = 0; component < components; ++component) {
          int expected = JpegSample(4, 3, component);
          if (components == 4 && adobe) expected = 255 - expected;
          EXPECT_NEAR(static_cast<int>(decoded.image.Component(4, 3, component)), expected, 6) << component;
        }
      }
    }
  }
}

TEST(ImageFile, JpegOfMoreScansThanAnyEncoderWritesIsRefused) {
  const auto ofScans = [](int scans) {
    return Decode(MakeJpeg({.components = 1, .progressive = true, .scans = scans}));
  };
  EXPECT_EQ(ofScans(500).error, "");
  EXPECT_EQ(ofScans(501).error, "JPEG: more than 500 scans");
}

TEST(ImageFile, ExifOrientationTurnsThePicture) {
  const std::string upright = MakeJpeg({.width = 32, .height = 16, .quality = 100});
  const DecodedImage original = Decode(upright);
  ASSERT_TRUE(original.ok());
  const int w = 32, h = 16;
  using Place = std::function<std::pair<int, int>(int, int)>;
  // Where the pixel stored at (x, y) appears.
  const Place places[] = {
      [](int x, int y) { return std::pair(x, y); },
      [=](int x, int y) { return std::pair(w - 1 - x, y); },
      [=](int x, int y) { return std::pair(w - 1 - x, h - 1 - y); },
      [=](int x, int y) { return std::pair(x, h - 1 - y); },
      [](int x, int y) { return std::pair(y, x); },
      [=](int x, int y) { return std::pair(h - 1 - y, x); },
      [=](int x, int y) { return std::pair(h - 1 - y, w - 1 - x); },
      [=](int x, int y) { return std::pair(y, w - 1 - x); },
  };
  for (std::uint16_t orientation = 1; orientation <= 8; ++orientation) {
    const DecodedImage turned = Decode(WithExifOrientation(upright, orientation));
    ASSERT_TRUE(turned.ok()) << turned.error;
    EXPECT_EQ(turned.image.width(), orientation < 5 ? w : h);
    EXPECT_EQ(turned.image.height(), orientation < 5 ? h : w);
    for (int y = 0; y < h; ++y) {
      for (int x = 0; x < w; ++x) {
        const auto [column, row] = places[orientation - 1](x, y);
        ASSERT_EQ(turned.image.Component(column, row, 1), original.image.Component(x, y, 1))
            << "orientation " << orientation << ": " << x << ", " << y;
      }
    }
  }
}

TEST(ImageFile, DamagedExifIsNoOrientation) {
  const std::string file = WithExifOrientation(MakeJpeg({}), 6);
  const std::string exif = file.substr(6, 32);
  const auto orientation = [](std::string_view bytes) {
    return ExifOrientation({reinterpret_cast<const std::uint8_t *>(bytes.data()), bytes.size()});
  };
  EXPECT_EQ(orientation(exif), 6);
  for (std::size_t size = 0; size < 26; ++size) EXPECT_EQ(orientation(exif.substr(0, size)), 1) << size;
  std::string distant = exif;
  distant[10] = distant[11] = '\xFF';  // the directory is past the end
  EXPECT_EQ(orientation(distant), 1);
}

// -- TIFF -----------------------------------------------------------------------------------------

struct TiffOptions {
  std::uint16_t photometric;
  int samples;
  int bits;
  std::uint16_t alphaKind = 0;  // of the last sample; 0: none
  bool planar = false;
  bool tiled = false;
  const char *mode = "w";
  int width = 37;
  int height = 21;
};

std::string MakeTiff(const TiffOptions &options) {
  const test::TemporaryFolder folder;
  const auto path = folder / "picture.tif";
  TIFF *tiff = TIFFOpen(test::Utf8(path).c_str(), options.mode);
  TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, options.width);
  TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, options.height);
  TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, options.bits);
  TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, options.samples);
  TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, options.photometric);
  TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, options.planar ? PLANARCONFIG_SEPARATE : PLANARCONFIG_CONTIG);
  TIFFSetField(tiff, TIFFTAG_COMPRESSION, COMPRESSION_LZW);
  if (options.alphaKind != 0) TIFFSetField(tiff, TIFFTAG_EXTRASAMPLES, 1, &options.alphaKind);
  if (options.photometric == PHOTOMETRIC_PALETTE) {
    std::vector<std::uint16_t> red(256), green(256), blue(256);
    for (unsigned i = 0; i < 256; ++i) {
      red[i] = static_cast<std::uint16_t>(i * 257);
      green[i] = static_cast<std::uint16_t>((255 - i) * 257);
      blue[i] = static_cast<std::uint16_t>(i / 2 * 257);
    }
    TIFFSetField(tiff, TIFFTAG_COLORMAP, red.data(), green.data(), blue.data());
  }
  const int planes = options.planar ? options.samples : 1;
  const int samplesInPlane = options.planar ? 1 : options.samples;
  const auto fill = [&](std::vector<std::uint8_t> &bytes, int left, int y, int count, int plane) {
    for (int x = 0; x < count; ++x) {
      for (int sample = 0; sample < samplesInPlane; ++sample) {
        const unsigned value = Sample(left + x, y, plane + sample, options.bits);
        const int index = x * samplesInPlane + sample;
        if (options.bits == 16) {
          const auto word = static_cast<std::uint16_t>(value);
          std::memcpy(&bytes[static_cast<std::size_t>(2 * index)], &word, 2);
        } else if (options.bits == 8) {
          bytes[static_cast<std::size_t>(index)] = static_cast<std::uint8_t>(value);
        } else if (value != 0) {
          bytes[static_cast<std::size_t>(index / 8)] |= static_cast<std::uint8_t>(0x80 >> index % 8);
        }
      }
    }
  };
  if (options.tiled) {
    TIFFSetField(tiff, TIFFTAG_TILEWIDTH, 16);
    TIFFSetField(tiff, TIFFTAG_TILELENGTH, 16);
    const auto rowSize = static_cast<std::size_t>(TIFFTileRowSize(tiff));
    for (int plane = 0; plane < planes; ++plane) {
      for (int top = 0; top < options.height; top += 16) {
        for (int left = 0; left < options.width; left += 16) {
          std::vector<std::uint8_t> tile;
          for (int y = 0; y < 16; ++y) {
            std::vector<std::uint8_t> row(rowSize);
            fill(row, left, top + y, 16, plane);
            tile.insert(tile.end(), row.begin(), row.end());
          }
          TIFFWriteTile(tiff, tile.data(), static_cast<std::uint32_t>(left), static_cast<std::uint32_t>(top), 0,
                        static_cast<std::uint16_t>(plane));
        }
      }
    }
  } else {
    TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, 8);
    for (int plane = 0; plane < planes; ++plane) {
      for (int y = 0; y < options.height; ++y) {
        std::vector<std::uint8_t> row(static_cast<std::size_t>(TIFFScanlineSize(tiff)));
        fill(row, 0, y, options.width, plane);
        TIFFWriteScanline(tiff, row.data(), static_cast<std::uint32_t>(y), static_cast<std::uint16_t>(plane));
      }
    }
  }
  TIFFClose(tiff);
  return test::ReadFile(path);
}

TEST(ImageFile, TiffOfEveryColorTypeDepthAndArrangement) {
  struct Kind {
    std::uint16_t photometric;
    ColorModel model;
    int colors;
  };
  for (const Kind &kind :
       {Kind{PHOTOMETRIC_MINISBLACK, ColorModel::kGrey, 1}, Kind{PHOTOMETRIC_MINISWHITE, ColorModel::kGrey, 1},
        Kind{PHOTOMETRIC_RGB, ColorModel::kRgb, 3}, Kind{PHOTOMETRIC_SEPARATED, ColorModel::kCmyk, 4}}) {
    for (const int bits : {8, 16}) {
      for (const bool alpha : {false, true}) {
        for (const bool planar : {false, true}) {
          for (const bool tiled : {false, true}) {
            for (const char *mode : {"wl", "wb", "w8"}) {
              SCOPED_TRACE(testing::Message() << "photometric " << kind.photometric << ", " << bits << " bits, alpha "
                                              << alpha << ", planar " << planar << ", tiled " << tiled << ", " << mode);
              const TiffOptions options{kind.photometric,
                                        kind.colors + (alpha ? 1 : 0),
                                        bits,
                                        static_cast<std::uint16_t>(alpha ? EXTRASAMPLE_UNASSALPHA : 0),
                                        planar,
                                        tiled,
                                        mode};
              const DecodedImage decoded = Decode(MakeTiff(options));
              ASSERT_TRUE(decoded.ok()) << decoded.error;
              const RasterImage &image = decoded.image;
              EXPECT_EQ(image.format(), (PixelFormat{kind.model, alpha, bits}));
              ASSERT_EQ(image.width(), options.width);
              ASSERT_EQ(image.height(), options.height);
              const unsigned full = bits == 16 ? 65535 : 255;
              for (int y = 0; y < image.height(); ++y) {
                for (int x = 0; x < image.width(); ++x) {
                  for (int component = 0; component < options.samples; ++component) {
                    unsigned expected = Sample(x, y, component, bits);
                    if (kind.photometric == PHOTOMETRIC_MINISWHITE && component == 0) expected = full - expected;
                    ASSERT_EQ(image.Component(x, y, component), expected) << x << ", " << y << ", " << component;
                  }
                }
              }
            }
          }
        }
      }
    }
  }
}

TEST(ImageFile, TiffColorsMultipliedByAlphaAreDivided) {
  const DecodedImage decoded = Decode(MakeTiff({PHOTOMETRIC_RGB, 4, 8, EXTRASAMPLE_ASSOCALPHA}));
  ASSERT_TRUE(decoded.ok()) << decoded.error;
  const unsigned alpha = Sample(5, 2, 3, 8), stored = Sample(5, 2, 0, 8);
  EXPECT_EQ(decoded.image.Component(5, 2, 3), alpha);
  EXPECT_NEAR(decoded.image.Component(5, 2, 0), std::min(255.0, stored * 255.0 / alpha), 1);
}

TEST(ImageFile, TiffPalettesAndSingleBitsBecomeRgb) {
  const DecodedImage palette = Decode(MakeTiff({PHOTOMETRIC_PALETTE, 1, 8}));
  ASSERT_TRUE(palette.ok()) << palette.error;
  EXPECT_EQ(palette.image.format(), (PixelFormat{ColorModel::kRgb, false, 8}));
  const unsigned index = Sample(7, 5, 0, 8);
  EXPECT_EQ(palette.image.Component(7, 5, 0), index);
  EXPECT_EQ(palette.image.Component(7, 5, 1), 255 - index);
  EXPECT_EQ(palette.image.Component(7, 5, 2), index / 2);

  const DecodedImage bits = Decode(MakeTiff({PHOTOMETRIC_MINISBLACK, 1, 1}));
  ASSERT_TRUE(bits.ok()) << bits.error;
  for (int x = 0; x < 37; ++x) EXPECT_EQ(bits.image.Component(x, 20, 0), Sample(x, 20, 0, 1) * 255);
}

// -- WebP -----------------------------------------------------------------------------------------

std::string MakeWebp(bool alpha) {
  constexpr int kWidth = 21, kHeight = 17;
  const int components = alpha ? 4 : 3;
  std::vector<std::uint8_t> pixels;
  for (int y = 0; y < kHeight; ++y) {
    for (int x = 0; x < kWidth; ++x) {
      // libwebp drops the colours of transparent pixels.
      for (int component = 0; component < components; ++component) {
        pixels.push_back(
            static_cast<std::uint8_t>(component == 3 ? 1 + Sample(x, y, 3, 7) : Sample(x, y, component, 8)));
      }
    }
  }
  std::uint8_t *bytes = nullptr;
  const std::size_t size = alpha ? WebPEncodeLosslessRGBA(pixels.data(), kWidth, kHeight, kWidth * 4, &bytes)
                                 : WebPEncodeLosslessRGB(pixels.data(), kWidth, kHeight, kWidth * 3, &bytes);
  std::string file(reinterpret_cast<const char *>(bytes), size);
  WebPFree(bytes);
  return file;
}

TEST(ImageFile, WebpWithAndWithoutAlpha) {
  for (const bool alpha : {false, true}) {
    const DecodedImage decoded = Decode(MakeWebp(alpha));
    ASSERT_TRUE(decoded.ok()) << decoded.error;
    EXPECT_EQ(decoded.image.format(), (PixelFormat{ColorModel::kRgb, alpha, 8}));
    for (int component = 0; component < 3; ++component) {
      EXPECT_EQ(decoded.image.Component(11, 13, component), Sample(11, 13, component, 8));
    }
    if (alpha) {
      EXPECT_EQ(decoded.image.Component(11, 13, 3), 1 + Sample(11, 13, 3, 7));
    }
  }
}

// -- Bad input ------------------------------------------------------------------------------------

TEST(ImageFile, CutAndDamagedFilesGiveAnErrorOrAPicture) {
  const std::string files[] = {MakePng({PNG_COLOR_TYPE_RGB_ALPHA, 16}),
                               MakePng({PNG_COLOR_TYPE_PALETTE, 4, true}),
                               MakeJpeg({}),
                               MakeJpeg({.components = 4, .progressive = true}),
                               MakeTiff({PHOTOMETRIC_RGB, 3, 8}),
                               MakeTiff({PHOTOMETRIC_SEPARATED, 5, 16, EXTRASAMPLE_UNASSALPHA, true, true}),
                               MakeWebp(true)};
  std::mt19937 random(7);
  for (const std::string &file : files) {
    ASSERT_TRUE(Decode(file).ok());
    for (std::size_t size = 0; size + 40 < file.size(); size += 1 + file.size() / 97) {
      const DecodedImage cut = Decode(file.substr(0, size));
      EXPECT_FALSE(cut.ok()) << file.substr(0, 4) << " cut to " << size << " of " << file.size();
      EXPECT_FALSE(cut.error.empty());
    }
    for (int round = 0; round < 200; ++round) {
      std::string damaged = file;
      for (int change = 0; change < 5; ++change) {
        damaged[random() % damaged.size()] = static_cast<char>(random());
      }
      const DecodedImage decoded = Decode(damaged);
      if (decoded.ok()) {
        EXPECT_GT(decoded.image.width(), 0);
      }
    }
  }
}

TEST(ImageFile, OtherFilesAreNamedAsSuch) {
  EXPECT_THAT(Decode("").error, HasSubstr("empty"));
  EXPECT_THAT(Decode("GIF89a and so on").error, HasSubstr("not a PNG, JPEG, TIFF or WebP"));
}

TEST(ImageFile, GiganticPicturesAreRefused) {
  std::string png = MakePng({PNG_COLOR_TYPE_RGB, 8});
  // A header with this width and height; its check sum no longer fits, which libpng reports, or the size is refused.
  for (const std::size_t offset : {16, 20}) png.replace(offset, 4, "\x7F\xFF\xFF\xFF");
  EXPECT_FALSE(Decode(png).ok());
  std::string jpeg = MakeJpeg({});
  const std::size_t frame = jpeg.find("\xFF\xC0");
  jpeg.replace(frame + 5, 4, "\xFF\xFF\xFF\xFF");
  EXPECT_FALSE(Decode(jpeg).ok());
}

/// A TIFF file of one strip that holds nothing but zeros, with any directory.
std::string TiffOfTags(const std::map<std::uint16_t, std::uint32_t> &tags) {
  constexpr std::uint32_t kStripSize = 64, kStripOffset = 8;
  auto all = tags;
  all.insert({{TIFFTAG_STRIPOFFSETS, kStripOffset}, {TIFFTAG_STRIPBYTECOUNTS, kStripSize}});
  std::string file("II*\0", 4);
  const auto append = [&file](std::uint32_t number, int size) {
    for (int i = 0; i < size; ++i) file.push_back(static_cast<char>(number >> 8 * i));
  };
  append(kStripOffset + kStripSize, 4);
  file.append(kStripSize, '\0');
  append(static_cast<std::uint32_t>(all.size()), 2);
  for (const auto &[tag, value] : all) {
    append(tag, 2);
    append(TIFF_LONG, 2);
    append(1, 4);
    append(value, 4);
  }
  append(0, 4);
  return file;
}

TEST(ImageFile, TiffWhoseRowsAskForMoreMemoryThanAnyPictureIsRefused) {
  // Each pixel has 65,535 samples, of which the raster would keep three.
  const DecodedImage decoded = Decode(TiffOfTags({{TIFFTAG_IMAGEWIDTH, 1 << 20},
                                                  {TIFFTAG_IMAGELENGTH, 1},
                                                  {TIFFTAG_BITSPERSAMPLE, 16},
                                                  {TIFFTAG_COMPRESSION, COMPRESSION_NONE},
                                                  {TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_RGB},
                                                  {TIFFTAG_SAMPLESPERPIXEL, 65535},
                                                  {TIFFTAG_ROWSPERSTRIP, 1}}));
  // On 32 bits libtiff can't even represent the size.
  EXPECT_THAT(decoded.error, AnyOf(HasSubstr("TIFF: its rows have an impossible size"), HasSubstr("overflow")));
}

TEST(ImageFile, TiffThatItsLibraryRefusesInSilenceIsRefusedWithACause) {
  using namespace std::string_view_literals;
  EXPECT_EQ(Decode("II*\0\0\0\0\0"sv).error, "TIFF: there is no picture in the file");
}

TEST(RasterImage, SizesOutOfRangeAreRefused) {
  const PixelFormat rgb{ColorModel::kRgb, false, 8};
  EXPECT_TRUE(RasterImage::Create(3, 2, rgb));
  for (const std::int64_t side : {std::int64_t{0}, std::int64_t{-1}, INT64_MIN, INT64_MAX, std::int64_t{1} << 32}) {
    EXPECT_FALSE(RasterImage::Create(side, 2, rgb));
    EXPECT_FALSE(RasterImage::Create(2, side, rgb));
  }
  EXPECT_FALSE(RasterImage::Create(40000, 40000, rgb));
  for (const int bits : {0, 1, 4, 12, 32, -8}) EXPECT_FALSE(RasterImage::Create(2, 2, {ColorModel::kRgb, false, bits}));
}

TEST(RasterImage, SixteenBitComponentsAreStoredHighByteFirst) {
  auto image = RasterImage::Create(2, 1, {ColorModel::kGrey, true, 16});
  ASSERT_TRUE(image);
  image->SetComponent(1, 0, 0, 0x1234);
  EXPECT_EQ(image->bytes()[4], 0x12);
  EXPECT_EQ(image->bytes()[5], 0x34);
  EXPECT_EQ(image->Component(1, 0, 0), 0x1234U);
}

}  // namespace
}  // namespace quillbar::companion
