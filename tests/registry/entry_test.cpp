// SPDX-License-Identifier: MIT
// What the plugin does when a host loads it, and in which order.
#include <gmock/gmock.h>

#include <cmath>

#include "tests/registry/loaded_plugin.h"
#include "tests/registry/recording_host.h"
#include "tests/support/service_names.h"

namespace quillbar {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

class Entry : public testing::Test {
 protected:
  void EnterWithVersion(double version) {
    host_.version = version;
    plugin_.Enter(host_.resolver());
  }

  RecordingHost host_;
  LoadedPlugin plugin_;
};

TEST_F(Entry, NewHostGetsTheModuleOnceAndTheRasterClassIsLookedUpAfterwards) {
  EnterWithVersion(2013.4);
  EXPECT_THAT(host_.calls, ElementsAre("RegisterPluginVersion 13", "REALGetRBVersion",
                                       "PluginRegisterModule QuillbarPDFWriter", "pluginObjectType PixelRaster"));
  EXPECT_THAT(host_.unknownNames, IsEmpty());
}

TEST_F(Entry, OlderHostGetsTheClassesOneByOneInTheirOrder) {
  EnterWithVersion(2013.1);
  EXPECT_THAT(host_.calls,
              ElementsAre("RegisterPluginVersion 13", "REALGetRBVersion", "PluginRegisterClass PDFDocument",
                          "PluginRegisterClass Page", "PluginRegisterClass Font", "PluginRegisterClass Image",
                          "PluginRegisterClass Annotation", "PluginRegisterClass TextAnnotation",
                          "PluginRegisterClass URLAnnotation", "PluginRegisterClass LinkAnnotation",
                          "PluginRegisterClass ExtendedGraphicsState", "PluginRegisterClass Outline",
                          "PluginRegisterClass Destination", "pluginObjectType PixelRaster"));
}

TEST_F(Entry, ModuleListsTheClassesInTheOrderInWhichOlderHostsGetThem) {
  EnterWithVersion(2024.1);
  const std::vector<ClassRecord *> inModule = host_.AllClasses();
  EnterWithVersion(2013.1);
  EXPECT_EQ(host_.classes, inModule);
}

struct VersionCase {
  double version;
  const char *registers;
};

class EntryByVersion : public Entry, public testing::WithParamInterface<VersionCase> {};

TEST_P(EntryByVersion, RegistersWhatTheHostCanTake) {
  EnterWithVersion(GetParam().version);
  const std::string expected = GetParam().registers;
  EXPECT_EQ(host_.module != nullptr, expected == "module");
  EXPECT_EQ(host_.classes.size(), expected == "classes" ? 11U : 0U);
  if (expected == "nothing") {
    EXPECT_THAT(host_.calls, ElementsAre("RegisterPluginVersion 13", "REALGetRBVersion"));
  }
}

INSTANTIATE_TEST_SUITE_P(Versions, EntryByVersion,
                         testing::Values(VersionCase{0.0, "nothing"}, VersionCase{99.9, "nothing"},
                                         VersionCase{100.0, "classes"}, VersionCase{100.1, "nothing"},
                                         VersionCase{2012.2, "nothing"}, VersionCase{2013.0, "nothing"},
                                         VersionCase{2013.09, "nothing"}, VersionCase{2013.1, "classes"},
                                         VersionCase{2013.2, "classes"}, VersionCase{2013.33, "classes"},
                                         VersionCase{2013.39, "classes"}, VersionCase{2013.4, "module"},
                                         VersionCase{2013.41, "module"}, VersionCase{2014.0, "module"},
                                         VersionCase{2020.0, "module"}, VersionCase{2024.1, "module"}),
                         [](const auto &parameter) {
                           const long hundredths = std::lround(parameter.param.version * 100);
                           return "Version" + std::to_string(hundredths / 100) + '_' + std::to_string(hundredths % 100);
                         });

TEST_F(Entry, HostWithoutVersionServiceGetsNothing) {
  host_.missing = {"REALGetRBVersion"};
  EnterWithVersion(2024.1);
  EXPECT_THAT(host_.calls, ElementsAre("RegisterPluginVersion 13"));
  EXPECT_EQ(host_.module, nullptr);
  EXPECT_THAT(host_.classes, IsEmpty());
}

TEST_F(Entry, EveryClassGetsItsFlagAndKeepsOtherFlags) {
  EnterWithVersion(2024.1);
  ASSERT_EQ(host_.AllClasses().size(), 11U);
  for (ClassRecord *definition : host_.AllClasses()) {
    EXPECT_EQ(definition->flags, 4U) << definition->name;
    definition->flags = 0x100;
  }
  EnterWithVersion(2024.1);
  for (const ClassRecord *definition : host_.AllClasses()) {
    EXPECT_EQ(definition->flags, 0x104U) << definition->name;
  }
}

TEST_F(Entry, TooOldHostLeavesTheFlagsAlone) {
  EnterWithVersion(2024.1);
  for (ClassRecord *definition : host_.AllClasses()) definition->flags = 0;
  EnterWithVersion(2013.0);
  for (const ClassRecord *definition : host_.AllClasses()) EXPECT_EQ(definition->flags, 0U);
}

TEST_F(Entry, WordsThatTheHostWritesAreNotTouched) {
  EnterWithVersion(2024.1);
  std::intptr_t number = 1000;
  for (ClassRecord *definition : host_.AllClasses()) {
    definition->classDataOffset = number++;
    for (std::size_t i = 0; i < definition->eventCount; ++i) definition->events[i].slot = number++;
  }
  EnterWithVersion(2024.1);
  number = 1000;
  for (const ClassRecord *definition : host_.AllClasses()) {
    EXPECT_EQ(definition->classDataOffset, number++);
    for (std::size_t i = 0; i < definition->eventCount; ++i) EXPECT_EQ(definition->events[i].slot, number++);
  }
}

class EntryWithoutService : public Entry, public testing::WithParamInterface<std::string> {};

TEST_P(EntryWithoutService, DoesWhatIsLeftToDo) {
  host_.missing = {GetParam()};
  for (const double version : {2013.0, 2013.1, 2024.1}) {
    host_.calls.clear();
    EnterWithVersion(version);
    EXPECT_THAT(host_.calls, Not(Contains(StartsWith(GetParam()))));
    EXPECT_THAT(host_.calls, Not(Contains("a service that entry doesn't need")));
  }
  const bool versionKnown = GetParam() != "REALGetRBVersion";
  EXPECT_EQ(host_.module != nullptr, versionKnown && GetParam() != "PluginRegisterModule");
  EXPECT_EQ(host_.classes.size(), versionKnown && GetParam() != "PluginRegisterClass" ? 11U : 0U);
}

INSTANTIATE_TEST_SUITE_P(Services, EntryWithoutService, testing::ValuesIn(test::ServiceNames()),
                         [](const auto &parameter) { return parameter.param; });

TEST_F(Entry, HostWithoutAnyServiceIsSurvived) {
  host_.missing = {test::ServiceNames().begin(), test::ServiceNames().end()};
  EnterWithVersion(2024.1);
  EXPECT_THAT(host_.calls, IsEmpty());
}

TEST(Library, LeavesTheProcessWhenItIsClosed) {
  {
    RecordingHost host;
    const LoadedPlugin plugin;
    plugin.Enter(host.resolver());
    EXPECT_TRUE(LoadedPlugin::IsLoaded());
  }
  EXPECT_FALSE(LoadedPlugin::IsLoaded());
}

}  // namespace
}  // namespace quillbar
