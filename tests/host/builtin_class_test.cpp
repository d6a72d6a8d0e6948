// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include <fstream>

#include "host/runtime/builtin/builtin_classes.h"
#include "host/testing/host_fixture.h"
#include "tests/host/test_plugins.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/utf8_path.h"

namespace quillbar::host {
namespace {

namespace fs = std::filesystem;

class MemoryBlockTest : public HostFixture {
 protected:
  void SetUp() override { StartHost({TestPlugin("probe")}); }
  void Assign(const ObjectHandle &block, const char *method, std::vector<Value> arguments, const Value &value) {
    host().InvokeSetter(*block.Class().FindMethods(method).front(), block, arguments, value);
  }
};

TEST_F(MemoryBlockTest, StartsAsZeroesOfItsSize) {
  const ObjectHandle block = host().Create("MemoryBlock", {3});
  EXPECT_EQ(host().Get(block, "Size").AsInteger(), 3);
  EXPECT_EQ(BytesOf(host(), block), std::string_view("\0\0\0", 3));
}

TEST_F(MemoryBlockTest, APluginFillsItThroughItsAddress) {
  const ObjectHandle block = host().Call(host().Create("Probe"), "MakeBlock", {5}).AsObject();
  EXPECT_EQ(BytesOf(host(), block), "xxxxx");
}

TEST_F(MemoryBlockTest, NumbersAreReadAndWrittenInEitherByteOrder) {
  const ObjectHandle block = host().Create("MemoryBlock", {16});
  host().Set(block, "LittleEndian", true);
  Assign(block, "UInt32Value", {1}, 0x01020304);
  EXPECT_EQ(host().Call(block, "Byte", {1}).AsInteger(), 4);
  EXPECT_EQ(host().Call(block, "UInt16Value", {1}).AsInteger(), 0x0304);
  host().Set(block, "LittleEndian", false);
  EXPECT_EQ(host().Call(block, "UInt32Value", {1}).AsInteger(), 0x04030201);
  Assign(block, "DoubleValue", {8}, 0.1);
  EXPECT_EQ(host().Call(block, "DoubleValue", {8}), Value(0.1));
  EXPECT_EQ(host().Call(block, "Int8Value", {8}).AsInteger(), 0x3F);
  Assign(block, "BooleanValue", {0}, true);
  EXPECT_EQ(host().Call(block, "BooleanValue", {0}), Value(true));
}

TEST_F(MemoryBlockTest, TextIsFilledUpOrCut) {
  const ObjectHandle block = host().Create("MemoryBlock", {6});
  Assign(block, "StringValue", {1, 3}, "abcdef");
  EXPECT_EQ(BytesOf(host(), block), std::string_view("\0abc\0\0", 6));
  Assign(block, "StringValue", {0, 4}, "z");
  EXPECT_EQ(BytesOf(host(), block), std::string_view("z\0\0\0\0\0", 6));
  EXPECT_EQ(host().Call(block, "StringValue", {0, 2}).AsString().Bytes(), std::string_view("z\0", 2));
}

TEST_F(MemoryBlockTest, AccessOutsideIsAnErrorThatComesOutOfTheCall) {
  const ObjectHandle block = host().Create("MemoryBlock", {4});
  for (const std::int64_t offset : {std::int64_t{-1}, std::int64_t{1}, INT64_MAX}) {
    EXPECT_THROW(host().Call(block, "UInt32Value", {offset}), HostError) << offset;
  }
  EXPECT_THROW(host().Call(block, "StringValue", {0, 5}), HostError);
  EXPECT_THROW(host().Call(block, "StringValue", {0, -1}), HostError);
  EXPECT_THROW(host().Create("MemoryBlock", {-1}), HostError);
  EXPECT_NO_THROW(host().Call(block, "UInt32Value", {0}));
}

TEST_F(MemoryBlockTest, ItsSizeCanChange) {
  const ObjectHandle block = MakeMemoryBlock(host(), "abc");
  host().Set(block, "Size", 5);
  EXPECT_EQ(BytesOf(host(), block), std::string_view("abc\0\0", 5));
}

class FolderItemTest : public HostFixture {
 protected:
  void SetUp() override {
    StartHost({TestPlugin("probe")});
    fs::create_directory(folder_);
    std::ofstream(folder_ / "b.txt") << "12345";
    std::ofstream(folder_ / "a.txt") << "1";
  }
  ObjectHandle Item(const fs::path &path) { return host().Create("FolderItem", {test::Utf8(path)}); }

