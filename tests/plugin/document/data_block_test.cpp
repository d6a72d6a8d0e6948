// SPDX-License-Identifier: MIT
// Where the fields of the private data blocks lie, read from live objects. Other code reads them by these
// numbers, so nothing here uses the plugin's own records.
#include <cstring>
#include <iterator>
#include <qpdf/Buffer.hh>

#include "tests/plugin/driver/plugin_test.h"

namespace quillbar::test {
namespace {

constexpr bool kIsWide = sizeof(void *) == 8;

// An offset that counts words before the field and bytes after them.
constexpr std::size_t Words(std::size_t words, std::size_t bytes = 0) { return words * sizeof(void *) + bytes; }

class DataBlock : public PluginTest {
 protected:
  template <class Field>
  Field At(const ScriptObject &object, const char *className, std::size_t offset) {
    const char *block = static_cast<const char *>(host().ClassData(object.handle(), host().Class(className)));
    Field field;
    std::memcpy(&field, block + offset, sizeof field);
    return field;
  }
  const void *AddressOf(const ScriptObject &object, const char *className, std::size_t offset) {
    return static_cast<const char *>(host().ClassData(object.handle(), host().Class(className))) + offset;
  }
  const void *LibraryDocumentOf(const Document &document) { return AddressOf(document, "PDFDocument", Words(1)); }
  // The first two fields after an object's handle say whose it is, in every class but Page and Font.
  void ExpectOwner(const ScriptObject &object, const char *className, const Document &document,
                   const ScriptObject &owner) {
    EXPECT_NE(At<void *>(object, className, 0), nullptr) << className;
    EXPECT_EQ(At<const void *>(object, className, Words(1)), LibraryDocumentOf(document)) << className;
    EXPECT_EQ(At<void *>(object, className, Words(2)), owner.handle().Get()) << className;
  }
};

TEST_F(DataBlock, OfADocument) {
  const Document document = NewDocument();
  EXPECT_NE(At<void *>(document, "PDFDocument", 0), nullptr);
  // The library's documents begin with a signature.
  std::uint32_t signature = 0;
  std::memcpy(&signature, At<void *>(document, "PDFDocument", Words(1)), sizeof signature);
  EXPECT_EQ(signature, 0x41504446U);

  const char *const families[] = {"MS-Mincho", "Dotum", "MingLiU", "SimSun"};
  for (std::size_t family = 0; family < std::size(families); ++family) {
    const std::size_t offset = Words(2, family);
    EXPECT_EQ(At<std::uint8_t>(document, "PDFDocument", offset), 0) << families[family];
    EXPECT_FALSE(document.GetFont(families[family]).IsNil());
    EXPECT_EQ(At<std::uint8_t>(document, "PDFDocument", offset), 1) << families[family];
  }

  document.AddPage().Set("LineCapType", 7);
  EXPECT_EQ(document.TakeFailures().size(), 1U);
  EXPECT_EQ(At<std::uint32_t>(document, "PDFDocument", Words(2, 4)), library_error::kOutOfRange);
  EXPECT_EQ(At<std::uint32_t>(document, "PDFDocument", Words(2, 8)), 7U);
}

TEST_F(DataBlock, OfAPage) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  EXPECT_NE(At<void *>(page, "Page", 0), nullptr);
  EXPECT_EQ(At<std::uint32_t>(page, "Page", Words(1)), 123456U);
  EXPECT_EQ(At<const void *>(page, "Page", Words(2)), LibraryDocumentOf(document));
  EXPECT_EQ(At<void *>(page, "Page", Words(3)), document.handle().Get());
  EXPECT_EQ(At<void *>(page, "Page", Words(4)), nullptr);

  const ScriptObject font = document.GetFont("Helvetica", 100);
  page.Call("BeginText");
  page.Call("SetFont", font, 12.5);
  page.Call("EndText");
  EXPECT_EQ(At<void *>(page, "Page", Words(4)), font.handle().Get());
  EXPECT_EQ(At<float>(page, "Page", Words(5)), 12.5F);
  EXPECT_EQ(At<std::uint8_t>(page, "Page", Words(5, 4)), 1) << "the font's encoding is automatic";

