// SPDX-License-Identifier: MIT
// Standard streams and the end of a script by Quit.
#include "tests/language/script_fixture.h"

namespace quillbar::language::testing {
namespace {

using StreamTest = ScriptTest;
using QuitTest = ScriptTest;

TEST_F(StreamTest, LinesOfTheInputAreReadWithAnyEnd) {
  const ScriptRun run =
      Run("Print StdIn.ReadLine + \"|\" + Input\nWhile Not StdIn.EndOfFile\nPrint StdIn.ReadLine + \".\"\nWend\n"
          "Print \"[\" + Input + \"]\"",
          {}, "one\r\ntwo\n\nüber");
  EXPECT_EQ(run.errors, "");
  EXPECT_EQ(run.output, "one|two\n.\nüber.\n[]\n");
}

TEST_F(StreamTest, PartsOfTheInputAreWholeCharacters) {
  const ScriptRun run =
      Run("Print StdIn.Read(2) + \"|\" + StdIn.Read(0) + \"|\" + StdIn.ReadAll + \"|\" + StdIn.ReadAll\n"
          "Print StdIn.EOF And StdIn.IsEndOfFile",
          {}, "aüb\nc");
  EXPECT_EQ(run.output, "aü||b\nc|\nTrue\n");
}

TEST_F(StreamTest, TextIsWrittenToTheOutputAndToTheErrors) {
  const ScriptRun run = Run(
      "StdOut.Write \"a\"\nStdOut.WriteLine(ConvertEncoding(\"ü\", Encodings.ISOLatin1))\nStdErr.WriteLine \"bad\"\n"
      "Dim s As StandardOutputStream = StdErr\ns.Write \"worse\"\ns.Flush\nStdOut.WriteLine");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.output, "aü\n\n");
  EXPECT_EQ(run.errors, "bad\nworse");
}

TEST_F(StreamTest, StreamsComeFromTheirFunctionsOnly) {
  ExpectErrors({{"Dim s As New StandardInputStream",
                 "1:10: error: objects of the class StandardInputStream can't be made with \"New\"; methods of other "
                 "classes give them"}});
}

TEST_F(QuitTest, TheStatusIsTheScripts) {
  EXPECT_EQ(Run("Quit(3)\nPrint 1").status, 3);
  EXPECT_EQ(Run("Quit").status, 0);
  EXPECT_EQ(Run("Quit 256 + 7").status, 7);
  EXPECT_EQ(Run("Quit(1)").errors, "");
}

TEST_F(QuitTest, FinallyAndDestructorsRunAndNothingCatchesIt) {
  const ScriptRun run = Run(R"(
Class Door
  Sub Destructor()
    Print "closed"
  End Sub
End Class
Sub Leave()
  Dim inner As New Door
  Try
    Quit(4)
  Catch e As RuntimeException
    Print "caught"
  Finally
    Print "finally"
  End Try
End Sub
Dim outer As New Door
Print "start"
Leave
Print "not reached"
)");
  EXPECT_EQ(run.status, 4);
  EXPECT_EQ(run.output, "start\nfinally\nclosed\nclosed\n");
}

TEST_F(QuitTest, ADestructorThatQuitsOnlyEndsItself) {
  const ScriptRun run =
      Run("Class Door\nSub Destructor()\nQuit(5)\nPrint \"no\"\nEnd Sub\nEnd Class\n"
          "Dim d As New Door\nd = Nil\nPrint \"on\"");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.output, "on\n");
}

}  // namespace
}  // namespace quillbar::language::testing
