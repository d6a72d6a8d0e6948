// SPDX-License-Identifier: MIT
// The output-intent operation, called as other code calls it: by its address in the document's private data.
#include <gmock/gmock.h>

#include <cstring>

#include "host/testing/host_fixture.h"
#include "tests/support/pdf_file.h"

namespace quillbar {
namespace {

using Hook = void (*)(Object document, const char *name, Integer componentCount, const void *profile,
                      Integer byteCount);

class OutputIntent : public host::HostFixture {
 protected:
  void SetUp() override { StartHost({QUILLBAR_PLUGIN_FILE}); }

  host::ObjectHandle NewDocument() {
    host::ObjectHandle document = host().Create("PDFDocument");
    host().Call(document, "AddPage");
    return document;
  }

  /// The operation is the first word of the private data.
  Hook HookOf(const host::ObjectHandle &document) {
    Hook hook = nullptr;
    std::memcpy(&hook, host().ClassData(document, host().Class("PDFDocument")), sizeof hook);
    return hook;
  }

  void Append(const host::ObjectHandle &document, const char *name, Integer componentCount) {
    const host::Host::Loan loan(host(), document);
    HookOf(document)(document.Get(), name, componentCount, kProfile, sizeof kProfile - 1);
  }

  std::string Saved(const host::ObjectHandle &document) {
    return std::string(host().Call(document, "SaveToString").AsString().Bytes());
  }

  /// The profile's stream: the one stream of the file with a number of components.
  QPDFObjectHandle ProfileIn(const test::PdfFile &file) {
    for (QPDFObjectHandle object : file.qpdf().getAllObjects()) {
      if (object.isStream() && object.getDict().hasKey("/N")) return object;
    }
    ADD_FAILURE() << "no profile";
    return QPDFObjectHandle::newNull();
  }

  static constexpr char kProfile[] = "a profile with \0 in it";
};

struct Space {
  Integer components;
  const char *alternate;
};

class OutputIntentOf : public OutputIntent, public testing::WithParamInterface<Space> {};

TEST_P(OutputIntentOf, NamesTheDeviceSpaceWithAsManyComponents) {
  const host::ObjectHandle document = NewDocument();
  Append(document, "sRGB", GetParam().components);
  const test::PdfFile file(Saved(document));
  QPDFObjectHandle dictionary = ProfileIn(file).getDict();
  EXPECT_EQ(dictionary.getKey("/N").getIntValue(), GetParam().components);
  EXPECT_EQ(dictionary.getKey("/Alternate").getName(), GetParam().alternate);
}

INSTANTIATE_TEST_SUITE_P(Spaces, OutputIntentOf,
                         testing::Values(Space{1, "/DeviceGray"}, Space{3, "/DeviceRGB"}, Space{4, "/DeviceCMYK"}),
                         [](const auto &parameter) { return std::string(parameter.param.alternate).substr(1); });

TEST_F(OutputIntent, NamesNoSpaceForAnotherNumberOfComponents) {
  const host::ObjectHandle document = NewDocument();
  Append(document, "Duotone", 2);
  const test::PdfFile file(Saved(document));
  QPDFObjectHandle dictionary = ProfileIn(file).getDict();
  EXPECT_EQ(dictionary.getKey("/N").getIntValue(), 2);
  EXPECT_FALSE(dictionary.hasKey("/Alternate"));
}

TEST_F(OutputIntent, HoldsTheProfileByteForByteUnderItsName) {
  const host::ObjectHandle document = NewDocument();
  Append(document, "sRGB IEC61966-2.1", 3);
  const test::PdfFile file(Saved(document));
  const auto bytes = ProfileIn(file).getStreamData();
  EXPECT_EQ(std::string(reinterpret_cast<const char *>(bytes->getBuffer()), bytes->getSize()),
            std::string(kProfile, sizeof kProfile - 1));

  QPDFObjectHandle intents = file.qpdf().getRoot().getKey("/OutputIntents");
  ASSERT_EQ(intents.getArrayNItems(), 1);
  EXPECT_EQ(intents.getArrayItem(0).getKey("/OutputConditionIdentifier").getUTF8Value(), "sRGB IEC61966-2.1");
}

}  // namespace
}  // namespace quillbar
