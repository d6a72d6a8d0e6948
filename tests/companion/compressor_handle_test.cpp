// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <zlib.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

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

// Which bytes there are decides what a compressor does: drawing operations, noise, one byte again and again, nothing.
std::string Operations(std::size_t size) {
  std::string text;
  for (int i = 0; text.size() < size; ++i) text += std::to_string(i * 7919 % 1000) + " " + std::to_string(i) + " l\n";
  text.resize(size);
  return text;
}

std::string Noise(std::size_t size) {
  std::string bytes(size, '\0');
  std::uint32_t state = 1;
  for (char &byte : bytes) {
    state = state * 1664525 + 1013904223;
    byte = static_cast<char>(state >> 24);
  }
  return bytes;
}

// A caller of the three functions. It gives and takes so many bytes at a time, and counts what it allocates.
class Caller {
 public:
  explicit Caller(const Words &words) : words_(words) {
    record.zalloc = [](void *opaque, uInt items, uInt size) -> void * {
      auto *self = static_cast<Caller *>(opaque);
      if (self->allocations++ >= self->mostAllocations) return nullptr;
      ++self->blocks;
      return std::malloc(std::size_t{items} * size);
    };
    record.zfree = [](void *opaque, void *block) {
      --static_cast<Caller *>(opaque)->blocks;
      std::free(block);
    };
    record.opaque = this;
  }

  int Begin(int level) { return words_.init(&record, level, "1.2.3", sizeof record); }
  int End() { return words_.end(&record); }

  int Give(const std::string &input, int flush, std::size_t inputStep, std::size_t outputStep) {
    int result = Z_OK;
    std::size_t position = 0;
    std::string output(outputStep, '\0');
    do {
      const std::size_t size = std::min(inputStep, input.size() - position);
      const bool isLast = position + size == input.size();
      record.next_in = reinterpret_cast<Bytef *>(const_cast<char *>(input.data() + position));
      record.avail_in = static_cast<uInt>(size);
      position += size;
      do {
        record.next_out = reinterpret_cast<Bytef *>(output.data());
        record.avail_out = static_cast<uInt>(output.size());
        const int now = isLast ? flush : Z_NO_FLUSH;
        result = words_.deflate(&record, now);
        // There was nothing left when the output had just been filled.
        if (result == Z_BUF_ERROR && record.avail_in == 0 && now != Z_FINISH) result = Z_OK;
        if (result != Z_OK && result != Z_STREAM_END) return result;
        written += output.substr(0, output.size() - record.avail_out);
      } while (record.avail_out == 0 && result != Z_STREAM_END);
      EXPECT_EQ(record.avail_in, 0U);
    } while (position < input.size());
    return result;
  }

  z_stream record{};
  std::string written;
  int allocations = 0;
  int mostAllocations = 1000;
  int blocks = 0;

 private:
  Words words_;
};

// As zlib reads it; the end of the data must be that of the input.
std::string Inflated(const std::string &compressed, std::size_t size) {
  std::string inflated(size + 1, '\0');
  uLongf written = static_cast<uLongf>(inflated.size());
  uLong read = static_cast<uLong>(compressed.size());
  EXPECT_EQ(uncompress2(reinterpret_cast<Bytef *>(inflated.data()), &written,
                        reinterpret_cast<const Bytef *>(compressed.data()), &read),
            Z_OK);
  EXPECT_EQ(read, compressed.size());
  inflated.resize(written);
  return inflated;
}

