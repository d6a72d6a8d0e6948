// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cstdint>

#include "host/testing/host_fixture.h"
#include "tests/host/test_plugins.h"

namespace quillbar::host {
namespace {

class ObjectTest : public HostFixture {
 protected:
  void SetUp() override { StartHost({TestPlugin("probe")}); }
  std::string Journal() { return host().Call(host().Create("Probe"), "TakeJournal").Utf8(); }
};

TEST_F(ObjectTest, ClassConstructorsRunSuperclassFirstDestructorsSubclassFirst) {
  const ObjectHandle reader = host().Create("Probe");
  host().Call(reader, "TakeJournal");
  host().Create("LoudProbe");
  EXPECT_EQ(host().Call(reader, "TakeJournal").Utf8(), "+Probe+Loud-Loud-Probe");
}

TEST_F(ObjectTest, ASubclassWithoutConstructorsUsesThoseAboveIt) {
  const ObjectHandle reader = host().Create("Probe");
  host().Call(reader, "TakeJournal");
  host().Create("QuietProbe");
  EXPECT_EQ(host().Call(reader, "TakeJournal").Utf8(), "+Probe+Loud-Loud-Probe");
}

TEST_F(ObjectTest, ClassDataStartsAsZeroes) { EXPECT_EQ(Journal(), "+Probe") << "a ! marks a byte that is not zero"; }

TEST_F(ObjectTest, EveryClassOfAChainHasItsOwnAlignedData) {
  const ObjectHandle loud = host().Create("LoudProbe");
  const auto *probeData = static_cast<char *>(host().ClassData(loud, host().Class("Probe")));
  const auto *loudData = static_cast<char *>(host().ClassData(loud, host().Class("LoudProbe")));
  EXPECT_EQ(reinterpret_cast<std::uintptr_t>(probeData) % 16, 0U);
  EXPECT_EQ(reinterpret_cast<std::uintptr_t>(loudData) % 16, 0U);
  EXPECT_GE(loudData - probeData, static_cast<std::ptrdiff_t>(host().Class("Probe").dataSize));
  EXPECT_EQ(host().ClassData(host().Create("Probe"), host().Class("LoudProbe")), nullptr);
}

TEST_F(ObjectTest, DataOfTwoInstancesIsAsFarApartAsTheInstances) {
  const ObjectHandle first = host().Create("Probe");
  const ObjectHandle second = host().Create("Probe");
  const auto distance = reinterpret_cast<char *>(second.Get()) - reinterpret_cast<char *>(first.Get());
  EXPECT_EQ(host().Call(first, "DataDistance", {second}).AsInteger(), distance);
}

TEST_F(ObjectTest, PluginDataIsOnlyHandedOutForTheRightClass) {
  const ObjectHandle probe = host().Create("Probe");
  EXPECT_TRUE(host().Call(probe, "HasLoudData", {host().Create("QuietProbe")}).AsBoolean());
  EXPECT_FALSE(host().Call(probe, "HasLoudData", {probe}).AsBoolean());
}

TEST_F(ObjectTest, ALockedObjectOutlivesItsVariable) {
  ObjectHandle keeper = host().Create("Probe");
  host().Call(keeper, "Keep", {host().Create("LoudProbe")});
  EXPECT_EQ(host().InspectLedger().objectsDestroyed, 0U);
  keeper = {};
  EXPECT_EQ(host().InspectLedger().objectsDestroyed, 2U);
}

TEST_F(ObjectTest, ChainsOfLocksEndWithTheirHead) {
  ObjectHandle head = host().Create("Probe");
  for (int i = 0; i < 100; ++i) {
    ObjectHandle next = host().Create("Probe");
    host().Call(next, "Keep", {head});
    head = next;
  }
  EXPECT_EQ(host().InspectLedger().objectsDestroyed, 0U);
  head = {};
  EXPECT_EQ(host().InspectLedger().objectsDestroyed, 101U);
}

TEST_F(ObjectTest, ConstructorsAreChosenByTheirArguments) {
  EXPECT_EQ(host().Get(host().Create("Probe", {42}), "Number").AsInteger(), 42);
  EXPECT_EQ(host().Get(host().Create("Probe"), "Number").AsInteger(), 0);
}

TEST_F(ObjectTest, ConstructorsOfASubclassHideThoseAbove) {
  EXPECT_THROW(host().Create("LoudProbe", {42}), HostError);
  EXPECT_THROW(host().Create("QuietProbe", {42}), HostError) << "it inherits those of the nearest class";
}

TEST_F(ObjectTest, PrivateConstructorsAreOnlyForThePlugin) {
  const ObjectHandle made = host().Call(host().Create("Probe"), "MakeSealed").AsObject();
  EXPECT_EQ(made.Class().QualifiedName(), "ProbeModule.Sealed");
  try {
    host().Create("Sealed");
    FAIL();
  } catch (const HostError &error) {
    EXPECT_EQ(error.kind(), ErrorKind::kNotAccessible);
    EXPECT_NE(std::string(error.what()).find("Sealed"), std::string::npos);
  }
}

TEST_F(ObjectTest, AMillionReferencesCostOneObject) {
  const ObjectHandle probe = host().Create("Probe");
  const std::vector<ObjectHandle> copies(1000000, probe);
  EXPECT_EQ(host().InspectLedger().objectsCreated, 1U);
}

TEST_F(ObjectTest, MoreObjectsThanAreRememberedComeAndGo) {
  for (int i = 0; i < 20000; ++i) host().Create("LoudProbe");
  EXPECT_EQ(host().InspectLedger().objectsDestroyed, 20000U);
}

}  // namespace
}  // namespace quillbar::host
