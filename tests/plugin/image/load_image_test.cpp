// SPDX-License-Identifier: MIT
// `LoadImage`: rasters of every kind, read back from the saved file.
#include <gmock/gmock.h>
#include <hpdf.h>

#include <limits>
#include <random>
#include <utility>

#include "companion/pixel_raster/image_file.h"
#include "tests/plugin/image/image_driver.h"
#include "tests/plugin/image/raster_reference.h"
#include "tests/support/judges.h"
#include "tests/support/process.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/utf8_path.h"

namespace quillbar::test {
namespace {

using testing::IsEmpty;
using BytesOfRaster = std::vector<std::uint8_t>;

class LoadImageTest : public ImageTest {
 protected:
  /// Draws the image on a new page of 200 × 200 points and saves.
  static std::string SavedWith(const Document &document, const ScriptObject &image) {
    const ScriptObject page = document.AddPage();
    page.Set("Width", 200.0F);
    page.Set("Height", 200.0F);
    page.Call("DrawImage", image, 0.0F, 0.0F, 200.0F, 200.0F);
    return document.Saved();
  }
};

BytesOfRaster RandomBytes(std::size_t count, unsigned seed = 1) {
  std::mt19937 random(seed);
  BytesOfRaster bytes(count);
  for (auto &byte : bytes) byte = static_cast<std::uint8_t>(random());
  return bytes;
}

TEST_F(LoadImageTest, TwoChannelsOfEightBitsWithAlphaGiveAGreyImageAndAGreyMaskOfWidthBytesARow) {
  BytesOfRaster pixels = RandomBytes(2 * 7 * 5);
  const Document document = NewDocument();
  const auto record = TightRaster(7, 5, 2, true, 8, pixels.data());
  const ScriptObject image = document.CallObject("LoadImage", RasterOf(record));
  ASSERT_FALSE(image.IsNil());
  EXPECT_EQ(image.GetInteger("Width"), 7);
  EXPECT_EQ(image.GetInteger("Height"), 5);
  const PdfFile file(SavedWith(document, image));
  QPDFObjectHandle stream = ImageOf(file), mask = stream.getDict().getKey("/SMask");
  const Converted expected = ConvertByDefinition(record);
  EXPECT_EQ(stream.getDict().getKey("/ColorSpace").getName(), "/DeviceGray");
  EXPECT_EQ(StreamBytes(stream), Text(expected.image));
  EXPECT_EQ(StreamBytes(stream).size(), 7U * 5U);
  EXPECT_EQ(mask.getDict().getKey("/ColorSpace").getName(), "/DeviceGray");
  EXPECT_EQ(mask.getDict().getKey("/Type").getName(), "/XObject");
  EXPECT_EQ(mask.getDict().getKey("/Subtype").getName(), "/Image");
  EXPECT_EQ(StreamBytes(mask), Text(expected.mask));
  EXPECT_TRUE(JudgedFlawless(std::string_view(file.bytes())));
}

TEST_F(LoadImageTest, FourChannelsOfSixteenBitsGiveSixAndTwoBytesAPixelInStoredOrder) {
  BytesOfRaster pixels{0x12, 0x34, 0x56, 0x78, 0x9A, 0xBC, 0xDE, 0xF0};
  const Document document = NewDocument();
  const ScriptObject image = document.CallObject("LoadImage", RasterOf(TightRaster(1, 1, 4, true, 16, pixels.data())));
  const PdfFile file(SavedWith(document, image));
  QPDFObjectHandle stream = ImageOf(file);
  EXPECT_EQ(stream.getDict().getKey("/BitsPerComponent").getIntValue(), 16);
  EXPECT_EQ(StreamBytes(stream), "\x12\x34\x56\x78\x9A\xBC");
  EXPECT_EQ(StreamBytes(stream.getDict().getKey("/SMask")), "\xDE\xF0");
}

TEST_F(LoadImageTest, SoftMasksAndSixteenBitsRaiseTheVersionOfTheFile) {
  BytesOfRaster pixels = RandomBytes(64);
  for (const auto &[alpha, bits, version] : {std::tuple(false, 8, "1.3"), {true, 8, "1.4"}, {false, 16, "1.5"}}) {
    const Document document = NewDocument();
    const ScriptObject image = document.CallObject(
        "LoadImage", RasterOf(TightRaster(2, 2, 4, alpha, static_cast<std::uint8_t>(bits), pixels.data())));
    EXPECT_EQ(SavedWith(document, image).substr(5, 3), version);
  }
}

TEST_F(LoadImageTest, EveryRowOfTheTableAtBothDepths) {
  struct Row {
    std::int32_t channels, format;
    bool alpha;
    const char *colorSpace;
    bool writes;
  };
  std::vector<Row> rows;
  for (const std::int32_t channels : {1, 2, 3, 4, 5}) {
    for (const std::int32_t format : {0, 13, 14, 15, 16}) {
      for (const bool alpha : {false, true}) {
        const char *space = channels < 3 ? "/DeviceGray" : format == 13 ? "/DeviceCMYK" : "/DeviceRGB";
        rows.push_back({channels, format, alpha, space, !alpha || channels == 2 || channels == 4});
      }
    }
  }
  for (const Row &row : rows) {
    for (const int bits : {8, 16}) {
      SCOPED_TRACE(testing::Message() << row.channels << " channels, format " << row.format << ", alpha " << row.alpha
                                      << ", " << bits << " bits");
      const std::size_t step = static_cast<std::size_t>(6 * bits / 8);
      BytesOfRaster pixels = RandomBytes(step * 9 * 4);
      auto record = TightRaster(9, 4, row.channels, row.alpha, static_cast<std::uint8_t>(bits), pixels.data());
      record.format = row.format;
      record.pixelStep = static_cast<std::int32_t>(step);
      record.stride = static_cast<std::int32_t>(step * 9);
      record.alphaOffset = static_cast<std::uint8_t>(4 * bits / 8);
      const Document document = NewDocument();
      const ScriptObject image = document.CallObject("LoadImage", RasterOf(record));
      ASSERT_FALSE(image.IsNil());
      document.AddPage().Call("DrawImage", image, 0.0F, 0.0F, 9.0F, 4.0F);
      const PdfFile file(document.Saved());
      QPDFObjectHandle stream = ImageOf(file), mask = stream.getDict().getKey("/SMask");
      EXPECT_EQ(stream.getDict().getKey("/ColorSpace").getName(), row.colorSpace);
      EXPECT_EQ(stream.getDict().getKey("/Width").getIntValue(), 9);
      EXPECT_EQ(stream.getDict().getKey("/Height").getIntValue(), 4);
      EXPECT_EQ(stream.getDict().getKey("/BitsPerComponent").getIntValue(), bits);
      EXPECT_EQ(mask.isStream(), row.alpha);
      const Converted expected = row.writes ? ConvertByDefinition(record) : Converted{};
      EXPECT_EQ(StreamBytes(stream), Text(expected.image));
      if (row.alpha) {
        EXPECT_EQ(StreamBytes(mask), Text(expected.mask));
      }
      EXPECT_THAT(document.TakeFailures(), IsEmpty());
    }
  }
}

TEST_F(LoadImageTest, RandomSizesStridesStepsAndOffsets) {
  std::mt19937 random(42);
  for (int round = 0; round < 150; ++round) {
    SCOPED_TRACE(round);
    const RandomRaster raster(random);
    const Document document = round % 2 == 0 ? NewDocument() : NewCompressedDocument();
    const ScriptObject image = document.CallObject("LoadImage", RasterOf(raster.record));
    ASSERT_FALSE(image.IsNil());
    document.AddPage().Call("DrawImage", image, 0.0F, 0.0F, 9.0F, 4.0F);
    const PdfFile file(document.Saved());
    const Converted expected = ConvertByDefinition(raster.record);
    QPDFObjectHandle stream = ImageOf(file);
    ASSERT_EQ(StreamBytes(stream), Text(expected.image));
    if (raster.record.hasAlpha != 0) {
      ASSERT_EQ(StreamBytes(stream.getDict().getKey("/SMask")), Text(expected.mask));
    }
  }
}

TEST_F(LoadImageTest, OnlyTheImageIsCompressedAndOnlyWhenTheDocumentIs) {
  BytesOfRaster pixels = RandomBytes(4 * 10 * 10);
  for (const bool compressed : {false, true}) {
    const Document document = compressed ? NewCompressedDocument() : NewDocument();
    const ScriptObject image =
        document.CallObject("LoadImage", RasterOf(TightRaster(10, 10, 4, true, 8, pixels.data())));
    const PdfFile file(SavedWith(document, image));
    QPDFObjectHandle stream = ImageOf(file);
    EXPECT_EQ(stream.getDict().getKey("/Filter").unparse(), compressed ? "[ /FlateDecode ]" : "null");
    EXPECT_TRUE(stream.getDict().getKey("/SMask").getDict().getKey("/Filter").isNull());
    EXPECT_TRUE(JudgedFlawless(std::string_view(file.bytes())));
  }
}

/// The pictures that a program extracts from a file: with `arguments`, in order of their names.
std::vector<companion::RasterImage> Extracted(std::string_view pdf, Command command, std::string_view prefix) {
  const TemporaryFolder folder;
  WriteFile(folder / "file.pdf", pdf);
  for (ProcessArgument &argument : command) {
    if (argument.Text() == "FILE") argument = folder / "file.pdf";
  }
  const ProcessResult result = RunProcess(command, {.workingDirectory = folder.path()});
  EXPECT_EQ(result.exitStatus, 0) << result.errors;
  std::vector<std::string> names;
  for (const auto &entry : std::filesystem::directory_iterator(folder.path())) {
    if (Utf8(entry.path().filename()).starts_with(prefix)) names.push_back(Utf8(entry.path()));
  }
  std::ranges::sort(names);
  std::vector<companion::RasterImage> images;
  for (const std::string &name : names) {
    companion::DecodedImage decoded = companion::LoadImageFile(name.c_str());
    EXPECT_TRUE(decoded.ok()) << name << ": " << decoded.error;
    if (decoded.ok()) images.push_back(std::move(decoded.image));
  }
  return images;
}

TEST_F(LoadImageTest, PopplerExtractsThePixels) {
  struct Kind {
    std::int32_t channels, format;
    bool alpha;
    companion::ColorModel model;
  };
  using companion::ColorModel;
  for (const Kind &kind : {Kind{1, 0, false, ColorModel::kGrey}, Kind{2, 0, true, ColorModel::kGrey},
                           Kind{3, 0, false, ColorModel::kRgb}, Kind{4, 0, true, ColorModel::kRgb},
                           Kind{4, 14, true, ColorModel::kRgb}, Kind{4, kPixelFormatCmyk, false, ColorModel::kCmyk}}) {
    for (const int bits : {8, 16}) {
      SCOPED_TRACE(testing::Message() << kind.channels << " channels, format " << kind.format << ", " << bits);
      const int size = bits / 8;
      BytesOfRaster pixels = RandomBytes(static_cast<std::size_t>(23 * 11 * kind.channels * size));
      // pdfimages rounds the largest values of 16 bits up, and over.
      if (bits == 16) std::ranges::replace(pixels, std::uint8_t{0xFF}, std::uint8_t{0xFE});
      auto record = TightRaster(23, 11, kind.channels, kind.alpha, static_cast<std::uint8_t>(bits), pixels.data());
      record.format = kind.format;
      const Document document = NewDocument();
      const ScriptObject image = document.CallObject("LoadImage", RasterOf(record));
      const auto images =
          Extracted(SavedWith(document, image),
                    {"pdfimages", kind.model == ColorModel::kCmyk ? "-tiff" : "-png", "FILE", "picture"}, "picture");
      ASSERT_EQ(images.size(), kind.alpha ? 2U : 1U);
      ASSERT_EQ(images[0].width(), 23);
      ASSERT_EQ(images[0].height(), 11);
      EXPECT_EQ(images[0].format().model, kind.model);
      const Converted expected = ConvertByDefinition(record);
      const auto compare = [&](const companion::RasterImage &actual, const BytesOfRaster &samples, int components) {
        for (int y = 0; y < 11; ++y) {
          for (int x = 0; x < 23; ++x) {
            for (int component = 0; component < components; ++component) {
              const std::size_t index = static_cast<std::size_t>(((y * 23 + x) * components + component) * size);
              // poppler cuts 16 bits to 8.
              const unsigned value = actual.Component(x, y, component) >> (actual.format().bits - 8);
              ASSERT_EQ(value, samples[index]) << x << ", " << y << ", " << component;
            }
          }
        }
      };
      compare(images[0], expected.image, images[0].format().ColorCount());
      if (kind.alpha) compare(images[1], expected.mask, 1);
    }
  }
}

TEST_F(LoadImageTest, MuPdfExtractsThePixels) {
  BytesOfRaster pixels = RandomBytes(19 * 13 * 3);
  const auto record = TightRaster(19, 13, 3, false, 8, pixels.data());
  const Document document = NewCompressedDocument();
  const ScriptObject image = document.CallObject("LoadImage", RasterOf(record));
  const auto images = Extracted(SavedWith(document, image), {"mutool", "extract", "FILE"}, "image");
  ASSERT_EQ(images.size(), 1U);
  EXPECT_TRUE(std::ranges::equal(images[0].bytes(), pixels));
}

TEST_F(LoadImageTest, AlphaShowsThePageThrough) {
  // Two columns of red: opaque, and transparent to one half.
  BytesOfRaster pixels{255, 0, 0, 255, 255, 0, 0, 128};
  const Document document = NewDocument();
  const ScriptObject image = document.CallObject("LoadImage", RasterOf(TightRaster(2, 1, 4, true, 8, pixels.data())));
  const Rendering page(SavedWith(document, image));
  EXPECT_EQ(page.PixelAt(20, 100), 0xFF0000U);
  const unsigned mixed = page.PixelAt(180, 100);
  EXPECT_EQ(mixed >> 16, 0xFFU);
  EXPECT_NEAR(static_cast<int>(mixed & 0xFF), 127, 2);
}

TEST_F(LoadImageTest, FirstRowIsTheTopOne) {
  BytesOfRaster pixels{255, 0, 0, 0, 0, 255};
  const Document document = NewDocument();
  const ScriptObject image = document.CallObject("LoadImage", RasterOf(TightRaster(1, 2, 3, false, 8, pixels.data())));
  const Rendering page(SavedWith(document, image));
  EXPECT_EQ(page.PixelAt(100, 20), 0xFF0000U);
  EXPECT_EQ(page.PixelAt(100, 180), 0x0000FFU);
}

TEST_F(LoadImageTest, NilAndImpossibleRastersGiveNilInSilenceAndLeaveAGoodDocument) {
  BytesOfRaster pixels = RandomBytes(256);
  const Document document = NewDocument();
  EXPECT_TRUE(document.Call("LoadImage", host::Value::Nil()).IsNil());
  EXPECT_TRUE(document.Call("LoadImage", NewObject("PixelRaster")).IsNil()) << "a raster without pixels";
  constexpr std::int32_t kMin = std::numeric_limits<std::int32_t>::min();
  constexpr std::int32_t kMax = std::numeric_limits<std::int32_t>::max();
  const auto tryRaster = [&](auto change) {
    auto record = TightRaster(4, 4, 4, true, 8, pixels.data());
    change(record);
    return document.Call("LoadImage", RasterOf(record)).IsNil();
  };
  for (const std::int32_t value : {0, -1, kMin}) {
    EXPECT_TRUE(tryRaster([=](auto &record) { record.width = value; }));
    EXPECT_TRUE(tryRaster([=](auto &record) { record.height = value; }));
    EXPECT_TRUE(tryRaster([=](auto &record) { record.channelCount = value; }));
  }
  EXPECT_TRUE(tryRaster([](auto &record) { record.width = record.height = kMax; }));
  EXPECT_TRUE(tryRaster([](auto &record) { record.width = kMax; }));
  EXPECT_TRUE(tryRaster([](auto &record) { record.height = kMax; }));
  EXPECT_TRUE(tryRaster([](auto &record) { record.firstRow = nullptr; }));
  for (const int bits : {0, 1, 2, 4, 12, 32, 255}) {
    EXPECT_TRUE(tryRaster([=](auto &record) { record.bitsPerComponent = static_cast<std::uint8_t>(bits); }));
  }
  EXPECT_FALSE(tryRaster([](auto &) {}));
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
  document.AddPage();
  EXPECT_TRUE(JudgedFlawless(std::string_view(document.Saved())));
}

TEST_F(LoadImageTest, ObjectOfAnotherClassGivesNil) {
  const Document document = NewDocument();
  const ScriptObject block = NewObject("MemoryBlock", {std::int64_t{200}});
  const host::Host::Loan documentLoan(host(), document.handle()), blockLoan(host(), block.handle());
  for (const host::MethodInfo &method : host().Class("PDFDocument").methods) {
    if (method.name != "LoadImage") continue;
    // As a host calls it that does not check the classes of arguments.
    const auto loadImage = reinterpret_cast<Object (*)(Object, Object)>(method.function);
    EXPECT_EQ(loadImage(document.handle().Get(), block.handle().Get()), nullptr);
    EXPECT_EQ(loadImage(document.handle().Get(), document.handle().Get()), nullptr);
  }
}

// A photograph turned by 90° without copying a pixel: the view runs down the raster's columns.
TEST_F(LoadImageTest, ARasterMayBeATurnedView) {
  BytesOfRaster pixels = RandomBytes(3 * 5 * 4);
  auto record = TightRaster(4, 5, 3, false, 8, pixels.data() + 3 * 4 * 3);
  record.width = 4;
  record.height = 3;
  record.firstRow = pixels.data() + 3 * 3 * 4;
  record.pixelStep = -3 * 4;
  record.stride = 3;
  const Document document = NewDocument();
  const ScriptObject image = document.CallObject("LoadImage", RasterOf(record));
  ASSERT_FALSE(image.IsNil());
  const PdfFile file(SavedWith(document, image));
  EXPECT_EQ(StreamBytes(ImageOf(file)), Text(ConvertByDefinition(record).image));
  EXPECT_TRUE(JudgedFlawless(std::string_view(file.bytes())));
}

/// The library's allocator, one of whose calls fails.
HPDF_Alloc_Func realAllocate = nullptr;
int callsUntilFailure = 0;

void *HPDF_STDCALL FailOnce(HPDF_UINT size) { return callsUntilFailure-- == 0 ? nullptr : realAllocate(size); }

// Takes up to `most` of the smallest blocks from what the document has, and says how many. They go with the document.
std::size_t TakeSmallBlocks(HPDF_MMgr memory, std::size_t most = std::numeric_limits<std::size_t>::max()) {
  const HPDF_Alloc_Func allocate = std::exchange(memory->alloc_fn, [](HPDF_UINT) -> void * { return nullptr; });
  std::size_t count = 0;
  while (count != most && HPDF_GetMem(memory, 1) != nullptr) ++count;
  HPDF_Error_Reset(memory->error);
  memory->alloc_fn = allocate;
  return count;
}

TEST_F(LoadImageTest, AMaskThatMemoryIsTooShortForLeavesTheColours) {
  BytesOfRaster pixels = RandomBytes(2 * 2 * 4);
  const auto memoryOf = [this](const Document &document) {
    void *const *block = static_cast<void **>(host().ClassData(document.handle(), host().Class("PDFDocument")));
    return static_cast<HPDF_Doc>(block[1])->mmgr;
  };
  // Small blocks are cut from larger ones: allocating fails before one of them only where those have no room left. An
  // image takes less than 200 of the smallest.
  const std::size_t roomOfNewDocument = TakeSmallBlocks(memoryOf(NewDocument()));
  const std::size_t mostRoom = std::min<std::size_t>(roomOfNewDocument, 200);
  for (const std::int32_t channels : {3, 4}) {
    const auto record = TightRaster(2, 2, channels, true, 8, pixels.data());
    auto opaque = record;
    opaque.hasAlpha = 0;
    int withoutMask = 0;
    for (std::size_t room = 0; room <= mostRoom; ++room) {
      bool failed = true;
      for (int call = 0; failed; ++call) {
        SCOPED_TRACE(testing::Message() << channels << " channels, room " << room << ", allocation " << call);
        const Document document = NewDocument();
        const HPDF_MMgr memory = memoryOf(document);
        TakeSmallBlocks(memory, roomOfNewDocument - room);
        realAllocate = memory->alloc_fn;
        callsUntilFailure = call;
        memory->alloc_fn = &FailOnce;
        const ScriptObject image = document.CallObject("LoadImage", RasterOf(record));
        memory->alloc_fn = realAllocate;
        failed = callsUntilFailure < 0;
        document.TakeFailures();
        if (image.IsNil()) continue;
        const PdfFile file(SavedWith(document, image));
        QPDFObjectHandle stream = ImageOf(file);
        if (stream.getDict().hasKey("/SMask")) continue;
        ++withoutMask;
        EXPECT_EQ(StreamBytes(stream), Text(ConvertByDefinition(opaque).image));
      }
    }
    EXPECT_GE(withoutMask, 1);
  }
}

TEST_F(LoadImageTest, RasterMayGoAtOnce) {
  const Document document = NewDocument();
  ScriptObject image;
  {
    const ScriptObject raster = NewObject("PixelRaster", {std::int64_t{30}, std::int64_t{20}, std::int64_t{3}});
    raster.Call("Fill", Color{0x00336699});
    image = document.CallObject("LoadImage", raster);
  }
  const Rendering page(SavedWith(document, image));
  EXPECT_EQ(page.PixelAt(100, 100), 0x336699U);
}

TEST_F(LoadImageTest, ImageKeepsItsDocument) {
  BytesOfRaster pixels = RandomBytes(12);
  ScriptObject image;
  {
    const Document document = NewDocument();
    image = document.CallObject("LoadImage", RasterOf(TightRaster(2, 2, 3, false, 8, pixels.data())));
  }
  EXPECT_EQ(image.GetInteger("Width"), 2);
  EXPECT_EQ(image.GetInteger("Height"), 2);
}

}  // namespace
}  // namespace quillbar::test
