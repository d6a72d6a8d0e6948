// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <vector>

#include "host/runtime/host_error.h"
#include "host/runtime/value.h"

namespace quillbar::host {
namespace {

TEST(ArrayTest, NewElementsAreZeroValues) {
  const ArrayHandle numbers = ArrayHandle::Create(TypeKind::kDouble, 2);
  EXPECT_EQ(numbers.Size(), 2U);
  EXPECT_EQ(numbers.At(1), Value(0.0));
  EXPECT_TRUE(ArrayHandle::Create(TypeKind::kString, 1).At(0).AsString().IsEmpty());
}

TEST(ArrayTest, ElementsAreConvertedToTheElementType) {
  ArrayHandle numbers = ArrayHandle::Create(TypeKind::kUInt16);
  numbers.Append(70000);
  numbers.Append(2.9);
  EXPECT_EQ(numbers.At(0), Value(std::uint16_t{4464}));
  EXPECT_EQ(numbers.At(1), Value(std::uint16_t{2}));
  EXPECT_THROW(numbers.Append("text"), HostError);
  EXPECT_EQ(numbers.Size(), 2U);
}

TEST(ArrayTest, IndexesOutsideAreErrors) {
  ArrayHandle numbers = ArrayHandle::Create(TypeKind::kInt32, 3);
  EXPECT_THROW(numbers.At(-1), HostError);
  EXPECT_THROW(numbers.At(3), HostError);
  EXPECT_THROW(numbers.Set(3, 1), HostError);
  EXPECT_THROW(numbers.RemoveAt(3), HostError);
  EXPECT_THROW(numbers.Insert(4, 1), HostError);
  EXPECT_THROW(ArrayHandle().At(0), HostError);
}

TEST(ArrayTest, ElementsAreInsertedRemovedAndResized) {
  ArrayHandle numbers = ArrayHandle::Create(TypeKind::kInt32);
  for (const int number : {1, 3}) numbers.Append(number);
  numbers.Insert(1, 2);
  numbers.Insert(3, 4);
  numbers.RemoveAt(0);
  numbers.Resize(4);
  std::vector<std::int64_t> values;
  for (std::int64_t i = 0; i < 4; ++i) values.push_back(numbers.At(i).AsInteger());
  EXPECT_EQ(values, (std::vector<std::int64_t>{2, 3, 4, 0}));
  numbers.Resize(-1);
  EXPECT_EQ(numbers.Size(), 0U);
}

TEST(ArrayTest, ArraysAreShared) {
  ArrayHandle first = ArrayHandle::Create(TypeKind::kString);
  const Value value(first);
  value.AsArray().Append("seen by both");
  EXPECT_EQ(first.At(0).Utf8(), "seen by both");
  EXPECT_EQ(value.type().Name(), "String()");
}

}  // namespace
}  // namespace quillbar::host
