// SPDX-License-Identifier: MIT
// `PixelRaster` as scripts use it.
#include <gmock/gmock.h>

#include "host/runtime/builtin/builtin_classes.h"
#include "tests/plugin/image/image_driver.h"
#include "tests/support/jpeg_maker.h"
#include "tests/support/temporary_folder.h"

namespace quillbar::test {
namespace {

using testing::HasSubstr;

class PixelRasterTest : public ImageTest {
 protected:
  ScriptObject NewRaster(std::int64_t width, std::int64_t height, std::int64_t channels, std::int64_t bits = 8) {
    return NewObject("PixelRaster", {width, height, channels, bits});
  }
  ScriptObject NewRasterOf(const char *model, bool alpha, std::int64_t bits = 8) {
    return NewObject("PixelRaster", {std::int64_t{4}, std::int64_t{3},
                                     host().Constant(std::string("PixelRaster.ColorModelEnum.") + model), alpha, bits});
  }
  const PixelRasterRecord &RecordOf(const ScriptObject &raster) {
    return *static_cast<PixelRasterRecord *>(host().ClassData(raster.handle(), host().Class("PixelRaster")));
  }
};

TEST_F(PixelRasterTest, IsCreatedBySizeChannelCountAndDepth) {
  for (std::int64_t channels = 1; channels <= 4; ++channels) {
    for (const std::int64_t bits : {8, 16}) {
      const ScriptObject raster = NewRaster(5, 4, channels, bits);
      EXPECT_EQ(raster.GetInteger("Width"), 5);
      EXPECT_EQ(raster.GetInteger("Height"), 4);
      EXPECT_EQ(raster.GetInteger("ChannelCount"), channels);
      EXPECT_EQ(raster.GetInteger("BitsPerComponent"), bits);
      EXPECT_EQ(raster.Get("HasAlpha").AsBoolean(), channels % 2 == 0);
      EXPECT_EQ(raster.Get("ErrorMessage").Utf8(), "");
      EXPECT_EQ(raster.Call("Component", std::int64_t{4}, std::int64_t{3}, channels - 1).AsInteger(), 0);
    }
  }
}

TEST_F(PixelRasterTest, ItsDataBlockSaysHowItsPixelsLie) {
  const ScriptObject rgba = NewRaster(5, 4, 4, 16);
  const PixelRasterRecord &record = RecordOf(rgba);
  EXPECT_EQ(record.width, 5);
  EXPECT_EQ(record.height, 4);
  EXPECT_EQ(record.pixelStep, 8);
  EXPECT_EQ(record.stride, 40);
  EXPECT_EQ(record.colorOffset[2], 4);
  EXPECT_EQ(record.alphaOffset, 6);
  EXPECT_EQ(record.hasAlpha, 1);
  rgba.Call("SetComponent", std::int64_t{1}, std::int64_t{2}, std::int64_t{0}, std::int64_t{0x1234});
  EXPECT_EQ(record.firstRow[2 * 40 + 8], 0x12);
  EXPECT_EQ(record.firstRow[2 * 40 + 9], 0x34);

  const ScriptObject cmyk = NewRasterOf("CMYK", true);
  const PixelRasterRecord &fourColors = RecordOf(cmyk);
  EXPECT_EQ(fourColors.channelCount, 4);
  EXPECT_EQ(fourColors.format, kPixelFormatCmyk);
  EXPECT_EQ(fourColors.pixelStep, 5);
  EXPECT_EQ(fourColors.fourthColorOffset, 3);
  EXPECT_EQ(fourColors.alphaOffset, 4);
}

TEST_F(PixelRasterTest, SizesAndChannelsOutOfRangeLeaveAnEmptyRasterAndAMessage) {
  const std::int64_t huge = std::int64_t{1} << 40;
  for (const ScriptObject &raster : {NewRaster(0, 4, 3), NewRaster(4, 0, 3), NewRaster(-1, 4, 3), NewRaster(huge, 4, 3),
                                     NewRaster(100000, 100000, 3), NewRaster(4, 4, 0), NewRaster(4, 4, 5),
                                     NewRaster(4, 4, -1), NewRaster(4, 4, 3, 12), NewRaster(4, 4, 3, 0)}) {
    EXPECT_EQ(raster.GetInteger("Width"), 0);
    EXPECT_THAT(raster.Get("ErrorMessage").Utf8(), HasSubstr("sides of at least 1 pixel"));
    raster.Call("Fill", Color{0xFF0000});
    EXPECT_EQ(raster.Call("Component", std::int64_t{0}, std::int64_t{0}, std::int64_t{0}).AsInteger(), 0);
  }
}

TEST_F(PixelRasterTest, ComponentsAreReadAndSetAndLimited) {
  const ScriptObject raster = NewRaster(3, 2, 3);
  const auto set = [&](std::int64_t x, std::int64_t y, std::int64_t channel, std::int64_t value) {
    raster.Call("SetComponent", x, y, channel, value);
    return raster.Call("Component", x, y, channel).AsInteger();
  };
  EXPECT_EQ(set(2, 1, 2, 77), 77);
  EXPECT_EQ(set(2, 1, 2, 1000), 255);
  EXPECT_EQ(set(2, 1, 2, -5), 0);
  for (const std::int64_t outside : {std::int64_t{-1}, std::int64_t{3}, kHighBitOnly}) {
    EXPECT_EQ(set(outside, 0, 0, 9), 0);
    EXPECT_EQ(set(0, outside, 0, 9), 0);
    EXPECT_EQ(set(0, 0, outside, 9), 0);
  }
}

TEST_F(PixelRasterTest, ColorsAreReadAndSetInEveryModel) {
  for (const char *model : {"RGB", "CMYK"}) {
    for (const std::int64_t bits : {8, 16}) {
      const ScriptObject raster = NewRasterOf(model, true, bits);
      for (const std::uint32_t color : {0x000000U, 0xFFFFFFU, 0x336699U, 0xFF0000U, 0x8000FF00U, 0xFF0000FFU}) {
        raster.Call("SetColorAt", std::int64_t{1}, std::int64_t{1}, Color{color});
        const auto back =
            static_cast<std::uint32_t>(raster.Call("ColorAt", std::int64_t{1}, std::int64_t{1}).AsColor());
        for (const int shift : {0, 8, 16, 24}) {
          EXPECT_NEAR(static_cast<int>(back >> shift & 0xFF), static_cast<int>(color >> shift & 0xFF), 1)
              << model << " " << std::hex << color;
        }
      }
    }
  }
  const ScriptObject grey = NewRasterOf("GREY", false);
  grey.Call("Fill", Color{0x00808080});
  EXPECT_EQ(grey.Call("ColorAt", std::int64_t{3}, std::int64_t{2}).AsColor(), Color{0x808080});
}

TEST_F(PixelRasterTest, FillReachesEveryPixel) {
  const ScriptObject raster = NewRaster(37, 11, 4, 16);
  raster.Call("Fill", Color{0x40123456});
  for (std::int64_t y = 0; y < 11; ++y) {
    for (std::int64_t x = 0; x < 37; ++x) {
      ASSERT_EQ(raster.Call("ColorAt", x, y).AsColor(), Color{0x40123456}) << x << ", " << y;
    }
  }
}

TEST_F(PixelRasterTest, PixelsTravelThroughAMemoryBlock) {
  const ScriptObject raster = NewRaster(3, 2, 3);
  for (std::int64_t i = 0; i < 18; ++i) raster.Call("SetComponent", i % 9 / 3, i / 9, i % 3, i * 10);
  const ScriptObject block = raster.CallObject("ToMemoryBlock");
  ASSERT_EQ(block.GetInteger("Size"), 18);
  for (std::int64_t i = 0; i < 18; ++i) EXPECT_EQ(block.Call("Byte", i).AsInteger(), i * 10);

  const ScriptObject copy = NewRaster(3, 2, 3);
  EXPECT_TRUE(copy.Call("FromMemoryBlock", block).AsBoolean());
  EXPECT_EQ(copy.Call("Component", std::int64_t{2}, std::int64_t{1}, std::int64_t{2}).AsInteger(), 170);

  EXPECT_FALSE(NewRaster(3, 3, 3).Call("FromMemoryBlock", block).AsBoolean()) << "a block of another size";
  EXPECT_FALSE(copy.Call("FromMemoryBlock", host::Value::Nil()).AsBoolean());
  EXPECT_EQ(NewObject("PixelRaster").CallObject("ToMemoryBlock").GetInteger("Size"), 0);
}

TEST_F(PixelRasterTest, FilesAreLoadedByConstructorMethodAndString) {
  const TemporaryFolder folder;
  const std::string jpeg = MakeJpeg({.width = 20, .height = 10});
  WriteFile(folder / "Bild ä.jpg", jpeg);
  const ScriptObject file = NewFolderItem(folder / "Bild ä.jpg");
  const ScriptObject byConstructor = NewObject("PixelRaster", {file});
  const ScriptObject byMethod = NewObject("PixelRaster"), byString = NewObject("PixelRaster");
  EXPECT_TRUE(byMethod.Call("Load", file).AsBoolean());
  EXPECT_TRUE(byString.Call("LoadFromString", Bytes(jpeg)).AsBoolean());
  for (const ScriptObject &raster : {byConstructor, byMethod, byString}) {
    EXPECT_EQ(raster.GetInteger("Width"), 20);
    EXPECT_EQ(raster.GetInteger("Height"), 10);
    EXPECT_EQ(raster.GetInteger("ChannelCount"), 3);
    EXPECT_EQ(raster.Get("ErrorMessage").Utf8(), "");
  }
}

TEST_F(PixelRasterTest, FilesThatCannotBeLoadedLeaveAMessage) {
  const TemporaryFolder folder;
  const ScriptObject raster = NewRaster(3, 3, 3);
  EXPECT_FALSE(raster.Call("Load", NewFolderItem(folder / "nowhere.png")).AsBoolean());
  EXPECT_THAT(raster.Get("ErrorMessage").Utf8(), HasSubstr("nowhere.png"));
  EXPECT_EQ(raster.GetInteger("Width"), 0);
  EXPECT_FALSE(raster.Call("Load", host::Value::Nil()).AsBoolean());
  EXPECT_THAT(raster.Get("ErrorMessage").Utf8(), HasSubstr("Nil"));
  EXPECT_FALSE(raster.Call("LoadFromString", "").AsBoolean());
  EXPECT_THAT(raster.Get("ErrorMessage").Utf8(), HasSubstr("empty"));
  EXPECT_FALSE(raster.Call("Load", NewFolderItem(folder.path())).AsBoolean()) << "a folder";
}

}  // namespace
}  // namespace quillbar::test
