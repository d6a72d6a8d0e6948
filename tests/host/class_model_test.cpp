// SPDX-License-Identifier: MIT
#include "host/runtime/class_model.h"

#include <gtest/gtest.h>

#include "host/testing/host_fixture.h"
#include "tests/host/test_plugins.h"

namespace quillbar::host {
namespace {

class ClassModelTest : public HostFixture {
 protected:
  void SetUp() override { StartHost({TestPlugin("probe")}); }
  const Registry &registry() { return host().registry(); }
};

TEST_F(ClassModelTest, ClassesAreFoundInAnyCaseWithAndWithoutTheirModule) {
  const ClassInfo *probe = registry().FindClass("Probe");
  ASSERT_NE(probe, nullptr);
  EXPECT_EQ(registry().FindClass("probemodule.PROBE"), probe);
  EXPECT_EQ(probe->QualifiedName(), "ProbeModule.Probe");
  EXPECT_EQ(registry().FindClass("OtherModule.Probe"), nullptr);
  EXPECT_EQ(registry().FindClass("Prob"), nullptr);
}

TEST_F(ClassModelTest, TheHostsOwnClassesStandInTheSameModel) {
  const ClassInfo *block = registry().FindClass("memoryblock");
  ASSERT_NE(block, nullptr);
  EXPECT_TRUE(block->isBuiltIn);
  EXPECT_NE(block->FindProperty("Size"), nullptr);
  EXPECT_NE(registry().FindClass("FolderItem")->FindProperty("NativePath"), nullptr);
}

TEST_F(ClassModelTest, ASuperclassMayBeRegisteredLater) {
  const ClassInfo *quiet = registry().FindClass("QuietProbe");
  ASSERT_NE(quiet->superclass, nullptr);
  EXPECT_EQ(quiet->superclass->name, "LoudProbe");
  EXPECT_TRUE(quiet->IsSubclassOf(*registry().FindClass("Probe")));
  EXPECT_FALSE(registry().FindClass("Probe")->IsSubclassOf(*quiet));
}

TEST_F(ClassModelTest, MembersAreInherited) {
  const ClassInfo *quiet = registry().FindClass("QuietProbe");
  EXPECT_EQ(quiet->FindProperty("NUMBER")->owner->name, "Probe");
  EXPECT_EQ(quiet->FindEvent("words")->owner->name, "Probe");
  EXPECT_EQ(quiet->FindEnumeration("Mode")->qualifiedName, "Probe.Mode");
  EXPECT_EQ(quiet->FindMethods("echoInt8").size(), 1U) << "the same parameters: the nearer hides the other";
}

TEST_F(ClassModelTest, DeclarationsAreReadWithTheirTypes) {
  const MethodInfo *method = registry().FindClass("Probe")->FindMethods("EchoSmall").front();
  EXPECT_EQ(method->declaration, "EchoSmall(value as ProbeModule.Probe.Small) as Small");
  EXPECT_EQ(method->parameters[0].type, method->result);
  EXPECT_EQ(method->result.Name(), "Probe.Small");
  EXPECT_EQ(method->result.StorageKind(), TypeKind::kUInt8);
  const MethodInfo *sum = registry().FindClass("Probe")->FindMethods("Sum").front();
  EXPECT_EQ(sum->parameters[0].type.Name(), "UInt16()");
  EXPECT_EQ(registry().FindClass("Probe")->FindMethods("Greet").front()->result, Type());
}

TEST_F(ClassModelTest, EnumerationsKnowTheirMembers) {
  const EnumerationInfo *mode = registry().FindEnumeration("ProbeModule.Probe.Mode");
  ASSERT_NE(mode, nullptr);
  ASSERT_EQ(mode->members.size(), 4U);
  EXPECT_EQ(mode->Find("last")->value, 255);
  EXPECT_EQ(mode->FindValue(-5)->name, "BELOW");
  EXPECT_EQ(mode->Find("absent"), nullptr);
  EXPECT_EQ(registry().FindEnumeration("Mode"), nullptr) << "only inside its class";
  EXPECT_TRUE(registry().FindType("Mode", registry().FindClass("Probe")).IsEnumeration());
}

TEST_F(ClassModelTest, ConstantsAreFoundByName) {
  EXPECT_EQ(host().Constant("probe.mode.second").AsInteger(), 1);
  EXPECT_THROW(host().Constant("Probe.Mode.Absent"), HostError);
  EXPECT_THROW(host().Constant("Absent"), HostError);
}

TEST_F(ClassModelTest, PrivateConstructorsAreKnownAsSuch) {
  EXPECT_TRUE(registry().FindClass("Sealed")->FindMethods("Constructor").front()->IsPrivate());
  EXPECT_FALSE(registry().FindClass("Probe")->FindMethods("Constructor").front()->IsPrivate());
}

}  // namespace
}  // namespace quillbar::host
