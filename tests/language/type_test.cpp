// SPDX-License-Identifier: MIT
#include "tests/language/script_fixture.h"

namespace quillbar::language::testing {
namespace {

using TypeTest = ScriptTest;

TEST_F(TypeTest, VariablesStartAsZero) {
  EXPECT_EQ(Output(R"(Dim i As Integer
Dim d As Double
Dim s As String
Dim b As Boolean
Dim c As Color
Dim f As FolderItem
Dim a() As Integer
Print(i)
Print(d)
Print(s)
Print(b)
Print(c)
Print(f Is Nil)
Print(a.Count))"),
            "0\n0\n\nFalse\n&h00000000\nTrue\n0\n");
}

TEST_F(TypeTest, EveryIntegerTypeHasItsWidth) {
  struct Width {
    const char *type;
    const char *of300;
    const char *ofMinus1;
  };
  for (const Width &width : {Width{"Int8", "44", "-1"},
                             {"Int16", "300", "-1"},
                             {"Int32", "300", "-1"},
                             {"Int64", "300", "-1"},
                             {"Integer", "300", "-1"},
                             {"UInt8", "44", "255"},
                             {"Byte", "44", "255"},
                             {"UInt16", "300", "65535"},
                             {"UInt32", "300", "4294967295"},
                             {"UInt64", "300", "18446744073709551615"},
                             {"UInteger", "300", sizeof(void *) == 8 ? "18446744073709551615" : "4294967295"}}) {
    const std::string text = std::string("Dim x As ") + width.type +
                             " = 300\nPrint(x)\nDim m As Integer = -1\nx = m\nPrint(x)\nx = x + 0\nPrint(x)";
    EXPECT_EQ(Output(text), std::string(width.of300) + "\n" + width.ofMinus1 + "\n" + width.ofMinus1 + "\n")
        << width.type;
  }
}

TEST_F(TypeTest, RealNumbersLoseTheirFractionAsIntegers) {
  ExpectPrinted({{"a", "2"}}, "Dim a As Integer = 2.9");
  ExpectPrinted({{"a", "-2"}}, "Dim a As Integer = -2.9");
  ExpectPrinted({{"a", sizeof(void *) == 4 ? "2147483647" : "9223372036854775807"}}, "Dim a As Integer = 1e300");
  ExpectPrinted({{"a", "-128"}}, "Dim a As Int8 = -200.5");
  ExpectPrinted({{"a", "2147483647"}}, "Dim a As Int32 = 1e300");
  ExpectPrinted({{"a", "0"}}, "Dim a As UInt32 = -1.0");
  ExpectPrinted({{"a", "4294967295"}}, "Dim a As UInt32 = 4294967295.5");
  ExpectPrinted({{"a", "18446744073709551615"}}, "Dim a As UInt64 = 1e300");
  ExpectPrinted({{"a", "9223372036854775807"}}, "Dim a As Int64 = 1e300");
  ExpectPrinted({{"a", "-9223372036854775808"}}, "Dim a As Int64 = -1e300");
  ExpectPrinted({{"a", "18446744073709549568"}}, "Dim a As UInt64 = 1.8446744073709549568e19");
  EXPECT_EQ(Output("Dim zero As Double\nDim a As Integer = zero / zero\nPrint(a)"), "0\n");
}

TEST_F(TypeTest, SingleIsRoundedToItsPrecision) {
  EXPECT_EQ(Output(R"(Dim s As Single = 0.1
Dim d As Double = s
Print(s)
Print(d = 0.1)
Print(d)
s = 16777216
s = s + 1
Print(s = 16777216))"),
            "0.1\nFalse\n0.100000001490116\nTrue\n");
}

TEST_F(TypeTest, CTypeAndTypeNamesConvert) {
  ExpectPrinted({{"CType(3.7, Integer)", "3"},
                 {"Integer(3.7)", "3"},
                 {"CType(300, UInt8)", "44"},
                 {"UInt8(300)", "44"},
                 {"CType(True, Integer)", "1"},
                 {"CType(2, Boolean)", "True"},
                 {"Double(7) / 2", "3.5"},
                 {"CType(&cFF0000, Integer)", "16711680"},
                 {"CType(255, Color)", "&h000000FF"}});
}

TEST_F(TypeTest, ColoursAreWrittenAndTakenApart) {
  ExpectPrinted({{"&cFF8000", "&h00FF8000"},
                 {"&cFF800040", "&h40FF8000"},
                 {"c", "&h00102030"},
                 {"c.Red", "16"},
                 {"c.Green", "32"},
                 {"c.Blue", "48"},
                 {"c.Alpha", "0"},
                 {"Color.RGB(1, 2, 3)", "&h00010203"},
                 {"RGB(255, 300, -5)", "&h00FFFF00"},
                 {"Color.RGB(1, 2, 3, 128)", "&h80010203"},
                 {"c = &c102030", "True"}},
                "Dim c As Color = &h102030");
  EXPECT_EQ(FirstError("Dim c As Color = -1"),
            "1:18: error: Color is needed for the variable \"c\", but this is Integer");
}

TEST_F(TypeTest, EnumerationsOfTheScript) {
  EXPECT_EQ(Output(R"(Enum Suit
  Clubs
  Diamonds
  Hearts = 10
  Spades
End Enum
Dim s As Suit = Suit.hearts
Print(s)
Print(Suit.Spades)
Print(s = Suit.Hearts)
Print(s < Suit.Spades)
s = CType(1, Suit)
Print(Integer(s))
Select Case s
Case Suit.Clubs
Print("c")
Case Suit.Diamonds
Print("d")
End Select)"),
            "10\n11\nTrue\nTrue\n1\nd\n");
}

TEST_F(TypeTest, EnumerationsKeepToTheirType) {
  ExpectErrors({
      {"Enum E\nA\nEnd Enum\nDim x As E = 1",
       "4:14: error: E is needed for the variable \"x\", but this is Integer; convert it with CType(…, E)"},
      {"Enum E\nA\nEnd Enum\nDim x As Integer = E.A",
       "4:20: error: Integer is needed for the variable \"x\", but this is E; convert it with CType(…, Integer)"},
      {"Enum E\nAlpha\nEnd Enum\nPrint(E.Alpa)", "4:9: error: E has no member \"Alpa\"; did you mean \"Alpha\"?"},
      {"Enum E\nA\na\nEnd Enum", "3:1: error: \"a\" is a member of this enumeration already"},
      {"Enum E\nA = 1.5\nEnd Enum",
       "2:5: error: the value of an enumeration's member is a whole number that is a constant"},
      {"Enum E As String\nA\nEnd Enum", "1:11: error: an enumeration holds whole numbers"},
      {"Enum E\nA\nEnd Enum\nEnum e\nB\nEnd Enum", "4:6: error: there is another enumeration \"e\""},
  });
}

TEST_F(TypeTest, ConstantsAreCheckedAndFolded) {
  EXPECT_EQ(Output(R"(Const kTwo = 1 + 1
Const kText As String = "a" + "b"
Const kPi As Double = 3
Const kNext = kTwo * 2
Print(kTwo)
Print(kText)
Print(kPi / 2)
Print(kNext)
Show
Sub Show()
Print(KTWO)
Const kInner = kTwo + 1
Print(kInner)
End Sub)"),
            "2\nab\n1.5\n4\n2\n3\n");
  ExpectErrors({
      {"Const k = Rnd", "1:11: error: the value of a constant is made of literals, other constants and operators"},
      {"Const k = 1\nk = 2", "2:1: error: a constant can't be assigned to"},
      {"Const k As Integer = \"a\"",
       "1:22: error: Integer is needed for the constant \"k\", but this is String; convert it with Val(…)"},
      {"Const k = 1\nConst K = 2", "2:7: error: \"K\" is declared already in line 1"},
      {"Const k = 5 Mod 0", "1:11: error: an integer was divided by zero"},
  });
}

TEST_F(TypeTest, ImplicitConversionsThatWouldHideMistakesAreRefused) {
  ExpectErrors({
      {"Dim s As String = 5",
       "1:19: error: String is needed for the variable \"s\", but this is Integer; convert it with Str(…)"},
      {"Dim i As Integer = \"5\"",
       "1:20: error: Integer is needed for the variable \"i\", but this is String; convert it with Val(…)"},
      {"Dim b As Boolean = 1", "1:20: error: Boolean is needed for the variable \"b\", but this is Integer"},
      {"Dim i As Integer = True", "1:20: error: Integer is needed for the variable \"i\", but this is Boolean"},
      {"Dim i As Integer = Nil", "1:20: error: Integer is needed for the variable \"i\", but this is Nil"},
      {"Dim a() As Integer = 5",
       "1:22: error: an array of Integer is needed for the variable \"a\", but this is Integer"},
      {"Dim a() As Integer\nDim b() As Double = a",
       "2:21: error: an array of Double is needed for the variable \"b\", but this is an array of Integer"},
      {"Dim f As FolderItem = \"x\"", "1:23: error: FolderItem is needed for the variable \"f\", but this is String"},
      {"Print(CType(\"5\", Integer))", "1:7: error: String can't be converted to Integer"},
      {"Print(Integer(\"5\"))", "1:15: error: String can't be converted to Integer; use Val(…) or .ToInteger"},
      {"Print(CType(5, 6))", "1:16: error: the second argument of CType is a type"},
      {"Dim x As Nothing", "1:10: error: there is no type \"Nothing\""},
      {"Dim x As Itneger", "1:10: error: there is no type \"Itneger\"; did you mean \"Integer\"?"},
  });
}

using NameTest = ProbeScriptTest;

TEST_F(NameTest, NamesOfTheEnvironmentAreSaidToBeMissing) {
  ExpectErrors(
      {{"Dim d As New RegEx", R"(1:14: error: "RegEx" is not part of this host; docs/language.md lists what is)"},
       {"Dim v As Thread", R"(1:10: error: "Thread" is not part of this host; docs/language.md lists what is)"},
       {"MsgBox \"x\"", R"(1:1: error: "MsgBox" is not part of this host; docs/language.md lists what is)"},
       {"Print Clipboard", R"(1:7: error: "Clipboard" is not part of this host; docs/language.md lists what is)"},
       {"Print DateTime.Now.Julian(1)",
        R"(1:20: error: DateTime has no member "Julian"; docs/language.md lists what it has in this host)"}});
  EXPECT_EQ(Output("Dim Dictionary As Integer = 1\nPrint Dictionary\nMsgBox\nSub MsgBox()\nPrint 2\nEnd Sub"), "1\n2\n")
      << "a script may use the names itself";
}

TEST_F(NameTest, MembersOfEnumerationsAreFoundWhereTheyAre) {
  ExpectErrors(
      {{"Print Probe.SECOND", R"(1:13: error: Probe has no member "SECOND"; did you mean "Probe.Mode.SECOND"?)"},
       {"Print HUGE", R"(1:7: error: "HUGE" is not known alone; did you mean "Probe.Small.HUGE"?)"},
       {"Enum Kind\nOne\nEnd Enum\nPrint One", R"(4:7: error: "One" is not known alone; did you mean "Kind.One"?)"}});
}

TEST_F(NameTest, MembersOfValuesAreNotSuggestedForTheType) {
  ExpectErrors({{"Dim c As Color = Color.Red",
                 R"(1:24: error: "Red" is a member of values, not of the type Color: write value.Red; )"
                 R"(a color is written &cFF0000 or Color.RGB(255, 0, 0))"}});
}

}  // namespace
}  // namespace quillbar::language::testing
