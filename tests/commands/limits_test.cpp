// SPDX-License-Identifier: MIT
// The limits of what a script may use, as the options of `quillbar` set them.
#include <gmock/gmock.h>

#include <filesystem>

#include "host/runtime/memory_poison.h"
#include "tests/support/process.h"
#include "tests/support/temporary_folder.h"

namespace quillbar::test {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

class LimitOptions : public testing::Test {
 protected:
  // Runs a script with this text; the words come before it.
  ProcessResult Run(const std::string &text, Command words) const {
    WriteFile(folder_ / "script.xojo_script", text);
    words.insert(words.begin(), std::filesystem::path(QUILLBAR_PROGRAM));
    words.push_back("script.xojo_script");
    ProcessOptions options;
    options.workingDirectory = folder_.path();
    return RunProcess(words, options);
  }

  TemporaryFolder folder_;
};

TEST_F(LimitOptions, TimeEndsALoopAndShowsWhereItWas) {
  const ProcessResult result = Run(
      "Print \"one\"\nSpin\nSub Spin()\n  Try\n    While True\n    Wend\n  Finally\n    Print \"never\"\n  End Try\nEnd Sub\n",
      {"run", "--account", "--max-time", "0.2"});
  EXPECT_EQ(result.exitStatus, 124) << result.errors;
  EXPECT_EQ(result.output, "one\n");
  EXPECT_THAT(
      result.errors,
      AllOf(StartsWith("script.xojo_script:5:5: error: the script has run for 0.2 s, the limit of --max-time\n"),
            HasSubstr("  in Sub Spin, line 5, column 5\n  in the script, line 2, column 1\n"),
            HasSubstr("The ledger balances")));
}

TEST_F(LimitOptions, TimeEndsAQuery) {
  const ProcessResult result =
      Run("Dim db As New SQLiteDatabase\ndb.Connect\nPrint \"one\"\nTry\n"
          "  Dim rows As RowSet = db.SelectSQL(\"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n) "
          "SELECT count(*) FROM n\")\nCatch e As DatabaseException\n  Print \"never\"\nEnd Try\n",
          {"--max-time=0.2"});
  EXPECT_EQ(result.exitStatus, 124) << result.errors;
  EXPECT_EQ(result.output, "one\n");
  EXPECT_THAT(result.errors, HasSubstr("the limit of --max-time"));
}

TEST_F(LimitOptions, MemoryEndsAScriptThatCollectsMoreAndMore) {
#ifdef _WIN32
  GTEST_SKIP() << "Wine, under which tests run, doesn't keep the limits of jobs";
#endif
  if (host::kChecksMemory) GTEST_SKIP() << "AddressSanitizer's own allocator ends the process";
  const ProcessResult many = Run(
      "Dim list() As String\nPrint \"one\"\nTry\n  While True\n    list.Append(\"entry \" + Str(list.Count))\n  Wend\n"
      "Catch e As OutOfMemoryException\n  Print \"never\"\nEnd Try\n",
      {"--max-memory", "24M"});
  EXPECT_EQ(many.exitStatus, 125) << many.errors;
  EXPECT_EQ(many.output, "one\n");
  EXPECT_THAT(many.errors,
              StartsWith("script.xojo_script:5:5: error: the script needs more memory than 24 MiB, the limit of "
                         "--max-memory\n"));

  const ProcessResult large =
      Run("Print \"one\"\nTry\n  Dim list(40000000) As Double\nCatch e As OutOfMemoryException\n"
          "  Print \"never\"\nEnd Try\n",
          {"run", "--account", "--max-memory", "24M"});
  EXPECT_EQ(large.exitStatus, 125) << large.errors;
  EXPECT_EQ(large.output, "one\n");
  EXPECT_THAT(large.errors, AllOf(HasSubstr("the limit of --max-memory"), HasSubstr("The ledger balances")));
}

TEST_F(LimitOptions, EnoughTimeAndMemoryLetAScriptRun) {
  const Command words{"run", "--max-time", "60", host::kChecksMemory ? "--max-calls=9" : "--max-memory=24M"};
  const ProcessResult result =
      Run("Dim s As String\nFor i As Integer = 1 To 1000\n  s = s + \"x\"\nNext\nPrint Str(s.Length)\n", words);
  EXPECT_EQ(result.exitStatus, 0) << result.errors;
  EXPECT_EQ(result.output, "1000\n");
}

TEST_F(LimitOptions, LimitsOfTheLanguageCanBeSet) {
  struct Case {
    Command words;
    std::string script, error;
  };
  const Case cases[] = {
      {{"--max-calls", "50"},
       "Deep(1)\nSub Deep(n As Integer)\n  Deep(n + 1)\nEnd Sub\n",
       "3:3: StackOverflowException: calls are nested too deeply (50 calls, the limit of --max-calls)"},
      {{"--max-string", "2K"},
       "Dim s As String = \"0123456789abcdef\"\nFor i As Integer = 1 To 8\n  s = s + s\nNext\n",
       "3:7: OutOfMemoryException: this String would be longer than 2 KiB, the limit of --max-string"},
      {{"--max-string=10"},
       "Dim words() As String = Array(\"one\", \"two\")\nPrint Join(words, \", to \")\n",
       "2:7: OutOfMemoryException: this String would be longer than 10 bytes, the limit of --max-string"},
      {{"--max-elements", "3"},
       "Dim list() As Integer\nFor i As Integer = 0 To 3\n  list.Append(i)\nNext\n",
       "3:3: OutOfMemoryException: an array has at most 3 elements, the limit of --max-elements"},
  };
  for (const Case &one : cases) {
    SCOPED_TRACE(one.script);
    const ProcessResult result = Run(one.script, one.words);
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.errors, HasSubstr("script.xojo_script:" + one.error));
  }
  // However many are allowed, the machine's stack ends before them.
  const ProcessResult endless =
      Run("Deep(1)\nSub Deep(n As Integer)\n  Deep(n + 1)\nEnd Sub\n", {"--max-calls=1000000"});
  EXPECT_EQ(endless.exitStatus, 1);
  EXPECT_THAT(endless.errors, HasSubstr(" calls, and memory for them has ended)"));
}

TEST_F(LimitOptions, WrongLimitsAreRefused) {
  for (const char *word : {"--max-time=0", "--max-time=soon", "--max-memory=1K", "--max-memory=much", "--max-calls=0",
                           "--max-string=2G", "--max-elements=-1"}) {
    SCOPED_TRACE(word);
    const ProcessResult result = Run("Print \"one\"\n", {"run", word});
    EXPECT_EQ(result.exitStatus, 2);
    EXPECT_THAT(result.output, IsEmpty());
    EXPECT_THAT(result.errors, HasSubstr(std::string(word).substr(0, std::string(word).find('='))));
  }
}

}  // namespace
}  // namespace quillbar::test
