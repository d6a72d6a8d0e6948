// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include <nlohmann/json.hpp>

#include "tests/language/script_fixture.h"

namespace quillbar::language::testing {
namespace {

using JsonTest = ScriptTest;

TEST_F(JsonTest, ParsedTextsAreDictionariesAndArrays) {
  EXPECT_EQ(
      Output(R"(Dim text As String = "{""name"": ""Ada \u00e9"", ""list"": [1, 2.5, true, null, ""x""], ""Name"": 2}"
Dim d As Dictionary = ParseJSON(text)
Print(d.Value("name"))
Print(d.Value("Name"))
Dim list() As Variant = d.Value("list")
Print(list.Count)
Print(list(0) + list(1))
Print(list(2).Type)
Print(list(3) Is Nil)
Print(GenerateJSON(d))
Print(ParseJSON(" 12 ") + 1)
Print(ParseJSON("[]").IsArray))"),
      "Ada é\n2\n5\n3.5\n11\nTrue\n{\"name\":\"Ada é\",\"list\":[1,2.5,true,null,\"x\"],\"Name\":2}\n13\nTrue\n");
}

TEST_F(JsonTest, LargeNumbersKeepWhatTheyCan) {
  EXPECT_EQ(Output(R"(Dim text As String = "[9223372036854775807, 18446744073709551615, -9223372036854775808, "
text = text + "123456789012345678901234567890, 0.1]"
Dim list() As Variant = ParseJSON(text)
Print(list(0))
Print(list(1))
Print(list(2))
Print(list(3).Type)
Print(GenerateJSON(list)))"),
            "9223372036854775807\n18446744073709551615\n-9223372036854775808\n5\n"
            "[9223372036854775807,18446744073709551615,-9223372036854775808,1.2345678901234568e+29,0.1]\n");
  EXPECT_EQ(FirstError("Call ParseJSON(\"[1e400]\")").substr(0, 20), "1:6: JSONException: ");
}

TEST_F(JsonTest, ErrorsNameLineAndColumn) {
  ExpectErrors(
      {{"Call ParseJSON(\"{\" + EndOfLine + \"  \"\"a\"\": tru }\")",
        "1:6: JSONException: line 2, column 11: syntax error while parsing value - invalid literal; last read: "
        "'\"a\": tru '"},
       {"Call ParseJSON(\"[\")",
        "1:6: JSONException: line 1, column 2: syntax error while parsing value - unexpected end of input; expected "
        "'[', '{', or a literal"}});
  // Releases of the parser have different words for it.
  EXPECT_THAT(FirstError("Call ParseJSON(\"\")"), ::testing::StartsWith("1:6: JSONException: line 1, column 1: "));
}

TEST_F(JsonTest, NestingIsLimited) {
  EXPECT_EQ(FirstError("Dim s As String\nFor i As Integer = 1 To 501\ns = s + \"[\"\nNext\nCall ParseJSON(s)"),
            "5:6: JSONException: line 1, column 501: more than 500 objects and arrays are nested");
  EXPECT_EQ(FirstError("Dim d As New Dictionary\nd.Value(\"d\") = d\nPrint(GenerateJSON(d))"),
            "3:7: JSONException: more than 500 objects and arrays are nested; does one hold itself?");
  EXPECT_EQ(Output("Dim s As String\nFor i As Integer = 1 To 500\ns = s + \"[\"\nNext\nFor i As Integer = 1 To 500\n"
                   "s = s + \"]\"\nNext\nPrint(GenerateJSON(ParseJSON(s)) = s)"),
            "True\n");
}

TEST_F(JsonTest, GeneratedTextIsReadByOthers) {
  const std::string text = Output(R"(Dim c As Currency = 12.3456
Dim list() As Double = Array(0.1, 1e-7, 3.0)
Dim d As New Dictionary("q" : "say ""hi"" \ / " + EndOfLine + Chr(1) + "é€😀", "n" : -5, "c" : c, "l" : list, "t" : True, "z" : Nil)
d.Value("when") = New DateTime(2026, 1, 2)
d.Value(3) = New Dictionary
Print(GenerateJSON(d, True)))");
  const auto read = nlohmann::json::parse(text);
  EXPECT_EQ(read["q"], "say \"hi\" \\ / \n\x01é€😀");
  EXPECT_EQ(read["n"], -5);
  EXPECT_EQ(read["c"], 12.3456);
  EXPECT_EQ(read["l"], nlohmann::json::parse("[0.1, 1e-7, 3.0]"));
  EXPECT_EQ(read["t"], true);
  EXPECT_TRUE(read["z"].is_null());
  EXPECT_EQ(read["when"], "2026-01-02 00:00:00");
  EXPECT_TRUE(read["3"].empty());
  EXPECT_NE(text.find("\n  \"n\": -5,\n"), std::string::npos) << text;
}

TEST_F(JsonTest, WhatHasNoFormInJsonIsRefused) {
  ExpectErrors({{"Print(GenerateJSON(New MemoryBlock(1)))", "1:7: JSONException: MemoryBlock can't be written as JSON"},
                {"Dim zero As Double\nPrint(GenerateJSON(1 / zero))",
                 "2:7: JSONException: infinity and not-a-number can't be written as JSON"},
                {"Dim a(1, 1) As Integer\nPrint(GenerateJSON(a))",
                 "2:7: JSONException: an array with several dimensions can't be written as JSON"},
                {"Print(GenerateJSON(New Dictionary(New MemoryBlock(1) : 1)))",
                 "1:7: JSONException: MemoryBlock can't be the name of a member in JSON"}});
}

TEST_F(JsonTest, ItemsAreObjectsOrArrays) {
  EXPECT_EQ(Output(R"(Dim item As New JSONItem
item.Value("name") = "Ink"
item.Value("price") = 2.5
Dim tags As New JSONItem
tags.Add("a/b")
tags.Add(2)
tags.AddAt(0, "first")
item.Child("tags") = tags
item.Value("extra") = New Dictionary("k" : Array(1, 2))
Print(item.ToString)
item.EscapeSlashes = False
Print(item.ToString)
Print(item.Count)
Print(item.IsArray)
Print(tags.IsArray)
Print(item.KeyAt(1))
Print(Join(item.Keys, ","))
Print(item.HasKey("Name"))
Print(item.HasName("name"))
Print(item.Lookup("none", 7))
Print(item.Child("tags").ValueAt(0))
Print(item.Child("extra").Child("k").ValueAt(1))
item.Remove("extra")
tags.RemoveAt(1)
tags.ValueAt(1) = 3
Print(item.ToString)
item.DecimalFormat = "0.00"
item.Compact = False
item.IndentSpacing = 1
Print(item.ToString)
item.RemoveAll
Print(item.ToString))"),
            R"({"name":"Ink","price":2.5,"tags":["first","a\/b",2],"extra":{"k":[1,2]}}
{"name":"Ink","price":2.5,"tags":["first","a/b",2],"extra":{"k":[1,2]}}
4
False
True
price
name,price,tags,extra
False
True
7
first
2
{"name":"Ink","price":2.5,"tags":["first",3]}
{
 "name": "Ink",
 "price": 2.50,
 "tags": [
  "first",
  3
 ]
}
{}
)");
}

TEST_F(JsonTest, ItemsAreLoadedFromText) {
  EXPECT_EQ(Output(R"(Dim item As New JSONItem("{""rows"": [{""id"": 1}, {""id"": 2}]}")
Dim rows As JSONItem = item.Child("rows")
For i As Integer = 0 To rows.Count - 1
  Print(rows.ChildAt(i).Value("id"))
Next
item.Load("[3]")
Print(item.IsArray)
Print(item.ValueAt(0)))"),
            "1\n2\nTrue\n3\n");
  ExpectErrors(
      {{"Dim item As New JSONItem(\"3\")",
        "1:13: JSONException: line 1, column 1: a JSONItem takes an object or an array"},
       {"Dim item As New JSONItem\nPrint(item.Value(\"x\"))", "2:7: KeyNotFoundException: there is no member \"x\""},
       {"Dim item As New JSONItem(\"[1]\")\nPrint(item.ValueAt(1))",
        "2:7: OutOfBoundsException: the index is 1, but the JSONItem has 1 values"},
       {"Dim item As New JSONItem(\"[1]\")\nitem.Value(\"x\") = 2",
        "2:1: JSONException: this JSONItem is an array, which has no names"},
       {"Dim item As New JSONItem(\"{\"\"a\"\": 1}\")\nPrint(item.Child(\"a\").Count)",
        "2:7: TypeMismatchException: this value is neither an object nor an array"}});
}

}  // namespace
}  // namespace quillbar::language::testing
