// SPDX-License-Identifier: MIT
// Hosts that lack a service: what needs it does nothing, and the rest works.
#include "tests/plugin/driver/plugin_test.h"
#include "tests/support/service_names.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/utf8_path.h"

namespace quillbar::test {
namespace {

class LimitedHost : public host::HostFixture {
 protected:
  void StartHostWithout(std::initializer_list<std::string> services, double version = 2025.02) {
    host::HostOptions options;
    options.version = version;
    for (const std::string &service : services) options.missing.insert(service);
    StartHost({QUILLBAR_COMPANION_FILE, QUILLBAR_PLUGIN_FILE}, options);
  }
  Document NewDocument() { return {host(), host().Create("PDFDocument")}; }

  // Runs one statement of the script. A factory that gave Nil makes the statements about its object fail, as
  // they would in a script.
  template <class Statement>
  void Run(Statement statement) {
    try {
      statement();
    } catch (const host::HostError &) {
    }
  }

  // Something of everything that a script does.
  void RunScript() {
    const TemporaryFolder folder;
    ScriptObject document;
    Run([&] { document = {host(), host().Create("PDFDocument", {host().Create("CompressorHandle")})}; });
    Run([&] { document = {host(), host().Create("PDFDocument")}; });
    if (document.IsNil()) return;
    Run([&] {
      host().SetEventHandler(document.handle(), "ErrorLog",
                             [](const host::ObjectHandle &, std::span<host::Value>) { return host::Value(); });
    });
    ScriptObject page;
    ScriptObject font;
    Run([&] { page = document.CallObject("AddPage"); });
    Run([&] { font = document.CallObject("GetFont", "Helvetica", 100); });
    Run([&] { document.CallObject("GetFont", "MS-Mincho", 1); });
    host::ArrayHandle dashes = host::ArrayHandle::Create(host::TypeKind::kUInt16, 3);
    for (std::int64_t index = 0; index < 3; ++index) dashes.Set(index, 3);
    Run([&] { page.Call("SetSize", 3, 0); });
    Run([&] { page.Set("TransformCoordinates", true); });
    Run([&] { page.Call("SetDashPattern", dashes, 1); });
    Run([&] { page.Set("FillColor", static_cast<Color>(0x336699)); });
    Run([&] { page.Call("Rectangle", 10, 10, 20, 20); });
    Run([&] { page.Call("FillAndDraw"); });
    Run([&] { page.Set("LineWidth", -1); });
    Run([&] { page.Call("BeginText"); });
    Run([&] { page.Call("SetFont", font, 12); });
    Run([&] { page.Call("MoveTextPosition", 10, 20); });
    Run([&] { page.Call("ShowText", "text"); });
    Run([&] { page.Call("ShowTextNextLine", "\u00E9\u20AC"); });
    Run([&] { page.Call("EndText"); });
    Run([&] { font.GetString("Name"); });
    Run([&] { document.Set("Title", "title"); });
    Run([&] { document.GetString("Title"); });
    Run([&] { document.Call("SetPassword", "owner", "user"); });
    Run([&] { document.Call("SaveToString"); });
    Run([&] { document.Call("SaveToMemoryBlock"); });
    Run([&] { document.Call("Save", ScriptObject(host(), host().Create("FolderItem", {Utf8(folder / "a.pdf")}))); });
    page = {};
    font = {};
  }
};

class MissingService : public LimitedHost, public testing::WithParamInterface<std::string> {};

TEST_P(MissingService, MakesNothingWorseThanNothing) {
  const std::string service = GetParam();
  for (const double version : {2025.02, 2013.2}) {
    StartHostWithout({GetParam()}, version);
    if (host().registry().FindClass("PDFDocument") != nullptr) RunScript();
    if (!KeepsTheLedger(service)) ExpectBalancedLedger();
    IgnoreLedger();
  }
}

std::string TestName(const testing::TestParamInfo<std::string> &info) {
  return info.param.substr(0, info.param.find('('));
}

INSTANTIATE_TEST_SUITE_P(EveryService, MissingService, testing::ValuesIn(EverythingOfAHost()), TestName);

TEST_F(LimitedHost, ScriptWithEveryServiceRunsToItsEnd) {
  StartHostWithout({});
  RunScript();
}

TEST_F(LimitedHost, WithoutInstancesFactoriesGiveNil) {
  for (const char *service : {"CreateInstance", "pluginObjectType"}) {
    StartHostWithout({service});
    const Document document = NewDocument();
    EXPECT_TRUE(document.AddPage().IsNil());
    EXPECT_TRUE(document.GetFont("Helvetica").IsNil());
    EXPECT_TRUE(document.Call("SaveToMemoryBlock").AsObject().IsNil());
    EXPECT_EQ(document.LastFailure(), Failure{});
  }
}

// A block of the right size with anything in it would be taken for the file.
TEST_F(LimitedHost, MemoryBlockThatCannotBeMadeOrFilledIsNil) {
  for (const char *method : {"Constructor(bytes as Integer)", "Operator_Convert() As Ptr"}) {
    StartHostWithout({method});
    const Document document = NewDocument();
    document.AddPage();
    EXPECT_TRUE(document.Call("SaveToMemoryBlock").AsObject().IsNil()) << method;
    EXPECT_NE(document.Saved(), "") << method;
    EXPECT_EQ(document.LastFailure(), Failure{}) << method;
  }
}

TEST_F(LimitedHost, WithoutStringsNothingIsShownSavedOrReturned) {
  StartHostWithout({"PluginGetStringData", "REALBuildStringWithEncoding"});
  const TemporaryFolder folder;
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Call("MoveTo", 1, 2);
  page.Call("EndPath");
  EXPECT_EQ(document.Saved(), "");
  document.Call("Save", ScriptObject(host(), host().Create("FolderItem", {Utf8(folder / "a.pdf")})));
  EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
  EXPECT_EQ(document.LastFailure(), Failure{});
}

TEST_F(LimitedHost, WithoutEventsFailuresAreStillRecorded) {
  StartHostWithout({"GetEventInstance"});
  const Document document = NewDocument();
  document.AddPage().Set("LineCapType", 3);
  EXPECT_TRUE(document.TakeFailures().empty());
  EXPECT_EQ(document.LastFailure(), (Failure{library_error::kOutOfRange, 3}));
}

TEST_F(LimitedHost, OlderHostsReadDashPatternsThroughTheOtherService) {
  StartHostWithout({"PluginUInt16ArrayGetProc"});
  const Document document = NewDocument();
  host::ArrayHandle dashes = host::ArrayHandle::Create(host::TypeKind::kUInt16, 2);
  dashes.Set(0, 7);
  dashes.Set(1, 5);
  document.AddPage().Call("SetDashPattern", dashes, 1);
  EXPECT_THAT(document.Operators(), testing::ElementsAre(Op("d", std::vector<double>{7, 5}, 1)));
}

}  // namespace
}  // namespace quillbar::test
