// SPDX-License-Identifier: MIT
// `quillbar watch`. Its page is asked for and driven by scripts for Node.js, in watch/.
#include <gmock/gmock.h>

#include <filesystem>

#include "tests/support/process.h"
#include "tests/support/temporary_folder.h"

namespace quillbar::test {
namespace {

using testing::HasSubstr;

#ifdef _WIN32

TEST(Watch, IsNotThereOnWindowsAndSaysSo) {
  const ProcessResult result = RunProcess({std::filesystem::path(QUILLBAR_PROGRAM), "watch", "a.xojo_script"});
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_THAT(result.errors, HasSubstr("can't be watched on Windows"));
}

#else

// The path of the first of these programs that is there; empty when none is.
std::string FirstOf(const std::string &programs) {
  const std::string found =
      RunProcess({"sh", "-c", "for p in " + programs + "; do command -v \"$p\" && exit; done; true"}).output;
  return found.substr(0, found.find('\n'));
}

// Runs a script of watch/ with the program, an empty folder and more arguments.
void RunTestScript(const char *name, const Command &arguments = {}) {
  const TemporaryFolder folder;
  Command command{"node", std::filesystem::path(QUILLBAR_WATCH_SCRIPTS) / name, std::filesystem::path(QUILLBAR_PROGRAM),
                  folder.path()};
  command.insert(command.end(), arguments.begin(), arguments.end());
  ProcessOptions options;
  options.timeoutSeconds = 240;
  const ProcessResult result = RunProcess(command, options);
  EXPECT_EQ(result.exitStatus, 0) << result.errors;
  EXPECT_EQ(result.output, "done\n");
}

TEST(Watch, ServesOnlyItsPageAndRunsAgainAtEveryChange) {
  if (FirstOf("node").empty()) GTEST_SKIP() << "needs Node.js, which is not on this machine";
  RunTestScript("server_test.mjs");
}

TEST(Watch, ShowsDocumentsAndErrorsInTheBrowser) {
  const std::string browser = FirstOf("chromium chromium-browser google-chrome");
  if (browser.empty()) GTEST_SKIP() << "needs Chromium, which is not on this machine; ./test browser installs it";
  if (FirstOf("node").empty()) GTEST_SKIP() << "needs Node.js, which is not on this machine";
  RunTestScript("browser_test.mjs", {browser});
}

TEST(Watch, EndsWithStatus1WithoutAScriptOrItsPort) {
  const TemporaryFolder folder;
  ProcessOptions options;
  options.workingDirectory = folder.path();
  const ProcessResult missing =
      RunProcess({std::filesystem::path(QUILLBAR_PROGRAM), "watch", "a.xojo_script"}, options);
  EXPECT_EQ(missing.exitStatus, 1);
  EXPECT_THAT(missing.errors, HasSubstr("there is no script \"a.xojo_script\" to watch"));
  const ProcessResult wrong =
      RunProcess({std::filesystem::path(QUILLBAR_PROGRAM), "watch", "--port", "70000", "a.xojo_script"}, options);
  EXPECT_EQ(wrong.exitStatus, 2);
}

#endif

}  // namespace
}  // namespace quillbar::test
