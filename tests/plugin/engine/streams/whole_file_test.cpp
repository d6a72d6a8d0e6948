// SPDX-License-Identifier: MIT
// A file gets its name when it is whole.
#include "plugin/engine/streams/whole_file.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cerrno>
#include <vector>

#ifndef _WIN32
#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include "plugin/engine/streams/unused_name_posix.h"
#endif

#include "platform/openable_path.h"
#include "tests/support/system_error.h"
#include "tests/support/temporary_folder.h"

namespace quillbar {
namespace {

namespace fs = std::filesystem;
using engine::WholeFile;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class WholeFileTest : public testing::Test {
 protected:
  static std::unique_ptr<WholeFile> Open(const fs::path &path) { return WholeFile::Open(path.native()); }

  // Writes a file in one piece; 0 or the errno of what failed.
  static int Write(const fs::path &path, const std::string &text = "text") {
    errno = 0;
    const auto file = Open(path);
    if (file == nullptr) return errno;
    std::fwrite(text.data(), 1, text.size(), file->stream());
    return file->Commit();
  }

  std::vector<std::string> Names() const {
    std::vector<std::string> names;
    for (const auto &entry : fs::directory_iterator(folder_.path())) names.push_back(entry.path().filename().string());
    return names;
  }

  test::TemporaryFolder folder_;
};

TEST_F(WholeFileTest, HasItsNameFromCommitOnAndNoOtherLeft) {
  const fs::path path = folder_ / "a.pdf";
  const auto file = Open(path);
  ASSERT_NE(file, nullptr);
  std::fputs("text", file->stream());
  std::fflush(file->stream());
  EXPECT_FALSE(fs::exists(path));
  EXPECT_THAT(Names(), SizeIs(1)) << "the temporary file lies in the same folder";
  EXPECT_EQ(file->Commit(), 0);
  EXPECT_THAT(Names(), ElementsAre("a.pdf"));
  EXPECT_EQ(test::ReadFile(path), "text");
}

TEST_F(WholeFileTest, LeavesNothingWithoutCommit) {
  Open(folder_ / "a.pdf");
  EXPECT_TRUE(folder_.IsEmpty());
}

TEST_F(WholeFileTest, ManyMayBeWrittenAtOnce) {
  const auto a = Open(folder_ / "a"), b = Open(folder_ / "b"), c = Open(folder_ / "a");
  ASSERT_TRUE(a != nullptr && b != nullptr && c != nullptr);
  std::fputs("a", a->stream());
  std::fputs("b", b->stream());
  EXPECT_EQ(b->Commit(), 0);
  EXPECT_EQ(a->Commit(), 0);
  EXPECT_EQ(c->Commit(), EEXIST);
  EXPECT_EQ(test::ReadFile(folder_ / "a"), "a");
  EXPECT_EQ(test::ReadFile(folder_ / "b"), "b");
}

TEST_F(WholeFileTest, ATemporaryNameThatIsTakenIsPassedOver) {
  std::string name = engine::NextTemporaryName();
  const std::size_t end = name.rfind('.'), begin = name.rfind('-') + 1;
  const int next = std::stoi(name.substr(begin, end - begin)) + 1;
  name.replace(begin, end - begin, std::to_string(next));
  test::WriteFile(folder_ / name, "left by an earlier process of that number");
  EXPECT_EQ(Write(folder_ / "a.pdf"), 0);
  EXPECT_EQ(test::ReadFile(folder_ / name), "left by an earlier process of that number");
  EXPECT_EQ(test::ReadFile(folder_ / "a.pdf"), "text");
}

TEST_F(WholeFileTest, WhatIsThereIsNotWritten) {
  test::WriteFile(folder_ / "a.pdf", "kept");
  EXPECT_EQ(Write(folder_ / "a.pdf"), EEXIST);
  EXPECT_EQ(test::ReadFile(folder_ / "a.pdf"), "kept");
  EXPECT_EQ(Write(folder_.path()), test::system_error::kFolder);
  EXPECT_EQ(Write(folder_ / "missing" / "a.pdf"), ENOENT);
  EXPECT_EQ(Write(folder_ / "a.pdf" / "b.pdf"), test::system_error::kBelowAFile);
  EXPECT_EQ(Write(fs::path()), ENOENT);
  EXPECT_THAT(Names(), ElementsAre("a.pdf"));
}

TEST_F(WholeFileTest, NamesMayBeAsLongAsTheSystemLets) {
  EXPECT_EQ(Write(folder_ / std::string(255, 'x')), 0);
  EXPECT_EQ(Write(folder_ / std::string(256, 'x')), test::system_error::kNameTooLong);
  EXPECT_THAT(Names(), ElementsAre(std::string(255, 'x')));
  // With its folder too long for those who remove the folder.
  EXPECT_TRUE(fs::remove(platform::OpenablePath(folder_ / std::string(255, 'x'))));
}

TEST_F(WholeFileTest, ThePathMayBeRelative) {
  const fs::path former = fs::current_path();
  fs::current_path(folder_.path());
  EXPECT_EQ(Write("a.pdf"), 0);
  fs::create_directory("inner");
  EXPECT_EQ(Write(fs::path("inner") / "b.pdf"), 0);
  fs::current_path(former);
  EXPECT_EQ(test::ReadFile(folder_ / "a.pdf"), "text");
  EXPECT_EQ(test::ReadFile(folder_ / "inner" / "b.pdf"), "text");
}

TEST_F(WholeFileTest, MayBeWhatALinkLeadsTo) {
  fs::create_directory(folder_ / "elsewhere");
  std::error_code problem;
  fs::create_symlink(fs::path("elsewhere") / "a.pdf", folder_ / "link", problem);
  if (problem) GTEST_SKIP() << "symbolic links cannot be made here: " << problem.message();
  EXPECT_EQ(Write(folder_ / "link"), 0);
  EXPECT_TRUE(fs::is_symlink(folder_ / "link"));
  EXPECT_EQ(test::ReadFile(folder_ / "elsewhere" / "a.pdf"), "text");
  EXPECT_EQ(Write(folder_ / "link"), EEXIST);
}

#ifndef _WIN32

TEST_F(WholeFileTest, MayBeWhatAChainOfLinksLeadsTo) {
  fs::create_directory(folder_ / "elsewhere");
  fs::create_symlink(folder_ / "elsewhere" / "second", folder_ / "first");
  fs::create_symlink("a.pdf", folder_ / "elsewhere" / "second");
  EXPECT_EQ(Write(folder_ / "first"), 0);
  EXPECT_EQ(test::ReadFile(folder_ / "elsewhere" / "a.pdf"), "text");
}

TEST_F(WholeFileTest, NobodyMayDoMoreWithItThanWithOneThatWasOpenedPlainly) {
  for (const mode_t mask : {mode_t{022}, mode_t{077}, mode_t{002}}) {
    const fs::path path = folder_ / std::to_string(mask);
    const mode_t former = umask(mask);
    EXPECT_EQ(Write(path), 0);
    umask(former);
    struct stat status;
    ASSERT_EQ(stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0666 & ~mask);
  }
}

TEST_F(WholeFileTest, ALinkToItselfIsRefused) {
  fs::create_symlink("loop", folder_ / "loop");
  EXPECT_EQ(Write(folder_ / "loop"), ELOOP);
}

TEST_F(WholeFileTest, APathThatEndsInASlashNamesNoFile) {
  EXPECT_EQ(Write((folder_ / "a").native() + "/"), EISDIR);
  EXPECT_TRUE(folder_.IsEmpty());
}

class UnusedNameTest : public WholeFileTest {
 protected:
  UnusedNameTest() : descriptor_(open(folder_.path().c_str(), O_RDONLY | O_DIRECTORY)) {
    test::WriteFile(folder_ / "from", "text");
  }
  ~UnusedNameTest() override { close(descriptor_); }