  const test::TemporaryFolder scratch_;
  const fs::path folder_ = scratch_ / "folder item ü";
};

TEST_F(FolderItemTest, DescribesWhatIsThere) {
  const ObjectHandle file = Item(folder_ / "b.txt");
  EXPECT_EQ(host().Get(file, "NativePath").Utf8(), test::Utf8(folder_ / "b.txt"));
  EXPECT_EQ(host().Get(file, "Name").Utf8(), "b.txt");
  EXPECT_TRUE(host().Get(file, "Exists").AsBoolean());
  EXPECT_FALSE(host().Get(file, "Directory").AsBoolean());
  EXPECT_FALSE(host().Get(file, "IsFolder").AsBoolean());
  EXPECT_EQ(host().Get(file, "Length").AsInteger(), 5);
  EXPECT_TRUE(host().Get(Item(folder_), "IsFolder").AsBoolean());
  EXPECT_FALSE(host().Get(Item(folder_ / "absent"), "Exists").AsBoolean());
}

TEST_F(FolderItemTest, APluginReadsItsProperties) {
  const ObjectHandle probe = host().Create("Probe");
  const ObjectHandle file = Item(folder_ / "b.txt");
  EXPECT_EQ(host().Call(probe, "PathOf", {file}).Utf8(), test::Utf8(folder_ / "b.txt"));
  EXPECT_EQ(host().Call(probe, "FlagOf", {file, "Exists"}).AsInteger(), 1);
  EXPECT_EQ(host().Call(probe, "FlagOf", {file, "Directory"}).AsInteger(), 0);
  EXPECT_EQ(host().Call(probe, "FlagOf", {file, "NoSuchProperty"}).AsInteger(), -1);
  EXPECT_EQ(host().Call(probe, "FlagOf", {file, "NativePath"}).AsInteger(), -1) << "not a Boolean";
}

TEST_F(FolderItemTest, WalksUpAndDown) {
  const ObjectHandle folder = Item(folder_);
  EXPECT_EQ(host().Get(folder, "Count").AsInteger(), 2);
  EXPECT_EQ(host().Get(host().Call(folder, "ChildAt", {0}).AsObject(), "Name").Utf8(), "a.txt");
  EXPECT_EQ(host().Get(host().Call(folder, "Item", {2}).AsObject(), "Name").Utf8(), "b.txt");
  EXPECT_THROW(host().Call(folder, "ChildAt", {2}), HostError);
  const ObjectHandle child = host().Call(folder, "Child", {"new"}).AsObject();
  EXPECT_EQ(PathOf(host(), host().Get(child, "Parent").AsObject()), folder_);
  EXPECT_TRUE(host().Get(Item("/"), "Parent").AsObject().IsNil());
}

TEST_F(FolderItemTest, RelativePathsCountFromTheCurrentFolder) {
  EXPECT_EQ(PathOf(host(), Item("x/../y.pdf")), fs::current_path() / "y.pdf");
  EXPECT_EQ(PathOf(host(), Item("")), fs::current_path());
  EXPECT_EQ(PathOf(host(), host().Create("FolderItem")), fs::current_path());
}

TEST_F(FolderItemTest, CreatesCopiesMovesAndDeletes) {
  const ObjectHandle made = Item(folder_ / "made");
  host().Call(made, "CreateFolder");
  host().Call(Item(folder_ / "a.txt"), "CopyTo", {made});
  EXPECT_TRUE(fs::exists(folder_ / "made" / "a.txt"));
  const ObjectHandle file = Item(folder_ / "b.txt");
  host().Call(file, "MoveTo", {made});
  EXPECT_EQ(PathOf(host(), file), folder_ / "made" / "b.txt");
  EXPECT_FALSE(fs::exists(folder_ / "b.txt"));
  host().Set(file, "Name", "c.txt");
  EXPECT_TRUE(fs::exists(folder_ / "made" / "c.txt"));
  host().Call(file, "Remove");
  EXPECT_FALSE(fs::exists(folder_ / "made" / "c.txt"));
}

TEST_F(FolderItemTest, FailuresNameTheFileAndTheReason) {
  try {
    host().Call(Item(folder_ / "absent"), "Remove");
    FAIL();
  } catch (const HostError &error) {
    EXPECT_EQ(error.kind(), ErrorKind::kFile);
    EXPECT_THAT(error.what(), testing::HasSubstr("absent\" failed: No such file"));
  }
  EXPECT_NO_THROW(host().Call(Item(folder_ / "absent"), "Delete")) << "nothing to delete";
  EXPECT_THROW(host().Call(Item(folder_), "Delete"), HostError) << "the folder is not empty";
  EXPECT_THROW(host().Call(Item(folder_ / "a.txt"), "MoveTo", {Item(folder_ / "b.txt")}), HostError)
      << "nothing is overwritten";
  EXPECT_THROW(host().Call(Item(folder_ / "a.txt"), "CopyTo", {Value::Nil()}), HostError);
}

}  // namespace
}  // namespace quillbar::host
