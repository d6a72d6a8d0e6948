// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include <cmath>
#include <cstdint>
#include <limits>

#include "host/testing/host_fixture.h"
#include "tests/host/test_plugins.h"

namespace quillbar::host {
namespace {

class CallTest : public HostFixture {
 protected:
  void SetUp() override { StartHost({TestPlugin("probe")}); }
  ObjectHandle Probe() { return host().Create("Probe"); }
};

ErrorKind KindOf(const std::function<void()> &action) {
  try {
    action();
  } catch (const HostError &error) {
    return error.kind();
  }
  ADD_FAILURE() << "no error was thrown";
  return ErrorKind::kUnsupported;
}

TEST_F(CallTest, IntegersOfEveryWidthKeepTheirExtremes) {
  const ObjectHandle probe = Probe();
  const auto echo = [&](const char *method, std::int64_t value) {
    return host().Call(probe, method, {value}).AsInteger();
  };
  for (const std::int64_t sign : {std::int64_t{1}, std::int64_t{-1}}) {
    EXPECT_EQ(echo("EchoInt8", sign * 127), sign * 127);
    EXPECT_EQ(echo("EchoInt16", sign * 32767), sign * 32767);
    EXPECT_EQ(echo("EchoInt32", sign * 2147483647), sign * 2147483647);
    EXPECT_EQ(echo("EchoInt64", sign * INT64_MAX), sign * INT64_MAX);
  }
  EXPECT_EQ(echo("EchoUInt8", 255), 255);
  EXPECT_EQ(echo("EchoUInt16", 65535), 65535);
  EXPECT_EQ(echo("EchoUInt32", 4294967295), 4294967295);
  EXPECT_EQ(host().Call(probe, "EchoUInt64", {UINT64_MAX}), Value(UINT64_MAX));
  EXPECT_EQ(echo("EchoInteger", std::numeric_limits<Integer>::min()), std::numeric_limits<Integer>::min());
}

TEST_F(CallTest, IntegersAreCutToTheParametersWidth) {
  const ObjectHandle probe = Probe();
  EXPECT_EQ(host().Call(probe, "EchoInt8", {200}).AsInteger(), -56);
  EXPECT_EQ(host().Call(probe, "EchoUInt16", {65537}).AsInteger(), 1);
  EXPECT_EQ(host().Call(probe, "EchoUInt8", {-1}).AsInteger(), 255);
}

TEST_F(CallTest, RealNumbersTravelUnpromoted) {
  const ObjectHandle probe = Probe();
  EXPECT_EQ(host().Call(probe, "EchoSingle", {0.1}), Value(0.1F));
  EXPECT_EQ(host().Call(probe, "EchoDouble", {0.1}), Value(0.1));
  EXPECT_TRUE(std::isnan(host().Call(probe, "EchoDouble", {std::nan("")}).AsDouble()));
}

TEST_F(CallTest, BooleansColorsAndAddressesComeBack) {
  const ObjectHandle probe = Probe();
  EXPECT_EQ(host().Call(probe, "EchoBoolean", {true}), Value(true));
  EXPECT_EQ(host().Call(probe, "EchoBoolean", {false}), Value(false));
  EXPECT_EQ(host().Call(probe, "EchoColor", {Color{0xFF8040C0}}), Value(Color{0xFF8040C0}));
  EXPECT_EQ(host().Call(probe, "EchoPtr", {Value::OfPtr(this)}).AsPtr(), this);
}

TEST_F(CallTest, EnumerationsTravelAsTheirUnderlyingType) {
  const ObjectHandle probe = Probe();
  EXPECT_EQ(host().Call(probe, "EchoMode", {host().Constant("Probe.Mode.BELOW")}).AsInteger(), -5);
  EXPECT_EQ(host().Call(probe, "EchoSmall", {host().Constant("ProbeModule.Probe.Small.huge")}),
            host().Constant("Probe.Small.HUGE"));
  EXPECT_EQ(host().Call(probe, "EchoMode", {255}), host().Constant("Probe.Mode.LAST"));
  EXPECT_EQ(KindOf([&] { host().Call(probe, "EchoMode", {host().Constant("Probe.Small.TINY")}); }),
            ErrorKind::kArguments);
}

TEST_F(CallTest, StringsComeBackAndEmptyOnesAreNil) {
  const ObjectHandle probe = Probe();
  EXPECT_EQ(host().Call(probe, "EchoString", {"Grüße, 世界 😀"}).Utf8(), "Grüße, 世界 😀");
  EXPECT_TRUE(host().Call(probe, "EchoString", {""}).AsString().IsEmpty());
}

TEST_F(CallTest, ObjectsComeBackWithAReferenceOfTheirOwn) {
  const ObjectHandle probe = Probe();
  ObjectHandle other = host().Create("QuietProbe");
  const ObjectHandle same = host().Call(probe, "EchoObject", {other}).AsObject();
  EXPECT_EQ(same, other);
  EXPECT_EQ(same.Class().name, "QuietProbe");
  EXPECT_TRUE(host().Call(probe, "EchoObject", {Value::Nil()}).AsObject().IsNil());
}

TEST_F(CallTest, MixedWidthsAndManyFloatsKeepTheirPlaces) {
  const Value sum =
      host().Call(Probe(), "Mixed", {true, -2, 0.5, 4000000000U, 0.25, 200, -1000, 1, 2, 4, 8, 16, 32, 64.5});
  EXPECT_DOUBLE_EQ(sum.AsDouble(), 1 - 2 + 0.5 + 4e9 + 0.25 + 200 - 1000 + 127.5);
}

TEST_F(CallTest, ByRefArgumentsComeBackInTheirOwnType) {
  const ObjectHandle probe = Probe();
  const auto through = [&](const char *method, Value value) {
    std::vector<Value> arguments{std::move(value)};
    host().CallByRef(probe, method, arguments);
    return arguments[0];
  };
  EXPECT_EQ(through("DoubleInt16", 12), Value(std::int16_t{24}));
  EXPECT_EQ(through("DoubleInteger", 21), Value(Integer{42}));
  EXPECT_EQ(through("DoubleSingle", 0.75), Value(1.5F));
  EXPECT_EQ(through("DoubleDouble", 0.1), Value(0.2));
  EXPECT_EQ(through("Negate", true), Value(false));
  EXPECT_EQ(through("Greet", "x").Utf8(), "hello somebody");
  EXPECT_EQ(through("Greet", "").Utf8(), "hello nobody");
  EXPECT_EQ(through("Replace", Value::Nil()).AsObject(), probe);
}

TEST_F(CallTest, PropertiesHaveGettersAndSettersWithTheirParameterWord) {
  const ObjectHandle probe = Probe();
  host().Set(probe, "number", 4);
  EXPECT_EQ(host().Get(probe, "Number"), Value(Integer{7})) << "the setter adds its parameter word, 3";
  EXPECT_EQ(host().Get(probe, "Ratio"), Value(0.1F));
  EXPECT_EQ(KindOf([&] { host().Set(probe, "Ratio", 1.0); }), ErrorKind::kNotAccessible);
  EXPECT_EQ(KindOf([&] { host().Get(probe, "Absent"); }), ErrorKind::kUnknownName);
}

TEST_F(CallTest, LeftOutArgumentsTakeTheirDeclaredDefaults) {
  const ObjectHandle probe = Probe();
  EXPECT_EQ(host().Call(probe, "WithDefaults", {1}).AsInteger(), 1021);
  EXPECT_EQ(host().Call(probe, "WithDefaults", {1, 2}).AsInteger(), 1003);
  EXPECT_EQ(host().Call(probe, "WithDefaults", {1, 2, false}).AsInteger(), 3);
}

TEST_F(CallTest, WrongCallsAreRefusedBeforeThePluginIsReached) {
  const ObjectHandle probe = Probe();
  EXPECT_EQ(KindOf([&] { host().Call(probe, "Absent"); }), ErrorKind::kUnknownName);
  EXPECT_EQ(KindOf([&] { host().Call(probe, "EchoInt8", {"text"}); }), ErrorKind::kArguments);
  EXPECT_EQ(KindOf([&] { host().Call(probe, "EchoInt8", {1, 2}); }), ErrorKind::kArguments);
  EXPECT_EQ(KindOf([&] { host().Call(probe, "EchoInt8"); }), ErrorKind::kArguments);
  EXPECT_EQ(KindOf([&] { host().Call(ObjectHandle(), "EchoInt8", {1}); }), ErrorKind::kNilObject);
  EXPECT_EQ(KindOf([&] { host().Call(probe, "EchoObject", {host().Create("MemoryBlock", {1})}); }),
            ErrorKind::kArguments);
}

TEST_F(CallTest, ArgumentErrorsShowTheCandidates) {
  try {
    host().Create("Probe", {"text", 1});
    FAIL();
  } catch (const HostError &error) {
    // Where Integer has 32 bits, both are one type.
    EXPECT_THAT(error.what(), testing::HasSubstr(sizeof(void *) == 8 ? "(String, Int32)" : "(String, Integer)"));
    EXPECT_THAT(error.what(), testing::HasSubstr("Probe.Constructor(number as Integer)"));
  }
}

TEST_F(CallTest, MembersOfAnotherClassAreRefused) {
  const ObjectHandle block = host().Create("MemoryBlock", {4});
  const MethodInfo *echo = host().Class("Probe").FindMethods("EchoInt8").front();
  std::vector<Value> arguments{1};
  EXPECT_EQ(KindOf([&] { host().Invoke(*echo, block, arguments); }), ErrorKind::kTypeMismatch);
}

TEST_F(CallTest, TheClosestOverloadIsChosen) {
  EXPECT_EQ(host().Call(host().Create("LoudProbe"), "EchoInt8", {1}).AsInteger(), 99) << "the subclass's own";
  EXPECT_EQ(host().Call(Probe(), "EchoInt8", {1}).AsInteger(), 1);
}

TEST_F(CallTest, ArraysAreReadThroughEitherGetter) {
  ArrayHandle numbers = ArrayHandle::Create(TypeKind::kUInt16);
  for (const int number : {1, 2, 65535}) numbers.Append(number);
  EXPECT_EQ(host().Call(Probe(), "Sum", {numbers}).AsInteger(), 65538);
  EXPECT_EQ(host().Call(Probe(), "Sum", {ArrayHandle::Create(TypeKind::kUInt16)}).AsInteger(), 0);

  StartHost({TestPlugin("probe")}, {.missing = {"PluginUInt16ArrayGetProc"}});
  EXPECT_EQ(host().Call(Probe(), "Sum", {numbers}).AsInteger(), 65538);
}

TEST_F(CallTest, ArraysOfAnotherElementTypeAreRefused) {
  EXPECT_EQ(KindOf([&] { host().Call(Probe(), "Sum", {ArrayHandle::Create(TypeKind::kInt32)}); }),
            ErrorKind::kArguments);
}

TEST_F(CallTest, MembersCanBeReachedByAddressWithLentArguments) {
  const ObjectHandle probe = Probe();
  const MethodInfo *echo = host().Class("Probe").FindMethods("EchoString").front();
  const StringHandle text = StringHandle::FromUtf8("direct");
  const Host::Loan objectLoan(host(), probe);
  const Host::Loan textLoan(host(), text);
  const auto function = reinterpret_cast<String (*)(Object, String)>(echo->function);
  EXPECT_EQ(host().TakeResult(function(probe.Get(), text.Get())).Utf8(), "direct");
}

TEST_F(CallTest, ClassesMentionedOnlyInDeclarationsCantBeMade) {
  const MethodInfo *method = host().Class("Probe").FindMethods("NeedsAbsentClass").front();
  const ClassInfo *absent = method->parameters[0].type.objectClass();
  ASSERT_NE(absent, nullptr);
  EXPECT_FALSE(absent->isRegistered);
  EXPECT_EQ(KindOf([&] { host().Create(*absent, std::span<Value>()); }), ErrorKind::kUnknownName);
  EXPECT_FALSE(host().Call(Probe(), "NeedsAbsentClass", {Value::Nil()}).AsBoolean());
}

}  // namespace
}  // namespace quillbar::host
