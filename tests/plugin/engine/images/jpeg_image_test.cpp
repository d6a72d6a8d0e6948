// SPDX-License-Identifier: MIT
// JPEG files in the library: what is refused leaves nothing behind, what is taken is described as it is.
#include <gmock/gmock.h>

#include <hpdf_utils.h>

#include <algorithm>
#include <random>

#include "plugin/engine/images/image.h"
#include "plugin/engine/images/jpeg_frame.h"
#include "plugin/engine/images/jpeg_image.h"
#include "tests/plugin/engine/driver/library_document.h"
#include "tests/support/jpeg_maker.h"

namespace quillbar {
namespace {

using engine::JpegFrame;
using engine::JpegVerdict;
using testing::ElementsAre;
using testing::IsEmpty;

HPDF_Image Load(LibraryDocument &document, const std::string &file) {
  return Call<engine::LoadJpegImage>(document.document,
                                     std::span(reinterpret_cast<const std::uint8_t *>(file.data()), file.size()));
}

JpegFrame Read(std::string_view file) {
  return engine::ReadJpegFrame({reinterpret_cast<const std::uint8_t *>(file.data()), file.size()});
}

std::size_t FindMarker(const std::string &file, char marker) { return file.find(std::string("\xFF") + marker); }

constexpr char kBaselineFrame = '\xC0';
constexpr char kScan = '\xDA';

unsigned ObjectCount(const LibraryDocument &document) { return document.document->xref->entries->count; }

TEST(JpegImage, BaselineAndProgressiveFilesOfEveryColorCountAreTaken) {
  for (const int components : {1, 3, 4}) {
    for (const bool progressive : {false, true}) {
      LibraryDocument document;
      HPDF_Image image =
          Load(document, MakeJpeg({.width = 37, .height = 23, .components = components, .progressive = progressive}));
      ASSERT_NE(image, nullptr);
      EXPECT_EQ(Call<engine::ImageWidth>(image), 37U);
      EXPECT_EQ(Call<engine::ImageHeight>(image), 23U);
      const auto *bits = static_cast<HPDF_Number>(HPDF_Dict_GetItem(image, "BitsPerComponent", HPDF_OCLASS_NUMBER));
      ASSERT_NE(bits, nullptr);
      EXPECT_EQ(bits->value, 8);
      const auto *space = static_cast<HPDF_Name>(HPDF_Dict_GetItem(image, "ColorSpace", HPDF_OCLASS_NAME));
      ASSERT_NE(space, nullptr);
      EXPECT_STREQ(space->value, components == 1 ? "DeviceGray" : components == 3 ? "DeviceRGB" : "DeviceCMYK");
      EXPECT_THAT(document.TakeCodes(), IsEmpty());
    }
  }
}

TEST(JpegImage, FourColorsAreInvertedOnlyWithAnAdobeSegment) {
  for (const bool adobe : {true, false}) {
    LibraryDocument document;
    HPDF_Image image = Load(document, MakeJpeg({.components = 4, .adobeSegment = adobe}));
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(Call<HPDF_Dict_GetItem>(image, "Decode", HPDF_UINT16{HPDF_OCLASS_ARRAY}) != nullptr, adobe);
  }
}

TEST(JpegImage, FileIsStoredByteForByte) {
  const std::string file = MakeJpeg({.width = 200, .height = 150});
  LibraryDocument document;
  HPDF_Image image = Load(document, file);
  ASSERT_NE(image, nullptr);
  EXPECT_EQ(ContentOf(image->stream), file);
}

TEST(JpegImage, DataCutAnywhereBeforeItsScanIsRefusedAndLeavesNoObject) {
  for (const bool progressive : {false, true}) {
    const std::string file = MakeJpeg({.progressive = progressive});
    const std::size_t scan = FindMarker(file, kScan);
    ASSERT_NE(scan, std::string::npos);
    LibraryDocument document;
    const unsigned objects = ObjectCount(document);
    for (std::size_t size = 1; size < scan + 2; ++size) {
      EXPECT_EQ(Load(document, file.substr(0, size)), nullptr) << size << " bytes";
      EXPECT_THAT(document.TakeCodes(), ElementsAre(HPDF_INVALID_JPEG_DATA));
    }
    EXPECT_EQ(ObjectCount(document), objects);
    EXPECT_NE(Load(document, file), nullptr);
    EXPECT_THAT(document.TakeCodes(), IsEmpty());
  }
}

TEST(JpegImage, TwelveBitsAreRefused) {
  std::string file = MakeJpeg({});
  file[FindMarker(file, kBaselineFrame) + 4] = 12;
  LibraryDocument document;
  const unsigned objects = ObjectCount(document);
  EXPECT_EQ(Load(document, file), nullptr);
  EXPECT_THAT(document.TakeCodes(), ElementsAre(HPDF_UNSUPPORTED_JPEG_FORMAT));
  EXPECT_EQ(ObjectCount(document), objects);
}

TEST(JpegImage, FramesWithoutWidthOrHeightAreRefused) {
  for (const std::size_t field : {5, 7}) {
    std::string file = MakeJpeg({});
    const std::size_t frame = FindMarker(file, kBaselineFrame);
    file[frame + field] = file[frame + field + 1] = 0;
    LibraryDocument document;
    EXPECT_EQ(Load(document, file), nullptr);
    EXPECT_THAT(document.TakeCodes(), ElementsAre(HPDF_INVALID_JPEG_DATA));
  }
}

TEST(JpegImage, CodingThatPdfDoesNotKnowIsRefused) {
  for (int marker = 0xC3; marker <= 0xCF; ++marker) {
    if (marker == 0xC4 || marker == 0xC8 || marker == 0xCC) continue;
    std::string file = MakeJpeg({});
    file[FindMarker(file, kBaselineFrame) + 1] = static_cast<char>(marker);
    LibraryDocument document;
    EXPECT_EQ(Load(document, file), nullptr);
    EXPECT_THAT(document.TakeCodes(), ElementsAre(HPDF_UNSUPPORTED_JPEG_FORMAT)) << marker;
  }
}

TEST(JpegImage, NumbersOfComponentsOtherThanOneThreeAndFourAreRefused) {
  for (const int components : {0, 2, 5, 127}) {
    std::string file = MakeJpeg({});
    file[FindMarker(file, kBaselineFrame) + 9] = static_cast<char>(components);
    EXPECT_NE(Read(file).verdict, JpegVerdict::kGood) << components;
  }
}

TEST(JpegImage, HostileSegmentsAreRefused) {
  const std::string good = MakeJpeg({});
  const std::string rest = good.substr(2);
  const std::string start("\xFF\xD8", 2);
  const std::string hostile[] = {
      "",
      std::string("\xFF", 1),
      start,
      std::string("\xFF\xD8\xFF\xD9", 4),
      start + start + rest,                               // two starts
      start + std::string("\xFF\xE0\x00\x00", 4) + rest,  // a length less than its own two bytes
      start + std::string("\xFF\xE0\x00\x01", 4) + rest,
      start + std::string("\xFF\xE0\xFF\xFF", 4),  // a length beyond the end
      start + "no marker" + rest,
      start + std::string("\xFF\x00", 2) + rest,
      start + rest.substr(rest.find("\xFF\xDA")),  // a scan before any frame
      std::string(4096, '\xFF'),
      std::string(4096, '\0'),
      std::string("\x89PNG\r\n\x1A\n", 8),
  };
  for (const std::string &file : hostile) {
    EXPECT_EQ(Read(file).verdict, JpegVerdict::kInvalid) << testing::PrintToString(file.substr(0, 16));
  }
  const std::size_t frame = FindMarker(good, kBaselineFrame);
  const std::string frameSegment = good.substr(frame, 2 + 17);
  EXPECT_EQ(Read(good.substr(0, frame) + frameSegment + good.substr(frame)).verdict, JpegVerdict::kInvalid)
      << "two frames";
}

TEST(JpegImage, RandomDamageIsReadWithoutHarm) {
  std::mt19937 random(11);
  for (const bool progressive : {false, true}) {
    const std::string good = MakeJpeg({.progressive = progressive});
    const std::size_t header = FindMarker(good, kScan);
    for (int round = 0; round < 5000; ++round) {
      std::string damaged = good.substr(0, random() % good.size() + 1);
      for (int change = 0; change < 4; ++change) {
        damaged[random() % std::min(damaged.size(), header)] = static_cast<char>(random());
      }
      const JpegFrame frame = Read(damaged);
      if (frame.verdict == JpegVerdict::kGood) {
        EXPECT_GT(frame.width, 0);
        EXPECT_GT(frame.height, 0);
        EXPECT_THAT(frame.componentCount, testing::AnyOf(1, 3, 4));
      }
    }
  }
}

TEST(JpegImage, FillBytesAndOtherSegmentsAreSteppedOver) {
  const std::string good = MakeJpeg({});
  const std::string file = good.substr(0, 2) + std::string("\xFF\xFF\xFF\xFE\x00\x07hello", 11) +
                           std::string("\xFF\x01", 2) + good.substr(2);
  EXPECT_EQ(Read(file).verdict, JpegVerdict::kGood);
}

TEST(JpegImage, ExifOrientationLeavesTheSizeOfTheFrame) {
  const JpegFrame frame = Read(WithExifOrientation(MakeJpeg({.width = 40, .height = 20}), 6));
  EXPECT_EQ(frame.verdict, JpegVerdict::kGood);
  EXPECT_EQ(frame.width, 40);
  EXPECT_EQ(frame.height, 20);
}

TEST(JpegFrame, SegmentThatIsTooShortForAdobesIsAnotherPrograms) {
  const std::string file = MakeJpeg({.components = 3});
  ASSERT_FALSE(Read(file).hasAdobeSegment);
  std::string own = file;
  own.insert(2, std::string("\xFF\xEE\x00\x07"
                            "Adobe",
                            9));
  EXPECT_EQ(Read(own).verdict, JpegVerdict::kGood);
  EXPECT_FALSE(Read(own).hasAdobeSegment);
  std::string adobes = file;
  adobes.insert(2, std::string("\xFF\xEE\x00\x0E"
                               "Adobe"
                               "\x00\x64\x00\x00\x00\x00\x01",
                               16));
  EXPECT_TRUE(Read(adobes).hasAdobeSegment);
}

}  // namespace
}  // namespace quillbar
