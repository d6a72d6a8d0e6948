// SPDX-License-Identifier: MIT
#include "tests/language/script_fixture.h"

namespace quillbar::language::testing {
namespace {

using DictionaryTest = ScriptTest;

TEST_F(DictionaryTest, KeepsValuesByKey) {
  EXPECT_EQ(Output(R"(Dim d As New Dictionary
d.Value("name") = "Ada"
d.Value("born") = 1815
d.Value(7) = Nil
Print(d.Value("NAME"))
Print(d.Value("born") + 1)
Print(d.KeyCount)
Print(d.Count)
Print(d.HasKey("Name"))
Print(d.HasKey(7.0))
Print(d.HasKey("7"))
Print(d.Lookup("none", "default"))
Print(d.Lookup("born", 0))
d.Value("born") = 1816
Print(d.Value("BORN"))
Print(d.Key(0))
d.Remove("name")
Print(d.Key(0))
Print(d.KeyCount)
Dim name As String = d.Lookup("name", "")
Print(name)
d.RemoveAll
Print(d.KeyCount))"),
            "Ada\n1816\n3\n3\nTrue\nTrue\nFalse\ndefault\n1815\n1816\nname\nborn\n2\n\n0\n");
}

TEST_F(DictionaryTest, IsMadeOfPairsAndWalkedThroughInOrder) {
  EXPECT_EQ(Output(R"(Dim d As New Dictionary("one" : 1, "two" : 2, 3 : "three")
For Each entry As DictionaryEntry In d
  Print(entry.Key + " is " + entry.Value)
  d.Value("more" + entry.Key) = 0
Next
Print(d.KeyCount)
Dim keys() As Variant = d.Keys
Print(keys(2).Type = Variant.TypeInteger)
Dim values() As Variant = d.Values
Print(values(2))
For Each key As String In d.Keys
  Print(key)
Next
Dim copy As Dictionary = d.Clone
copy.Remove("one")
Print(d.HasKey("one"))
Print(copy.HasKey("one")))"),
            "one is 1\ntwo is 2\n3 is three\n6\nTrue\nthree\none\ntwo\n3\nmoreone\nmoretwo\nmore3\nTrue\nFalse\n");
}

TEST_F(DictionaryTest, MissingKeysRaise) {
  ExpectErrors({{"Dim d As New Dictionary\nPrint(d.Value(\"x\"))", "2:7: KeyNotFoundException: there is no key \"x\""},
                {"Dim d As New Dictionary\nd.Remove(12)", "2:1: KeyNotFoundException: there is no key \"12\""},
                {"Dim d As New Dictionary\nPrint(d.Key(0))",
                 "2:7: OutOfBoundsException: there is no key 0; the dictionary has 0"},
                {"Dim d As Dictionary\nPrint(d.Keys.Count)", "2:7: NilObjectException: \"Keys\" was used on Nil"},
                {"Dim d As Dictionary\nd.Value(1) = 2", "2:1: NilObjectException: \"Value\" was used on Nil"}});
  EXPECT_EQ(
      Output("Dim d As New Dictionary\nTry\nCall d.Value(\"x\")\nCatch e As KeyNotFoundException\nPrint(e.Message)"
             "\nEnd Try"),
      "there is no key \"x\"\n");
}

TEST_F(DictionaryTest, KeysOfEveryType) {
  EXPECT_EQ(Output(R"(Dim a As New MemoryBlock(1)
Dim b As New MemoryBlock(1)
Dim d As New Dictionary(a : "a", b : "b", True : "t", Nil : "n", 2.5 : "r", "ÄÖ" : "u")
Print(d.Value(a) + d.Value(b) + d.Value(Nil) + d.Value(2.5) + d.Value("äö"))
Print(d.Value(1))
d.Value(New DateTime(2026, 1, 2)) = "day"
Print(d.Value(New DateTime(2026, 1, 2))))"),
            "abnru\nt\nday\n");
}

TEST_F(DictionaryTest, HoldsManyKeys) {
  EXPECT_EQ(Output(R"(Dim d As New Dictionary
For i As Integer = 1 To 20000
  d.Value("key" + Str(i)) = i
Next
For i As Integer = 1 To 20000 Step 2
  d.Remove("KEY" + Str(i))
Next
Dim sum As Integer
For i As Integer = 1 To 20000
  sum = sum + d.Lookup("key" + Str(i), 0)
Next
Print(d.KeyCount)
Print(sum)
Print(d.Key(0))
Print(d.BinaryCount >= 10000))"),
            "10000\n100010000\nkey2\nTrue\n");
}

TEST_F(DictionaryTest, ContainersInCirclesEndWithTheScript) {
  EXPECT_EQ(Output(R"(Class Node
  Items As New Dictionary
End Class
Dim d As New Dictionary
d.Value("self") = d
Dim p As Pair = "d" : d
d.Value("pair") = p
Dim list() As Variant = Array(d, "text")
d.Value("list") = list
Dim n As New Node
n.Items.Value("owner") = n
Print("made"))"),
            "made\n");
}

TEST_F(DictionaryTest, DestructorsMayUseIt) {
  EXPECT_EQ(Output(R"(Dim d As New Dictionary
Class Item
  Sub Destructor()
    Print(d.KeyCount)
    d.Value("gone") = d.Lookup("gone", 0) + 1
  End Sub
End Class
d.Value("a") = New Item
d.Value("b") = New Item
d.Value("a") = 1
d.Remove("b")
Print(d.Value("gone"))
d.Value("c") = New Item
d.RemoveAll
Print(d.Value("gone")))"),
            "2\n2\n2\n0\n1\n");
}

TEST_F(DictionaryTest, PairsHoldTwoValues) {
  EXPECT_EQ(Output(R"(Dim p As Pair = "left" : 2
Print(p.Left + " " + p.Right)
Dim list As Pair = 1 : 2 : 3
Dim rest As Pair = list.Right
Print(rest.Right)
Dim all() As Pair = Array("a" : 1, "b" : 2)
Print(all(1).Left)
Dim q As New Pair(1, 2)
Print(q.Right))"),
            "left 2\n3\nb\n2\n");
  EXPECT_EQ(FirstError("Dim a As Integer = 1 : Dim b As Integer"), "1:24: error: expected a value, found \"Dim\"");
  EXPECT_EQ(FirstError("Print(\"a\") : Print(\"b\")"),
            "1:12: error: \":\" doesn't separate statements; put each on a line of its own");
  EXPECT_EQ(FirstError("Dim a As Integer\na = 1 : a = 2"),
            "2:5: error: Integer is needed, but this is Pair; \":\" makes a Pair, and doesn't separate statements");
}

TEST_F(DictionaryTest, ObjectsHaveACommonClass) {
  EXPECT_EQ(Output(R"(Dim v As Variant = New MemoryBlock(4)
Dim o As Object = v.ObjectValue
Print(o IsA MemoryBlock)
Print(MemoryBlock(o).Size)
Dim d As New Dictionary
o = d
Print(o Is d))"),
            "True\n4\nTrue\n");
  EXPECT_EQ(FirstError("Dim o As Object = New MemoryBlock(1)\nPrint(Dictionary(o).Count)"),
            "2:7: IllegalCastException: this is a MemoryBlock, not a Dictionary");
}

}  // namespace
}  // namespace quillbar::language::testing
