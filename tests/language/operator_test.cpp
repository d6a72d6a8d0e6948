// SPDX-License-Identifier: MIT
#include "tests/language/script_fixture.h"

namespace quillbar::language::testing {
namespace {

using OperatorTest = ScriptTest;

TEST_F(OperatorTest, ArithmeticOnIntegersAndRealNumbers) {
  ExpectPrinted({{"7 + 3", "10"},      {"7 - 10", "-3"},
                 {"7 * 3", "21"},      {"7 / 2", "3.5"},
                 {"6 / 2", "3"},       {"7 \\ 2", "3"},
                 {"-7 \\ 2", "-3"},    {"7 Mod 3", "1"},
                 {"-7 Mod 3", "-1"},   {"7.9 \\ 2", "3"},
                 {"7.5 Mod 2", "1.5"}, {"2 ^ 10", "1024"},
                 {"2 ^ -1", "0.5"},    {"2 ^ 0.5", "1.4142135623731"},
                 {"-2 ^ 2", "-4"},     {"2 ^ 3 ^ 2", "64"},
                 {"1.5 + 1", "2.5"},   {"0.1 + 0.2", "0.3"},
                 {"10 / 4 * 2", "5"},  {"-(3)", "-3"},
                 {"+5", "5"},          {"1 / 0 > 1e300", "True"}});
}

TEST_F(OperatorTest, PrecedenceInResults) {
  ExpectPrinted({{"2 + 3 * 4", "14"},
                 {"(2 + 3) * 4", "20"},
                 {"2 * 3 ^ 2", "18"},
                 {"-3 ^ 2", "-9"},
                 {"10 - 4 - 3", "3"},
                 {"100 / 10 / 2", "5"},
                 {"17 \\ 5 * 2", "6"},
                 {"17 Mod 5 + 1", "3"},
                 {"1 + 1 = 2 And 2 * 2 = 4", "True"},
                 {"True Or False And False", "True"},
                 {"(True Or False) And False", "False"},
                 {"True Xor True Or True", "True"},
                 {"Not True Or True", "True"},
                 {"Not 0 = -1", "True"},
                 {"Not (1 = 2)", "True"}});
}

TEST_F(OperatorTest, IntegersWrapAroundInSilence) {
  ExpectPrinted({{"n + 1", kSmallestInteger.c_str()}, {"n * 2", "-2"}, {"-n - 2", kLargestInteger.c_str()}},
                "Dim n As Integer = " + kLargestInteger);
  ExpectPrinted({{"u + 1", "0"}, {"u", "18446744073709551615"}, {"u \\ 2", "9223372036854775807"}, {"u Mod 10", "5"}},
                "Dim u As UInt64 = &hFFFFFFFFFFFFFFFF");
  ExpectPrinted({{"m \\ -1", "-9223372036854775808"}, {"m Mod -1", "0"}}, "Dim m As Int64 = -9223372036854775808");
}

TEST_F(OperatorTest, BitwiseOperatorsOnIntegers) {
  ExpectPrinted({{"12 And 10", "8"},
                 {"12 Or 10", "14"},
                 {"12 Xor 10", "6"},
                 {"Not 0", "-1"},
                 {"&hF0 Or &b1111", "255"},
                 {"&o17", "15"}});
}

TEST_F(OperatorTest, NumbersCompareByTheirMathematicalValues) {
  ExpectPrinted({{"1 < 2", "True"},
                 {"2 <= 2", "True"},
                 {"1 > 2", "False"},
                 {"2 >= 3", "False"},
                 {"1 = 1.0", "True"},
                 {"1 <> 2", "True"},
                 {"1.5 > 1", "True"}});
  ExpectPrinted({{"u > -1", "True"}, {"-1 < u", "True"}, {"u = -1", "False"}, {"u > 5", "True"}},
                "Dim u As UInt64 = &hFFFFFFFFFFFFFFFF");
}

TEST_F(OperatorTest, TextsCompareWithoutRegardToCase) {
  ExpectPrinted({{"\"abc\" = \"ABC\"", "True"},
                 {"\"ä\" = \"Ä\"", "True"},
                 {"\"a\" <> \"b\"", "True"},
                 {"\"a\" < \"B\"", "True"},
                 {"\"b\" > \"A\"", "True"},
                 {"\"\" = \"\"", "True"},
                 {"\"10\" < \"9\"", "True"}});
}

TEST_F(OperatorTest, PlusJoinsTexts) { ExpectPrinted({{"\"a\" + \"b\" + \"\" + \"ä\"", "abä"}}); }

TEST_F(OperatorTest, TheRightSideOfAndAndOrRunsOnlyWhenItCounts) {
  const std::string loud =
      R"(Function Loud(result As Boolean) As Boolean
  Print("ran")
  Return result
End Function
)";
  EXPECT_EQ(Output(loud + "If False And Loud(True) Then Print(\"no\")"), "");
  EXPECT_EQ(Output(loud + "If True Or Loud(True) Then Print(\"yes\")"), "yes\n");
  EXPECT_EQ(Output(loud + "If True And Loud(True) Then Print(\"yes\")"), "ran\nyes\n");
  EXPECT_EQ(Output(loud + "If False Xor Loud(True) Then Print(\"yes\")"), "ran\nyes\n");
}

TEST_F(OperatorTest, TheConditionalEvaluatesOneOfItsValues) {
  ExpectPrinted({{"If(1 < 2, \"yes\", \"no\")", "yes"}, {"If(False, 1, 2.5)", "2.5"}, {"If(True, 1, 2.5)", "1"}});
  EXPECT_EQ(Output("Dim a() As Integer\nPrint(If(a.Count > 0, a(0), 7))"), "7\n");
}

TEST_F(OperatorTest, ObjectsCompareByIdentity) {
  EXPECT_EQ(Output(R"(Dim a As New FolderItem("x")
Dim b As FolderItem = a
Dim c As New FolderItem("x")
Print(a Is b)
Print(a = c)
Print(a <> c)
Print(a Is Nil)
Print(a <> Nil)
b = Nil
Print(b = Nil)
Print(b Is a)
Print(a IsA FolderItem)
Print(b IsA FolderItem))"),
            "True\nFalse\nTrue\nFalse\nTrue\nTrue\nFalse\nTrue\nFalse\n");
}

TEST_F(OperatorTest, ArraysCompareByIdentity) {
  EXPECT_EQ(Output(R"(Dim a() As Integer
Dim b() As Integer = a
Dim c() As Integer
Print(a = b)
Print(a = c)
Print(a Is b))"),
            "True\nFalse\nTrue\n");
}

TEST_F(OperatorTest, WrongOperandsAreRefusedWithTheirTypes) {
  ExpectErrors({
      {"Dim x As Integer = 1 + \"a\"",
       "1:22: error: \"+\" takes two numbers or two texts, but these are Integer and String; convert the "
       "number with Str(…)"},
      {"Print(\"a\" * 2)", "1:11: error: \"*\" takes two numbers, but these are String and Integer"},
      {"Print(True + True)", "1:12: error: \"+\" takes two numbers or two texts, but these are Boolean and Boolean"},
      {"Print(1 = \"1\")", "1:9: error: \"=\" can't compare Integer and String; convert one with Str(…) or Val(…)"},
      {"Print(True < False)", "1:12: error: \"<\" can't compare Boolean and Boolean"},
      {"Print(1.5 And 2)",
       "1:11: error: \"And\" takes two Booleans or two whole numbers, but these are Double and Integer"},
      {"Print(True And 1)",
       "1:12: error: \"And\" takes two Booleans or two whole numbers, but these are Boolean and Integer"},
      {"Print(-\"a\")", "1:7: error: the sign takes a number, but this is String"},
      {"Print(Not \"a\")",
       "1:7: error: \"Not\" takes a Boolean or a whole number, but this is String; it binds tighter than a "
       "comparison, so "
       "write Not (a = b)"},
      {"Print(1 Is 2)", "1:9: error: \"Is\" compares objects, but these are Integer and Integer; use \"=\""},
      {"Print(1 IsA FolderItem)", "1:7: error: \"IsA\" asks an object for its class, but this is Integer"},
      {"Print(If(1, 2, 3))", "1:10: error: the condition of \"If\" is a Boolean, but this is Integer"},
      {"Print(If(True, 2, \"a\"))",
       "1:7: error: the two values of \"If\" have one type, but these are Integer and String"},
      {"Print(1 \\ 0)", "1:7: error: an integer was divided by zero"},
  });
}

}  // namespace
}  // namespace quillbar::language::testing
