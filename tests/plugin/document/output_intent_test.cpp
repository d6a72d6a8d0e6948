// The operation that a document publishes for other code: appending an output intent.
#include <qpdf/Buffer.hh>

#include "tests/plugin/driver/plugin_test.h"

namespace quillbar::test {
namespace {

using testing::IsEmpty;

class OutputIntent : public PluginTest {
 protected:
  // As code knows it that only has the document's data block: its first word.
  using Hook = void (*)(Object document, const char *name, Integer componentCount, const void *profile,
                        Integer byteCount);

  void Append(const Document &document, const char *name, Integer componentCount, std::string_view profile) {
    void *const data = host().ClassData(document.handle(), host().Class("PDFDocument"));
    const Hook hook = *static_cast<Hook *>(data);
    ASSERT_NE(hook, nullptr);
    hook(document.handle().Get(), name, componentCount, profile.data(), static_cast<Integer>(profile.size()));
  }
};

TEST_F(OutputIntent, ProfileIsWrittenWithItsComponentsAndAlternate) {
  struct Case {
    Integer components;
    const char *alternate;
  };
  for (const Case &one :
       {Case{1, "/DeviceGray"}, Case{2, nullptr}, Case{3, "/DeviceRGB"}, Case{4, "/DeviceCMYK"}}) {
    SCOPED_TRACE(one.components);
    const Document document = NewDocument();
    document.AddPage();
    const std::string profile("profile \0 with a nul and () bytes", 33);
    Append(document, "FOGRA39", one.components, profile);
    EXPECT_THAT(document.TakeFailures(), IsEmpty());
    const PdfFile file(document.Saved());
    QPDFObjectHandle intents = file.qpdf().getRoot().getKey("/OutputIntents");
    ASSERT_TRUE(intents.isArray());
    ASSERT_EQ(intents.getArrayNItems(), 1);
    QPDFObjectHandle intent = intents.getArrayItem(0);
    EXPECT_EQ(intent.getKey("/Type").getName(), "/OutputIntent");
    EXPECT_EQ(intent.getKey("/OutputConditionIdentifier").getStringValue(), "FOGRA39");
    QPDFObjectHandle stream = intent.getKey("/DestOutputProfile");
    ASSERT_TRUE(stream.isStream());
    EXPECT_EQ(stream.getDict().getKey("/N").getIntValue(), one.components);
    const std::shared_ptr<Buffer> data = stream.getStreamData();
    EXPECT_EQ(std::string(reinterpret_cast<const char *>(data->getBuffer()), data->getSize()), profile);
    QPDFObjectHandle alternate = stream.getDict().getKey("/Alternate");
    if (one.alternate == nullptr) {
      EXPECT_TRUE(alternate.isNull());
    } else {
      EXPECT_EQ(alternate.getName(), one.alternate);
    }
  }
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
  QPDFObjectHandle stream =
      file.qpdf().getRoot().getKey("/OutputIntents").getArrayItem(0).getKey("/DestOutputProfile");
  const std::shared_ptr<Buffer> data = stream.getStreamData(qpdf_dl_generalized);
  EXPECT_EQ(data->getSize(), profile.size());
}

}  // namespace
}  // namespace quillbar::test
