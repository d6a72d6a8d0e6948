// SPDX-License-Identifier: MIT
// Saves whose calls of the system fail, or after each of which the power is cut.
#include <gmock/gmock.h>

#include <cerrno>

#include "tests/plugin/driver/plugin_test.h"
#include "tests/plugin/shortage/sure_disk.h"
#include "tests/plugin/shortage/watched_files.h"
#include "tests/support/temporary_folder.h"

namespace quillbar::test {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;
using watched_files::Watch;

class SaveByCalls : public PluginTest {
 protected:
  void SetUp() override {
    PluginTest::SetUp();
    if (!watched_files::IsPossible()) GTEST_SKIP() << "the C library's functions can't be replaced here";
    document_ = NewDocument();
    // More than is kept back before the first writing.
    const ScriptObject page = document_.AddPage();
    page.Call("MoveTo", 0, 0);
    for (int line = 0; line < 12'000; ++line) page.Call("LineTo", line, line / 3.0);
    page.Call("Draw");
    whole_ = document_.Saved();
  }
  void TearDown() override {
    watched_files::Begin(nullptr);
    document_ = {};
    PluginTest::TearDown();
  }

  /// Saves under the watch; gives the failures that were told.
  std::vector<Failure> Save(const fs::path &path, Watch &watch) {
    watch.plugin = "QuillbarPDFWriter.so";
    const ScriptObject item = NewFolderItem(path);
    watched_files::Begin(&watch);
    document_.Call("Save", item);
    watched_files::Begin(nullptr);
    return document_.TakeFailures();
  }

  Document document_;
  std::string whole_;
};

TEST_F(SaveByCalls, IsWholeOrAbsentWhicheverFails) {
  Watch counted;
  {
    const TemporaryFolder folder;
    ASSERT_THAT(Save(folder / "saved.pdf", counted), IsEmpty());
    ASSERT_EQ(ReadFile(folder / "saved.pdf"), whole_);
    ASSERT_GT(counted.calls, 10) << "the calls were not seen";
  }
  int refused = 0;
  // Of many writes one after another the first few and the last few stand for all.
  constexpr long kAtBothEnds = 30;
  for (long point = 0; point < counted.calls; ++point) {
    if (point == kAtBothEnds && counted.calls > 2 * kAtBothEnds) point = counted.calls - kAtBothEnds;
    for (const bool forGood : {false, true}) {
      SCOPED_TRACE(testing::Message() << "call " << point << " failed" << (forGood ? ", and all after it" : ""));
      const TemporaryFolder folder;
      Watch watch{.granted = point, .forGood = forGood, .problem = ENOSPC};
      const std::vector<Failure> failures = Save(folder / "saved.pdf", watch);
      if (failures.empty()) {
        // Another way was found, or only the wait for the folder failed.
        EXPECT_EQ(ReadFile(folder / "saved.pdf"), whole_);
        continue;
      }
      ++refused;
      ASSERT_EQ(failures.size(), 1U);
      EXPECT_THAT(failures[0].number, testing::AnyOf(library_error::kFileOpenError, library_error::kFileIoError));
      EXPECT_EQ(failures[0].detail, std::uint32_t{ENOSPC});
      EXPECT_TRUE(folder.IsEmpty()) << "a part was left";
      Watch unhindered;
      EXPECT_THAT(Save(folder / "saved.pdf", unhindered), IsEmpty());
      EXPECT_EQ(ReadFile(folder / "saved.pdf"), whole_);
    }
  }
  EXPECT_GT(refused, 10);
}

#ifndef _WIN32

// Network drives and others: what can't be waited for is not the save's fault.
TEST_F(SaveByCalls, IsWholeWhereTheFileSystemCannotWaitForTheDisk) {
  for (const int problem : {EINVAL, ENOSYS, ENOTSUP}) {
    const TemporaryFolder folder;
    Watch watch{.problem = problem, .lacking = "fsync"};
    EXPECT_THAT(Save(folder / "saved.pdf", watch), IsEmpty()) << problem;
    EXPECT_EQ(ReadFile(folder / "saved.pdf"), whole_) << problem;
  }
}

TEST_F(SaveByCalls, WaitsForTheDiskAgainWhenASignalInterrupts) {
  long before = -1, waits = 0;
  Watch counted;
  counted.seen = [&](std::string_view call, int) {
    if (call != "fsync") return;
    ++waits;
    if (before < 0) before = counted.calls - 1;
  };
  const TemporaryFolder first;
  ASSERT_THAT(Save(first / "saved.pdf", counted), IsEmpty());
  ASSERT_GT(before, 0);
  long waitsAgain = 0;
  const TemporaryFolder second;
  Watch watch{.granted = before, .problem = EINTR};
  watch.seen = [&](std::string_view call, int) { waitsAgain += call == "fsync" ? 1 : 0; };
  EXPECT_THAT(Save(second / "saved.pdf", watch), IsEmpty());
  EXPECT_EQ(watch.calls, counted.calls + 1);
  EXPECT_EQ(waitsAgain, waits);
  EXPECT_EQ(ReadFile(second / "saved.pdf"), whole_);
}

class PowerCut : public SaveByCalls, public testing::WithParamInterface<const char *> {};

TEST_P(PowerCut, AfterAnyCallLeavesAWholeFileOrNone) {
  const TemporaryFolder folder;
  const fs::path path = folder / "saved.pdf";
  SureDisk disk;
  long cuts = 0, named = 0;
  Watch watch{.problem = EINVAL, .lacking = GetParam()};
  watch.seen = [&](std::string_view call, int descriptor) {
    ++cuts;
    disk.Seen(call, descriptor);
    if (!fs::exists(path)) return;
    if (named++ == 0) {
      disk.Named();
      EXPECT_THAT(std::string(call), testing::StartsWith(*GetParam() == '\0' ? "renameat2" : "linkat"));
    }
    EXPECT_EQ(disk.Worst(path), whole_) << "after " << call;
  };
  EXPECT_THAT(Save(path, watch), IsEmpty());
  EXPECT_GT(cuts, 10);
  EXPECT_GT(named, 1);
  EXPECT_TRUE(disk.FoldersAreSure()) << "the save was told to be done before the disk had its name";
  EXPECT_EQ(disk.Worst(path), whole_);
}

TEST_P(PowerCut, LeavesTheFileThatWasThere) {
  const TemporaryFolder folder;
  const fs::path path = folder / "saved.pdf";
  WriteFile(path, "an older file");
  Watch watch{.problem = EINVAL, .lacking = GetParam()};
  watch.seen = [&](std::string_view call, int) { EXPECT_EQ(ReadFile(path), "an older file") << "after " << call; };
  EXPECT_THAT(Save(path, watch), IsEmpty()) << "existing files are left in silence";
  EXPECT_EQ(ReadFile(path), "an older file");
}

// File systems without a renaming that never replaces get a second name instead.
INSTANTIATE_TEST_SUITE_P(WithTheSystemCall, PowerCut, testing::Values(""));
INSTANTIATE_TEST_SUITE_P(WithoutIt, PowerCut, testing::Values("renameat2"));

#endif

}  // namespace
}  // namespace quillbar::test
