// SPDX-License-Identifier: MIT
// `quillbar --sandbox`: what a script can reach, and what it can't.
#include <gmock/gmock.h>

#include <filesystem>

#include "tests/support/process.h"
#include "tests/support/temporary_folder.h"

namespace quillbar::test {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr const char *kRefusal = "the folder of --sandbox";

class SandboxOption : public testing::Test {
 protected:
  SandboxOption() {
    fs::create_directory(folder_ / "in");
    WriteFile(folder_ / "secret.txt", "secret");
    WriteFile(folder_ / "in" / "open.txt", "open");
  }

  // Runs a script, which is outside, with the folder "in" as its sandbox and this folder as the current one.
  ProcessResult Run(const std::string &text, Command words = {}) const {
    WriteFile(folder_ / "script.xojo_script", text);
    words.insert(words.begin(), {fs::path(QUILLBAR_PROGRAM), "--sandbox", "in"});
    words.push_back("script.xojo_script");
    ProcessOptions options;
    options.workingDirectory = folder_.path();
    return RunProcess(words, options);
  }

  // Each statement raises an IOException that says why, or another exception of this class.
  void ExpectRefused(const std::string &statement, const std::string &exception = "IOException") const {
    SCOPED_TRACE(statement);
    const ProcessResult result = Run("Try\n  " + statement + "\n  Print \"done\"\nCatch e As " + exception +
                                     "\n  Print \"refused: \" + e.Message\nEnd Try\n");
    EXPECT_THAT(result.output, HasSubstr("refused: "));
    EXPECT_THAT(result.output, HasSubstr(exception == "IOException" ? kRefusal : "--sandbox"));
    EXPECT_THAT(result.errors, IsEmpty());
  }

  TemporaryFolder folder_;
};

TEST_F(SandboxOption, LetsAScriptWorkInItsFolder) {
  const ProcessResult result = Run(R"SCRIPT(Dim here As New FolderItem("in")
Print TextInputStream.Open(here.Child("open.txt")).ReadAll
here.Child("sub").CreateFolder
Dim out As TextOutputStream = TextOutputStream.Create(here.Child("sub").Child("new.txt"))
out.Write("written")
out.Close
here.Child("sub").Child("new.txt").MoveTo(here.Child("moved.txt"))
here.Child("moved.txt").CopyTo(here.Child("sub"))
Dim copied As FolderItem = here.Child("sub").Child("moved.txt")
copied.Name = "renamed.txt"
Print TextInputStream.Open(here.Child("sub").Child("..").Child("sub").Child("renamed.txt")).ReadAll
Dim db As New SQLiteDatabase
db.DatabaseFile = here.Child("data.sqlite")
db.CreateDatabase
db.ExecuteSQL("CREATE TABLE t (a)")
db.ExecuteSQL("INSERT INTO t VALUES (7)")
db.ExecuteSQL("ATTACH DATABASE 'in/other.sqlite' AS other")
db.ExecuteSQL("CREATE TABLE other.t (a)")
For Each row As DatabaseRow In db.SelectSQL("SELECT a FROM t ORDER BY a")
  Print row.Column("a").StringValue
Next
Dim document As New PDFDocument
Dim p As Page = document.AddPage
p.Rectangle(10, 20, 100, 50)
p.Draw
document.Save(here.Child("out.pdf"))
Print Str(here.Child("out.pdf").Exists) + " " + Str(document.LastErrorNumber)
Dim outside As New FolderItem("secret.txt")
Print Str("a".ConvertEncoding(Encodings.UTF16).Bytes) + " " + outside.Name
)SCRIPT");
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.errors, "");
  EXPECT_EQ(result.output, "open\nwritten\n7\nTrue 0\n2 secret.txt\n");
}

TEST_F(SandboxOption, RefusesWhatIsOutside) {
  for (const char *path : {"secret.txt", "in/../secret.txt", "in/missing/../../secret.txt", "..", "in2"}) {
    SCOPED_TRACE(path);
    fs::create_directory(folder_ / "in2");
    ExpectRefused("Dim f As New FolderItem(\"" + std::string(path) + "\")\n  Print Str(f.Exists)");
  }
  ExpectRefused("Dim f As New FolderItem(\"in\")\n  Print f.Parent.NativePath");
  ExpectRefused("Dim s As TextInputStream = TextInputStream.Open(New FolderItem(\"secret.txt\"))");
  ExpectRefused("Dim s As TextOutputStream = TextOutputStream.Create(New FolderItem(\"new.txt\"))");
  ExpectRefused("Dim s As BinaryStream = BinaryStream.Create(New FolderItem(\"new.bin\"), True)");
  ExpectRefused("Dim d As New SQLiteDatabase\n  d.DatabaseFile = New FolderItem(\"new.db\")\n  d.CreateDatabase");
  ExpectRefused("Dim d As New PDFDocument\n  Dim p As Page = d.AddPage\n  d.Save(New FolderItem(\"new.pdf\"))");
  ExpectRefused("Dim d As New PDFDocument\n  Call d.LoadTrueTypeFont(New FolderItem(\"secret.txt\"))");
  ExpectRefused("Dim f As New FolderItem(\"in/open.txt\")\n  f.CopyTo(New FolderItem(\"new.txt\"))");
  ExpectRefused("Dim f As New FolderItem(\"in/open.txt\")\n  f.MoveTo(New FolderItem(\"new.txt\"))");
  ExpectRefused("Dim f As New FolderItem(\"in/open.txt\")\n  f.Name = \"../new.txt\"");
  ExpectRefused("Dim f As New FolderItem(\"secret.txt\")\n  f.Delete");
  ExpectRefused("Dim f As New FolderItem(\"new\")\n  f.CreateFolder");
  ExpectRefused("Print Str(SpecialFolder.UserHome.Exists)");
  EXPECT_EQ(ReadFile(folder_ / "secret.txt"), "secret");
  EXPECT_EQ(ReadFile(folder_ / "in" / "open.txt"), "open");
  for (const auto &entry : fs::directory_iterator(folder_.path())) {
    EXPECT_EQ(entry.path().filename().string().find("new"), std::string::npos) << entry.path();
  }
}

