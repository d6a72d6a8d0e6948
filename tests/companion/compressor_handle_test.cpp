// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <zlib.h>

#include <array>
#include <cstring>
#include <string>

#include "host/testing/host_fixture.h"

namespace quillbar::host {
namespace {

/// The data block as other plugins read it.
struct Words {
  void *unused;
  int (*end)(void *);
  int (*init)(void *, int, const char *, int);
  int (*deflate)(void *, int);
};

class CompressorHandleTest : public HostFixture {
 protected:
  void SetUp() override { StartHost({COMPANION_PLUGIN}); }
  Words WordsOf(const ObjectHandle &handle) {
    Words words{};
    std::memcpy(&words, host().ClassData(handle, host().Class("CompressorHandle")), sizeof words);
    return words;
  }
};

TEST_F(CompressorHandleTest, ScriptsMakeOneWithoutArguments) {
  const ObjectHandle handle = host().Create("CompressorHandle");
  EXPECT_EQ(handle.Class().QualifiedName(), "CompressorHandle");
  EXPECT_EQ(host().Class("CompressorHandle").dataSize, 4 * sizeof(void *));
}

TEST_F(CompressorHandleTest, ItsFunctionsDeflateWhatAnotherZlibInflates) {
  const ObjectHandle handle = host().Create("CompressorHandle");
  const Words words = WordsOf(handle);
  std::string text;
  for (int i = 0; i < 5000; ++i) text += "0 0 m " + std::to_string(i) + " 100 l S\n";

  z_stream stream{};
  ASSERT_EQ(words.init(&stream, -1, "1.1.3", sizeof stream), Z_OK);
  std::string compressed(text.size(), '\0');
  stream.next_in = reinterpret_cast<Bytef *>(text.data());
  stream.avail_in = static_cast<uInt>(text.size());
  stream.next_out = reinterpret_cast<Bytef *>(compressed.data());
  stream.avail_out = static_cast<uInt>(compressed.size());
  ASSERT_EQ(words.deflate(&stream, Z_FINISH), Z_STREAM_END);
  compressed.resize(stream.total_out);
  EXPECT_EQ(words.end(&stream), Z_OK);

  std::string inflated(text.size(), '\0');
  uLongf size = static_cast<uLongf>(inflated.size());
  ASSERT_EQ(uncompress(reinterpret_cast<Bytef *>(inflated.data()), &size,
                       reinterpret_cast<const Bytef *>(compressed.data()), static_cast<uLong>(compressed.size())),
            Z_OK);
  EXPECT_EQ(inflated, text);
  EXPECT_LT(compressed.size(), text.size() / 2);
}

TEST_F(CompressorHandleTest, AStreamRecordOfAnotherSizeIsRefused) {
  const ObjectHandle handle = host().Create("CompressorHandle");
  z_stream stream{};
  EXPECT_EQ(WordsOf(handle).init(&stream, -1, "1.1.3", sizeof stream - 1), Z_VERSION_ERROR);
}

TEST_F(CompressorHandleTest, AnotherMajorVersionIsRefused) {
  const ObjectHandle handle = host().Create("CompressorHandle");
  z_stream stream{};
  EXPECT_EQ(WordsOf(handle).init(&stream, -1, "2.0", sizeof stream), Z_VERSION_ERROR);
}

}  // namespace
}  // namespace quillbar::host
