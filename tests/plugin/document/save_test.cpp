// SPDX-License-Identifier: MIT
// Save: paths, files that exist, and files that can't be written.
#include <cerrno>

#include "host/runtime/interruption.h"
#include "tests/plugin/driver/plugin_test.h"
#include "tests/support/full_disk.h"
#include "tests/support/judges.h"
#include "tests/support/system_error.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/unwritable_folder.h"

namespace quillbar::test {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;

class Save : public PluginTest {
 protected:
  // A document whose file has some hundred kilobytes.
  Document NewLargeDocument() {
    const Document document = NewDocument();
    for (int number = 0; number < 10; ++number) {
      const ScriptObject page = document.AddPage();
      page.Call("MoveTo", 0, 0);
      for (int line = 0; line < 1000; ++line) page.Call("LineTo", line, line / 3.0);
      page.Call("Draw");
    }
    return document;
  }

  TemporaryFolder folder_;
};

TEST_F(Save, WritesAFileThatReadersTake) {
  const Document document = NewLargeDocument();
  document.Call("Save", NewFolderItem(folder_ / "saved.pdf"));
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
  EXPECT_TRUE(JudgedFlawless(folder_ / "saved.pdf"));
}

TEST_F(Save, NilDoesNothing) {
  const Document document = NewLargeDocument();
  document.Call("Save", host::Value::Nil());
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
}

TEST_F(Save, ExistingFilesAndFoldersAreLeftAsTheyAreInSilence) {
  const Document document = NewLargeDocument();
  WriteFile(folder_ / "exists.pdf", "something else");
  WriteFile(folder_ / "empty.pdf", "");
  fs::create_directory(folder_ / "folder");
  const auto before = fs::last_write_time(folder_ / "exists.pdf");
  for (const char *name : {"exists.pdf", "empty.pdf", "folder"}) document.Call("Save", NewFolderItem(folder_ / name));
  EXPECT_EQ(ReadFile(folder_ / "exists.pdf"), "something else");
  EXPECT_EQ(ReadFile(folder_ / "empty.pdf"), "");
  EXPECT_TRUE(fs::is_empty(folder_ / "folder"));
  EXPECT_EQ(fs::last_write_time(folder_ / "exists.pdf"), before);
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
  EXPECT_EQ(document.LastFailure(), Failure{});
}

TEST_F(Save, SecondSaveToTheSamePathChangesNothing) {
  const Document document = NewLargeDocument();
  document.Call("Save", NewFolderItem(folder_ / "saved.pdf"));
  const std::string first = ReadFile(folder_ / "saved.pdf");
  document.AddPage();
  document.Call("Save", NewFolderItem(folder_ / "saved.pdf"));
  EXPECT_EQ(ReadFile(folder_ / "saved.pdf"), first);
}

TEST_F(Save, PathsOfAllScriptsWork) {
  const Document document = NewLargeDocument();
  const std::string expected = document.Saved();
  for (const char *name : {"Gr\u00F6\u00DFe.pdf", "\u6587\u66F8 \u0434\u043E\u043A.pdf", "\U0001F388 balloon.pdf",
                           "with spaces & (brackets) 100%.pdf", "no extension"}) {
    document.Call("Save", NewFolderItem(folder_ / name));
    ASSERT_TRUE(fs::exists(folder_ / name)) << name;
    EXPECT_EQ(ReadFile(folder_ / name), expected);
  }
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
}

TEST_F(Save, MissingFolderIsAFileOpenErrorWithTheSystemsNumber) {
  const Document document = NewLargeDocument();
  document.Call("Save", NewFolderItem(folder_.path() / "missing" / "saved.pdf"));
  EXPECT_THAT(document.TakeFailures(), ElementsAre(Failure{library_error::kFileOpenError, ENOENT}));
  EXPECT_EQ(document.LastFailure(), (Failure{library_error::kFileOpenError, ENOENT}));
  WriteFile(folder_ / "file", "");
  document.Call("Save", NewFolderItem(folder_.path() / "file" / "saved.pdf"));
  EXPECT_THAT(document.TakeFailures(), ElementsAre(Failure{library_error::kFileOpenError, system_error::kBelowAFile}));
  EXPECT_TRUE(PdfFile(document.Saved()).IsOpen());
}

TEST_F(Save, NameThatTheSystemRefusesIsAFileOpenError) {
  const Document document = NewLargeDocument();
  document.Call("Save", NewFolderItem(folder_ / (std::string(300, 'x') + ".pdf")));
  EXPECT_THAT(document.TakeFailures(), ElementsAre(Failure{library_error::kFileOpenError, system_error::kNameTooLong}));
}

TEST_F(Save, UnwritableFolderIsAFileOpenError) {
  const fs::path folder = folder_ / "locked";
  fs::create_directory(folder);
  const Document document = NewLargeDocument();
  {
    const UnwritableFolder locked(folder);
    if (!locked.IsInForce()) GTEST_SKIP() << "this user may write everywhere";
    document.Call("Save", NewFolderItem(folder / "saved.pdf"));
  }
  EXPECT_THAT(document.TakeFailures(), ElementsAre(Failure{library_error::kFileOpenError, EACCES}));
  EXPECT_TRUE(fs::is_empty(folder));
}

TEST_F(Save, WriteThatFailsAnywhereIsReportedOnceAndLeavesNoFile) {
  const Document document = NewLargeDocument();
  const std::string expected = document.Saved();
  const fs::path file = folder_ / "saved.pdf";
  // The last bytes are written when the file is closed, so that failure counts too.
  for (const std::size_t limit : {std::size_t{0}, std::size_t{1}, std::size_t{4096}, expected.size() / 2,
                                  expected.size() - 5000, expected.size() - 1}) {
    SCOPED_TRACE(limit);
    {
      const FileSizeLimit full(limit);
      QUILLBAR_NEEDS(full);
      document.Call("Save", NewFolderItem(file));
    }
    const std::vector<Failure> failures = document.TakeFailures();
    ASSERT_EQ(failures.size(), 1U);
    EXPECT_EQ(failures[0], (Failure{library_error::kFileIoError, EFBIG}));
    EXPECT_EQ(document.LastFailure(), failures[0]);
    EXPECT_FALSE(fs::exists(file));
    EXPECT_TRUE(fs::is_empty(folder_.path()));
  }
  {
    const FileSizeLimit enough(expected.size());
    document.Call("Save", NewFolderItem(file));
  }
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
  EXPECT_EQ(ReadFile(file), expected);
}

// A host that is told how far a save is.
class SaveProgress : public Save {
 protected:
  void SetUp() override {
    host::HostOptions options;
    options.progress = [this](std::uint32_t done, std::uint32_t total) {
      reports_.emplace_back(done, total);
      if (reports_.size() == interruptedAt_) host::Interruption::Request(2);
    };
    StartHost({QUILLBAR_COMPANION_FILE, QUILLBAR_PLUGIN_FILE}, options);
  }
  void TearDown() override {
    host::Interruption::Clear();
    Save::TearDown();
  }

