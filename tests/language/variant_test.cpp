// SPDX-License-Identifier: MIT
#include "tests/language/script_fixture.h"

namespace quillbar::language::testing {
namespace {

using VariantTest = ScriptTest;

TEST_F(VariantTest, HoldsEveryType) {
  EXPECT_EQ(Output(R"(Dim v As Variant
Print(v.IsNull)
Print(v.Type)
v = 3
Print(v)
v = 2.5
Print(v.Type)
v = "text"
Print(v + "!")
v = True
Print(v)
v = &cFF0000
Print(v.Type)
v = New MemoryBlock(3)
Print(v.Type)
Dim block As MemoryBlock = v
Print(block.Size)
v = Array(1, 2, 3)
Print(v.IsArray)
Print(v.ArrayElementType = Variant.TypeInteger)
Dim list() As Integer = v
Print(list.Count)
v = Nil
Print(v Is Nil)
Print(v = Nil))"),
            "True\n0\n3\n5\ntext!\nTrue\n16\n9\n3\nTrue\nTrue\n3\nTrue\nTrue\n");
}

TEST_F(VariantTest, TypesAreNumbered) {
  ExpectPrinted({{"VarType(CType(1, Int32))", "2"},
                 {"VarType(CType(1, Int64))", "3"},
                 {"VarType(CType(1, UInt8))", "2"},
                 {"VarType(CType(1, Single))", "4"},
                 {"VarType(1.5)", "5"},
                 {"VarType(\"\")", "8"},
                 {"VarType(New Random)", "9"},
                 {"VarType(True)", "11"},
                 {"VarType(&c000000)", "16"},
                 {"VarType(DateTime.Now)", "38"},
                 {"VarType(Nil)", "0"},
                 {"VarType(Array(\"a\")) = Variant.TypeArray + Variant.TypeString", "True"},
                 {"Variant.TypeDateTime", "38"}});
}

TEST_F(VariantTest, ConvertsWhereItIsUsed) {
  ExpectPrinted({{"v.IntegerValue", "12"},
                 {"v.DoubleValue", "12.5"},
                 {"v.StringValue", "12.5"},
                 {"v.BooleanValue", "True"},
                 {"i", "12"},
                 {"s", "12.5"},
                 {"Len(v)", "4"},
                 {"Abs(v)", "12.5"},
                 {"Format(v, \"0.00\")", "12.50"},
                 {"Twice(v)", "25"},
                 {"If(v, \"yes\", \"no\")", "yes"}},
                "Dim v As Variant = 12.5\nDim i As Integer = v\nDim s As String = v\n"
                "Function Twice(d As Double) As Double\nReturn d * 2\nEnd Function");
  ExpectPrinted({{"v.IntegerValue", "17"}, {"v.DoubleValue", "17.25"}, {"v.Int64Value + 1", "18"}},
                "Dim v As Variant = \"17.25 kg\"");
  ExpectPrinted({{"v.IntegerValue", "0"}, {"v.StringValue = \"\"", "True"}, {"v.BooleanValue", "False"}},
                "Dim v As Variant");
  ExpectPrinted({{"v.IntegerValue", "1"}, {"v.StringValue", "True"}}, "Dim v As Variant = True");
  ExpectPrinted({{"v.BooleanValue", "True"}}, "Dim v As Variant = \"TRUE\"");
  ExpectPrinted({{"v.DateTimeValue.Year", "2026"}, {"v.StringValue", "2026-03-04 00:00:00"}},
                "Dim v As Variant = New DateTime(2026, 3, 4)");
  ExpectPrinted({{"v.UInt64Value", "18446744073709551615"}},
                "Dim big As UInt64 = 18446744073709551615\nDim v As Variant = big");
}

TEST_F(VariantTest, RefusesWhatDoesNotFit) {
  ExpectErrors({{"Dim v As Variant = New MemoryBlock(1)\nDim i As Integer = v",
                 "2:20: TypeMismatchException: this Variant holds MemoryBlock, not a number"},
                {"Dim v As Variant = New MemoryBlock(1)\nDim d As DateTime = v",
                 "2:21: IllegalCastException: this Variant holds a MemoryBlock, not a DateTime"},
                {"Dim v As Variant = 3\nDim d As DateTime = v",
                 "2:21: TypeMismatchException: this Variant holds Integer, not an object of class DateTime"},
                {"Dim v As Variant = Array(1)\nDim s() As String = v",
                 "2:21: TypeMismatchException: this Variant holds an array of Integer, not an array of String"},
                {"Dim v As Variant = Array(1)\nPrint(v)",
                 "2:1: TypeMismatchException: this Variant holds an array of "
                 "Integer, not a text"},
                {"Dim v As Variant = \"x\"\nPrint(v * 2)",
                 "2:7: TypeMismatchException: \"*\" takes numbers, but this Variant holds a text that isn't one"},
                {"Dim v As Variant = 3\nv.Draw",
                 "2:3: error: Variant has no member \"Draw\"; docs/language.md lists "
                 "what it has in this host"}});
}

TEST_F(VariantTest, Computes) {
  ExpectPrinted({{"a + 1", "8"},
                 {"a + 0.5", "7.5"},
                 {"a + b", "10"},
                 {"a / 2", "3.5"},
                 {"a \\ 2", "3"},
                 {"a Mod 4", "3"},
                 {"a ^ 2", "49"},
                 {"-a", "-7"},
                 {"t + t", "xyxy"},
                 {"t + \"z\"", "xyz"},
                 {"\"n = \" + a", "n = 7"},
                 {"b * 2", "6"},
                 {"n + 1", "1"},
                 {"a > 5 And a < 9", "True"},
                 {"Not a", "False"}},
                "Dim a As Variant = 7\nDim b As Variant = \"3\"\nDim t As Variant = \"xy\"\nDim n As Variant");
  EXPECT_EQ(Output("Dim v As Variant = 1\nv += 2\nv = v * 2.5\nPrint(v)\nDim s As String = \"a\"\ns += v\nPrint(s)"),
            "7.5\na7.5\n");
  EXPECT_EQ(FirstError("Dim v As Variant = 0\nPrint(1 \\ v)"),
            "2:7: DivideByZeroException: an integer was divided by zero");
}

TEST_F(VariantTest, Compares) {
  ExpectPrinted({{"a = 7", "True"},
                 {"a = 7.0", "True"},
                 {"a = \"7\"", "True"},
                 {"a < 10", "True"},
                 {"\"10\" > a", "True"},
                 {"t = \"ABC\"", "True"},
                 {"t = 3", "False"},
                 {"t <> Nil", "True"},
                 {"a.Equals(7)", "True"},
                 {"t.Equals(\"ABC\")", "True"},
                 {"a.Hash = b.Hash", "True"},
                 {"t.Hash = u.Hash", "True"},
                 {"n = \"\"", "False"},
                 {"o = o", "True"},
                 {"o Is p", "False"},
                 {"o IsA MemoryBlock", "True"},
                 {"a IsA MemoryBlock", "False"}},
                "Dim a As Variant = 7\nDim b As Variant = 7.0\nDim t As Variant = \"abc\"\nDim u As Variant = \"ABC\"\n"
                "Dim n As Variant\nDim o As Variant = New MemoryBlock(1)\nDim p As Variant = New MemoryBlock(1)");
  EXPECT_EQ(FirstError("Dim v As Variant = New MemoryBlock(1)\nPrint(v < 3)"),
            "2:7: TypeMismatchException: these Variants have no order: MemoryBlock and Integer");
  EXPECT_EQ(Output("Dim v As Variant = \"b\"\nSelect Case v\nCase 1\nPrint(1)\nCase \"B\"\nPrint(2)\nEnd Select"),
            "2\n");
}

TEST_F(VariantTest, ArraysHoldValuesOfDifferentTypes) {
  EXPECT_EQ(Output(R"(Dim list() As Variant = Array(3, "b", True)
list.Append(2.5)
list.Append(Nil)
Print(list.Count)
For Each v As Variant In list
  Print(v.Type)
Next
Print(list.IndexOf("B"))
Dim numbers() As Variant = Array(3, 1.5, 2)
numbers.Sort
For Each d As Double In numbers
  Print(d)
Next
Dim last As Variant = numbers.Pop
Print(last)
Sub All(ParamArray values As Variant)
  Print(values.Count)
End Sub
All(1, "two", Nil))"),
            (sizeof(void *) == 8 ? "5\n3\n" : "5\n2\n") + std::string("8\n11\n5\n0\n1\n1.5\n2\n3\n3\n3\n"));
}

TEST_F(VariantTest, TravelsThroughProceduresAndClasses) {
  EXPECT_EQ(Output(R"(Class Box
  Content As Variant
  Shared Last As Variant
  Property Doubled As Variant
    Get
      Return Content * 2
    End Get
    Set
      Content = value / 2
    End Set
  End Property
End Class
Function Pick(first As Boolean) As Variant
  If first Then Return "one"
  Return 2
End Function
Sub Change(ByRef v As Variant, Optional w As Variant)
  v = If(w.IsNull, "changed", w)
End Sub
Dim b As New Box
b.Content = 4
Print(b.Doubled)
b.Doubled = 20
Print(b.Content)
Box.Last = b
Dim same As Box = Box.Last
Print(same.Content)
Print(Pick(True))
Print(Pick(False))
Dim v As Variant = 1
Change(v)
Print(v)
Change(v, 3)
Print(v)
Box.Last = Nil)"),
            "8\n10\n10\none\n2\nchanged\n3\n");
}

TEST_F(VariantTest, ArraysInCirclesEndWithTheScript) {
  EXPECT_EQ(Output(R"(Dim list() As Variant = Array("text", 1)
list.Append(list)
Dim other() As Variant
other.Append(list)
list.Append(other)
Dim v As Variant = list
Print(v.IsArray))"),
            "True\n");
}

TEST_F(VariantTest, ArraysMayBeNestedDeeply) {
  EXPECT_EQ(Output(R"(Dim v As Variant
For i As Integer = 1 To 200000
  Dim inner() As Variant
  inner.Append(v)
  v = inner
Next
v = Nil
Print("gone"))"),
            "gone\n");
}

}  // namespace
}  // namespace quillbar::language::testing
