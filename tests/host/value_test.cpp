// SPDX-License-Identifier: MIT
#include "host/runtime/value.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "host/runtime/conversion.h"
#include "host/runtime/host_error.h"

namespace quillbar::host {
namespace {

TEST(ValueTest, CppTypesBecomeTheScriptTypeOfTheirWidth) {
  EXPECT_EQ(Value(1).type().Name(), sizeof(Integer) == 4 ? "Integer" : "Int32");
  EXPECT_EQ(Value(Integer{1}).type().Name(), "Integer");
  EXPECT_EQ(Value(std::uint8_t{1}).type().Name(), "UInt8");
  EXPECT_EQ(Value(1.0F).type().Name(), "Single");
  EXPECT_EQ(Value(1.0).type().Name(), "Double");
  EXPECT_EQ(Value(true).type().Name(), "Boolean");
  EXPECT_EQ(Value("x").type().Name(), "String");
  EXPECT_EQ(Value(Color{1}).type().Name(), "Color");
  EXPECT_EQ(Value::Nil().type().Name(), "Nil");
}

TEST(ValueTest, IntegersWrapAndRealNumbersLoseTheirFraction) {
  EXPECT_EQ(Value(300).ConvertedTo(TypeKind::kUInt8), Value(std::uint8_t{44}));
  EXPECT_EQ(Value(-1).ConvertedTo(TypeKind::kUInt32), Value(std::uint32_t{0xFFFFFFFF}));
  EXPECT_EQ(Value(-2.9).ConvertedTo(TypeKind::kInt32), Value(-2));
}

TEST(ValueTest, RealNumbersBeyondTheIntegersAreDefined) {
  EXPECT_EQ(Value(1e300).AsInteger(), std::numeric_limits<std::int64_t>::max());
  EXPECT_EQ(Value(-1e300).AsInteger(), std::numeric_limits<std::int64_t>::min());
  EXPECT_EQ(Value(std::nan("")).AsInteger(), 0);
}

TEST(ValueTest, RealNumbersAreClampedToTheirTarget) {
  EXPECT_EQ(Value(1e300).ConvertedTo(TypeKind::kInt32), Value(std::numeric_limits<std::int32_t>::max()));
  EXPECT_EQ(Value(-1.0F).ConvertedTo(TypeKind::kUInt8), Value(std::uint8_t{0}));
  EXPECT_EQ(Value(1e19).ConvertedTo(TypeKind::kUInt64), Value(std::uint64_t{10000000000000000000U}));
  EXPECT_EQ(Value(std::nan("")).ConvertedTo(TypeKind::kInt16), Value(std::int16_t{0}));
}

TEST(ValueTest, UnsignedNumbersStayPositiveAsRealNumbers) {
  EXPECT_EQ(Value(std::numeric_limits<std::uint64_t>::max()).AsDouble(), 18446744073709551615.0);
  EXPECT_EQ(Value(std::uint32_t{4000000000}).AsDouble(), 4e9);
}

TEST(ValueTest, ValuesOfAnotherSortAreTypeErrors) {
  EXPECT_THROW(Value("1").AsInteger(), HostError);
  EXPECT_THROW(Value(1).AsString(), HostError);
  EXPECT_THROW(Value(1).AsObject(), HostError);
  EXPECT_THROW(Value(1).ConvertedTo(TypeKind::kString), HostError);
  EXPECT_THROW(Value().AsDouble(), HostError);
}

TEST(ValueTest, NilIsAnyObjectAndAnyPtr) {
  EXPECT_TRUE(Value::Nil().AsObject().IsNil());
  EXPECT_EQ(Value::Nil().AsPtr(), nullptr);
  EXPECT_TRUE(Value::Nil().IsNil());
  EXPECT_TRUE(Value(ObjectHandle()).IsNil());
}

TEST(ValueTest, CopiesAndMovesKeepReferencesRight) {
  Value text(std::string(100, 'x'));
  Value copy = text;
  Value moved = std::move(text);
  copy = moved;
  moved = Value(1);
  EXPECT_EQ(copy.Utf8(), std::string(100, 'x'));
  Value &alias = copy;
  copy = alias;
  EXPECT_EQ(copy.Utf8().size(), 100U);
}

TEST(ValueTest, CloserConversionsCostLess) {
  const auto cost = [](Type from, Type to) { return ConversionCost(from, to, Conversions::kCodes); };
  EXPECT_EQ(cost(TypeKind::kInt32, TypeKind::kInt32), 0);
  EXPECT_LT(cost(TypeKind::kInt32, TypeKind::kInt64), cost(TypeKind::kInt64, TypeKind::kInt32));
  EXPECT_LT(cost(TypeKind::kInt32, TypeKind::kDouble), cost(TypeKind::kInt64, TypeKind::kInt32));
  EXPECT_LT(cost(TypeKind::kInt64, TypeKind::kInt32), cost(TypeKind::kDouble, TypeKind::kInt32));
  EXPECT_FALSE(cost(TypeKind::kString, TypeKind::kInt32));
  EXPECT_FALSE(cost(TypeKind::kInt32, TypeKind::kBoolean));
  EXPECT_FALSE(cost(TypeKind::kNil, TypeKind::kString));
}

}  // namespace
}  // namespace quillbar::host
