// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include <fstream>

#include "host/runtime/services.h"
#include "host/testing/host_fixture.h"
#include "interface/services.h"
#include "tests/host/test_plugins.h"

namespace quillbar::host {
namespace {

using testing::AllOf;
using testing::HasSubstr;

class LoadingTest : public HostFixture {
 protected:
  std::string FailureOf(const std::filesystem::path &file, HostOptions options = {}) {
    StartHost({}, std::move(options));
    try {
      host().LoadPlugin(file);
    } catch (const HostError &error) {
      EXPECT_EQ(error.kind(), ErrorKind::kPlugin);
      return error.what();
    }
    ADD_FAILURE() << "it was loaded";
    return {};
  }
};

TEST_F(LoadingTest, AMissingFileIsSaidToBeMissing) {
  EXPECT_THAT(FailureOf("no/such/file.so"), AllOf(HasSubstr("no/such/file.so"), HasSubstr("can't be found")));
}

TEST_F(LoadingTest, AFolderIsNoPlugin) { EXPECT_THAT(FailureOf(TEST_PLUGIN_DIR), HasSubstr("is a folder")); }

TEST_F(LoadingTest, AFileThatIsNoLibraryIsReportedWithTheSystemsWords) {
  const auto file = std::filesystem::path(testing::TempDir()) / "not_a_library.so";
  std::ofstream(file) << "no library";
  EXPECT_THAT(FailureOf(file), HasSubstr("can't be loaded"));
  std::filesystem::remove(file);
}

TEST_F(LoadingTest, ALibraryWithoutEntryPointIsNoPlugin) {
  EXPECT_THAT(FailureOf(TestPlugin("mute")), HasSubstr("exports no REALPluginMain"));
}

TEST_F(LoadingTest, APluginThatRegistersNothingIsReported) {
  EXPECT_THAT(FailureOf(TestPlugin("inert")), HasSubstr("registered no class for a host of version 2025.02"));
  EXPECT_EQ(host().announcedVersion(), 12);
}

TEST_F(LoadingTest, AnInertPluginCanBeAllowed) {
  StartHost({TestPlugin("probe")}, {.version = 2013.0});
  EXPECT_EQ(host().registry().FindClass("Probe"), nullptr);
  EXPECT_EQ(host().announcedVersion(), 13);
}

TEST_F(LoadingTest, ADeclarationThatCantBeReadIsShownWithItsPlace) {
  EXPECT_THAT(FailureOf(TestPlugin("unreadable")),
              AllOf(HasSubstr("Broken(value as) as String"), HasSubstr("character 16")));
}

TEST_F(LoadingTest, AMissingSuperclassIsNamed) {
  EXPECT_THAT(FailureOf(TestPlugin("orphan")), AllOf(HasSubstr("Orphan"), HasSubstr("Nobody")));
}

TEST_F(LoadingTest, APluginWithErrorsDoesNotKeepOthersOut) {
  FailureOf(TestPlugin("orphan"));
  EXPECT_NO_THROW(host().LoadPlugin(TestPlugin("probe")));
  EXPECT_NE(host().registry().FindClass("Probe"), nullptr);
}

TEST_F(LoadingTest, APluginIsLoadedOnce) {
  StartHost({TestPlugin("probe")});
  EXPECT_THROW(host().LoadPlugin(TestPlugin("probe")), HostError);
}

TEST_F(LoadingTest, SeveralPluginsShareOneHost) {
  StartHost({TestPlugin("probe"), TestPlugin("culprit")});
  EXPECT_NE(host().registry().FindClass("Probe"), nullptr);
  EXPECT_NE(host().registry().FindClass("Culprit"), nullptr);
}

TEST_F(LoadingTest, ANewHostLoadsThePluginAfresh) {
  StartHost({TestPlugin("probe")});
  host().Create("Probe");
  StartHost({TestPlugin("probe")});
  const ObjectHandle probe = host().Create("Probe");
  EXPECT_EQ(host().Call(probe, "TakeJournal").Utf8(), "+Probe") << "the plugin's variables start anew";
}

TEST_F(LoadingTest, AProcessHasOneHostAtATime) {
  StartHost({});
  EXPECT_EQ(Host::Current(), &host());
  EXPECT_THROW(Host(), std::logic_error);
  EXPECT_EQ(Host::Current(), &host());
}

TEST_F(LoadingTest, EveryServiceCanBeMissing) {
  const std::vector<std::string_view> names = ServiceNames();
  EXPECT_EQ(names.size(), 25U);
  for (const std::string_view missing : names) {
    StartHost({}, {.missing = {std::string(missing)}});
    for (const std::string_view name : names) {
      EXPECT_EQ(host().Resolve(std::string(name).c_str()) == nullptr, name == missing) << name;
    }
    EXPECT_EQ(host().Resolve("NoSuchService"), nullptr);
  }
}

TEST_F(LoadingTest, NamesThatNoHostOffersCantBeMissing) {
  EXPECT_THROW(StartHost({}, {.missing = {"REALLockObjekt"}}), HostError);
  EXPECT_EQ(Host::Current(), nullptr);
}

TEST_F(LoadingTest, EveryGlobalMethodCanBeMissing) {
  const std::vector<std::string> declarations{
      global_method::LenB::kDeclaration.CString(), global_method::Len::kDeclaration.CString(),
      global_method::Asc::kDeclaration.CString(),  global_method::Mid::kDeclaration.CString(),
      global_method::Left::kDeclaration.CString(), global_method::StrComp::kDeclaration.CString()};
  for (const std::string &missing : declarations) {
    StartHost({}, {.missing = {missing}});
    const auto load = reinterpret_cast<service::LoadGlobalMethod::Function>(host().Resolve("REALLoadGlobalMethod"));
    for (const std::string &declaration : declarations) {
      EXPECT_EQ(load(nullptr, declaration.c_str()) == nullptr, declaration == missing) << declaration;
    }
    EXPECT_EQ(load(nullptr, "len(str as String) as Integer"), nullptr) << "declarations match to the letter";
  }
}

TEST_F(LoadingTest, MethodsOfMemoryBlockCanBeMissing) {
  StartHost({}, {.missing = {memory_block::kOperatorConvert}});
  const auto load = reinterpret_cast<service::LoadObjectMethod::Function>(host().Resolve("REALLoadObjectMethod"));
  const ObjectHandle block = host().Create("MemoryBlock", {1});
  const Host::Loan loan(host(), block);
  EXPECT_EQ(load(block.Get(), memory_block::kOperatorConvert), nullptr);
  EXPECT_NE(load(block.Get(), memory_block::kConstructor), nullptr);
}

TEST_F(LoadingTest, TheVersionIsReportedAsGiven) {
  StartHost({}, {.version = 2013.4});
  EXPECT_EQ(reinterpret_cast<service::GetRBVersion::Function>(host().Resolve("REALGetRBVersion"))(), 2013.4);
}

}  // namespace
}  // namespace quillbar::host
