// SPDX-License-Identifier: MIT
#include "interface/declaration.h"

#include <gtest/gtest.h>

#include "interface/services.h"

namespace quillbar {
namespace {

TEST(ReadDeclaration, ReadsNamesTypesAndTheResult) {
  const auto read = ReadDeclaration("GetFont(fontName as String, encoding as Font.FontEncodingEnum) as Font");
  ASSERT_TRUE(read.ok());
  EXPECT_EQ(read.declaration.name, "GetFont");
  ASSERT_EQ(read.declaration.parameterCount, 2u);
  EXPECT_EQ(read.declaration.parameters[0].name, "fontName");
  EXPECT_EQ(read.declaration.parameters[0].type, "String");
  EXPECT_EQ(read.declaration.parameters[1].type, "Font.FontEncodingEnum");
  EXPECT_EQ(read.declaration.resultType, "Font");
}

TEST(ReadDeclaration, AcceptsAnyBlanksAndLetterCase) {
  const auto read = ReadDeclaration("LenB( s as string ) AS integer");
  ASSERT_TRUE(read.ok());
  EXPECT_EQ(read.declaration.parameters[0].name, "s");
  EXPECT_EQ(read.declaration.resultType, "integer");
}

TEST(ReadDeclaration, ReadsByRefArraysAndDefaults) {
  const auto read =
      ReadDeclaration("M(Byref n as Integer,d() as UInt16, s as String = \"a,b)\", Optional b as Boolean)");
  ASSERT_TRUE(read.ok()) << read.error.message;
  ASSERT_EQ(read.declaration.parameterCount, 4u);
  EXPECT_TRUE(read.declaration.parameters[0].byRef);
  EXPECT_TRUE(read.declaration.parameters[1].isArray);
  EXPECT_EQ(read.declaration.parameters[1].type, "UInt16");
  EXPECT_EQ(read.declaration.parameters[2].defaultValue, "\"a,b)\"");
  EXPECT_TRUE(read.declaration.parameters[2].optional);
  EXPECT_TRUE(read.declaration.parameters[3].optional);
  EXPECT_TRUE(read.declaration.resultType.empty());
}

TEST(ReadDeclaration, KeepsAParameterWhoseNameBeginsLikeAKeyword) {
  const auto read = ReadDeclaration("M(byrefCount as Integer, assets as String)");
  ASSERT_TRUE(read.ok());
  EXPECT_FALSE(read.declaration.parameters[0].byRef);
  EXPECT_EQ(read.declaration.parameters[1].name, "assets");
}

TEST(ReadDeclaration, NamesWhatIsWrongAndWhere) {
  const struct {
    const char *text;
    std::size_t offset;
  } wrong[] = {{"", 0},           {"M", 1},          {"M(", 2},          {"M(a)", 3}, {"M(a as )", 7},
               {"M(a as T", 8},   {"M() as", 6},     {"M() as T x", 9},  {"1M()", 0}, {"M(a as .T)", 7},
               {"M(a( as T)", 5}, {"M(a as T,)", 9}, {"M(a as T =)", 10}};
  for (const auto &[text, offset] : wrong) {
    const auto read = ReadDeclaration(text);
    EXPECT_FALSE(read.ok()) << text;
    EXPECT_EQ(read.error.offset, offset) << text << ": " << (read.ok() ? "" : read.error.message);
  }
}

TEST(ReadDeclaration, RefusesMoreParametersThanItHolds) {
  std::string text = "M(";
  for (std::size_t i = 0; i <= Declaration::kMaxParameters; ++i) text += "a as T,";
  text.back() = ')';
  EXPECT_FALSE(ReadDeclaration(text).ok());
}

TEST(ReadDeclaration, WorksInTheCompiler) {
  static_assert(ReadDeclaration("Draw()").ok());
  static_assert(!ReadDeclaration("Draw(").ok());
  static_assert(ReadDeclaration("SaveToString() as String").declaration.resultType == "String");
}

TEST(ReadDeclaration, ReadsEveryDeclarationOfTheGlobalMethods) {
  for (const auto text :
       {global_method::LenB::kDeclaration.View(), global_method::Len::kDeclaration.View(),
        global_method::Asc::kDeclaration.View(), global_method::Mid::kDeclaration.View(),
        global_method::Left::kDeclaration.View(), global_method::StrComp::kDeclaration.View(),
        std::string_view(memory_block::kConstructor), std::string_view(memory_block::kOperatorConvert)}) {
    EXPECT_TRUE(ReadDeclaration(text).ok()) << text;
  }
}

TEST(ReadEnumerationMember, ReadsDecimalNegativeAndHexadecimalValues) {
  EXPECT_EQ(ReadEnumerationMember("A4 = 3")->name, "A4");
  EXPECT_EQ(ReadEnumerationMember("A4 = 3")->value, 3);
  EXPECT_EQ(ReadEnumerationMember("NONE = -1")->value, -1);
  EXPECT_EQ(ReadEnumerationMember("EXTERNAL_OBJECT = &h0040")->value, 64);
  EXPECT_EQ(ReadEnumerationMember("ALL=&HfF")->value, 255);
}

TEST(ReadEnumerationMember, RefusesWhatIsNoMember) {
  for (const char *text : {"", "A", "A =", "= 3", "A = x", "A = 1f", "A = &h", "A = 3 4"}) {
    EXPECT_FALSE(ReadEnumerationMember(text)) << text;
  }
}

}  // namespace
}  // namespace quillbar
