// SPDX-License-Identifier: MIT
// A host may lack any service. What needs it then does nothing and returns nothing; everything else works.
#include <gmock/gmock.h>

#include <filesystem>
#include <set>

#include "host/testing/host_fixture.h"
#include "tests/support/service_names.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/utf8_path.h"

namespace quillbar {
namespace {

using host::ObjectHandle;
using host::StringHandle;
using host::Value;

/// Without these the plugin can't give back what it took, so the ledger can't balance.
const std::set<std::string> kGiversBack = {"REALLockObject", "REALUnlockObject", "REALUnlockString",
                                           "PluginDisposeStringData"};

/// Without these no document can be made or written to a file.
const std::set<std::string> kNeededToSave = {"REALGetRBVersion", "PluginRegisterModule", "REALGetPropValueBool",
                                             "REALGetPropValueString", "PluginGetStringData"};

class WithoutService : public host::HostFixture, public testing::WithParamInterface<std::string> {
 protected:
  void TearDown() override {
    if (kGiversBack.contains(GetParam())) IgnoreLedger();
    HostFixture::TearDown();
  }

  /// Calls a member unless the object is Nil, which is what a factory gives when it can't do its work.
  Value Call(const ObjectHandle &object, const char *member, std::initializer_list<Value> arguments = {}) {
    return object.IsNil() ? Value() : host().Call(object, member, arguments);
  }
  ObjectHandle Make(const ObjectHandle &object, const char *member, std::initializer_list<Value> arguments = {}) {
    return object.IsNil() ? ObjectHandle() : host().Call(object, member, arguments).AsObject();
  }
  ObjectHandle FileItem(const std::filesystem::path &path) {
    return host().Create("FolderItem", {Value(test::Utf8(path))});
  }

  /// A little of everything that a document can do.
  void WriteDocument() {
    const ObjectHandle document = host().Create("PDFDocument");
    host().SetEventHandler(document, "ErrorLog", [](const ObjectHandle &, std::span<Value>) { return Value(); });
    const ObjectHandle page = Make(document, "AddPage");
    if (!page.IsNil()) host().Set(page, "TransformCoordinates", Value(true));
    host::ArrayHandle dashes = host::ArrayHandle::Create(host::TypeKind::kUInt16, 2);
    Call(page, "SetDashPattern", {Value(dashes), Value(std::uint32_t{0})});
    Call(page, "Rectangle", {Value(1.0F), Value(2.0F), Value(3.0F), Value(4.0F)});
    Call(page, "Clip");
    Call(page, "RestoreState");  // refused: raises ErrorLog
    Call(page, "EndPath");
    const ObjectHandle font =
        Make(document, "GetFont", {Value("Helvetica"), host().Constant("Font.FontEncodingEnum.AUTOMATIC")});
    Call(page, "BeginText");
    Call(page, "SetFont", {Value(font), Value(12.0F)});
    Call(page, "ShowText", {Value("text")});
    Call(page, "ShowTextNextLine", {Value("\u0414\u0430")});
    Call(page, "EndText");
    if (!font.IsNil()) host().Get(font, "Name");
    Call(document, "SaveToString");
    Call(document, "SaveToMemoryBlock");
    Call(document, "Save", {Value(FileItem(folder_ / "new.pdf"))});
    Call(document, "Save", {Value(FileItem(folder_ / "existing.pdf"))});
  }

  const test::TemporaryFolder folder_;
};

TEST_P(WithoutService, ADocumentIsWrittenAsFarAsThatGoes) {
  const std::filesystem::path existing = folder_ / "existing.pdf";
  test::WriteFile(existing, "mine");
  StartHost({QUILLBAR_PLUGIN_FILE}, {.missing = {GetParam()}});
  if (host().registry().FindClass("PDFDocument") != nullptr) WriteDocument();
  EXPECT_EQ(std::filesystem::exists(folder_ / "new.pdf"), !kNeededToSave.contains(GetParam()));
  EXPECT_EQ(std::filesystem::file_size(existing), 4U) << "an existing file was overwritten";
}

INSTANTIATE_TEST_SUITE_P(Services, WithoutService, testing::ValuesIn(test::EverythingOfAHost()),
                         [](const auto &parameter) {
                           const std::string &name = parameter.param;
                           return name.substr(0, name.find('('));
                         });

}  // namespace
}  // namespace quillbar
