// SPDX-License-Identifier: MIT
// The operation that a document publishes for other code: appending an output intent. It is called as that code calls
// it, by its address in the document's private data.
#include <gmock/gmock.h>
#include <qpdf/Buffer.hh>

#include "tests/plugin/driver/plugin_test.h"

namespace quillbar::test {
namespace {

constexpr std::string_view kProfile{"a profile with \0 in it", 22};

class OutputIntent : public PluginTest {
 protected:
  // As code knows it that only has the document's data block: its first word.
  using Hook = void (*)(Object document, const char *name, Integer componentCount, const void *profile,
                        Integer byteCount);

  void Append(const Document &document, const char *name, Integer componentCount, std::string_view profile = kProfile) {
    void *const data = host().ClassData(document.handle(), host().Class("PDFDocument"));
    const Hook hook = *static_cast<Hook *>(data);
    ASSERT_NE(hook, nullptr);
    hook(document.handle().Get(), name, componentCount, profile.data(), static_cast<Integer>(profile.size()));
  }

  // The stream of the first intent's profile.
  static QPDFObjectHandle ProfileIn(const PdfFile &file) {
    return file.qpdf().getRoot().getKey("/OutputIntents").getArrayItem(0).getKey("/DestOutputProfile");
  }
};

struct Space {
  Integer components;
  const char *alternate;
};

class OutputIntentOf : public OutputIntent, public testing::WithParamInterface<Space> {};

TEST_P(OutputIntentOf, NamesTheDeviceSpaceWithAsManyComponents) {
  const Document document = NewDocument();
  document.AddPage();
  Append(document, "sRGB", GetParam().components);
  const PdfFile file(document.Saved());
  QPDFObjectHandle dictionary = ProfileIn(file).getDict();
  EXPECT_EQ(dictionary.getKey("/N").getIntValue(), GetParam().components);
  EXPECT_EQ(dictionary.getKey("/Alternate").getName(), GetParam().alternate);
}

INSTANTIATE_TEST_SUITE_P(Spaces, OutputIntentOf,
                         testing::Values(Space{1, "/DeviceGray"}, Space{3, "/DeviceRGB"}, Space{4, "/DeviceCMYK"}),
                         [](const auto &parameter) { return std::string(parameter.param.alternate).substr(1); });

TEST_F(OutputIntent, NamesNoSpaceForAnotherNumberOfComponents) {
  const Document document = NewDocument();
  document.AddPage();
  Append(document, "Duotone", 2);
  const PdfFile file(document.Saved());
  QPDFObjectHandle dictionary = ProfileIn(file).getDict();
  EXPECT_EQ(dictionary.getKey("/N").getIntValue(), 2);
  EXPECT_FALSE(dictionary.hasKey("/Alternate"));
}

TEST_F(OutputIntent, HoldsTheProfileByteForByteUnderItsName) {
  const Document document = NewDocument();
  document.AddPage();
  Append(document, "sRGB IEC61966-2.1", 3);
  const PdfFile file(document.Saved());
  const auto bytes = ProfileIn(file).getStreamData();
  EXPECT_EQ(std::string_view(reinterpret_cast<const char *>(bytes->getBuffer()), bytes->getSize()), kProfile);

  QPDFObjectHandle intents = file.qpdf().getRoot().getKey("/OutputIntents");
  ASSERT_EQ(intents.getArrayNItems(), 1);
  EXPECT_EQ(intents.getArrayItem(0).getKey("/OutputConditionIdentifier").getUTF8Value(), "sRGB IEC61966-2.1");
}

TEST_F(OutputIntent, SeveralStandSideBySide) {
  const Document document = NewDocument();
  document.AddPage();
  Append(document, "first", 3, "one");
  Append(document, "second", 4, "two");
  EXPECT_EQ(PdfFile(document.Saved()).qpdf().getRoot().getKey("/OutputIntents").getArrayNItems(), 2);
}

TEST_F(OutputIntent, LargeProfileIsWhole) {
  const Document document = NewCompressedDocument();
  document.AddPage();
  std::string profile;
  for (int byte = 0; byte < 300'000; ++byte) profile += static_cast<char>(byte * 31 % 251);
  Append(document, "large", 3, profile);
  const PdfFile file(document.Saved());
  const std::shared_ptr<Buffer> data = ProfileIn(file).getStreamData(qpdf_dl_generalized);
  EXPECT_EQ(data->getSize(), profile.size());
}

}  // namespace
}  // namespace quillbar::test