  std::vector<std::pair<std::uint32_t, std::uint32_t>> reports_;
  std::size_t interruptedAt_ = 0;
};

TEST_F(SaveProgress, IsReportedUpToTheEnd) {
  const Document document = NewLargeDocument();
  document.Call("Save", NewFolderItem(folder_ / "saved.pdf"));
  ASSERT_GT(reports_.size(), 20U) << "ten pages and their contents";
  EXPECT_EQ(reports_.back(), (std::pair<std::uint32_t, std::uint32_t>(0, 0))) << "the end of the call";
  reports_.pop_back();
  for (std::size_t i = 0; i < reports_.size(); ++i) EXPECT_EQ(reports_[i].first, i + 1);
  EXPECT_EQ(reports_.back().first, reports_.back().second);
  EXPECT_EQ(PdfFile(ReadFile(folder_ / "saved.pdf")).PageCount(), 10U);
}

TEST_F(SaveProgress, InterruptionGivesTheSaveUpAndLeavesNoFile) {
  const Document document = NewLargeDocument();
  interruptedAt_ = 5;
  document.Call("Save", NewFolderItem(folder_ / "saved.pdf"));
  EXPECT_EQ(reports_.size(), 6U) << "the fifth, and the end of the call";
  EXPECT_THAT(document.TakeFailures(), ElementsAre(Failure{library_error::kFileIoError, ECANCELED}));
  EXPECT_TRUE(fs::is_empty(folder_.path()));
  host::Interruption::Clear();
  document.Call("Save", NewFolderItem(folder_ / "saved.pdf"));
  EXPECT_TRUE(JudgedFlawless(folder_ / "saved.pdf"));
}

TEST_F(Save, FullDiskIsReportedAndLeavesNoFile) {
  const SmallDisk disk(folder_ / "disk");
  QUILLBAR_NEEDS(disk);
  const fs::path file = folder_.path() / "disk" / "saved.pdf";
  const Document large = NewLargeDocument();
  large.Call("Save", NewFolderItem(file));
  EXPECT_THAT(large.TakeFailures(), ElementsAre(Failure{library_error::kFileIoError, ENOSPC}));
  EXPECT_FALSE(fs::exists(file));
  const Document small = NewDocument();
  small.AddPage();
  small.Call("Save", NewFolderItem(file));
  EXPECT_THAT(small.TakeFailures(), IsEmpty());
  EXPECT_TRUE(fs::exists(file));
}

}  // namespace
}  // namespace quillbar::test
