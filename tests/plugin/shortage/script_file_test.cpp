// SPDX-License-Identifier: MIT
// Files that scripts write, whose calls of the system fail, or after each of which the power is cut.
#include <gmock/gmock.h>

#include <cerrno>

#include "host/language/library/classes/file_stream.h"
#include "host/language/run/exceptions.h"
#include "host/runtime/builtin/builtin_classes.h"
#include "host/testing/host_fixture.h"
#include "tests/plugin/shortage/sure_disk.h"
#include "tests/plugin/shortage/watched_files.h"
#include "tests/support/temporary_folder.h"

#ifndef _WIN32
#include <fcntl.h>
#include <unistd.h>
#endif

namespace quillbar::test {
namespace {

namespace fs = std::filesystem;
using language::FileStream;
using language::LibraryError;
using testing::AnyOf;
using testing::Eq;
using watched_files::Watch;

class ScriptFile : public host::HostFixture {
 protected:
  void SetUp() override {
    StartHost({});
    if (!watched_files::IsPossible()) GTEST_SKIP() << "the C library's functions can't be replaced here";
  }
  void TearDown() override {
    watched_files::Begin(nullptr);
    HostFixture::TearDown();
  }

  /// Replaces the file under the watch, in parts larger than what a stream keeps back. Whether that was told to be done.
  bool Replace(const fs::path &path, Watch &watch) {
    const host::ObjectHandle item = host::MakeFolderItem(host(), path);
    watched_files::Begin(&watch);
    bool isDone = true;
    try {
      FileStream stream;
      stream.Open(item.Get(), FileStream::Mode::kCreate);
      for (std::size_t i = 0; i < newer_.size(); i += 40'000) stream.Write(std::string_view(newer_).substr(i, 40'000));
      stream.Close();
    } catch (const LibraryError &) {
      isDone = false;
    }
    watched_files::Begin(nullptr);
    return isDone;
  }

  /// Copies the file under the watch. Whether that was told to be done.
  bool Copy(const fs::path &from, const fs::path &to, Watch &watch) {
    const host::ObjectHandle source = host::MakeFolderItem(host(), from), target = host::MakeFolderItem(host(), to);
    watched_files::Begin(&watch);
    bool isDone = true;
    try {
      host().Call(source, "CopyTo", {host::Value(target)});
    } catch (const host::HostError &) {
      isDone = false;
    }
    watched_files::Begin(nullptr);
    return isDone;
  }

  static std::size_t CountIn(const TemporaryFolder &folder) {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder.path()), fs::directory_iterator()));
  }

  const std::string older_ = "the older file", newer_ = std::string(200'000, 'n');
};

TEST_F(ScriptFile, IsTheOldOrTheNewOneWhicheverCallFails) {
  Watch counted;
  {
    const TemporaryFolder folder;
    WriteFile(folder / "file", older_);
    ASSERT_TRUE(Replace(folder / "file", counted));
    ASSERT_EQ(ReadFile(folder / "file"), newer_);
    ASSERT_GT(counted.calls, 8) << "the calls were not seen";
  }
  int refused = 0;
  for (long point = 0; point < counted.calls; ++point) {
    for (const bool forGood : {false, true}) {
      SCOPED_TRACE(testing::Message() << "call " << point << " failed" << (forGood ? ", and all after it" : ""));
      const TemporaryFolder folder;
      WriteFile(folder / "file", older_);
      Watch watch{.granted = point, .forGood = forGood, .problem = ENOSPC};
      const bool isDone = Replace(folder / "file", watch);
      if (!isDone) ++refused;
      EXPECT_EQ(ReadFile(folder / "file"), isDone ? newer_ : older_);
      EXPECT_EQ(CountIn(folder), 1U) << "a part was left";
    }
  }
  EXPECT_GT(refused, 8);
}

TEST_F(ScriptFile, IsCopiedWholeOrNotWhicheverCallFails) {
  Watch counted;
  {
    const TemporaryFolder folder;
    WriteFile(folder / "file", newer_);
    ASSERT_TRUE(Copy(folder / "file", folder / "copy", counted));
    ASSERT_EQ(ReadFile(folder / "copy"), newer_);
    ASSERT_GT(counted.calls, 5) << "the calls were not seen";
  }
  int refused = 0;
  for (long point = 0; point < counted.calls; ++point) {
    for (const bool forGood : {false, true}) {
      SCOPED_TRACE(testing::Message() << "call " << point << " failed" << (forGood ? ", and all after it" : ""));
      const TemporaryFolder folder;
      WriteFile(folder / "file", newer_);
      Watch watch{.granted = point, .forGood = forGood, .problem = ENOSPC};
      const bool isDone = Copy(folder / "file", folder / "copy", watch);
      if (!isDone) ++refused;
      EXPECT_EQ(fs::exists(folder / "copy"), isDone);
      if (isDone) {
        EXPECT_EQ(ReadFile(folder / "copy"), newer_);
      }
      EXPECT_EQ(CountIn(folder), isDone ? 2U : 1U) << "a part was left";
    }
  }
  EXPECT_GT(refused, 5);
}

#ifndef _WIN32

TEST_F(ScriptFile, IsTheOldOrTheNewOneAfterAPowerCut) {
  const TemporaryFolder folder;
  const fs::path path = folder / "file";
  WriteFile(path, older_);
  SureDisk disk;
  const int old = open(path.c_str(), O_RDONLY);
  disk.Seen("fsync", old);
  close(old);
  long cuts = 0, replaced = 0;
  Watch watch;
  watch.seen = [&](std::string_view call, int descriptor) {
    ++cuts;
    disk.Seen(call, descriptor);
    if (call == "rename") disk.Named();
    const std::string found = disk.Worst(path);
    if (found == newer_) ++replaced;
    EXPECT_THAT(found, AnyOf(Eq(older_), Eq(newer_))) << "after " << call;
  };
  EXPECT_TRUE(Replace(path, watch));
  EXPECT_GT(cuts, 8);
  EXPECT_GT(replaced, 1);
  EXPECT_TRUE(disk.FoldersAreSure()) << "Close returned before the disk had the name";
}

TEST_F(ScriptFile, IsCopiedWholeOrNotAfterAPowerCut) {
  const TemporaryFolder folder;
  WriteFile(folder / "file", newer_);
  SureDisk disk;
  long named = 0;
  Watch watch;
  watch.seen = [&](std::string_view call, int descriptor) {
    disk.Seen(call, descriptor);
    if (!fs::exists(folder / "copy")) return;
    if (named++ == 0) disk.Named();
    EXPECT_EQ(disk.Worst(folder / "copy"), newer_) << "after " << call;
  };
  EXPECT_TRUE(Copy(folder / "file", folder / "copy", watch));
  EXPECT_GT(named, 1);
  EXPECT_TRUE(disk.FoldersAreSure());
}

#endif

}  // namespace
}  // namespace quillbar::test
