// SPDX-License-Identifier: MIT
// `LoadJPEGImage` and `DrawImage` through the real host.
#include <gmock/gmock.h>

#include <limits>

#include "tests/plugin/image/image_driver.h"
#include "tests/support/jpeg_maker.h"
#include "tests/support/judges.h"
#include "tests/support/process.h"
#include "tests/support/temporary_folder.h"

namespace quillbar::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::uint32_t kInvalidJpegData = 0x1031;
constexpr std::uint32_t kUnsupportedJpegFormat = 0x1063;
constexpr std::uint32_t kExceedGStateLimit = 0x1014;

class JpegTest : public ImageTest {
 protected:
  ScriptObject Load(const Document &document, const std::string &file) {
    return document.CallObject("LoadJPEGImage", Bytes(file));
  }
};

TEST_F(JpegTest, EmptyStringGivesNilWithoutCallingTheLibrary) {
  const Document document = NewDocument();
  EXPECT_TRUE(document.Call("LoadJPEGImage", "").IsNil());
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
}

TEST_F(JpegTest, EveryKindOfFileIsStoredAsItIsAndShown) {
  const Document document = NewCompressedDocument();
  const ScriptObject page = document.AddPage();
  std::vector<std::pair<JpegOptions, std::string>> drawn;
  for (const int components : {1, 3, 4}) {
    for (const bool progressive : {false, true}) {
      for (const bool adobe : {true, false}) {
        SCOPED_TRACE(testing::Message() << components << " components, progressive " << progressive);
        const JpegOptions options{
            .width = 48, .height = 32, .components = components, .progressive = progressive, .adobeSegment = adobe};
        const std::string jpeg = MakeJpeg(options);
        const ScriptObject image = Load(document, jpeg);
        ASSERT_FALSE(image.IsNil());
        EXPECT_EQ(image.GetInteger("Width"), 48);
        EXPECT_EQ(image.GetInteger("Height"), 32);
        page.Call("DrawImage", image, 10.0F, 10.0F + 60.0F * static_cast<float>(drawn.size()), 90.0F, 60.0F);
        drawn.emplace_back(options, jpeg);
      }
    }
  }
  const PdfFile file(document.Saved());
  for (std::size_t number = 0; number < drawn.size(); ++number) {
    const auto &[options, jpeg] = drawn[number];
    SCOPED_TRACE(testing::Message() << options.components << " components, progressive " << options.progressive);
    QPDFObjectHandle image = ImageOf(file, "/X" + std::to_string(number + 1));
    EXPECT_EQ(StreamBytes(image), jpeg);
    EXPECT_EQ(image.getDict().getKey("/Decode").isArray(), options.components == 4 && options.adobeSegment);
  }
  EXPECT_TRUE(JudgedFlawless(std::string_view(file.bytes())));
}

TEST_F(JpegTest, PopplerExtractsTheSameFile) {
  const std::string jpeg = MakeJpeg({.width = 64, .height = 48});
  const Document document = NewDocument();
  document.AddPage().Call("DrawImage", Load(document, jpeg), 0.0F, 0.0F, 64.0F, 48.0F);
  const TemporaryFolder folder;
  WriteFile(folder / "file.pdf", document.Saved());
  const ProcessResult result = RunProcess({"pdfimages", "-j", folder / "file.pdf", folder / "picture"});
  ASSERT_EQ(result.exitStatus, 0) << result.errors;
  EXPECT_EQ(ReadFile(folder / "picture-000.jpg"), jpeg);
}

TEST_F(JpegTest, ColorsAreThoseOfTheDecodedPixels) {
  // On the left the file itself, on the right its pixels as libjpeg decodes them for a raster.
  for (const int components : {1, 3, 4}) {
    for (const bool adobe : {true, false}) {
      SCOPED_TRACE(testing::Message() << components << " components, Adobe segment " << adobe);
      const std::string jpeg =
          MakeJpeg({.width = 16, .height = 16, .components = components, .adobeSegment = adobe, .quality = 100});
      const ScriptObject raster = NewObject("PixelRaster");
      ASSERT_TRUE(raster.Call("LoadFromString", Bytes(jpeg)).AsBoolean());
      const Document document = NewDocument();
      const ScriptObject page = document.AddPage();
      page.Call("DrawImage", Load(document, jpeg), 0.0F, 0.0F, 160.0F, 160.0F);
      page.Call("DrawImage", document.CallObject("LoadImage", raster), 200.0F, 0.0F, 160.0F, 160.0F);
      const Rendering rendered(document.Saved());
      for (int y = 5; y < 160; y += 10) {
        for (int x = 5; x < 160; x += 10) {
          const unsigned left = rendered.PixelAt(x, rendered.height() - 1 - y);
          const unsigned right = rendered.PixelAt(200 + x, rendered.height() - 1 - y);
          for (const int shift : {0, 8, 16}) {
            ASSERT_NEAR(static_cast<int>(left >> shift & 0xFF), static_cast<int>(right >> shift & 0xFF), 4)
                << x << ", " << y;
          }
        }
      }
    }
  }
}

TEST_F(JpegTest, ExifOrientationIsLeftToTheScript) {
  const std::string jpeg = WithExifOrientation(MakeJpeg({.width = 40, .height = 20}), 6);
  const Document document = NewDocument();
  const ScriptObject image = Load(document, jpeg);
  EXPECT_EQ(image.GetInteger("Width"), 40);
  EXPECT_EQ(image.GetInteger("Height"), 20);
  document.AddPage().Call("DrawImage", image, 0.0F, 0.0F, 40.0F, 20.0F);
  EXPECT_TRUE(JudgedFlawless(std::string_view(document.Saved())));
}

