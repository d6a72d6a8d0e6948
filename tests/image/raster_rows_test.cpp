// Rows of rasters against a converter that goes through them one byte at a time.
#include "plugin/image/raster_rows.h"

#include <gmock/gmock.h>

#include <limits>
#include <random>
#include <vector>

#include "tests/image/raster_reference.h"

namespace quillbar {
namespace {

using test::ConvertByDefinition;
using test::Converted;
using test::RandomRaster;
using test::TightRaster;
using testing::ElementsAre;
using Bytes = std::vector<std::uint8_t>;

Converted ConvertAll(const RasterLayout &layout) {
  Converted result;
  Bytes image(layout.ImageRowSize()), mask(layout.hasMask ? layout.MaskRowSize() : 0);
  for (std::size_t row = 0; row < layout.height; ++row) {
    ConvertRow(layout, layout.Row(row), image, mask);
    result.image.insert(result.image.end(), image.begin(), image.end());
    result.mask.insert(result.mask.end(), mask.begin(), mask.end());
  }
  return result;
}

TEST(RasterRows, GreyAndAlphaSplitIntoTwoRowsOfWidthBytes) {
  Bytes pixels{1, 101, 2, 102, 3, 103};
  const auto layout = ReadRasterLayout(TightRaster(3, 1, 2, true, 8, pixels.data()));
  ASSERT_TRUE(layout);
  EXPECT_EQ(layout->colorSpace, ImageColorSpace::kGray);
  const Converted rows = ConvertAll(*layout);
  EXPECT_THAT(rows.image, ElementsAre(1, 2, 3));
  EXPECT_THAT(rows.mask, ElementsAre(101, 102, 103));
}

TEST(RasterRows, SixteenBitColorKeepsItsBytesInStoredOrder) {
  Bytes pixels{0x12, 0x34, 0x56, 0x78, 0x9A, 0xBC, 0xDE, 0xF0};
  const auto layout = ReadRasterLayout(TightRaster(1, 1, 4, true, 16, pixels.data()));
  ASSERT_TRUE(layout);
  EXPECT_EQ(layout->ImageRowSize(), 6U);
  EXPECT_EQ(layout->MaskRowSize(), 2U);
  const Converted rows = ConvertAll(*layout);
  EXPECT_THAT(rows.image, ElementsAre(0x12, 0x34, 0x56, 0x78, 0x9A, 0xBC));
  EXPECT_THAT(rows.mask, ElementsAre(0xDE, 0xF0));
}

TEST(RasterRows, ColorSpaceFollowsChannelCountAndFormat) {
  Bytes pixels(64);
  for (const auto bits : {std::uint8_t{8}, std::uint8_t{16}}) {
    for (const std::int32_t channels : {1, 2, 3, 4, 5}) {
      for (const std::int32_t format : {0, 3, 13, 14, 15, 16}) {
        PixelRasterRecord raster = TightRaster(2, 1, channels, false, bits, pixels.data());
        raster.format = format;
        const auto layout = ReadRasterLayout(raster);
        ASSERT_TRUE(layout);
        const ImageColorSpace expected = channels < 3   ? ImageColorSpace::kGray
                                         : format == 13 ? ImageColorSpace::kCmyk
                                                        : ImageColorSpace::kRgb;
        EXPECT_EQ(layout->colorSpace, expected) << channels << " channels, format " << format;
        const std::size_t components = expected == ImageColorSpace::kGray  ? 1
                                       : expected == ImageColorSpace::kRgb ? 3
                                                                           : 4;
        EXPECT_EQ(layout->ImageRowSize(), 2 * components * bits / 8);
      }
    }
  }
}

TEST(RasterRows, AlphaGoesOnlyWithTwoOrFourChannels) {
  Bytes pixels(64);
  for (const std::int32_t channels : {1, 2, 3, 4, 5, 9}) {
    const auto layout = ReadRasterLayout(TightRaster(2, 1, channels, true, 8, pixels.data()));
    ASSERT_TRUE(layout);
    EXPECT_TRUE(layout->hasMask);
    EXPECT_EQ(layout->writesSamples, channels == 2 || channels == 4) << channels;
    EXPECT_TRUE(ReadRasterLayout(TightRaster(2, 1, channels, false, 8, pixels.data()))->writesSamples);
  }
}

TEST(RasterRows, RandomLayoutsMatchTheDefinition) {
  std::mt19937 random(20240601);
  for (int round = 0; round < 3000; ++round) {
    SCOPED_TRACE(round);
    const RandomRaster raster(random);
    const auto layout = ReadRasterLayout(raster.record);
    ASSERT_TRUE(layout);
    const Converted expected = ConvertByDefinition(raster.record);
    const Converted actual = ConvertAll(*layout);
    ASSERT_EQ(actual.image, expected.image);
    ASSERT_EQ(actual.mask, expected.mask);
  }
}

TEST(RasterRows, LastPixelIsNotReadBeyondItsComponents) {
  // The raster ends with the last blue byte: the fourth byte of its last pixel is not there. The sanitizer
  // watches.
  for (const std::int32_t width : {1, 2, 4, 5, 8, 9}) {
    Bytes pixels(static_cast<std::size_t>(4 * width - 1), 7);
    PixelRasterRecord raster = TightRaster(width, 1, 3, false, 8, pixels.data());
    raster.pixelStep = 4;
    const auto layout = ReadRasterLayout(raster);
    ASSERT_TRUE(layout);
    EXPECT_EQ(ConvertAll(*layout).image, Bytes(static_cast<std::size_t>(3 * width), 7));
  }
}

TEST(RasterRows, OnlyRowsInImageOrderAreCopiedWhole) {
  Bytes pixels(64);
  PixelRasterRecord raster = TightRaster(4, 2, 3, false, 8, pixels.data());
  raster.stride = 20;
  EXPECT_TRUE(ReadRasterLayout(raster)->RowsAreImageRows());
  std::swap(raster.colorOffset[0], raster.colorOffset[2]);
  EXPECT_FALSE(ReadRasterLayout(raster)->RowsAreImageRows());
  EXPECT_TRUE(ReadRasterLayout(TightRaster(4, 2, 1, false, 16, pixels.data()))->RowsAreImageRows());
  EXPECT_FALSE(ReadRasterLayout(TightRaster(4, 2, 2, true, 8, pixels.data()))->RowsAreImageRows());
}

TEST(RasterRows, RastersWithoutPixelsOrWithImpossibleSizesAreRefused) {
  Bytes pixels(256);
  const PixelRasterRecord good = TightRaster(4, 4, 4, true, 8, pixels.data());
  ASSERT_TRUE(ReadRasterLayout(good));
  const auto refused = [&](auto change) {
    PixelRasterRecord raster = good;
    change(raster);
    return !ReadRasterLayout(raster).has_value();
  };
  constexpr std::int32_t kMin = std::numeric_limits<std::int32_t>::min();
  constexpr std::int32_t kMax = std::numeric_limits<std::int32_t>::max();
  for (const std::int32_t value : {0, -1, kMin}) {
    EXPECT_TRUE(refused([&](auto &raster) { raster.width = value; }));
    EXPECT_TRUE(refused([&](auto &raster) { raster.height = value; }));
    EXPECT_TRUE(refused([&](auto &raster) { raster.channelCount = value; }));
  }
  EXPECT_TRUE(refused([&](auto &raster) { raster.width = kMax; }));
  EXPECT_TRUE(refused([&](auto &raster) { raster.height = kMax; }));
  EXPECT_TRUE(refused([&](auto &raster) { raster.width = raster.height = kMax; }));
  EXPECT_TRUE(refused([&](auto &raster) { raster.width = raster.height = 0x10000; }));
  EXPECT_TRUE(refused([&](auto &raster) { raster.firstRow = nullptr; }));
  EXPECT_TRUE(refused([&](auto &raster) { raster.pixelStep = 0; }));
  EXPECT_TRUE(refused([&](auto &raster) { raster.pixelStep = kMin; }));
  EXPECT_TRUE(refused([&](auto &raster) { raster.stride = 0; }));
  EXPECT_TRUE(refused([&](auto &raster) { raster.stride = 15; }));
  EXPECT_TRUE(refused([&](auto &raster) { raster.stride = -15; }));
  for (const int bits : {0, 1, 4, 12, 32, 255}) {
    EXPECT_TRUE(refused([&](auto &raster) { raster.bitsPerComponent = static_cast<std::uint8_t>(bits); }));
  }
}

}  // namespace
}  // namespace quillbar
