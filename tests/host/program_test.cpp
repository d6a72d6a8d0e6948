// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include <algorithm>
#include <chrono>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "host/program/command_line.h"
#include "host/program/describe.h"
#include "host/program/progress_bar.h"
#include "host/testing/host_fixture.h"
#include "tests/host/test_plugins.h"

namespace quillbar::program {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

ParsedCommandLine Parse(std::vector<std::string> words) {
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  ParsedCommandLine parsed = ParseCommandLine(std::move(words));
  testing::internal::GetCapturedStdout();
  testing::internal::GetCapturedStderr();
  return parsed;
}

TEST(CommandLineTest, RunTakesAScriptAndItsArguments) {
  const auto [line, status] = Parse({"run", "a.xojo_script", "one", "two"});
  ASSERT_TRUE(line.has_value());
  EXPECT_EQ(line->command, Command::kRun);
  EXPECT_EQ(line->script, "a.xojo_script");
  EXPECT_THAT(line->arguments, ElementsAre("one", "two"));
  EXPECT_FALSE(line->account);
  EXPECT_THAT(line->plugins, IsEmpty());
}

TEST(CommandLineTest, WhatFollowsTheScriptBelongsToIt) {
  const auto [line, status] = Parse({"run", "--account", "s", "--account", "-x", "--help", "--plugin", "p"});
  ASSERT_TRUE(line.has_value());
  EXPECT_TRUE(line->account);
  EXPECT_THAT(line->arguments, ElementsAre("--account", "-x", "--help", "--plugin", "p"));
  EXPECT_THAT(line->plugins, IsEmpty());
}

TEST(CommandLineTest, PluginsAreNamedOnEitherSideOfTheCommand) {
  const auto before = Parse({"--plugin", "a.so", "--plugin", "b.so", "run", "s"});
  ASSERT_TRUE(before.commandLine.has_value());
  EXPECT_THAT(before.commandLine->plugins, ElementsAre("a.so", "b.so"));
  const auto after = Parse({"describe", "--plugin", "a.so"});
  ASSERT_TRUE(after.commandLine.has_value());
  EXPECT_EQ(after.commandLine->command, Command::kDescribe);
  EXPECT_THAT(after.commandLine->plugins, ElementsAre("a.so"));
}

TEST(CommandLineTest, HelpAndVersionLeaveNothingToDo) {
  for (const auto &words : std::vector<std::vector<std::string>>{{"--help"}, {"--version"}, {"run", "--help"}}) {
    const auto [line, status] = Parse(words);
    EXPECT_FALSE(line.has_value());
    EXPECT_EQ(status, 0);
  }
}

TEST(CommandLineTest, MistakesGiveStatus2) {
  for (const auto &words : std::vector<std::vector<std::string>>{
           {}, {"run"}, {"jump"}, {"run", "--no-such-option", "s"}, {"describe", "more"}, {"--plugin"}}) {
    const auto [line, status] = Parse(words);
    EXPECT_FALSE(line.has_value()) << testing::PrintToString(words);
    EXPECT_EQ(status, 2) << testing::PrintToString(words);
  }
}

TEST(CommandLineTest, FileInPlaceOfACommandIsRun) {
  for (const auto &words : std::vector<std::vector<std::string>>{
           {"a.xojo_script", "--json"}, {"folder/a", "--json"}, {"--plugin", "p", "--plugin=q", "-", "--json"}}) {
    const auto [line, status] = Parse(words);
    ASSERT_TRUE(line.has_value()) << testing::PrintToString(words);
    EXPECT_EQ(line->command, Command::kRun);
    EXPECT_THAT(line->arguments, ElementsAre("--json"));
    EXPECT_FALSE(line->json);
  }
  EXPECT_EQ(Parse({"jump"}).status, 2);
}

TEST(CommandLineTest, WatchTakesAScriptWithItsArgumentsAndAPort) {
  const auto [line, status] = Parse({"watch", "--port", "8080", "--plugin", "p.so", "s", "one", "--port"});
  ASSERT_TRUE(line.has_value());
  EXPECT_EQ(line->command, Command::kWatch);
  EXPECT_EQ(line->script, "s");
  EXPECT_EQ(line->port, 8080);
  EXPECT_THAT(line->arguments, ElementsAre("one", "--port"));
  EXPECT_THAT(line->plugins, ElementsAre("p.so"));
  EXPECT_EQ(Parse({"watch", "s"}).commandLine->port, 0);
  for (const char *port : {"0", "65536", "x"}) EXPECT_EQ(Parse({"watch", "--port", port, "s"}).status, 2) << port;
}

TEST(CommandLineTest, DescriptionCanBeForPrograms) {
  EXPECT_FALSE(Parse({"describe"}).commandLine->json);
  EXPECT_TRUE(Parse({"describe", "--json"}).commandLine->json);
}

class ProgressBarTest : public testing::Test {
 protected:
  using Clock = ProgressBar::Clock;
  // What the reports until now wrote.
  std::string Written() { return std::exchange(screen_, std::ostringstream()).str(); }

