// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "host/program/command_line.h"
#include "host/program/describe.h"
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

TEST_F(DescribeTest, ClassesOutsideOfModulesAreShownAndTheHostsOwnAreNot) {
  StartHost({TestPlugin("culprit")});
  EXPECT_THAT(Describe(host().registry()),
              AllOf(HasSubstr("# Classes outside of modules\n\n## Class Culprit\n"), Not(HasSubstr("MemoryBlock"))));
}

}  // namespace
}  // namespace quillbar::program