TEST_F(CompressorHandleTest, StreamsOfAnyLengthComeBackFromZlib) {
  const ObjectHandle handle = host().Create("CompressorHandle");
  constexpr std::size_t kPart = 256 * 1024;
  for (const std::size_t size : {std::size_t{0}, std::size_t{1}, std::size_t{31}, std::size_t{5000},
                                 std::size_t{16 * 1024 + 1}, kPart, kPart + 1, 2 * kPart + 5000}) {
    for (const std::string &input : {Operations(size), Noise(size), std::string(size, 'x')}) {
      Caller caller(WordsOf(handle));
      ASSERT_EQ(caller.Begin(-1), Z_OK);
      ASSERT_EQ(caller.Give(input, Z_FINISH, 4096, 4518), Z_STREAM_END) << size;
      EXPECT_EQ(caller.record.total_in, input.size());
      EXPECT_EQ(caller.record.total_out, caller.written.size());
      EXPECT_EQ(caller.record.adler,
                adler32(1, reinterpret_cast<const Bytef *>(input.data()), static_cast<uInt>(size)));
      EXPECT_EQ(caller.End(), Z_OK);
      EXPECT_EQ(caller.blocks, 0);
      EXPECT_EQ(Inflated(caller.written, size), input) << size;
      EXPECT_LE(caller.written.size(), size + 200 + size / 1000);
    }
  }
}

TEST_F(CompressorHandleTest, InputAndOutputMayComeInAnySteps) {
  const ObjectHandle handle = host().Create("CompressorHandle");
  const std::string input = Operations(20000) + Noise(300000) + Operations(30000);
  for (const auto &[inputStep, outputStep] : {std::pair<std::size_t, std::size_t>{1000000, 1000000},
                                              {1000000, 7},
                                              {13, 1000000},
                                              {200000, 262144},
                                              {999, 1}}) {
    Caller caller(WordsOf(handle));
    ASSERT_EQ(caller.Begin(6), Z_OK);
    ASSERT_EQ(caller.Give(input, Z_FINISH, inputStep, outputStep), Z_STREAM_END);
    EXPECT_EQ(caller.End(), Z_OK);
    EXPECT_EQ(Inflated(caller.written, input.size()), input);
  }
}

TEST_F(CompressorHandleTest, HigherLevelsAreSmaller) {
  const ObjectHandle handle = host().Create("CompressorHandle");
  const std::string input = Operations(280000);
  std::vector<std::size_t> sizes;
  for (const int level : {0, 1, 3, 5, 6, 8, 9}) {
    Caller caller(WordsOf(handle));
    ASSERT_EQ(caller.Begin(level), Z_OK);
    ASSERT_EQ(caller.Give(input, Z_FINISH, 4096, 4096), Z_STREAM_END);
    EXPECT_EQ(caller.End(), Z_OK);
    EXPECT_EQ(Inflated(caller.written, input.size()), input) << level;
    sizes.push_back(caller.written.size());
  }
  EXPECT_GT(sizes.front(), input.size());
  EXPECT_LT(sizes[1], input.size() / 2);
  EXPECT_LT(sizes[4], sizes[1]);
  EXPECT_LE(sizes.back(), sizes[4]);
}

TEST_F(CompressorHandleTest, WhatWasFlushedCanBeReadBeforeTheEnd) {
  const ObjectHandle handle = host().Create("CompressorHandle");
  for (const int flush : {Z_PARTIAL_FLUSH, Z_SYNC_FLUSH, Z_FULL_FLUSH, Z_BLOCK}) {
    for (const int level : {0, 6}) {
      Caller caller(WordsOf(handle));
      ASSERT_EQ(caller.Begin(level), Z_OK);
      std::string input;
      z_stream reader{};
      ASSERT_EQ(inflateInit(&reader), Z_OK);
      std::string output(100000, '\0');
      reader.next_out = reinterpret_cast<Bytef *>(output.data());
      reader.avail_out = static_cast<uInt>(output.size());
      for (const std::size_t size : {std::size_t{20}, std::size_t{3000}, std::size_t{70000}}) {
        const std::string more = Operations(size);
        input += more;
        const std::size_t before = caller.written.size();
        ASSERT_EQ(caller.Give(more, flush, 4096, 512), Z_OK);
        reader.next_in = reinterpret_cast<Bytef *>(caller.written.data() + before);
        reader.avail_in = static_cast<uInt>(caller.written.size() - before);
        ASSERT_EQ(inflate(&reader, Z_NO_FLUSH), Z_OK);
        EXPECT_EQ(output.substr(0, reader.total_out), input);
      }
      EXPECT_EQ(inflateEnd(&reader), Z_OK);
      ASSERT_EQ(caller.Give("", Z_FINISH, 4096, 512), Z_STREAM_END);
      EXPECT_EQ(caller.End(), Z_OK);
      EXPECT_EQ(Inflated(caller.written, input.size()), input);
    }
  }
}

