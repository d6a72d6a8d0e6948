// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "host/testing/host_fixture.h"
#include "tests/host/test_plugins.h"

namespace quillbar::host {
namespace {

class EventTest : public HostFixture {
 protected:
  void SetUp() override { StartHost({TestPlugin("probe")}); }
};

TEST_F(EventTest, WithoutAHandlerThePluginGetsNone) {
  EXPECT_EQ(host().Call(host().Create("Probe"), "RaiseNumbers").AsDouble(), -1);
}

TEST_F(EventTest, ArgumentsOfEveryWidthArriveAndTheResultGoesBack) {
  const ObjectHandle probe = host().Create("Probe");
  host().SetEventHandler(probe, "numbers", [&](const ObjectHandle &sender, std::span<Value> arguments) {
    EXPECT_EQ(sender, probe);
    EXPECT_EQ(arguments.size(), 6U);
    EXPECT_EQ(arguments[0], Value(true));
    EXPECT_EQ(arguments[1], Value(std::int16_t{-2}));
    EXPECT_EQ(arguments[2], Value(0.5F));
    EXPECT_EQ(arguments[3], Value(0.25));
    EXPECT_EQ(arguments[4], Value(4000000000U));
    EXPECT_EQ(arguments[5], host().Constant("Probe.Small.HUGE"));
    return Value(2.5F);
  });
  EXPECT_EQ(host().Call(probe, "RaiseNumbers").AsDouble(), 2.5);
  EXPECT_EQ(host().InspectLedger().eventsRaised, 1U);
  host().SetEventHandler(probe, "Numbers", {});
}

TEST_F(EventTest, StringsGoBothWays) {
  const ObjectHandle probe = host().Create("Probe");
  host().SetEventHandler(probe, "Words", [](const ObjectHandle &, std::span<Value> arguments) {
    return Value(arguments[0].Utf8() + "!");
  });
  EXPECT_EQ(host().Call(probe, "RaiseWords", {"hé"}).Utf8(), "hé!");
  EXPECT_EQ(host().Call(probe, "RaiseWords", {""}).Utf8(), "!");
}

TEST_F(EventTest, ByRefArgumentsAreChangedInPlace) {
  const ObjectHandle probe = host().Create("Probe");
  host().SetEventHandler(probe, "Change", [](const ObjectHandle &, std::span<Value> arguments) {
    arguments[0] = arguments[0].AsInteger() * 2;
    return Value(true);
  });
  EXPECT_EQ(host().Call(probe, "RaiseChange", {21}).AsInteger(), 42);
}

TEST_F(EventTest, ObjectsThatHandlersReturnBelongToThePlugin) {
  const ObjectHandle probe = host().Create("Probe");
  host().SetEventHandler(probe, "Pick",
                         [this](const ObjectHandle &, std::span<Value>) { return Value(host().Create("LoudProbe")); });
  EXPECT_EQ(host().Call(probe, "RaisePick").AsObject().Class().name, "LoudProbe");
}

TEST_F(EventTest, AHandlerWithoutAResultGivesTheEmptyOne) {
  const ObjectHandle probe = host().Create("Probe");
  host().SetEventHandler(probe, "Pick", [](const ObjectHandle &, std::span<Value>) { return Value(); });
  EXPECT_TRUE(host().Call(probe, "RaisePick").AsObject().IsNil());
}

TEST_F(EventTest, ErrorsOfHandlersComeOutOfTheCallThatRaised) {
  const ObjectHandle probe = host().Create("Probe");
  host().SetEventHandler(probe, "Words", [](const ObjectHandle &, std::span<Value>) -> Value {
    throw HostError(ErrorKind::kOutOfBounds, "from the handler");
  });
  EXPECT_THROW(host().Call(probe, "RaiseWords", {"x"}), HostError);
  host().SetEventHandler(probe, "Words", {});
  EXPECT_TRUE(host().Call(probe, "RaiseWords", {"x"}).AsString().IsEmpty()) << "the error is not thrown twice";
}

TEST_F(EventTest, AResultOfTheWrongTypeIsAnError) {
  const ObjectHandle probe = host().Create("Probe");
  host().SetEventHandler(probe, "Pick", [](const ObjectHandle &, std::span<Value>) { return Value("no object"); });
  EXPECT_THROW(host().Call(probe, "RaisePick"), HostError);
}

TEST_F(EventTest, HandlersMayCallBackAndDetachThemselves) {
  const ObjectHandle probe = host().Create("Probe");
  int calls = 0;
  host().SetEventHandler(probe, "Change", [&](const ObjectHandle &sender, std::span<Value> arguments) {
    ++calls;
    host().SetEventHandler(sender, "Change", {});
    EXPECT_EQ(host().Call(sender, "EchoString", {"nested"}).Utf8(), "nested");
    arguments[0] = 5;
    return Value(true);
  });
  EXPECT_EQ(host().Call(probe, "RaiseChange", {1}).AsInteger(), 5);
  EXPECT_EQ(host().Call(probe, "RaiseChange", {1}).AsInteger(), 1);
  EXPECT_EQ(calls, 1);
}

TEST_F(EventTest, HandlersBelongToOneObject) {
  const ObjectHandle first = host().Create("Probe");
  const ObjectHandle second = host().Create("Probe");
  host().SetEventHandler(first, "Numbers", [](const ObjectHandle &, std::span<Value>) { return Value(1.0); });
  EXPECT_EQ(host().Call(second, "RaiseNumbers").AsDouble(), -1);
}

TEST_F(EventTest, SubclassesInheritEvents) {
  const ObjectHandle probe = host().Create("QuietProbe");
  host().SetEventHandler(probe, "Numbers", [](const ObjectHandle &, std::span<Value>) { return Value(3); });
  EXPECT_EQ(host().Call(probe, "RaiseNumbers").AsDouble(), 3);
}

TEST_F(EventTest, UnknownEventsAreRefused) {
  const ObjectHandle probe = host().Create("Probe");
  EXPECT_THROW(host().SetEventHandler(probe, "Absent", {}), HostError);
}

TEST_F(EventTest, AnObjectLetGoInsideItsHandlerLivesUntilTheCallEnds) {
  ObjectHandle probe = host().Create("Probe");
  host().SetEventHandler(probe, "Numbers", [&](const ObjectHandle &, std::span<Value>) {
    probe = {};
    EXPECT_EQ(host().InspectLedger().objectsDestroyed, 0U);
    return Value(1);
  });
  const MethodInfo *raise = host().Class("Probe").FindMethods("RaiseNumbers").front();
  host().Invoke(*raise, ObjectHandle(probe), {});
  EXPECT_EQ(host().InspectLedger().objectsDestroyed, 1U);
}

}  // namespace
}  // namespace quillbar::host