TEST_F(JpegTest, DataThatIsNoJpegGivesNilAndOneErrorAndLeavesNothingInTheFile) {
  const std::string good = MakeJpeg({});
  const Document document = NewDocument();
  document.AddPage();
  const std::size_t objects = PdfFile(document.Saved()).qpdf().getAllObjects().size();
  for (const std::string &file : {std::string("x"), std::string("no picture at all"), std::string(1000, '\0'),
                                  std::string("\x89PNG\r\n\x1A\n"), good.substr(0, 2), good.substr(0, 100)}) {
    EXPECT_TRUE(Load(document, file).IsNil());
    EXPECT_THAT(document.TakeFailures(), ElementsAre(Failure{kInvalidJpegData, 0}));
    EXPECT_EQ(document.LastFailure(), (Failure{kInvalidJpegData, 0}));
  }
  std::string twelveBits = good;
  twelveBits[good.find("\xFF\xC0") + 4] = 12;
  EXPECT_TRUE(Load(document, twelveBits).IsNil());
  EXPECT_THAT(document.TakeFailures(), ElementsAre(Failure{kUnsupportedJpegFormat, 0}));

  const PdfFile file(document.Saved());
  EXPECT_EQ(file.qpdf().getAllObjects().size(), objects);
  EXPECT_FALSE(Load(document, good).IsNil());
}

class DrawImageTest : public ImageTest {
 protected:
  ScriptObject SmallImage(const Document &document) {
    const ScriptObject raster = NewObject("PixelRaster", {std::int64_t{1}, std::int64_t{1}, std::int64_t{3}});
    return document.CallObject("LoadImage", raster);
  }
};

TEST_F(DrawImageTest, LowerLeftCornerInPdfCoordinates) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Call("DrawImage", SmallImage(document), 5.0F, 10.0F, 200.0F, 100.0F);
  EXPECT_THAT(document.Operators(), ElementsAre(Op("q"), Op("cm", 200, 0, 0, 100, 5, 10), Op("Do", "/X1"), Op("Q")));
}

TEST_F(DrawImageTest, UpperLeftCornerOnAPageThatWorksFromTheTop) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Set("Height", 792.0F);
  page.Set("TransformCoordinates", true);
  page.Call("DrawImage", SmallImage(document), 5.0F, 10.0F, 200.0F, 100.0F);
  EXPECT_THAT(document.Operators(), ElementsAre(Op("q"), Op("cm", 200, 0, 0, 100, 5, 682), Op("Do", "/X1"), Op("Q")));
}

TEST_F(DrawImageTest, NilAndImagesOfAnotherDocumentDrawNothing) {
  const Document document = NewDocument(), other = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Call("DrawImage", host::Value::Nil(), 0.0F, 0.0F, 1.0F, 1.0F);
  page.Call("DrawImage", SmallImage(other), 0.0F, 0.0F, 1.0F, 1.0F);
  EXPECT_THAT(document.Operators(), IsEmpty());
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
  EXPECT_THAT(other.TakeFailures(), IsEmpty());
}

TEST_F(DrawImageTest, OneImageIsStoredOnceHoweverOftenItIsDrawn) {
  const Document document = NewDocument();
  const ScriptObject image = SmallImage(document), second = SmallImage(document);
  const ScriptObject page = document.AddPage();
  for (int i = 0; i < 3; ++i) page.Call("DrawImage", image, 0.0F, 0.0F, 1.0F, 1.0F);
  page.Call("DrawImage", second, 0.0F, 0.0F, 1.0F, 1.0F);
  const PdfFile file(document.Saved());
  EXPECT_EQ(file.Page(0).getKey("/Resources").getKey("/XObject").getKeys().size(), 2U);
}

TEST_F(DrawImageTest, AtTheDeepestSavedStateTheCallersStatesStay) {
  const Document document = NewDocument();
  const ScriptObject image = SmallImage(document), page = document.AddPage();
  int saved = 0;
  for (;; ++saved) {
    page.Call("SaveState");
    if (!document.TakeFailures().empty()) break;
  }
  page.Call("DrawImage", image, 0.0F, 0.0F, 1.0F, 1.0F);
  EXPECT_THAT(document.TakeFailures(), ElementsAre(Failure{kExceedGStateLimit, 0}));
  for (int i = 0; i < saved; ++i) page.Call("RestoreState");
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
  const auto operators = document.Operators();
  EXPECT_EQ(operators.size(), static_cast<std::size_t>(2 * saved)) << "saved and restored, nothing else";
}

TEST_F(DrawImageTest, OutsideOfPageDescriptionItIsRefused) {
  const Document document = NewDocument();
  const ScriptObject image = SmallImage(document), page = document.AddPage();
  page.Call("BeginText");
  page.Call("DrawImage", image, 0.0F, 0.0F, 1.0F, 1.0F);
  EXPECT_THAT(document.TakeFailures(), ElementsAre(testing::Field(&Failure::number, library_error::kInvalidGMode)));
  page.Call("EndText");
  EXPECT_THAT(document.Operators(), ElementsAre(Op("BT"), Op("ET")));
}

TEST_F(DrawImageTest, NumbersThatAreNoneAreRefused) {
  const Document document = NewDocument();
  const ScriptObject image = SmallImage(document), page = document.AddPage();
  for (const float number : {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity()}) {
    page.Call("DrawImage", image, number, 0.0F, 1.0F, 1.0F);
    page.Call("DrawImage", image, 0.0F, 0.0F, 1.0F, number);
    EXPECT_THAT(document.TakeFailures(), ElementsAre(Failure{library_error::kInvalidParameter, 0},
                                                     Failure{library_error::kInvalidParameter, 0}));
  }
  EXPECT_THAT(document.Operators(), IsEmpty());
}

}  // namespace
}  // namespace quillbar::test