  const int descriptor_;
};

class UnusedName : public UnusedNameTest, public testing::WithParamInterface<engine::Naming> {};

TEST_P(UnusedName, IsTaken) {
  const int problem = Rename(GetParam(), descriptor_, "from", "to");
  if (GetParam() == engine::Naming::kRename && (problem == ENOSYS || problem == EINVAL)) {
    GTEST_SKIP() << "this system has no renaming that never replaces";
  }
  EXPECT_EQ(problem, 0);
  EXPECT_THAT(Names(), ElementsAre("to"));
  EXPECT_EQ(test::ReadFile(folder_ / "to"), "text");
}

TEST_P(UnusedName, IsNoneThatAFileHas) {
  test::WriteFile(folder_ / "to", "kept");
  const int problem = Rename(GetParam(), descriptor_, "from", "to");
  if (problem == ENOSYS || problem == EINVAL) GTEST_SKIP() << "this system has no renaming that never replaces";
  EXPECT_EQ(problem, EEXIST);
  EXPECT_EQ(test::ReadFile(folder_ / "to"), "kept");
  EXPECT_EQ(test::ReadFile(folder_ / "from"), "text");
}

TEST_P(UnusedName, StaysUnusedWhenThereIsNothingToName) {
  EXPECT_NE(Rename(GetParam(), descriptor_, "missing", "to"), 0);
  EXPECT_THAT(Names(), ElementsAre("from"));
}

INSTANTIATE_TEST_SUITE_P(Ways, UnusedName,
                         testing::Values(engine::Naming::kRename, engine::Naming::kLink, engine::Naming::kClaim));

TEST_F(UnusedNameTest, IsTakenInTheBestWayThatThereIs) {
  EXPECT_EQ(engine::RenameToUnusedName(descriptor_, "from", "to"), 0);
  test::WriteFile(folder_ / "from", "second");
  EXPECT_EQ(engine::RenameToUnusedName(descriptor_, "from", "to"), EEXIST);
  EXPECT_EQ(test::ReadFile(folder_ / "to"), "text");
}

#endif

#ifndef _WIN32

TEST_F(WholeFileTest, WhatCanBeNeitherRenamedToNorOpenedIsRefused) {
  const fs::path path = folder_ / "socket";
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  const std::string name = path.native();
  if (name.size() >= sizeof address.sun_path) GTEST_SKIP() << "the path of the temporary folder is too long";
  std::copy(name.begin(), name.end(), address.sun_path);
  const int made = socket(AF_UNIX, SOCK_STREAM, 0);
  ASSERT_EQ(bind(made, reinterpret_cast<const sockaddr *>(&address), sizeof address), 0);
  EXPECT_NE(Write(path), 0);
  EXPECT_TRUE(fs::is_socket(path));
  close(made);
}

#endif

}  // namespace
}  // namespace quillbar
