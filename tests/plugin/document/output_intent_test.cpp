// SPDX-License-Identifier: MIT
// The operation that a document publishes for other code: appending an output intent.
#include <qpdf/Buffer.hh>

#include "tests/plugin/driver/plugin_test.h"

namespace quillbar::test {
namespace {

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
  QPDFObjectHandle stream = file.qpdf().getRoot().getKey("/OutputIntents").getArrayItem(0).getKey("/DestOutputProfile");
  const std::shared_ptr<Buffer> data = stream.getStreamData(qpdf_dl_generalized);
  EXPECT_EQ(data->getSize(), profile.size());
}

}  // namespace
}  // namespace quillbar::test