  EXPECT_EQ(At<std::uint8_t>(page, "Page", Words(5, 5)), 0);
  page.Set("TransformCoordinates", true);
  EXPECT_EQ(At<std::uint8_t>(page, "Page", Words(5, 5)), 1);
  EXPECT_EQ(At<float>(page, "Page", Words(5, 8)), page.GetSingle("Height"));
}

TEST_F(DataBlock, OfAFont) {
  const Document document = NewDocument();
  const ScriptObject font = document.GetFont("Dotum", 100);
  EXPECT_NE(At<void *>(font, "Font", 0), nullptr);
  EXPECT_EQ(At<std::uint16_t>(font, "Font", Words(6)), 2) << "the Korean faces' kind";
  EXPECT_NE(At<std::uint32_t>(font, "Font", Words(6, 4)), 0U);
  EXPECT_EQ(At<const void *>(font, "Font", Words(6, 8)), LibraryDocumentOf(document));
  EXPECT_EQ(At<void *>(font, "Font", Words(7, 8)), document.handle().Get());
  EXPECT_EQ(At<std::uint16_t>(font, "Font", Words(8, 10)), 2);

  EXPECT_EQ(At<std::uint8_t>(font, "Font", Words(8, 28)), 0);
  const float top = font.GetSingle("BoundingBoxTop");
  EXPECT_EQ(At<std::uint8_t>(font, "Font", Words(8, 28)), 1);
  // The rectangle is left, bottom, right, top.
  EXPECT_EQ(At<float>(font, "Font", Words(8, 24)), top);
}

TEST_F(DataBlock, OfWhatIsMadeFromADocumentOrAPage) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  const ScriptObject destination = page.CallObject("CreateDestination");
  ExpectOwner(destination, "Destination", document, page);
  ExpectOwner(document.CallObject("CreateExtendedGraphicsState"), "ExtendedGraphicsState", document, document);

  const ScriptObject raster = NewObject("PixelRaster", {1, 1, 3, 8});
  ExpectOwner(document.CallObject("LoadImage", raster), "Image", document, document);
}

// Filled in by number alone: what the plugin reads must be found at these numbers.
TEST_F(DataBlock, OfARasterIsReadWhereItsSupplierKeepsIt) {
  const ScriptObject raster = NewObject("PixelRaster");
  const unsigned char rows[] = {0, 0x11, 0x22, 0x33, 0, 0x44, 0x55, 0x66, 0xEE, 0xEE,  //
                                0, 0x77, 0x88, 0x99, 0, 0xAA, 0xBB, 0xCC, 0xEE, 0xEE};
  auto *block = static_cast<char *>(host().ClassData(raster.handle(), host().Class("PixelRaster")));
  const auto put = [&](std::size_t narrow, std::size_t wide, auto value) {
    std::memcpy(block + (kIsWide ? wide : narrow), &value, sizeof value);
  };
  put(0, 0, std::int32_t{2});     // width
  put(4, 4, std::int32_t{2});     // height
  put(8, 8, &rows[0]);            // first row
  put(12, 16, std::int32_t{10});  // stride
  put(16, 20, std::int32_t{3});   // channels
  put(28, 32, std::int32_t{4});   // from pixel to pixel
  put(36, 40, std::uint8_t{1});   // red, green, blue
  put(37, 41, std::uint8_t{2});
  put(38, 42, std::uint8_t{3});
  put(44, 48, std::int32_t{0});  // format
  put(72, 76, std::uint8_t{0});  // alpha
  put(73, 77, std::uint8_t{8});  // bits
  const Document document = NewDocument();
  const ScriptObject image = document.CallObject("LoadImage", raster);
  ASSERT_FALSE(image.IsNil());
  document.AddPage().Call("DrawImage", image, 0.0F, 0.0F, 2.0F, 2.0F);
  const PdfFile file(document.Saved());
  QPDFObjectHandle stream = file.Page(0).getKey("/Resources").getKey("/XObject").getKey("/X1");
  const auto data = stream.getStreamData(qpdf_dl_generalized);
  EXPECT_EQ(std::string(reinterpret_cast<const char *>(data->getBuffer()), data->getSize()),
            "\x11\x22\x33\x44\x55\x66\x77\x88\x99\xAA\xBB\xCC");
}

}  // namespace
}  // namespace quillbar::test
