// SPDX-License-Identifier: MIT
// Which paths a sandbox allows, and that the kernel keeps to it besides.
#include "host/runtime/sandbox.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <vector>

#include "host/runtime/host_error.h"
#include "tests/support/temporary_folder.h"

#ifdef __linux__
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace quillbar::host {
namespace {

namespace fs = std::filesystem;

class SandboxTest : public testing::Test {
 protected:
  SandboxTest() {
    fs::create_directories(In("inside/deep"));
    fs::create_directory(In("inside2"));
    test::WriteFile(In("inside/file"), "inside");
    test::WriteFile(In("outside"), "outside");
  }
  ~SandboxTest() override { Sandbox::Leave(); }

  fs::path In(const std::string &name) const { return folder_ / name; }

  test::TemporaryFolder folder_;
};

TEST_F(SandboxTest, AllowsEverythingUntilItIsEntered) {
  EXPECT_FALSE(Sandbox::IsActive());
  EXPECT_TRUE(Sandbox::Allows(In("outside")));
  EXPECT_NO_THROW(Sandbox::Require(In("missing/of/it")));
}

TEST_F(SandboxTest, AllowsWhatIsBelowTheFolder) {
  Sandbox::Enter(In("inside"));
  for (const char *path : {"inside", "inside/", "inside/file", "inside/missing", "inside/missing/of/it",
                           "inside/deep/../file", "inside/missing/../file", "outside/../inside/file"}) {
    EXPECT_TRUE(Sandbox::Allows(In(path))) << path;
  }
  for (const char *path : {"", "outside", "inside2", "inside2/file", "inside/..", "inside/../outside",
                           "inside/deep/../../outside", "missing", "missing/inside"}) {
    EXPECT_FALSE(Sandbox::Allows(In(path))) << path;
  }
  EXPECT_FALSE(Sandbox::Allows("/"));
  try {
    Sandbox::Require(In("outside"));
    FAIL() << "the path was allowed";
  } catch (const HostError &error) {
    EXPECT_EQ(error.kind(), ErrorKind::kFile);
    EXPECT_NE(std::string(error.what()).find("the folder of --sandbox"), std::string::npos) << error.what();
  }
}

TEST_F(SandboxTest, FollowsLinks) {
#ifdef _WIN32
  GTEST_SKIP() << "making links takes a privilege on Windows";
#endif
  fs::create_symlink("../outside", In("inside/out"));
  fs::create_symlink("..", In("inside/up"));
  fs::create_symlink("missing", In("inside/dangling"));
  fs::create_symlink("circle", In("inside/circle"));
  fs::create_symlink("inside", In("entry"));
  Sandbox::Enter(In("entry"));
  for (const char *path : {"entry", "entry/file", "inside/file", "inside/up/inside/file", "entry/missing"}) {
    EXPECT_TRUE(Sandbox::Allows(In(path))) << path;
  }
  for (const char *path : {"inside/out", "inside/up", "inside/up/outside", "inside/up/missing", "inside/dangling",
                           "inside/circle", "inside/circle/file"}) {
    EXPECT_FALSE(Sandbox::Allows(In(path))) << path;
  }
}

TEST_F(SandboxTest, IsAFolder) {
  EXPECT_THROW(Sandbox::Enter(In("missing")), HostError);
  EXPECT_THROW(Sandbox::Enter(In("outside")), HostError);
  EXPECT_FALSE(Sandbox::IsActive());
}

TEST_F(SandboxTest, IsKeptByTheKernelWhateverPathsSay) {
#ifdef __linux__
  // What the process gives up it can't get back, so another one does it.
  constexpr int kKept = 10, kLeft = 20, kLacking = 30;
  const pid_t child = fork();
  if (child == 0) {
    Sandbox::Enter(In("inside"));
    const std::vector<fs::path> readable{In("outside")};
    if (!Sandbox::ConfineProcess(readable, {})) _exit(kLacking);
    const auto reads = [&](const char *name) { return std::ifstream(In(name)).is_open(); };
    const auto writes = [&](const char *name) { return std::ofstream(In(name)).is_open(); };
    std::error_code error;
    fs::rename(In("inside/file"), In("inside2/file"), error);
    const bool isKept = reads("inside/file") && writes("inside/new") && reads("outside") && !writes("outside") &&
                        !writes("inside2/new") && !std::ifstream("/etc/passwd").is_open() && error &&
                        !fs::create_directory(In("new"), error);
    _exit(isKept ? kKept : kLeft);
  }
  ASSERT_GT(child, 0);
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  ASSERT_TRUE(WIFEXITED(status));
  if (WEXITSTATUS(status) == kLacking) GTEST_SKIP() << "this kernel has no Landlock";
  EXPECT_EQ(WEXITSTATUS(status), kKept);
#else
  GTEST_SKIP() << "only Linux has this means";
#endif
}

}  // namespace
}  // namespace quillbar::host