TEST_F(CompressorHandleTest, EveryRefusedAllocationIsAnErrorOrMakesSmallerParts) {
  const ObjectHandle handle = host().Create("CompressorHandle");
  const std::string input = Operations(300000);
  int begun = 0;
  for (int most = 0; most < 6; ++most) {
    Caller caller(WordsOf(handle));
    caller.mostAllocations = most;
    if (caller.Begin(-1) != Z_OK) {
      EXPECT_EQ(caller.record.state, nullptr);
    } else {
      ++begun;
      ASSERT_EQ(caller.Give(input, Z_FINISH, 4096, 4096), Z_STREAM_END);
      EXPECT_EQ(Inflated(caller.written, input.size()), input);
      EXPECT_EQ(caller.End(), Z_OK);
    }
    EXPECT_EQ(caller.blocks, 0);
  }
  EXPECT_EQ(begun, 3);
}

TEST_F(CompressorHandleTest, MisuseIsAnsweredAsZlibAnswersIt) {
  const ObjectHandle handle = host().Create("CompressorHandle");
  const Words words = WordsOf(handle);
  z_stream unbegun{};
  EXPECT_EQ(words.deflate(&unbegun, Z_FINISH), Z_STREAM_ERROR);
  EXPECT_EQ(words.end(&unbegun), Z_STREAM_ERROR);
  EXPECT_EQ(words.deflate(nullptr, Z_FINISH), Z_STREAM_ERROR);
  EXPECT_EQ(words.end(nullptr), Z_STREAM_ERROR);

  Caller caller(words);
  EXPECT_EQ(caller.Begin(10), Z_STREAM_ERROR);
  EXPECT_EQ(caller.Begin(-2), Z_STREAM_ERROR);
  ASSERT_EQ(caller.Begin(-1), Z_OK);
  std::array<Bytef, 100> output{};
  EXPECT_EQ(words.deflate(&caller.record, Z_FINISH), Z_STREAM_ERROR) << "no output";
  caller.record.next_out = output.data();
  EXPECT_EQ(words.deflate(&caller.record, Z_FINISH), Z_BUF_ERROR) << "no room";
  caller.record.avail_out = output.size();
  EXPECT_EQ(words.deflate(&caller.record, 6), Z_STREAM_ERROR) << "no such flush";
  EXPECT_EQ(words.deflate(&caller.record, Z_NO_FLUSH), Z_OK);
  EXPECT_EQ(words.deflate(&caller.record, Z_NO_FLUSH), Z_BUF_ERROR) << "nothing to do";
  z_stream copy = caller.record;
  EXPECT_EQ(words.deflate(&copy, Z_FINISH), Z_STREAM_ERROR) << "the record's address is part of its state";
  EXPECT_EQ(words.deflate(&caller.record, Z_FINISH), Z_STREAM_END);
  EXPECT_EQ(words.deflate(&caller.record, Z_FINISH), Z_STREAM_END);
  EXPECT_EQ(words.deflate(&caller.record, Z_NO_FLUSH), Z_STREAM_ERROR) << "after the end";
  EXPECT_EQ(caller.End(), Z_OK);
  EXPECT_EQ(caller.End(), Z_STREAM_ERROR);

  ASSERT_EQ(caller.Begin(-1), Z_OK);
  EXPECT_EQ(caller.Give("abc", Z_NO_FLUSH, 10, 10), Z_OK);
  EXPECT_EQ(caller.End(), Z_DATA_ERROR) << "given up";
  EXPECT_EQ(caller.blocks, 0);
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
