// SPDX-License-Identifier: MIT
#include "host/runtime/platform/file_system.h"

#include <gmock/gmock.h>

#include <algorithm>

#include "host/testing/host_fixture.h"
#include "tests/support/temporary_folder.h"

namespace quillbar::host {
namespace {

using platform::FileKind;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

constexpr const char *kGreekAndJapanese = "Ωδή 手紙 ü";

class FileSystemTest : public HostFixture {
 protected:
  void SetUp() override { StartHost({}); }

  ObjectHandle Item(const std::filesystem::path &path) {
    return host().Create("FolderItem", {Value(platform::Utf8Path(path))});
  }
  ObjectHandle Child(const ObjectHandle &folder, const std::string &name) {
    return host().Call(folder, "Child", {Value(name)}).AsObject();
  }
  std::string TextOf(const ObjectHandle &item, const char *property) { return host().Get(item, property).Utf8(); }
  bool IsTrue(const ObjectHandle &item, const char *property) { return host().Get(item, property).AsBoolean(); }

  /// Folders within folders, until the path is much longer than 260 characters.
  ObjectHandle MakeDeepFolder() {
    ObjectHandle folder = Item(scratch_.path());
    for (int depth = 0; depth < kDepth; ++depth) {
      folder = Child(folder, std::string(60, static_cast<char>('a' + depth)));
      host().Call(folder, "CreateFolder");
    }
    return folder;
  }

