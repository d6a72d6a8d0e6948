// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include "host/testing/host_fixture.h"
#include "platform/sanitizers.h"
#include "tests/host/test_plugins.h"

namespace quillbar::host {
namespace {

using testing::HasSubstr;

class ReferenceLedgerTest : public HostFixture {
 protected:
  void SetUp() override {
    StartHost({TestPlugin("culprit")});
    culprit_ = host().Create("Culprit");
  }
  void TearDown() override {
    culprit_ = {};
    HostFixture::TearDown();
  }
  void Commit(const char *offence, std::initializer_list<Value> arguments = {}) {
    host().Call(culprit_, offence, arguments);
  }
  /// What has not been given back, apart from the culprit, which the test holds.
  std::vector<Outstanding> LeftOver() {
    IgnoreLedger();
    return host().InspectLedger().outstanding;
  }

  ObjectHandle culprit_;
};

TEST_F(ReferenceLedgerTest, ABalancedLedgerSaysSo) {
  culprit_ = {};
  const LedgerReport report = host().InspectLedger();
  EXPECT_TRUE(report.IsBalanced());
  EXPECT_THAT(report.Text(), HasSubstr("The ledger balances."));
  EXPECT_EQ(report.objectsCreated, 1U);
  EXPECT_EQ(report.objectsDestroyed, 1U);
}

TEST_F(ReferenceLedgerTest, ObjectsThatTheScriptStillHoldsAreNamed) {
  EXPECT_EQ(host().InspectLedger().heldByScript, std::vector<std::string>{"Culprit"});
  EXPECT_FALSE(host().InspectLedger().IsBalanced());
}

TEST_F(ReferenceLedgerTest, ALeakedStringIsNamedWithItsTextAndMember) {
  Commit("LeakString");
  Commit("LeakString");
  const auto left = LeftOver();
  ASSERT_EQ(left.size(), 1U);
  EXPECT_EQ(left[0].resource, Resource::kString);
  EXPECT_EQ(left[0].count, 2U);
  EXPECT_EQ(left[0].what, "\"stolen goods\"");
  EXPECT_EQ(left[0].member, "Culprit.LeakString()");
  EXPECT_THAT(host().InspectLedger().Text(), HasSubstr("not given back: 2 x string, \"stolen goods\""));
}

TEST_F(ReferenceLedgerTest, ALeakedStringDataRecordIsNamed) {
  Commit("LeakData", {"kept"});
  const auto left = LeftOver();
  ASSERT_EQ(left.size(), 1U);
  EXPECT_EQ(left[0].resource, Resource::kStringData);
  EXPECT_EQ(left[0].member, "Culprit.LeakData(text as String)");
}

TEST_F(ReferenceLedgerTest, ALeakedObjectIsNamed) {
  Commit("LeakObject");
  const auto left = LeftOver();
  ASSERT_EQ(left.size(), 1U);
  EXPECT_EQ(left[0].resource, Resource::kObject);
  EXPECT_EQ(left[0].what, "Culprit");
  EXPECT_EQ(left[0].member, "Culprit.LeakObject()");
}

TEST_F(ReferenceLedgerTest, AForgottenLockIsNamedAndKeepsTheObject) {
  Commit("LeakLock");
  culprit_ = {};
  const auto left = LeftOver();
  ASSERT_EQ(left.size(), 1U);
  EXPECT_EQ(left[0].member, "Culprit.LeakLock()");
  EXPECT_EQ(host().InspectLedger().objectsDestroyed, 0U);
}

TEST_F(ReferenceLedgerTest, DoubleReleasesAreNoted) {
  Commit("ReleaseStringTwice");
  ExpectViolations({ViolationKind::kDoubleRelease});
  Commit("DisposeTwice", {"text"});
  ExpectViolations({ViolationKind::kDoubleRelease});
  Commit("UnlockOnceTooOften");
  ExpectViolations({ViolationKind::kDoubleRelease});
  Commit("UnlockDestroyedObject");
  ExpectViolations({ViolationKind::kDoubleRelease});
}

TEST_F(ReferenceLedgerTest, ReleasesOfWhatWasNeverGivenAreNoted) {
  Commit("ReleaseBorrowedString", {"lent"});
  ExpectViolations({ViolationKind::kNeverGiven});
  Commit("ReleaseNil");
  ExpectViolations({ViolationKind::kNeverGiven});
  Commit("ReleaseNonsense");
  ExpectViolations({ViolationKind::kNeverGiven});
  Commit("DisposeNothing");
  ExpectViolations({ViolationKind::kNeverGiven});
  Commit("DisposeAltered", {"text"});
  ExpectViolations({ViolationKind::kNeverGiven});
  Commit("UnlockBorrowed", {host().Create("Culprit")});
  ExpectViolations({ViolationKind::kNeverGiven});
  Commit("UnlockNil");
  ExpectViolations({ViolationKind::kNeverGiven});
  Commit("UnlockNonsense");
  ExpectViolations({ViolationKind::kNeverGiven});
}

TEST_F(ReferenceLedgerTest, AStringReleasedByMistakeStaysUsableForTheScript) {
  const StringHandle text = StringHandle::FromUtf8("mine");
  Commit("ReleaseBorrowedString", {text});
  ExpectViolations({ViolationKind::kNeverGiven});
  EXPECT_EQ(text.Utf8(), "mine");
}

TEST_F(ReferenceLedgerTest, UseAfterReleaseIsNoted) {
  Commit("UseReleasedString");
  ExpectViolations({ViolationKind::kUseAfterRelease});
  Commit("UseDestroyedObject");
  ExpectViolations({ViolationKind::kUseAfterRelease});
}

TEST_F(ReferenceLedgerTest, BorrowedThingsMayNotBeUsedAfterTheirCall) {
  const StringHandle text = StringHandle::FromUtf8("borrowed");
  Commit("KeepBorrowedString", {text});
  Commit("UseKeptString");
  ExpectViolations({ViolationKind::kUseAfterRelease});

  const ObjectHandle other = host().Create("Culprit");
  Commit("KeepBorrowedObject", {other});
  Commit("UseKeptObject");
  ExpectViolations({ViolationKind::kUseAfterRelease});

  const ArrayHandle numbers = ArrayHandle::Create(TypeKind::kUInt16, 3);
  Commit("KeepArray", {numbers});
  EXPECT_EQ(host().Call(culprit_, "UseKeptArray").AsInteger(), -1);
  ExpectViolations({ViolationKind::kUseAfterRelease});
}

TEST_F(ReferenceLedgerTest, ResultsMustCarryAReference) {
  const ObjectHandle other = host().Create("Culprit");
  EXPECT_EQ(host().Call(culprit_, "ReturnBorrowedObject", {other}).AsObject(), other);
  ExpectViolations({ViolationKind::kWrongCount});
  EXPECT_EQ(host().Call(culprit_, "ReturnBorrowedString", {"lent"}).Utf8(), "lent");
  ExpectViolations({ViolationKind::kWrongCount});
  EXPECT_EQ(host().Call(culprit_, "ReturnReleasedString").Utf8(), "");
  ExpectViolations({ViolationKind::kWrongCount});
}

TEST_F(ReferenceLedgerTest, ADyingObjectCantBeLocked) {
  ObjectHandle other = host().Create("Culprit");
  host().Call(other, "LockWhileDying");
  other = {};
  ExpectViolations({ViolationKind::kWrongCount});
}

TEST_F(ReferenceLedgerTest, AResultOfAnotherClassThanDeclaredIsNoted) {
  EXPECT_TRUE(host().Call(culprit_, "ReturnWrongClass").AsObject().IsNil());
  ExpectViolations({ViolationKind::kBadArgument});
}

TEST_F(ReferenceLedgerTest, BytesWrittenPastTheClassDataAreNoted) {
  ObjectHandle other = host().Create("Culprit");
  host().Call(other, "WritePastData");
  other = {};
  // The byte that means "lock me while dying" is overwritten as well.
  ExpectViolations({ViolationKind::kWrongCount, ViolationKind::kMemoryOverrun});
}

TEST_F(ReferenceLedgerTest, BytesWrittenIntoADestroyedObjectAreNoted) {
#if QUILLBAR_WATCHES_ADDRESSES
  GTEST_SKIP() << "AddressSanitizer stops the program at such a write";
#endif
  host().Call(host().Create("Culprit"), "KeepSelf");
  Commit("WriteIntoDestroyed");
  ExpectViolations({ViolationKind::kMemoryOverrun});
}

TEST_F(ReferenceLedgerTest, SenselessArgumentsAreNotedAndAnsweredWithNothing) {
  Commit("AskUnknownSlot");
  Commit("AskClassOfNothing");
  Commit("BuildNegative");
  Commit("ConvertToNowhere", {"text"});
  ExpectViolations(std::vector(4, ViolationKind::kBadArgument));
  Commit("ReadOutside", {ArrayHandle::Create(TypeKind::kUInt16, 2)});
  ExpectViolations(std::vector(2, ViolationKind::kBadArgument));
  Commit("ReadAsUInt16", {ArrayHandle::Create(TypeKind::kInt32, 2)});
  ExpectViolations({ViolationKind::kBadArgument});
}

TEST_F(ReferenceLedgerTest, AnEventRaisedForAnotherObjectIsNoted) {
  const ObjectHandle other = host().Create("Culprit");
  int calls = 0;
  host().SetEventHandler(culprit_, "Asked", [&](const ObjectHandle &, std::span<Value>) {
    ++calls;
    return Value();
  });
  Commit("RaiseForAnother", {other});
  EXPECT_EQ(calls, 0);
  ExpectViolations({ViolationKind::kBadArgument});
}

TEST_F(ReferenceLedgerTest, ViolationsNameTheMemberThatCommittedThem) {
  Commit("ReleaseBorrowedString", {"lent"});
  const LedgerReport report = host().InspectLedger();
  ASSERT_EQ(report.violations.size(), 1U);
  EXPECT_EQ(report.violations[0].member, "Culprit.ReleaseBorrowedString(text as String)");
  EXPECT_THAT(report.violations[0].message, HasSubstr("REALUnlockString"));
  EXPECT_THAT(report.violations[0].message, HasSubstr("\"lent\""));
  host().ClearViolations();
}

}  // namespace
}  // namespace quillbar::host
