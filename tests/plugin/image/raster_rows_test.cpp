// SPDX-License-Identifier: MIT
// Rows of rasters against a converter that goes through them one byte at a time.
#include "plugin/image/raster_rows.h"

#include <gmock/gmock.h>

#include <limits>
#include <random>
#include <vector>

#include "tests/plugin/image/raster_reference.h"

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
  EXPECT_EQ(layout->colorCount, 1U);
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
        const std::size_t components = channels < 3 ? 1 : format == 13 ? 4 : 3;
        EXPECT_EQ(layout->colorCount, components) << channels << " channels, format " << format;
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
    EXPECT_EQ(layout->WritesSamples(), channels == 2 || channels == 4) << channels;
    EXPECT_TRUE(ReadRasterLayout(TightRaster(2, 1, channels, false, 8, pixels.data()))->WritesSamples());
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
  for (const int bits : {0, 1, 4, 12, 32, 255}) {
    EXPECT_TRUE(refused([&](auto &raster) { raster.bitsPerComponent = static_cast<std::uint8_t>(bits); }));
  }
}

TEST(RasterRows, RastersBeyondTheAddressSpaceAreRefused) {
  constexpr std::int32_t kMin = std::numeric_limits<std::int32_t>::min();
  constexpr std::int32_t kMax = std::numeric_limits<std::int32_t>::max();
  const auto refused = [](std::uintptr_t start, std::int32_t stride, std::int32_t pixelStep) {
    PixelRasterRecord raster = TightRaster(4, 4, 4, true, 8, reinterpret_cast<std::uint8_t *>(start));
    raster.stride = stride;
    raster.pixelStep = pixelStep;
    return !ReadRasterLayout(raster).has_value();
  };
  constexpr std::uintptr_t kLast = std::numeric_limits<std::uintptr_t>::max();
  EXPECT_FALSE(refused(100, 16, 4));
  EXPECT_TRUE(refused(kLast - 62, 16, 4));
  EXPECT_FALSE(refused(kLast - 64, 16, 4));
  EXPECT_TRUE(refused(kLast - 2, 0, 0));
  EXPECT_TRUE(refused(100, kMin, 4));
  EXPECT_TRUE(refused(100, 16, kMin));
  EXPECT_TRUE(refused(100, -34, 4));
  EXPECT_FALSE(refused(100, -33, 4));
  EXPECT_TRUE(refused(100, -33, -4));
  EXPECT_TRUE(refused(kLast - kMax, kMax, kMax));
}

/// A raster of 3 columns and 2 rows (1 to 6, row by row) seen in another way.
class RasterView : public testing::Test {
 protected:
  static Bytes Seen(std::int32_t width, std::int32_t height, std::ptrdiff_t first, std::int32_t stride,
                    std::int32_t pixelStep) {
    static Bytes pixels{1, 2, 3, 4, 5, 6};
    PixelRasterRecord raster = TightRaster(width, height, 1, false, 8, pixels.data() + first);
    raster.stride = stride;
    raster.pixelStep = pixelStep;
    const auto layout = ReadRasterLayout(raster);
    EXPECT_TRUE(layout);
    return layout ? ConvertAll(*layout).image : Bytes();
  }
};

TEST_F(RasterView, MayBeTransposed) { EXPECT_THAT(Seen(2, 3, 0, 1, 3), ElementsAre(1, 4, 2, 5, 3, 6)); }

TEST_F(RasterView, MayBeRotated) {
  EXPECT_THAT(Seen(2, 3, 3, 1, -3), ElementsAre(4, 1, 5, 2, 6, 3)) << "by 90° clockwise";
  EXPECT_THAT(Seen(3, 2, 5, -3, -1), ElementsAre(6, 5, 4, 3, 2, 1)) << "by 180°";
  EXPECT_THAT(Seen(2, 3, 2, -1, 3), ElementsAre(3, 6, 2, 5, 1, 4)) << "by 90° counter-clockwise";
}

TEST_F(RasterView, MayHaveRowsInterleavedPixelByPixel) {
  EXPECT_THAT(Seen(3, 2, 0, 1, 2), ElementsAre(1, 3, 5, 2, 4, 6));
}

TEST_F(RasterView, MayRepeatARow) { EXPECT_THAT(Seen(3, 2, 0, 0, 1), ElementsAre(1, 2, 3, 1, 2, 3)); }

TEST_F(RasterView, MayRepeatAPixel) {
  EXPECT_THAT(Seen(3, 2, 0, 3, 0), ElementsAre(1, 1, 1, 4, 4, 4));
  EXPECT_THAT(Seen(3, 2, 4, 0, 0), ElementsAre(5, 5, 5, 5, 5, 5));
}

TEST_F(RasterView, MayShareBytesOfNeighbouringPixels) {
  EXPECT_THAT(Seen(3, 3, 0, 1, 1), ElementsAre(1, 2, 3, 2, 3, 4, 3, 4, 5));
}

// Vectors of the processor take the middle of long rows.
TEST(RasterRows, OverlappingPixelsOfAllDepthsMatchTheDefinition) {
  std::mt19937 random(7);
  Bytes pixels(2000);
  for (auto &byte : pixels) byte = static_cast<std::uint8_t>(random());
  for (const auto bits : {std::uint8_t{8}, std::uint8_t{16}}) {
    for (const std::int32_t channels : {1, 2, 3, 4}) {
      for (const bool alpha : {false, true}) {
        if (alpha && channels % 2 == 1) continue;
        for (std::int32_t step = -9; step <= 9; ++step) {
          for (const std::int32_t stride : {-10, -1, 0, 1, 2, 7, 30}) {
            PixelRasterRecord raster = TightRaster(70, 3, channels, alpha, bits, pixels.data() + 1000);
            raster.pixelStep = step;
            raster.stride = stride;
            const auto layout = ReadRasterLayout(raster);
            ASSERT_TRUE(layout);
            const Converted expected = ConvertByDefinition(raster), actual = ConvertAll(*layout);
            ASSERT_EQ(actual.image, expected.image) << channels << " " << step << " " << stride;
            ASSERT_EQ(actual.mask, expected.mask) << channels << " " << step << " " << stride;
          }
        }
      }
    }
  }
}

}  // namespace
}  // namespace quillbar
