// SPDX-License-Identifier: MIT
#include "companion/pixel_raster_class.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <new>
#include <utility>

#include "binding/class_data.h"
#include "binding/host_strings.h"
#include "binding/members.h"
#include "binding/memory_block.h"
#include "binding/owned.h"
#include "companion/pixel_raster/image_file.h"

namespace quillbar {

/// `PixelRaster.ColorModelEnum`, with the values of `companion::ColorModel`.
enum class ScriptColorModel : Integer { GREY = 0, RGB = 1, CMYK = 2 };
template <>
inline constexpr FixedString kEnumerationName<ScriptColorModel>{"PixelRaster.ColorModelEnum"};

namespace companion {

namespace {

PixelRasterData &DataOf(PixelRaster *raster) { return *ClassData<PixelRasterData>(raster); }

std::int32_t ChannelCount(const PixelFormat &format) {
  // Four colours with alpha count as four channels, like those without: readers tell them apart by the flag.
  return format.model == ColorModel::kCmyk ? 4 : format.ComponentCount();
}

/// Describes the pixels to other plugins.
void Describe(PixelRasterData &data) {
  data.record = {};
  if (data.image == nullptr) return;
  const RasterImage &image = *data.image;
  const PixelFormat &format = image.format();
  const std::size_t size = format.ComponentSize();
  data.record.width = image.width();
  data.record.height = image.height();
  data.record.firstRow = data.image->bytes().data();
  data.record.stride = static_cast<std::int32_t>(image.RowSize());
  data.record.channelCount = ChannelCount(format);
  data.record.pixelStep = static_cast<std::int32_t>(format.PixelSize());
  for (std::size_t color = 0; color < 3; ++color) {
    data.record.colorOffset[color] = static_cast<std::uint8_t>(color * size);
  }
  data.record.alphaOffset = static_cast<std::uint8_t>(static_cast<std::size_t>(format.ColorCount()) * size);
  data.record.fourthColorOffset = static_cast<std::uint8_t>(3 * size);
  data.record.format = format.model == ColorModel::kCmyk ? kPixelFormatCmyk : 0;
  data.record.hasAlpha = format.hasAlpha;
  data.record.bitsPerComponent = static_cast<std::uint8_t>(format.bits);
}

void Take(PixelRasterData &data, RasterImage image) {
  delete std::exchange(data.image, new (std::nothrow) RasterImage(std::move(image)));
  delete std::exchange(data.error, nullptr);
  Describe(data);
}

void Fail(PixelRasterData &data, std::string error) {
  delete std::exchange(data.image, nullptr);
  delete std::exchange(data.error, new (std::nothrow) std::string(std::move(error)));
  Describe(data);
}

void Create(PixelRaster *raster, Integer width, Integer height, PixelFormat format) {
  if (auto image = RasterImage::Create(width, height, format)) {
    Take(DataOf(raster), std::move(*image));
  } else {
    Fail(DataOf(raster), "a raster has sides of at least 1 pixel, 1 to 4 channels of 8 or 16 bits and less than 2 GiB");
  }
}

void Finalize(Object object) {
  PixelRasterData &data = DataOf(static_cast<PixelRaster *>(object));
  delete data.image;
  delete data.error;
}

// -- Making ---------------------------------------------------------------------------------------

void Constructor(PixelRaster *) {}

int Bits(Integer bits) { return bits == 8 || bits == 16 ? static_cast<int>(bits) : 0; }

void ConstructorWithChannelsAndBits(PixelRaster *raster, Integer width, Integer height, Integer channels,
                                    Integer bits) {
  const bool known = channels >= 1 && channels <= 4;
  const PixelFormat format{channels <= 2 ? ColorModel::kGrey : ColorModel::kRgb, channels % 2 == 0,
                           known ? Bits(bits) : 0};
  Create(raster, width, height, format);
}

void ConstructorWithChannels(PixelRaster *raster, Integer width, Integer height, Integer channels) {
  ConstructorWithChannelsAndBits(raster, width, height, channels, 8);
}

void ConstructorWithModel(PixelRaster *raster, Integer width, Integer height, ScriptColorModel model, Boolean alpha,
                          Integer bits) {
  const bool known = model >= ScriptColorModel::GREY && model <= ScriptColorModel::CMYK;
  Create(raster, width, height, {static_cast<ColorModel>(model), alpha != 0, known ? Bits(bits) : 0});
}

// -- Loading --------------------------------------------------------------------------------------

Boolean StoreDecoded(PixelRaster *raster, DecodedImage decoded) {
  if (decoded.ok()) {
    Take(DataOf(raster), std::move(decoded.image));
    return 1;
  }
  Fail(DataOf(raster), std::move(decoded.error));
  return 0;
}

Boolean Load(PixelRaster *raster, FolderItem *file) {
  if (file == nullptr) return StoreDecoded(raster, DecodedImage::Failure("there is no file: the FolderItem is Nil"));
  const OwnedString path = GetNativePath(file);
  const StringData utf8(path.get(), TextEncoding::kUtf8);
  if (!utf8) return StoreDecoded(raster, DecodedImage::Failure("the file has no path"));
  return StoreDecoded(raster, LoadImageFile(utf8.bytes()));
}

void ConstructorWithFile(PixelRaster *raster, FolderItem *file) { Load(raster, file); }

Boolean LoadFromString(PixelRaster *raster, String data) {
  Integer length = 0;
  const char *bytes = GetCString(data, &length);
  const std::size_t size = bytes != nullptr && length > 0 ? static_cast<std::size_t>(length) : 0;
  return StoreDecoded(raster, DecodeImageFile({reinterpret_cast<const std::uint8_t *>(bytes), size}));
}

String GetErrorMessage(PixelRaster *raster) {
  const std::string *error = DataOf(raster).error;
  return BuildText(error != nullptr ? error->c_str() : nullptr);
}

// -- Reading and writing pixels -------------------------------------------------------------------

Integer GetWidth(PixelRaster *raster) { return DataOf(raster).record.width; }
Integer GetHeight(PixelRaster *raster) { return DataOf(raster).record.height; }
Integer GetChannelCount(PixelRaster *raster) { return DataOf(raster).record.channelCount; }
Integer GetBitsPerComponent(PixelRaster *raster) { return DataOf(raster).record.bitsPerComponent; }
Boolean GetHasAlpha(PixelRaster *raster) { return DataOf(raster).record.hasAlpha != 0 ? 1 : 0; }

ScriptColorModel GetColorModel(PixelRaster *raster) {
  const RasterImage *image = DataOf(raster).image;
  return image != nullptr ? static_cast<ScriptColorModel>(image->format().model) : ScriptColorModel::RGB;
}

unsigned FullComponent(const RasterImage &image) { return image.format().bits == 8 ? 0xFF : 0xFFFF; }

Integer Component(PixelRaster *raster, Integer x, Integer y, Integer channel) {
  const RasterImage *image = DataOf(raster).image;
  if (image == nullptr || !image->Has(x, y, channel)) return 0;
  return static_cast<Integer>(image->Component(static_cast<int>(x), static_cast<int>(y), static_cast<int>(channel)));
}

void SetComponent(PixelRaster *raster, Integer x, Integer y, Integer channel, Integer value) {
  RasterImage *image = DataOf(raster).image;
  if (image == nullptr || !image->Has(x, y, channel)) return;
  const Integer limited = std::clamp<Integer>(value, 0, static_cast<Integer>(FullComponent(*image)));
  image->SetComponent(static_cast<int>(x), static_cast<int>(y), static_cast<int>(channel),
                      static_cast<unsigned>(limited));
}

/// A script's colour as components from 0 to 1, in the raster's model, followed by alpha. The top byte of a colour
/// says how transparent it is.
struct PixelColor {
  double component[5] = {};
};

PixelColor ToPixel(Color color, const PixelFormat &format) {
  const auto bits = static_cast<std::uint32_t>(color);
  const auto share = [bits](int shift) { return (bits >> shift & 0xFF) / 255.0; };
  const double red = share(16), green = share(8), blue = share(0), alpha = 1 - share(24);
  switch (format.model) {
    case ColorModel::kGrey:
      return {{0.299 * red + 0.587 * green + 0.114 * blue, alpha}};
    case ColorModel::kRgb:
      return {{red, green, blue, alpha}};
    default: {
      const double light = std::max({red, green, blue});
      const auto ink = [light](double share1) { return light > 0 ? 1 - share1 / light : 0; };
      return {{ink(red), ink(green), ink(blue), 1 - light, alpha}};
    }
  }
}

void StorePixel(RasterImage &image, int x, int y, const PixelColor &pixel) {
  const double full = FullComponent(image);
  for (int component = 0; component < image.format().ComponentCount(); ++component) {
    image.SetComponent(x, y, component, static_cast<unsigned>(std::lround(pixel.component[component] * full)));
  }
}

Color ColorAt(PixelRaster *raster, Integer x, Integer y) {
  const RasterImage *image = DataOf(raster).image;
  if (image == nullptr || !image->Has(x, y, 0)) return Color{};
  const PixelFormat &format = image->format();
  const auto share = [&](int component) {
    return image->Component(static_cast<int>(x), static_cast<int>(y), component) /
           static_cast<double>(FullComponent(*image));
  };
  double rgb[3];
  for (int color = 0; color < 3; ++color) {
    rgb[color] = format.model == ColorModel::kGrey  ? share(0)
                 : format.model == ColorModel::kRgb ? share(color)
                                                    : (1 - share(color)) * (1 - share(3));
  }
  const double transparency = format.hasAlpha ? 1 - share(format.ColorCount()) : 0;
  const auto byte = [](double value) { return static_cast<std::uint32_t>(std::lround(value * 255)); };
  return static_cast<Color>(byte(transparency) << 24 | byte(rgb[0]) << 16 | byte(rgb[1]) << 8 | byte(rgb[2]));
}

void SetColorAt(PixelRaster *raster, Integer x, Integer y, Color value) {
  RasterImage *image = DataOf(raster).image;
  if (image == nullptr || !image->Has(x, y, 0)) return;
  StorePixel(*image, static_cast<int>(x), static_cast<int>(y), ToPixel(value, image->format()));
}

void Fill(PixelRaster *raster, Color value) {
  RasterImage *image = DataOf(raster).image;
  if (image == nullptr) return;
  StorePixel(*image, 0, 0, ToPixel(value, image->format()));
  const std::size_t pixelSize = image->format().PixelSize();
  const auto bytes = image->bytes();
  for (std::size_t done = pixelSize; done < bytes.size(); done *= 2) {
    std::memcpy(bytes.data() + done, bytes.data(), std::min(done, bytes.size() - done));
  }
}

// -- Exchange -------------------------------------------------------------------------------------

MemoryBlock *ToMemoryBlock(PixelRaster *raster) {
  const RasterImage *image = DataOf(raster).image;
  const std::size_t size = image != nullptr ? image->bytes().size() : 0;
  MemoryBlock *block = NewMemoryBlock(static_cast<Integer>(size));
  void *bytes = block != nullptr ? quillbar::BytesOf(block) : nullptr;
  if (bytes != nullptr && size > 0) std::memcpy(bytes, image->bytes().data(), size);
  return block;
}

/// The block's bytes as a string: only a string says how many there are.
OwnedString StringOf(MemoryBlock *block) {
  using ToString = String (*)(Object);
  auto *toString =
      reinterpret_cast<ToString>(CallHost<service::LoadObjectMethod>(block, "Operator_Convert() As String"));
  return OwnedString(toString != nullptr ? toString(block) : nullptr);
}

Boolean FromMemoryBlock(PixelRaster *raster, MemoryBlock *block) {
  RasterImage *image = DataOf(raster).image;
  if (image == nullptr || block == nullptr) return 0;
  const OwnedString bytes = StringOf(block);
  Integer length = 0;
  const char *from = GetCString(bytes.get(), &length);
  if (from == nullptr || length < 0 || static_cast<std::size_t>(length) != image->bytes().size()) return 0;
  std::memcpy(image->bytes().data(), from, image->bytes().size());
  return 1;
}

// -- Registration ---------------------------------------------------------------------------------

// clang-format off
using PixelRasterMethods = Methods<
    Method<"Constructor()", Constructor>,
    Method<"Constructor(width as Integer, height as Integer, channels as Integer)", ConstructorWithChannels>,
    Method<"Constructor(width as Integer, height as Integer, channels as Integer, bits as Integer)", ConstructorWithChannelsAndBits>,
    Method<"Constructor(width as Integer, height as Integer, model as PixelRaster.ColorModelEnum, alpha as Boolean, bits as Integer)", ConstructorWithModel>,
    Method<"Constructor(file as FolderItem)", ConstructorWithFile>,
    Method<"Load(file as FolderItem) as Boolean", Load>,
    Method<"LoadFromString(data as String) as Boolean", LoadFromString>,
    Method<"Component(x as Integer, y as Integer, channel as Integer) as Integer", Component>,
    Method<"SetComponent(x as Integer, y as Integer, channel as Integer, value as Integer)", SetComponent>,
    Method<"ColorAt(x as Integer, y as Integer) as Color", ColorAt>,
    Method<"SetColorAt(x as Integer, y as Integer, value as Color)", SetColorAt>,
    Method<"Fill(value as Color)", Fill>,
    Method<"ToMemoryBlock() as MemoryBlock", ToMemoryBlock>,
    Method<"FromMemoryBlock(block as MemoryBlock) as Boolean", FromMemoryBlock>>;

using PixelRasterProperties = Properties<
    ReadOnlyProperty<"Width", "Integer", GetWidth>,
    ReadOnlyProperty<"Height", "Integer", GetHeight>,
    ReadOnlyProperty<"ChannelCount", "Integer", GetChannelCount>,
    ReadOnlyProperty<"BitsPerComponent", "Integer", GetBitsPerComponent>,
    ReadOnlyProperty<"HasAlpha", "Boolean", GetHasAlpha>,
    ReadOnlyProperty<"ColorModel", "PixelRaster.ColorModelEnum", GetColorModel>,
    ReadOnlyProperty<"ErrorMessage", "String", GetErrorMessage>>;

using PixelRasterEnumerations = Enumerations<
    Enumeration<ScriptColorModel, "ColorModelEnum", "Integer", "GREY = 0", "RGB = 1", "CMYK = 2">>;
// clang-format on

}  // namespace

constinit ClassRecord PixelRasterData::definition =
    DescribeClass<Members<PixelRasterMethods, PixelRasterProperties, Events<>, PixelRasterEnumerations>, nullptr,
                  Finalize>("PixelRaster", nullptr, sizeof(PixelRasterData));

}  // namespace companion
}  // namespace quillbar