TEST_F(SandboxOption, RefusesDatabasesThatStatementsName) {
  const std::string open = "Dim d As New SQLiteDatabase\n  d.Connect\n  ";
  ExpectRefused(open + "d.ExecuteSQL(\"ATTACH DATABASE 'new.db' AS x\")", "DatabaseException");
  ExpectRefused(open + "d.ExecuteSQL(\"ATTACH DATABASE 'n' || 'ew.db' AS x\")", "DatabaseException");
  ExpectRefused(open + "d.ExecuteSQL(\"ATTACH DATABASE 'file:in/new.db' AS x\")", "DatabaseException");
  ExpectRefused(open + "d.ExecuteSQL(\"VACUUM INTO 'new.db'\")", "DatabaseException");
  ExpectRefused(open + "d.ExecuteSQL(\"PRAGMA temp_store_directory = '/'\")", "DatabaseException");
  EXPECT_FALSE(fs::exists(folder_ / "new.db"));
}

TEST_F(SandboxOption, FollowsLinks) {
#ifdef _WIN32
  GTEST_SKIP() << "making links takes a privilege on Windows";
#endif
  fs::create_symlink("../secret.txt", folder_ / "in" / "link");
  fs::create_symlink(folder_.path(), folder_ / "in" / "folder");
  fs::create_symlink("../new.txt", folder_ / "in" / "dangling");
  fs::create_symlink("in", folder_ / "inward");
  ExpectRefused("Dim s As TextInputStream = TextInputStream.Open(New FolderItem(\"in/link\"))");
  ExpectRefused("Dim s As TextInputStream = TextInputStream.Open(New FolderItem(\"in/folder/secret.txt\"))");
  ExpectRefused("Dim s As TextOutputStream = TextOutputStream.Create(New FolderItem(\"in/dangling\"))");
  ExpectRefused("Dim s As TextOutputStream = TextOutputStream.Create(New FolderItem(\"in/folder/new.txt\"))");
  EXPECT_FALSE(fs::exists(folder_ / "new.txt"));
  EXPECT_EQ(Run("Print TextInputStream.Open(New FolderItem(\"inward/open.txt\")).ReadAll\n").output, "open\n");
}

TEST_F(SandboxOption, KeepsTimeZonesAndTheScriptsOwnFilesReadable) {
#ifdef _WIN32
  const std::string zone = "UTC";  // the only one with a name there
#else
  const std::string zone = "Europe/Berlin";
#endif
  WriteFile(folder_ / "names.xojo_script", "Module Names\nConst kName = \"known\"\nEnd Module\n");
  WriteFile(folder_ / "script.xojo_script", "Print kName\nDim z As New TimeZone(\"" + zone +
                                                "\")\nPrint z.Name\nPrint Str(\"\u00E9\".ConvertEncoding("
                                                "Encodings.MacRoman).Bytes)\n");
  ProcessOptions options;
  options.workingDirectory = folder_.path();
  const ProcessResult result = RunProcess(
      {fs::path(QUILLBAR_PROGRAM), "run", "--sandbox", "in", "script.xojo_script", "names.xojo_script"}, options);
  EXPECT_EQ(result.output, "known\n" + zone + "\n1\n");
  EXPECT_EQ(result.errors, "");
}

TEST_F(SandboxOption, MustBeAFolder) {
  ProcessOptions options;
  options.workingDirectory = folder_.path();
  WriteFile(folder_ / "script.xojo_script", "Print \"one\"\n");
  for (const char *folder : {"missing", "secret.txt"}) {
    const ProcessResult result =
        RunProcess({fs::path(QUILLBAR_PROGRAM), "run", "--sandbox", folder, "script.xojo_script"}, options);
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.output, IsEmpty());
    EXPECT_THAT(result.errors, HasSubstr(std::string("--sandbox \"") + folder + "\""));
  }
}

}  // namespace
}  // namespace quillbar::test
