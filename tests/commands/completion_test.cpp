// SPDX-License-Identifier: MIT
// What shells complete after `quillbar`, and its manual page: both know every command and option.
#include <gmock/gmock.h>

#include <filesystem>
#include <set>
#include <sstream>

#include "tests/support/pattern.h"
#include "tests/support/process.h"
#include "tests/support/temporary_folder.h"

namespace quillbar::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::UnorderedElementsAre;

const std::filesystem::path kFolder = std::filesystem::path(QUILLBAR_PACKAGING) / "completions";

// The words of a help text that match, for example its options.
std::set<std::string> HelpWords(const Command &arguments, const std::string &pattern) {
  Command command{std::filesystem::path(QUILLBAR_PROGRAM)};
  command.insert(command.end(), arguments.begin(), arguments.end());
  command.push_back("--help");
  const std::string help = RunProcess(command).output;
  std::set<std::string> words;
  for (const PatternMatch &found : MatchesIn(help, pattern)) words.insert(found[1]);
  return words;
}

const std::set<std::string> &Commands() {
  static const std::set<std::string> commands = HelpWords({}, "\n  ([a-z]+)  ");
  return commands;
}

std::set<std::string> OptionsOf(const Command &command) { return HelpWords(command, "\n +(?:-[a-z], *)?--([a-z-]+)"); }

TEST(Completion, EveryShellAndTheManualPageKnowEveryCommandAndOption) {
  ASSERT_THAT(Commands(), Contains("describe"));
  std::set<std::string> options = OptionsOf({});
  for (const std::string &command : Commands()) options.merge(OptionsOf({command}));
  ASSERT_THAT(options, Contains("json"));

  for (const char *file : {"completions/quillbar.bash", "completions/_quillbar", "completions/quillbar.fish"}) {
    const std::string text = ReadFile(std::filesystem::path(QUILLBAR_PACKAGING) / file);
    for (const std::string &command : Commands()) EXPECT_THAT(text, HasSubstr(command)) << file;
    const bool isFish = std::string_view(file).ends_with(".fish");
    for (const std::string &option : options) EXPECT_THAT(text, HasSubstr((isFish ? "-l " : "--") + option)) << file;
  }
  const std::string page = ReadFile(std::filesystem::path(QUILLBAR_PACKAGING) / "debian" / "quillbar.1");
  for (const std::string &command : Commands()) EXPECT_THAT(page, HasSubstr(".TP\n.B " + command + "\n"));
  for (const std::string &option : options)
    EXPECT_THAT(page, HasSubstr(" \\-\\-" + WithReplaced(option, "-", "\\-"))) << option;
}

class BashCompletion : public testing::Test {
 protected:
  void SetUp() override {
    for (const char *file : {"report.xojo_script", "notes.txt", "other.so"}) WriteFile(folder_ / file, "");
    std::filesystem::create_directory(folder_ / "folder");
  }

  // What bash offers for the last of these words.
  std::vector<std::string> Offered(const std::string &words) {
    ProcessOptions options;
    options.workingDirectory = folder_.path();
    const ProcessResult result =
        RunProcess({"bash", "-c",
                    "source \"$0\"; COMP_WORDS=(" + words +
                        "); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _quillbar; printf '%s\\n' \"${COMPREPLY[@]}\"",
                    kFolder / "quillbar.bash"},
                   options);
    EXPECT_EQ(result.errors, "");
    std::vector<std::string> lines;
    std::istringstream stream(result.output);
    for (std::string line; std::getline(stream, line);) {
      if (!line.empty()) lines.push_back(line);
    }
    return lines;
  }

  TemporaryFolder folder_;
};

TEST_F(BashCompletion, OffersCommandsScriptsAndFoldersFirst) {
  std::vector<std::string> expected{"report.xojo_script", "folder"};
  for (const std::string &command : Commands()) expected.push_back(command);
  EXPECT_THAT(Offered("quillbar ''"), testing::UnorderedElementsAreArray(expected));
  EXPECT_THAT(Offered("quillbar d"), ElementsAre("describe"));
}

TEST_F(BashCompletion, OffersWhatBelongsToACommand) {
  EXPECT_THAT(Offered("quillbar run ''"), UnorderedElementsAre("report.xojo_script", "folder"));
  EXPECT_THAT(Offered("quillbar run --a"), ElementsAre("--account"));
  EXPECT_THAT(Offered("quillbar describe --j"), ElementsAre("--json"));
  EXPECT_THAT(Offered("quillbar describe ''"), IsEmpty());
  EXPECT_THAT(Offered("quillbar --plugin ''"), UnorderedElementsAre("other.so", "folder"));
  EXPECT_THAT(Offered("quillbar --plugin other.so c"), ElementsAre("check"));
}

TEST_F(BashCompletion, OffersAnyFileAfterTheScript) {
  EXPECT_THAT(Offered("quillbar report.xojo_script n"), ElementsAre("notes.txt"));
  EXPECT_THAT(Offered("quillbar run report.xojo_script --"), IsEmpty());
}

TEST(Completion, OtherShellsUnderstandTheirFiles) {
#ifdef _WIN32
  GTEST_SKIP() << "needs the shells of Unix";
#endif
  if (RunProcess({"sh", "-c", "command -v zsh && command -v fish || exit 1"}).exitStatus != 0) {
    GTEST_SKIP() << "needs zsh and fish, which are not both on this machine";
  }
  for (const Command &command :
       {Command{"zsh", "-n", kFolder / "_quillbar"}, Command{"fish", "--no-execute", kFolder / "quillbar.fish"}}) {
    const ProcessResult result = RunProcess(command);
    EXPECT_EQ(result.exitStatus, 0) << result.errors;
    EXPECT_THAT(result.errors, IsEmpty());
  }
  const ProcessResult offered =
      RunProcess({"fish", "-c", "source $argv[1]; complete -C 'quillbar d'; complete -C 'quillbar run --a'",
                  kFolder / "quillbar.fish"});
  EXPECT_THAT(offered.output,
              testing::AllOf(HasSubstr("describe\t"), HasSubstr("--account\t"), Not(HasSubstr("check"))));
}

}  // namespace
}  // namespace quillbar::test