  static constexpr int kDepth = 6;
  test::TemporaryFolder scratch_;
};

TEST_F(FileSystemTest, PathsOfAnyCharactersComeBackAsUtf8) {
  const std::string name = kGreekAndJapanese;
  EXPECT_EQ(platform::Utf8Path(platform::PathFromUtf8(name)), name);
  test::WriteFile(scratch_ / name, "text");
  const ObjectHandle file = Child(Item(scratch_.path()), name);
  EXPECT_TRUE(IsTrue(file, "Exists"));
  EXPECT_FALSE(IsTrue(file, "IsFolder"));
  EXPECT_EQ(TextOf(file, "Name"), name);
  EXPECT_THAT(TextOf(file, "NativePath"), EndsWith(name));
  EXPECT_EQ(host().Get(file, "Length").AsInteger(), 4);
}

TEST_F(FileSystemTest, PathsMayBeLongerThanTwoHundredAndSixtyCharacters) {
  const ObjectHandle folder = MakeDeepFolder();
  EXPECT_GT(TextOf(folder, "NativePath").size(), 360U);
  EXPECT_TRUE(IsTrue(folder, "IsFolder"));
  const ObjectHandle child = Child(folder, kGreekAndJapanese);
  host().Call(child, "CreateFolder");
  EXPECT_EQ(host().Get(folder, "Count").AsInteger(), 1);
  EXPECT_EQ(TextOf(host().Call(folder, "ChildAt", {0}).AsObject(), "Name"), kGreekAndJapanese);

  host().Set(child, "Name", Value("renamed"));
  EXPECT_TRUE(IsTrue(Child(folder, "renamed"), "IsFolder"));
  EXPECT_FALSE(IsTrue(Child(folder, kGreekAndJapanese), "Exists"));
  host().Call(child, "Remove");
  EXPECT_FALSE(IsTrue(child, "Exists"));
  // Removing the temporary folder fails at long paths on some systems.
  ObjectHandle each = folder;
  for (int depth = 0; depth < kDepth; ++depth) {
    const ObjectHandle parent = host().Get(each, "Parent").AsObject();
    host().Call(each, "Remove");
    EXPECT_FALSE(IsTrue(each, "Exists"));
    each = parent;
  }
}

TEST_F(FileSystemTest, AFolderIsCopiedWithAllThatItHolds) {
  const ObjectHandle source = Child(Item(scratch_.path()), "source");
  host().Call(source, "CreateFolder");
  host().Call(Child(source, "inner"), "CreateFolder");
  test::WriteFile(scratch_ / "source/inner/file", "bytes");
  host().Call(source, "CopyTo", {Value(Child(Item(scratch_.path()), "copy"))});
  EXPECT_EQ(test::ReadFile(scratch_ / "copy/inner/file"), "bytes");
  EXPECT_EQ(test::ReadFile(scratch_ / "source/inner/file"), "bytes");
}

TEST_F(FileSystemTest, ACopyNeverReplacesAFile) {
  test::WriteFile(scratch_ / "new", "new");
  test::WriteFile(scratch_ / "old", "old");
  std::error_code error;
  platform::Copy(scratch_ / "new", scratch_ / "old", error);
  EXPECT_TRUE(error);
  EXPECT_EQ(test::ReadFile(scratch_ / "old"), "old");
}

TEST_F(FileSystemTest, AFolderListsItsContentByName) {
  for (const char *name : {"b", "c", "a"}) test::WriteFile(scratch_ / name, "");
  std::error_code error;
  const auto children = platform::ListFolder(scratch_.path(), error);
  EXPECT_FALSE(error);
  EXPECT_THAT(children, ElementsAre(scratch_ / "a", scratch_ / "b", scratch_ / "c"));
}

TEST_F(FileSystemTest, ListingWhatIsNoFolderIsAnError) {
  std::error_code error;
  EXPECT_THAT(platform::ListFolder(scratch_ / "nowhere", error), IsEmpty());
  EXPECT_TRUE(error);
  EXPECT_THAT(platform::ErrorText(error), Not(IsEmpty()));
  EXPECT_THAT(platform::ErrorText(error), Not(EndsWith("\n")));
}

TEST_F(FileSystemTest, AFullFolderIsNotRemoved) {
  std::error_code error;
  platform::CreateFolder(scratch_ / "folder", error);
  test::WriteFile(scratch_ / "folder/file", "kept");
  EXPECT_FALSE(platform::Remove(scratch_ / "folder", error));
  EXPECT_TRUE(error);
  EXPECT_EQ(test::ReadFile(scratch_ / "folder/file"), "kept");
}

TEST_F(FileSystemTest, RemovingNothingIsNoError) {
  std::error_code error;
  EXPECT_FALSE(platform::Remove(scratch_ / "nothing", error));
  EXPECT_FALSE(error);
  EXPECT_EQ(platform::KindOf(scratch_ / "nothing"), FileKind::kNone);
}

TEST_F(FileSystemTest, CreatingAFolderAgainIsNoErrorButOverAFileItIs) {
  std::error_code error;
  platform::CreateFolder(scratch_ / "folder", error);
  platform::CreateFolder(scratch_ / "folder", error);
  EXPECT_FALSE(error);
  test::WriteFile(scratch_ / "file", "");
  platform::CreateFolder(scratch_ / "file", error);
  EXPECT_TRUE(error);
}

TEST_F(FileSystemTest, DotsAndSeparatorsAtTheEndLeaveTheName) {
  const std::filesystem::path base = platform::NormalPath(scratch_.path());
  EXPECT_EQ(platform::NormalPath(scratch_ / "x/../folder/./"), base / "folder");
}

TEST_F(FileSystemTest, TheRootHasNoParentAndNoName) {
  const ObjectHandle root = Item(scratch_.path().root_path());
  EXPECT_TRUE(IsTrue(root, "IsFolder"));
  EXPECT_TRUE(host().Get(root, "Parent").IsNil());
  EXPECT_EQ(TextOf(root, "Name"), "");
}

TEST_F(FileSystemTest, ACanonicalPathIsTheSameHoweverTheFileIsNamed) {
  test::WriteFile(scratch_ / "file", "");
  std::error_code error;
  const auto straight = platform::CanonicalPath(scratch_ / "file", error);
  ASSERT_FALSE(error) << platform::ErrorText(error);
  EXPECT_EQ(platform::CanonicalPath(scratch_ / "./file", error), straight);
  platform::CanonicalPath(scratch_ / "nothing", error);
  EXPECT_TRUE(error);
}

#ifdef _WIN32
constexpr bool kIsWindows = true;
#else
constexpr bool kIsWindows = false;
#endif

TEST_F(FileSystemTest, OnWindowsNativePathsHaveBackslashesAndNoPrefix) {
  if (!kIsWindows) GTEST_SKIP() << "other systems write paths with slashes only";
  test::WriteFile(scratch_ / "file", "text");
  std::string path = platform::Utf8Path(platform::NormalPath(scratch_ / "file"));
  EXPECT_THAT(path, HasSubstr("\\"));
  EXPECT_EQ(TextOf(Item(platform::PathFromUtf8("\\\\?\\" + path)), "NativePath"), path);
  std::string withSlashes = path;
  std::ranges::replace(withSlashes, '\\', '/');
  EXPECT_EQ(TextOf(Item(platform::PathFromUtf8(withSlashes)), "NativePath"), path);
  EXPECT_TRUE(IsTrue(Item(platform::PathFromUtf8("\\\\?\\" + path)), "Exists"));
}

TEST_F(FileSystemTest, OnWindowsSharesKeepTheirForm) {
  if (!kIsWindows) GTEST_SKIP() << "other systems have no paths of shares";
  const std::string path = R"(\\server\share\folder\file)";
  EXPECT_EQ(TextOf(Item(platform::PathFromUtf8(path)), "NativePath"), path);
  EXPECT_EQ(TextOf(Item(platform::PathFromUtf8(R"(\\?\UNC\server\share\folder\file)")), "NativePath"), path);
  EXPECT_EQ(TextOf(host().Get(Item(platform::PathFromUtf8(path)), "Parent").AsObject(), "NativePath"),
            R"(\\server\share\folder)");
}

}  // namespace
}  // namespace quillbar::host