  std::ostringstream screen_;
  Clock::time_point now_;
  ProgressBar bar_{screen_, 80, [this] { return now_; }};
};

TEST_F(ProgressBarTest, AppearsAfterSomeTimeAndGoesAtTheEnd) {
  bar_.Report(1, 100);
  now_ += ProgressBar::kPatience - std::chrono::milliseconds(1);
  bar_.Report(10, 100);
  EXPECT_EQ(Written(), "");
  now_ += std::chrono::milliseconds(1);
  bar_.Report(25, 100);
  EXPECT_EQ(Written(), "\rSaving [##########..............................]  25 %");
  bar_.Report(26, 100);
  EXPECT_EQ(Written(), "") << "too soon after the last one";
  now_ += ProgressBar::kPause;
  bar_.Report(99, 100);
  EXPECT_EQ(Written(), "\rSaving [#######################################.]  99 %");
  bar_.Report(100, 100);
  EXPECT_EQ(Written(), "\r\x1B[K");
  bar_.Report(0, 0);
  EXPECT_EQ(Written(), "") << "it is gone already";
}

TEST_F(ProgressBarTest, GoesWhenTheWorkIsGivenUpAndWaitsAgain) {
  bar_.Report(1, 3'000'000'000);
  now_ += ProgressBar::kPatience;
  bar_.Report(1'500'000'000, 3'000'000'000);
  EXPECT_THAT(Written(), HasSubstr("]  50 %"));
  bar_.Report(0, 0);
  EXPECT_EQ(Written(), "\r\x1B[K");
  bar_.Report(1, 10);
  EXPECT_EQ(Written(), "");
}

TEST_F(ProgressBarTest, FitsIntoANarrowTerminal) {
  ProgressBar bar(screen_, 30, [this] { return now_; });
  bar.Report(1, 2);
  now_ += ProgressBar::kPatience;
  bar.Report(1, 2);
  EXPECT_EQ(Written(), "\rSaving [#######.......]  50 %");
  ProgressBar tiny(screen_, 3, [this] { return now_; });
  tiny.Report(1, 2);
  now_ += ProgressBar::kPatience;
  tiny.Report(1, 2);
  EXPECT_EQ(Written(), "\rSaving []  50 %");
}

class DescribeTest : public host::HostFixture {};

TEST_F(DescribeTest, EveryMemberOfAModuleIsShownAsRegistered) {
  StartHost({TestPlugin("probe")});
  const std::string text = Describe(host().registry());
  EXPECT_THAT(text, testing::StartsWith("# Module ProbeModule\n"));
  for (const char *line :
       {"## Class Probe\n", "Superclass: Probe. Its members are inherited.", "| `Number` | Integer | read-write |\n",
        "| `Ratio` | Single | read-only |\n", "- `DoubleSingle(Byref value as Single)`\n",
        "- `Constructor(number as Integer)`\n", "- `Change(ByRef number as Integer) as Boolean`\n",
        "### Enumeration Probe.Small as UInt8\n", "| `LAST` | 255 |\n", "| `BELOW` | -5 |\n"}) {
    EXPECT_THAT(text, HasSubstr(line));
  }
}

TEST_F(DescribeTest, ClassesWithPrivateConstructorsSayWhereTheirObjectsComeFrom) {
  StartHost({TestPlugin("probe")});
  const std::string text = Describe(host().registry());
  const std::string sealed = text.substr(text.find("## Class Sealed"));
  EXPECT_THAT(sealed, AllOf(HasSubstr("made by methods of other classes"), Not(HasSubstr("Constructor()"))));
}

TEST_F(DescribeTest, JsonHasTheSameMembersWithTheirParts) {
  StartHost({TestPlugin("probe"), TestPlugin("culprit")});
  const auto description = nlohmann::json::parse(DescribeAsJson(host().registry()));
  const auto named = [](const nlohmann::json &list, const char *name) {
    const auto found = std::ranges::find_if(list, [&](const nlohmann::json &item) { return item["name"] == name; });
    return found == list.end() ? nlohmann::json() : *found;
  };
  const auto module = named(description["modules"], "ProbeModule");
  const auto probe = named(module["classes"], "Probe");
  EXPECT_EQ(probe["qualifiedName"], "ProbeModule.Probe");
  EXPECT_EQ(probe["superclass"], nullptr);
  EXPECT_EQ(named(probe["properties"], "Ratio"),
            nlohmann::json::parse(R"({"name": "Ratio", "type": "Single", "readable": true, "writable": false,
                                      "shared": false})"));
  EXPECT_EQ(named(probe["methods"], "DoubleSingle")["parameters"],
            nlohmann::json::parse(R"([{"name": "value", "type": "Single", "byRef": true, "optional": false,
                                       "default": null}])"));
  EXPECT_EQ(named(probe["events"], "Change")["result"], "Boolean");
  EXPECT_FALSE(probe["constructors"].empty());
  EXPECT_EQ(named(named(probe["enumerations"], "Small")["members"], "HUGE")["value"], 200);
  const auto sealed = named(module["classes"], "Sealed");
  EXPECT_EQ(sealed["creatable"], false);
  EXPECT_TRUE(sealed["constructors"].empty());
  EXPECT_EQ(named(description["classes"], "Culprit")["name"], "Culprit");
  EXPECT_EQ(named(description["classes"], "MemoryBlock"), nullptr);
}

TEST_F(DescribeTest, ClassesOutsideOfModulesAreShownAndTheHostsOwnAreNot) {
  StartHost({TestPlugin("culprit")});
  EXPECT_THAT(Describe(host().registry()),
              AllOf(HasSubstr("# Classes outside of modules\n\n## Class Culprit\n"), Not(HasSubstr("MemoryBlock"))));
}

}  // namespace
}  // namespace quillbar::program
