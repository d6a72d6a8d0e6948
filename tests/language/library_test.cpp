// SPDX-License-Identifier: MIT
#include <filesystem>

#ifndef _WIN32
#include <sys/stat.h>
#endif

#include "tests/language/script_fixture.h"
#include "tests/support/temporary_folder.h"

namespace quillbar::language::testing {
namespace {

using LibraryTest = ScriptTest;

TEST_F(LibraryTest, Strings) {
  ExpectPrinted({{"Len(\"äbc\")", "3"},
                 {"LenB(\"äbc\")", "4"},
                 {"\"äbc\".Length", "3"},
                 {"\"äbc\".Bytes", "4"},
                 {"Left(\"abc\", 2)", "ab"},
                 {"\"abc\".Left(9)", "abc"},
                 {"Right(\"abc\", 2)", "bc"},
                 {"\"abc\".Right(0)", ""},
                 {"Mid(\"abcd\", 2)", "bcd"},
                 {"Mid(\"abcd\", 2, 2)", "bc"},
                 {"\"abcd\".Middle(1, 2)", "bc"},
                 {"\"abcd\".Middle(2)", "cd"},
                 {"InStr(\"Hello\", \"L\")", "3"},
                 {"InStr(4, \"Hello\", \"l\")", "4"},
                 {"InStr(\"Hello\", \"x\")", "0"},
                 {"\"Hello\".IndexOf(\"l\")", "2"},
                 {"\"Hello\".IndexOf(3, \"l\")", "3"},
                 {"\"Hello\".IndexOf(\"x\")", "-1"},
                 {"\"Hello\".LastIndexOf(\"l\")", "3"},
                 {"\"Hello\".Contains(\"ELL\")", "True"},
                 {"\"Hello\".BeginsWith(\"he\")", "True"},
                 {"\"Hello\".EndsWith(\"lo\")", "True"},
                 {"Replace(\"aaa\", \"A\", \"b\")", "baa"},
                 {"ReplaceAll(\"aaa\", \"a\", \"bc\")", "bcbcbc"},
                 {"\"a-b\".ReplaceAll(\"-\", \"\")", "ab"},
                 {"Trim(\"  a b \")", "a b"},
                 {"LTrim(\" a \") + \"|\"", "a |"},
                 {"RTrim(\" a \") + \"|\"", " a|"},
                 {"\" a \".TrimLeft + \"|\"", "a |"},
                 {"\" a \".TrimRight + \"|\"", " a|"},
                 {"Uppercase(\"straße ä\")", "STRAßE Ä"},
                 {"\"ÄB\".Lowercase", "äb"},
                 {"Titlecase(\"the quick FOX\")", "The Quick Fox"},
                 {"StrComp(\"a\", \"A\", 0) = 0", "False"},
                 {"StrComp(\"a\", \"A\", 1)", "0"},
                 {"Asc(\"€\")", "8364"},
                 {"Chr(8364)", "€"},
                 {"String.Chr(65)", "A"},
                 {"NthField(\"a,b,c\", \",\", 2)", "b"},
                 {"NthField(\"a,b\", \",\", 5)", ""},
                 {"CountFields(\"a,b,c\", \",\")", "3"},
                 {"Join(Split(\"a b c\"), \"-\")", "a-b-c"},
                 {"Split(\"abc\", \"\").Count", "3"},
                 {"\"a;b\".ToArray(\";\").LastIndex", "1"},
                 {"String.FromArray(Array(\"x\", \"y\"), \"+\")", "x+y"},
                 {"Len(EndOfLine)", "1"},
                 {"Len(DefineEncoding(\"ä\", Encodings.ISOLatin1))", "2"},
                 {"LenB(ConvertEncoding(\"ä\", Encodings.ISOLatin1))", "1"}});
}

TEST_F(LibraryTest, ComparisonsMayDistinguishCase) {
  ExpectPrinted({{"\"abcABC\".IndexOf(\"A\", ComparisonOptions.CaseSensitive)", "3"},
                 {"\"abcABC\".IndexOf(\"A\", ComparisonOptions.CaseInsensitive)", "0"},
                 {"\"abcABC\".IndexOf(1, \"a\", ComparisonOptions.CaseSensitive)", "-1"},
                 {"\"abcABC\".LastIndexOf(\"a\", ComparisonOptions.CaseSensitive)", "0"},
                 {"\"abcABC\".LastIndexOf(2, \"a\")", "0"},
                 {"\"aaa\".LastIndexOf(1, \"a\")", "1"},
                 {"\"Äb\".Contains(\"ä\", ComparisonOptions.CaseSensitive)", "False"},
                 {"\"Äb\".BeginsWith(\"Ä\", ComparisonOptions.CaseSensitive)", "True"},
                 {"\"Äb\".BeginsWith(\"ä\", ComparisonOptions.CaseSensitive)", "False"},
                 {"\"abC\".EndsWith(\"c\", ComparisonOptions.CaseSensitive)", "False"},
                 {"\"a\".Compare(\"A\", ComparisonOptions.CaseSensitive) = 0", "False"},
                 {"\"a\".Compare(\"A\")", "0"}});
  EXPECT_EQ(Output("Dim o As ComparisonOptions = ComparisonOptions.CaseSensitive\nPrint \"aB\".Contains(\"b\", o)"),
            "False\n");
}

TEST_F(LibraryTest, EndOfLineHasTheEndsOfSystems) {
  ExpectPrinted({{"\"a\" + EndOfLine + \"b\" = \"a\" + EndOfLine.UNIX + \"b\"", "True"},
                 {"EndOfLine.Windows = Chr(13) + Chr(10)", "True"},
                 {"EndOfLine.CRLF.Length", "2"},
                 {"EndOfLine.CR.Asc", "13"},
                 {"EndOfLine.Linux.Asc", "10"},
                 {"EndOfLine.macOS.Asc", "10"},
                 {"EndOfLine.LF.Asc", "10"},
                 {"EndOfLine.Length", "1"}});
  ExpectErrors({{"Print EndOfLine.Amiga",
                 R"(1:17: error: String has no member "Amiga"; docs/language.md lists what it has in this host)"}});
}

TEST_F(LibraryTest, SpecialFoldersAreThoseOfTheSystem) {
  const test::TemporaryFolder folder;
  EXPECT_EQ(Output("Print SpecialFolder.Temporary.Directory\nPrint SpecialFolder.CurrentWorkingDirectory.Exists\n"
                   "Print SpecialFolder.UserHome <> Nil\nPrint SpecialFolder.Resources Is Nil\n"
                   "Print SpecialFolder.Temporary.Child(\"a\").Parent.NativePath = "
                   "SpecialFolder.Temporary.NativePath"),
            "True\nTrue\nTrue\nTrue\nTrue\n");
}

TEST_F(LibraryTest, StringsByBytes) {
  ExpectPrinted({{"LeftB(\"äbc\", 2)", "ä"},
                 {"\"äbc\".LeftBytes(9)", "äbc"},
                 {"LenB(\"äbc\".LeftBytes(1))", "1"},
                 {"LeftB(\"äbc\", -1)", ""},
                 {"RightB(\"äbc\", 2)", "bc"},
                 {"\"äbc\".RightBytes(3).Bytes", "3"},
                 {"\"äbc\".RightBytes(9)", "äbc"},
                 {"MidB(\"äbc\", 3)", "bc"},
                 {"MidB(\"äbc\", 3, 1)", "b"},
                 {"MidB(\"äbc\", 9)", ""},
                 {"\"äbc\".MiddleBytes(2)", "bc"},
                 {"\"äbc\".MiddleBytes(0, 2)", "ä"},
                 {"AscB(\"ä\")", "195"},
                 {"\"ä\".AscByte", "195"},
                 {"AscB(\"\")", "0"},
                 {"AscB(ChrB(200))", "200"},
                 {"LenB(ChrB(200))", "1"},
                 {"String.ChrByte(65)", "A"}});
}

TEST_F(LibraryTest, Conversions) {
  ExpectPrinted({{"Str(5)", "5"},
                 {"Str(-2.50)", "-2.5"},
                 {"Str(True)", "True"},
                 {"Str(1e20)", "1e+20"},
                 {"5.ToString", "5"},
                 {"CStr(1.25)", "1.25"},
                 {"Val(\" 12.5abc\")", "12.5"},
                 {"Val(\"&hFF\")", "255"},
                 {"Val(\"x\")", "0"},
                 {"Val(\"-1e3\")", "-1000"},
                 {"CDbl(\"2.5\")", "2.5"},
                 {"CLong(\"-12.9\")", "-12"},
                 {"\"42\".ToInteger", "42"},
                 {"\"1.9\".ToInteger", "1"},
                 {"\"2.5\".ToDouble", "2.5"},
                 {"Integer.FromString(\"7\")", "7"},
                 {"Double.FromString(\"7.5\")", "7.5"},
                 {"Hex(255)", "FF"},
                 {"Oct(8)", "10"},
                 {"Bin(5)", "101"},
                 {"255.ToHex", "FF"},
                 {"8.ToOctal", "10"},
                 {"5.ToBinary", "101"},
                 {"Hex(-1)", sizeof(void *) == 4 ? "FFFFFFFF" : "FFFFFFFFFFFFFFFF"},
                 {"CType(-1, UInt64).ToHex", "FFFFFFFFFFFFFFFF"}});
  // A number that a Double could not hold, where Integer has room for one.
  const std::string exact = sizeof(void *) == 8 ? "9007199254740993" : kLargestInteger;
  EXPECT_EQ(Output("Print(\"" + exact + "\".ToInteger)"), exact + "\n");
}

TEST_F(LibraryTest, Formats) {
  ExpectPrinted({{"Format(1.784, \"#.##\")", "1.78"},
                 {"Format(1.3, \"0.0000\")", "1.3000"},
                 {"Format(5, \"0000\")", "0005"},
                 {"Format(0.25, \"#%\")", "25%"},
                 {"Format(145678.5, \"#,###.##\")", "145,678.5"},
                 {"Format(145678.5, \"#.##e+\")", "1.46e+05"},
                 {"Format(-3.7, \"-#.##\")", "-3.7"},
                 {"Format(3.7, \"+#.##\")", "+3.7"},
                 {"Format(3.7, \"#.##;(#.##);zero\")", "3.7"},
                 {"Format(-3.7, \"#.##;(#.##);zero\")", "(3.7)"},
                 {"Format(-3.7, \"0.0\")", "-3.7"},
                 {"Format(-0.001, \"0.0\")", "0.0"},
                 {"Format(1234567, \"#,##0\")", "1,234,567"},
                 {"Format(0, \"#\")", ""},
                 {"Format(2, \"\\#0\")", "#2"},
                 {"(2.5).ToString(\"0.00\")", "2.50"}});
}

TEST_F(LibraryTest, Mathematics) {
  ExpectPrinted({{"Abs(-3)", "3"},
                 {"Abs(-3.5)", "3.5"},
                 {"Sin(0)", "0"},
                 {"Cos(0)", "1"},
                 {"Tan(0)", "0"},
                 {"Asin(1) * 2", "3.14159265358979"},
                 {"Acos(1)", "0"},
                 {"Atan(0)", "0"},
                 {"Atan2(0, -1)", "3.14159265358979"},
                 {"Sqrt(9)", "3"},
                 {"Floor(-1.5)", "-2"},
                 {"Ceil(1.2)", "2"},
                 {"Ceiling(-1.2)", "-1"},
                 {"Round(2.5)", "3"},
                 {"Round(-2.5)", "-3"},
                 {"Min(1, 2)", "1"},
                 {"Max(1, 2.5)", "2.5"},
                 {"Pow(2, 8)", "256"},
                 {"Exp(0)", "1"},
                 {"Log(1)", "0"},
                 {"Sign(-2)", "-1"},
                 {"Rnd < 1", "True"},
                 {"System.Random.InRange(4, 4)", "4"},
                 {"Bitwise.ShiftLeft(1, 4)", "16"},
                 {"Bitwise.ShiftRight(16, 2)", "4"},
                 {"Sqrt(-1).IsNotANumber", "True"},
                 {"Sqrt(-1).IsInfinite", "False"},
                 {"Log(0).IsInfinite", "True"},
                 {"CType(1e300, Single).IsInfinite", "True"},
                 {"Microseconds >= 0", "True"},
                 {"Ticks >= 0", "True"}});
}

TEST_F(LibraryTest, Arrays) {
  EXPECT_EQ(Output(R"(Dim a() As Integer = Array(3, 1, 2)
a.Append(5)
a.Add(4)
a.Insert(0, 9)
a.AddAt(1, 8)
a.Remove(0)
a.RemoveAt(0)
Print(a.Pop)
Print(Ubound(a))
Print(a.LastIndex)
Print(a.Count)
Print(a.IndexOf(2))
Print(a.IndexOf(77))
Print(a.Contains(5))
a.Sort
For Each n As Integer In a
Print(n)
Next
Redim a(1)
Print(a.Count)
a.ResizeTo(4)
Print(a(4))
a.RemoveAll
Print(a.Count))"),
            "4\n3\n3\n4\n2\n-1\nTrue\n1\n2\n3\n5\n2\n0\n0\n");
  EXPECT_EQ(Output(R"(Dim a() As String = Array("b", "A", "c")
a.Sort
Print(Join(a, ""))
a.Sort(AddressOf Down)
Print(Join(a, ""))
Function Down(x As String, y As String) As Integer
Return y.Compare(x)
End Function)"),
            "Abc\ncbA\n");
  EXPECT_EQ(FirstError("Dim a() As FolderItem = Array(New FolderItem(\"a\"), New FolderItem(\"b\"))\na.Sort"),
            "2:1: UnsupportedOperationException: objects have no order of their own; pass a comparison: "
            "list.Sort(AddressOf Compare)");
}

TEST_F(LibraryTest, ShufflingKeepsTheElementsAndChangesTheirOrder) {
  EXPECT_EQ(Output(R"(Dim a() As Integer
For i As Integer = 0 To 99
a.Add(i)
Next
a.Shuffle
Dim moved As Boolean
For i As Integer = 0 To 99
If a(i) <> i Then moved = True
Next
Print(moved)
a.Sort
Dim same As Boolean = a.Count = 100
For i As Integer = 0 To 99
If a(i) <> i Then same = False
Next
Print(same))"),
            "True\nTrue\n");
}

TEST_F(LibraryTest, WhatIsFlushedCanBeReadBeforeTheFileIsClosed) {
  const test::TemporaryFolder folder;
  const std::string head = "Dim folder As FolderItem = GetFolderItem(\"" + folder.path().generic_string() + "\")\n";
  EXPECT_EQ(Output(head + R"(Dim out As TextOutputStream = TextOutputStream.Create(folder.Child("a.txt"))
out.Write("early")
out.Flush
Print(TextInputStream.Open(folder.Child("a.txt")).ReadAll)
out.Close)"),
            "early\n");
  EXPECT_EQ(Output(head + R"(Dim b As BinaryStream = BinaryStream.Create(folder.Child("b"), True)
b.WriteUInt16(258)
b.Flush
Print(BinaryStream.Open(folder.Child("b")).Length)
b.Close)"),
            "2\n");
}

TEST_F(LibraryTest, AFileThatIsCreatedAnewStaysAsItWasUntilTheNewOneIsFlushedOrClosed) {
  const test::TemporaryFolder folder;
  const std::string head = "Dim folder As FolderItem = GetFolderItem(\"" + folder.path().generic_string() +
                           "\")\nDim file As FolderItem = folder.Child(\"a.txt\")\n";
  const std::filesystem::path file = folder / "a.txt";
  test::WriteFile(file, "older");
  EXPECT_EQ(Output(head + R"(Dim out As TextOutputStream = TextOutputStream.Create(file)
out.Write("new")
Print(TextInputStream.Open(file).ReadAll)
out.Flush
Print(TextInputStream.Open(file).ReadAll)
out.Write("er")
out.Close
Print(TextInputStream.Open(file).ReadAll + Str(folder.Count)))"),
            "older\nnew\nnewer1\n");
  EXPECT_EQ(Output(head + R"(Dim b As BinaryStream = BinaryStream.Create(file, True)
b.Write("abcdef")
b.Position = 2
b.Flush
b.Write("X")
Print(b.Read(9) + Str(b.Length))
b.Close
Print(TextInputStream.Open(file).ReadAll))"),
            "def6\nabXdef\n");
  // A stream that is only released, and one of a script that an error ends, are closed too.
  EXPECT_EQ(Output(head + "Sub Make(f As FolderItem)\nDim out As TextOutputStream = TextOutputStream.Create(f)\n"
                          "out.Write(\"released\")\nEnd Sub\nMake(file)\nPrint(TextInputStream.Open(file).ReadAll)"),
            "released\n");
  FirstError(head +
             "Dim out As TextOutputStream = TextOutputStream.Create(file)\nout.Write(\"ended\")\n"
             "Dim none() As Integer\nPrint(none(1))");
  EXPECT_EQ(test::ReadFile(file), "ended");
  // Two streams: the last one that is closed has replaced the file; and one that was deleted is there again.
  EXPECT_EQ(Output(head + R"(Dim one As TextOutputStream = TextOutputStream.Create(file)
Dim two As TextOutputStream = TextOutputStream.Create(file)
two.Write("two")
two.Close
file.Remove
Print(file.Exists)
one.Write("one")
one.Close
Print(TextInputStream.Open(file).ReadAll + Str(folder.Count)))"),
            "False\none1\n");
  // A file that did not exist is there at once.
  EXPECT_EQ(Output(head + R"(Dim out As TextOutputStream = TextOutputStream.Create(folder.Child("new.txt"))
Print(folder.Child("new.txt").Exists)
out.Close)"),
            "True\n");
}

#ifndef _WIN32

TEST_F(LibraryTest, AFileThatIsReplacedKeepsItsPermissionsAndLinks) {
  namespace fs = std::filesystem;
  const test::TemporaryFolder folder;
  const std::string head = "Dim folder As FolderItem = GetFolderItem(\"" + folder.path().generic_string() + "\")\n";
  const auto write = [&](const char *name) {
    Output(head + "Dim out As TextOutputStream = TextOutputStream.Create(folder.Child(\"" + name +
           "\"))\nout.Write(\"new\")\nout.Close");
  };
  test::WriteFile(folder / "file", "older");
  constexpr auto kPermissions = fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read;
  fs::permissions(folder / "file", kPermissions);
  fs::create_symlink("file", folder / "link");
  write("link");
  EXPECT_TRUE(fs::is_symlink(folder / "link"));
  EXPECT_EQ(test::ReadFile(folder / "file"), "new");
  EXPECT_EQ(fs::status(folder / "file").permissions(), kPermissions);
  // A file with two names keeps both, and is written in place.
  test::WriteFile(folder / "one", "older");
  fs::create_hard_link(folder / "one", folder / "two");
  write("one");
  EXPECT_EQ(test::ReadFile(folder / "two"), "new");
  EXPECT_EQ(fs::hard_link_count(folder / "one"), 2U);
  // What is no file stays what it is.
  ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
  Run(head + "TextOutputStream.Create(folder.Child(\"pipe\")).Write(\"x\")");
  EXPECT_TRUE(fs::is_fifo(folder / "pipe"));
}

#endif

TEST_F(LibraryTest, TextAndBinaryFiles) {
  const std::filesystem::path folder = std::filesystem::temp_directory_path() / "quillbar_language_files";
  std::filesystem::remove_all(folder);
  std::filesystem::create_directory(folder);
  const std::string head = "Dim folder As New FolderItem(\"" + folder.string() + "\")\n";
  EXPECT_EQ(Output(head + R"(Dim out As TextOutputStream = TextOutputStream.Create(folder.Child("a.txt"))
out.WriteLine("ä")
out.Write("b")
out.Close
out = TextOutputStream.Append(folder.Child("a.txt"))
out.Write("c")
out.Close
Dim input As TextInputStream = TextInputStream.Open(folder.Child("a.txt"))
While Not input.EndOfFile
Print(input.ReadLine)
Wend
input.Close
Print(TextInputStream.Open(folder.Child("a.txt")).ReadAll.Length)
For Each f As FolderItem In folder.Children
Print(f.Name)
Next)"),
            "ä\nbc\n4\na.txt\n");
  EXPECT_EQ(Output(head + R"(Dim t As TextInputStream = TextInputStream.Open(folder.Child("a.txt"))
Print(t.Read(1))
Print(t.Read(1).Length)
Print(t.ReadAll)
t.Close)"),
            "ä\n1\nbc\n");
  EXPECT_EQ(Output(head + R"(Dim b As BinaryStream = BinaryStream.Create(folder.Child("b"), True)
b.LittleEndian = False
b.WriteUInt16(258)
b.WriteDouble(1.5)
b.Write("xy")
b.BytePosition = 0
Print(b.ReadByte)
Print(b.ReadInt8)
Print(b.ReadDouble)
Print(b.Read(10))
Print(b.EOF)
Print(b.Length)
b.Close)"),
            "1\n2\n1.5\nxy\nTrue\n12\n");
  EXPECT_EQ(FirstError(head + "Dim b As BinaryStream = BinaryStream.Create(folder.Child(\"b\"))")
                .find("2:25: IOException: creating"),
            0u);
  EXPECT_NE(FirstError("Dim s As TextOutputStream = TextOutputStream.Create(New FolderItem(\"/nowhere/x\"))")
                .find("IOException: creating"),
            std::string::npos);
  std::filesystem::remove_all(folder);
}

TEST_F(LibraryTest, DatesAndRandomNumbers) {
  EXPECT_EQ(Output(R"(Dim d As New DateTime(2024, 2, 29, 13, 5)
Print(d.SQLDate)
Print(d.SQLDateTime)
Print(d.Day)
Print(DateTime.Now.Year > 2000)
Dim a As New Random
Dim b As New Random
a.Seed = 5
b.Seed = 5
Print(a.InRange(1, 1000) = b.InRange(1, 1000)))"),
            "2024-02-29\n2024-02-29 13:05:00\n29\nTrue\nTrue\n");
}

TEST_F(LibraryTest, SearchFindsWhatBeginsInsideAFailedMatch) {
  ExpectPrinted({{R"("aabaabaaab".IndexOf("AABAAA"))", "3"},
                 {R"("ÄäbÄÄbäää".IndexOf("ääbäää"))", "3"},
                 {R"("xÄbxäB".ReplaceAll("äb", "-"))", "x-x-"},
                 {R"("aaaa".CountFields("aa"))", "3"},
                 {R"(NthField("grün-GRÜN-grau", "ÜN-", 2))", "GR"},
                 {R"(ConvertEncoding("a;ä;b", Encodings.ISOLatin1).Split(";")(1).Asc)", "228"},
                 {R"("日本語".ConvertEncoding(Encodings.ShiftJIS).IndexOf("語"))", "2"},
                 {R"("  ä " + Chr(160) + "|".Trim)", "  ä \u00A0|"},
                 {R"(Trim(Chr(160) + " ü "))", "ü"}});
}

TEST_F(LibraryTest, AppendingChangesOnlyTheVariableAppendedTo) {
  EXPECT_EQ(Output(R"(Dim s As String = "a"
Dim kept As String
For i As Integer = 1 To 3
  s = s + "b"
  kept = s
  s = s + Grow + s
  s += "!"
Next
Print kept
Print s
s = s + s
Print Str(s.Length) + Str(s.IndexOf("!"))
Dim e As String = ConvertEncoding("ä", Encodings.ISOLatin1)
e = e + "b"
e = e + "ü" + Chr(8364)
Print e
Function Grow() As String
  s = s + "g"
  Return "x"
End Function
)"),
            "abxabg!bxabxabg!bg!b\nabxabg!bxabxabg!bg!bxabxabg!bxabxabg!bg!bg!\n866\näbü€\n");
}

TEST_F(LibraryTest, LongTextsAreSplitSearchedAndBuiltInLinearTime) {
  // Each of these took minutes when it was quadratic.
  EXPECT_EQ(Output(R"(Dim s As String
For i As Integer = 1 To 200000
  s = s + "ä;" + "b"
Next
Print Str(s.Split(";").Count) + " " + Str(s.ReplaceAll("Ä", "").Length) + " " + Str(CountFields(s, "B"))
Dim count As Integer
Dim at As Integer = s.IndexOf(0, "ä")
While at >= 0
  count = count + 1
  at = s.IndexOf(at + 1, "ä")
Wend
Print Str(count)
)"),
            "200001 400000 200001\n200000\n");
}

TEST_F(LibraryTest, MemoryBlocksAreUsedAsStrings) {
  EXPECT_EQ(Output(R"(Dim block As New MemoryBlock(3)
block.StringValue(0, 3) = "abc"
Dim text As String = block
Print text + " " + Str(LenB(block))
)"),
            "abc 3\n");
}

}  // namespace
}  // namespace quillbar::language::testing
