// SPDX-License-Identifier: MIT
#include "tests/language/script_fixture.h"

namespace quillbar::language::testing {
namespace {

using ArrayTest = ScriptTest;

TEST_F(ArrayTest, HasUpToThreeDimensions) {
  EXPECT_EQ(Output(R"(Dim a(2, 3) As Integer
For i As Integer = 0 To a.LastIndex(1)
  For j As Integer = 0 To a.LastIndex(2)
    a(i, j) = 10 * i + j
  Next
Next
Print(a(0, 3))
Print(a(2, 1))
Print(a.LastIndex)
Print(Ubound(a, 2))
Print(a.Count)
a(1, 1) += 100
Print(a(1, 1))
Dim cube(1, 2, 3) As String
cube(1, 2, 3) = "far"
cube(0, 0, 0) = "near"
Print(cube(0, 0, 0) + " " + cube(1, 2, 3) + cube(1, 0, 3))
Print(cube.LastIndex(3))
Print(cube.Count)
Dim sum As Integer
For Each n As Integer In a
  sum = sum + n
Next
Print(sum))"),
            "3\n21\n2\n3\n12\n111\nnear far\n3\n24\n238\n");
}

TEST_F(ArrayTest, KeepsElementsWhenItsDimensionsChange) {
  EXPECT_EQ(Output(R"(Dim a(1, 1) As String
a(0, 0) = "00"
a(0, 1) = "01"
a(1, 0) = "10"
a(1, 1) = "11"
Redim a(2, 2)
Print(a(0, 1) + a(1, 0) + a(1, 1) + a(2, 2))
a.ResizeTo(0, 1)
Print(a(0, 0) + a(0, 1))
Print(a.Count)
Redim a(-1, -1)
Print(a.Count)
Dim b(,) As Double
Print(b.Count)
Redim b(1, 2)
b(1, 2) = 1.5
Print(b(1, 2))
Dim c(1, 1, 1) As Integer
c(1, 1, 1) = 7
c.ResizeTo(2, 1, 1)
Print(c(1, 1, 1)))"),
            "011011\n0001\n2\n0\n0\n1.5\n7\n");
}

TEST_F(ArrayTest, TravelsWithItsDimensions) {
  EXPECT_EQ(Output(R"(Function Identity(size As Integer) As Double(,)
  Dim m(,) As Double
  Redim m(size - 1, size - 1)
  For i As Integer = 0 To size - 1
    m(i, i) = 1
  Next
  Return m
End Function
Sub Scale(m(,) As Double, factor As Double)
  For i As Integer = 0 To m.LastIndex(1)
    For j As Integer = 0 To m.LastIndex(2)
      m(i, j) = m(i, j) * factor
    Next
  Next
End Sub
Class Grid
  Cells(1, 2) As Variant
End Class
Dim m(,) As Double = Identity(3)
Scale(m, 4)
Print(m(2, 2))
Dim g As New Grid
g.Cells(1, 2) = "x"
Print(g.Cells(1, 2))
Dim v As Variant = m
Dim back(,) As Double = v
Print(back(1, 1))
Sub Increase(ByRef d As Double)
  d = d + 1
End Sub
Increase(m(0, 0))
Print(m(0, 0)))"),
            "4\nx\n4\n5\n");
}

TEST_F(ArrayTest, IndicesAreChecked) {
  ExpectErrors(
      {{"Dim a(2, 3) As Integer\nPrint(a(1, 4))",
        "2:12: OutOfBoundsException: the index is 4, but dimension 2 of the array ends at 3"},
       {"Dim a(2, 3) As Integer\na(-1, 0) = 1",
        "2:3: OutOfBoundsException: the index is -1, but dimension 1 of the array ends at 2"},
       {"Dim a(,) As Integer\nPrint(a(0, 0))", "2:9: OutOfBoundsException: the index is 0, but the array is empty"},
       {"Dim a(2, 3) As Integer\nPrint(a(1))", "2:7: error: an element of this array has 2 indices"},
       {"Dim a(2) As Integer\nPrint(a(1, 1))", "2:7: error: an element of an array has one index"},
       {"Dim a(1, 1, 1, 1) As Integer", "1:14: error: arrays have at most three dimensions"},
       {"Dim a(2, 3) As Integer\nRedim a(4)",
        "2:1: error: \"Redim\" takes the last index of each dimension: this array has 2"},
       {"Dim a(2, 3) As Integer\nDim b() As Integer = a",
        "2:22: error: an array of Integer is needed for the variable \"b\", but this is an array of Integer "
        "with 2 dimensions"},
       {"Dim a(2, 3) As Integer\nPrint(a.LastIndex(3))",
        "2:7: OutOfBoundsException: there is no dimension 3; this array has 2"},
       {"Dim a(9999, 9999) As Integer",
        "1:13: OutOfMemoryException: an array has at most 50000000 elements, the limit of --max-elements"},
       {"Dim a(1, 1) As Integer\na.Append(1)",
        "2:3: error: an array of Integer with 2 dimensions has no member \"Append\"; docs/language.md lists "
        "what it has in this host"}});
}

TEST_F(ArrayTest, HasTheNewerNamesOfItsMembers) {
  EXPECT_EQ(Output(R"(Dim a() As Integer
a.AddRow(3)
a.AddRowAt(0, 1)
a.Add(5)
a.RemoveRowAt(1)
Print(a.FirstIndex)
Print(a.LastIndex)
Print(a.LastIndex(1))
Print(Ubound(a))
Print(Ubound(a, 1))
a.RemoveAllRows
Print(a.Count))"),
            "0\n1\n1\n1\n1\n0\n");
}

TEST_F(ArrayTest, VariantsOfDifferentTypesAreSortedByTheirOrder) {
  EXPECT_EQ(Output(R"(Dim list() As Variant = Array("b", 10, "a", 9, Nil, "10.5")
list.Sort
For Each v As Variant In list
  Print(v)
Next)"),
            "\n9\n10\n10.5\na\nb\n");
  EXPECT_EQ(FirstError("Dim list() As Variant = Array(New MemoryBlock(1), New MemoryBlock(1))\nlist.Sort"),
            "2:1: TypeMismatchException: these Variants have no order: MemoryBlock and MemoryBlock");
}

TEST_F(ArrayTest, SortsOthersAlong) {
  EXPECT_EQ(Output("Dim n() As Integer = Array(3, 1, 2, 1)\nDim s() As String = Array(\"c\", \"a\", \"b\", \"A\")\n"
                   "Dim d() As Double = Array(0.3, 0.1, 0.2, 0.15)\nDim v() As Variant = Array(3, \"x\", Nil, True)\n"
                   "n.SortWith(s, d, v, s, n)\n"
                   "For i As Integer = 0 To 3\nPrint Str(n(i)) + s(i) + Str(d(i)) + If(v(i) = Nil, \"nil\", "
                   "v(i).StringValue)\nNext\ns.SortWith(n)\nPrint Join(s, \"\") + Str(n(2))\n"
                   "Dim empty() As Integer\nempty.SortWith(empty)\n"),
            "1a0.1x\n1A0.15True\n2b0.2nil\n3c0.33\naAbc2\n");
  ExpectErrors({{"Dim a() As Integer = Array(1, 2)\nDim b() As Integer = Array(1)\na.SortWith(b)",
                 "3:1: OutOfBoundsException: the arrays must have as many elements: 2 and 1"},
                {"Dim a() As Integer\na.SortWith(1)",
                 "2:12: error: SortWith takes arrays of one dimension, whose elements move along"}});
}

}  // namespace
}  // namespace quillbar::language::testing
