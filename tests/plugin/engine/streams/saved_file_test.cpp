// SPDX-License-Identifier: MIT
// A saved file is whole or absent.
#include <gmock/gmock.h>

#include <cerrno>

#ifndef _WIN32
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#endif

#include "plugin/engine/pages/page_tree.h"
#include "plugin/engine/streams/file_writer.h"
#include "tests/plugin/engine/driver/deflate_scope.h"
#include "tests/plugin/engine/driver/library_document.h"
#include "tests/plugin/engine/driver/library_path.h"
#include "tests/support/full_disk.h"
#include "tests/support/pdf_file.h"
#include "tests/support/temporary_folder.h"

namespace quillbar {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// The file that another program makes in the middle of a save.
std::filesystem::path appearing;

std::vector<std::string> NamesIn(const std::filesystem::path &folder) {
  std::vector<std::string> names;
  for (const auto &entry : std::filesystem::directory_iterator(folder))
    names.push_back(entry.path().filename().string());
  return names;
}

class SavedFile : public testing::Test {
 protected:
  HPDF_STATUS Save() { return Call<engine::SaveToFile>(document_.document, LibraryPath(path_), nullptr); }

  // More than the C library buffers, and not easily compressed.
  void DrawMuch() {
    std::uint32_t random = 1;
    Call<HPDF_Page_MoveTo>(page_, 0.0F, 0.0F);
    for (int i = 0; i < 40'000; ++i) {
      random = random * 1664525 + 1013904223;
      Call<HPDF_Page_LineTo>(page_, static_cast<float>(random >> 12) / 1000, static_cast<float>(random & 0xFFFF) / 100);
    }
    Call<HPDF_Page_Stroke>(page_);
  }

  test::TemporaryFolder folder_;
  const std::filesystem::path path_ = folder_ / "saved.pdf";
  LibraryDocument document_;
  HPDF_Page page_ = Call<engine::AddPage>(document_.document);
};

TEST_F(SavedFile, IsWhole) {
  DrawMuch();
  EXPECT_EQ(Save(), HPDF_OK);
  test::PdfFile pdf(test::ReadFile(path_));
  EXPECT_EQ(pdf.Content(0), ContentOf(page_));
  EXPECT_THAT(document_.TakeCodes(), IsEmpty());
}

// The whole file fits into the C library's buffer, so only the last flush can fail.
TEST_F(SavedFile, ASmallFileThatDoesNotFitIsAFailureAndIsRemoved) {
  {
    const test::FileSizeLimit limit(100);
    QUILLBAR_NEEDS(limit);
    EXPECT_EQ(Save(), HPDF_STATUS{HPDF_FILE_IO_ERROR});
  }
  EXPECT_THAT(document_.failures, ElementsAre(Failure{HPDF_FILE_IO_ERROR, EFBIG}));
  EXPECT_TRUE(folder_.IsEmpty());
}

TEST_F(SavedFile, ALargeFileThatDoesNotFitIsAFailureAndIsRemoved) {
  DrawMuch();
  {
    const test::FileSizeLimit limit(200'000);
    QUILLBAR_NEEDS(limit);
    EXPECT_EQ(Save(), HPDF_STATUS{HPDF_FILE_IO_ERROR});
  }
  EXPECT_THAT(document_.failures, ElementsAre(Failure{HPDF_FILE_IO_ERROR, EFBIG}));
  EXPECT_TRUE(folder_.IsEmpty());
}

// The failed write happens inside the compression, which makes an error of its own of it.
TEST_F(SavedFile, ACompressedFileThatDoesNotFitIsTheSameFailure) {
  const DeflateScope compressor;
  Call<HPDF_SetCompressionMode>(document_.document, HPDF_COMP_ALL);
  page_ = Call<engine::AddPage>(document_.document);
  DrawMuch();
  {
    const test::FileSizeLimit limit(100'000);
    QUILLBAR_NEEDS(limit);
    EXPECT_EQ(Save(), HPDF_STATUS{HPDF_FILE_IO_ERROR});
  }
  EXPECT_THAT(document_.failures, ElementsAre(Failure{HPDF_FILE_IO_ERROR, EFBIG}));
  EXPECT_TRUE(folder_.IsEmpty());
  EXPECT_EQ(Save(), HPDF_OK);
  EXPECT_EQ(test::PdfFile(test::ReadFile(path_)).Content(1), ContentOf(page_));
}

TEST_F(SavedFile, TheNextSaveAfterAFailureIsWhole) {
  DrawMuch();
  {
    const test::FileSizeLimit limit(200'000);
    QUILLBAR_NEEDS(limit);
    EXPECT_NE(Save(), HPDF_OK);
  }
  document_.TakeCodes();
  EXPECT_EQ(Save(), HPDF_OK);
  EXPECT_THAT(document_.TakeCodes(), IsEmpty());
  EXPECT_EQ(test::PdfFile(test::ReadFile(path_)).Content(0), ContentOf(page_));
}

TEST_F(SavedFile, AFullDiskIsAFailureAndLeavesNothing) {
  const std::filesystem::path disk = folder_ / "disk";
  const test::SmallDisk mounted(disk);
  QUILLBAR_NEEDS(mounted);
  DrawMuch();
  EXPECT_EQ(Call<engine::SaveToFile>(document_.document, LibraryPath(disk / "a.pdf"), nullptr),
            HPDF_STATUS{HPDF_FILE_IO_ERROR});
  EXPECT_THAT(document_.failures, ElementsAre(Failure{HPDF_FILE_IO_ERROR, ENOSPC}));
  EXPECT_TRUE(std::filesystem::is_empty(disk));
}

TEST_F(SavedFile, ASaveThatFailsInsideTheLibraryLeavesNothing) {
  Call<HPDF_SetCompressionMode>(document_.document, HPDF_COMP_ALL);
  page_ = Call<engine::AddPage>(document_.document);
  Call<HPDF_Page_Rectangle>(page_, 1.0F, 2.0F, 3.0F, 4.0F);
  EXPECT_EQ(Save(), HPDF_STATUS{HPDF_ZLIB_ERROR});
  EXPECT_THAT(document_.TakeCodes(), ElementsAre(HPDF_ZLIB_ERROR));
  EXPECT_TRUE(folder_.IsEmpty());
}

// An object that the library cannot write, refused with a bare status.
TEST_F(SavedFile, ASaveThatEndsWithABareStatusIsAFailureAndLeavesNothing) {
  HPDF_Dict object = HPDF_Dict_New(document_.document->mmgr);
  ASSERT_EQ(HPDF_Xref_Add(document_.document->xref, object), HPDF_OK);
  const HPDF_UINT16 whole = object->header.obj_class;
  object->header.obj_class = HPDF_OCLASS_UNKNOWN;
  EXPECT_EQ(Save(), HPDF_STATUS{HPDF_ERR_UNKNOWN_CLASS});
  EXPECT_THAT(document_.TakeCodes(), ElementsAre(HPDF_ERR_UNKNOWN_CLASS));
  EXPECT_TRUE(folder_.IsEmpty());
  object->header.obj_class = whole;
  EXPECT_EQ(Save(), HPDF_OK);
}

TEST_F(SavedFile, KeepsAFileThatIsThereAlready) {
  test::WriteFile(path_, "somebody else's");
  EXPECT_EQ(Save(), HPDF_STATUS{HPDF_FILE_OPEN_ERROR});
  EXPECT_THAT(document_.failures, ElementsAre(Failure{HPDF_FILE_OPEN_ERROR, EEXIST}));
  EXPECT_EQ(test::ReadFile(path_), "somebody else's");
  EXPECT_THAT(NamesIn(folder_.path()), ElementsAre("saved.pdf"));
}

TEST_F(SavedFile, KeepsAFileThatAppearsWhileItIsWritten) {
  const DeflateScope compressor(
      [](z_stream *stream, int level, const char *version, int size) {
        if (!std::filesystem::exists(appearing)) test::WriteFile(appearing, "somebody else's");
        return deflateInit_(stream, level, version, size);
      },
      &deflate, &deflateEnd);
  appearing = path_;
  Call<HPDF_SetCompressionMode>(document_.document, HPDF_COMP_ALL);
  Call<engine::AddPage>(document_.document);
  EXPECT_EQ(Save(), HPDF_STATUS{HPDF_FILE_IO_ERROR});
  EXPECT_THAT(document_.failures, ElementsAre(Failure{HPDF_FILE_IO_ERROR, EEXIST}));
  EXPECT_EQ(test::ReadFile(path_), "somebody else's");
  EXPECT_THAT(NamesIn(folder_.path()), ElementsAre("saved.pdf"));
}

// The system ends the process at the very byte.
TEST_F(SavedFile, IsAbsentWhenASignalEndsTheProcessInTheMiddle) {
#ifdef _WIN32
  GTEST_SKIP() << "signals do not end processes here";
#else
  DrawMuch();
  for (const rlim_t limit : {rlim_t{1}, rlim_t{70'000}, rlim_t{400'000}}) {
    SCOPED_TRACE(limit);
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
      const rlimit noDump{}, size{limit, limit};
      setrlimit(RLIMIT_CORE, &noDump);
      std::signal(SIGXFSZ, SIG_DFL);
      setrlimit(RLIMIT_FSIZE, &size);
      Save();
      _exit(0);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status)) << "the file was not written to its end";
    EXPECT_FALSE(std::filesystem::exists(path_));
  }
  EXPECT_EQ(Save(), HPDF_OK);
  EXPECT_EQ(test::PdfFile(test::ReadFile(path_)).Content(0), ContentOf(page_));
#endif
}

// A device that is always full: what it names is no file of ours.
TEST_F(SavedFile, ADeviceIsWrittenDirectly) {
#ifdef _WIN32
  EXPECT_EQ(Call<engine::SaveToFile>(document_.document, LibraryPath(std::u16string(u"NUL")), nullptr), HPDF_OK);
#else
  const LibraryPath full(std::u16string(u"/dev/full"));
  EXPECT_EQ(Call<engine::SaveToFile>(document_.document, full, nullptr), HPDF_STATUS{HPDF_FILE_IO_ERROR});
  EXPECT_THAT(document_.failures, ElementsAre(Failure{HPDF_FILE_IO_ERROR, ENOSPC}));
  EXPECT_TRUE(std::filesystem::is_character_file("/dev/full"));
#endif
}

TEST_F(SavedFile, APipeIsWrittenDirectly) {
#ifdef _WIN32
  GTEST_SKIP() << "pipes of Windows do not lie in folders";
#else
  ASSERT_EQ(mkfifo(path_.c_str(), 0600), 0);
  const int reader = open(path_.c_str(), O_RDONLY | O_NONBLOCK);
  ASSERT_GE(reader, 0);
  EXPECT_EQ(Save(), HPDF_OK);
  std::string bytes(1 << 16, '\0');
  const ssize_t size = read(reader, bytes.data(), bytes.size());
  close(reader);
  ASSERT_GT(size, 0);
  bytes.resize(static_cast<std::size_t>(size));
  EXPECT_TRUE(test::PdfFile(bytes).IsOpen());
  EXPECT_TRUE(std::filesystem::is_fifo(path_));
#endif
}

// A pipe whose reader has gone: writing fails, and what the path names is no file of ours.
TEST_F(SavedFile, WhatIsNoRegularFileIsNotRemoved) {
#ifdef _WIN32
  GTEST_SKIP() << "pipes of Windows do not lie in folders, so none could be removed";
#else
  std::signal(SIGPIPE, SIG_IGN);
  ASSERT_EQ(mkfifo(path_.c_str(), 0600), 0);
  const int reader = open(path_.c_str(), O_RDONLY | O_NONBLOCK);
  ASSERT_GE(reader, 0);
  HPDF_Stream stream = engine::NewFileWriter(document_.document->mmgr, LibraryPath(path_));
  ASSERT_NE(stream, nullptr);
  HPDF_Stream_WriteStr(stream, "text");
  close(reader);
  EXPECT_EQ(engine::EndFile(stream, HPDF_OK), HPDF_STATUS{HPDF_FILE_IO_ERROR});
  EXPECT_EQ(document_.document->error.error_no, HPDF_STATUS{HPDF_FILE_IO_ERROR});
  EXPECT_EQ(document_.document->error.detail_no, HPDF_STATUS{EPIPE});
  EXPECT_TRUE(std::filesystem::exists(path_));
#endif
}

TEST_F(SavedFile, IsNotWrittenToAnyMoreOnceAWriteFailed) {
#ifdef _WIN32
  GTEST_SKIP() << "Windows has no device that is always full";
#endif
  const char *const fullDevice = "/dev/full";
  if (!std::filesystem::exists(fullDevice)) GTEST_SKIP() << "this system has no device that is always full";
  const HPDF_Stream stream = engine::NewFileWriter(document_.document->mmgr, LibraryPath(fullDevice));
  ASSERT_NE(stream, nullptr);
  const std::vector<HPDF_BYTE> bytes(200'000, 'x');
  const auto size = static_cast<HPDF_UINT>(bytes.size());
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(HPDF_Stream_Write(stream, bytes.data(), size), HPDF_STATUS{HPDF_FILE_IO_ERROR});
    EXPECT_EQ(document_.document->error.detail_no, HPDF_STATUS{ENOSPC});
    HPDF_ResetError(document_.document);
  }
  EXPECT_EQ(engine::EndFile(stream, HPDF_OK), HPDF_STATUS{HPDF_FILE_IO_ERROR});
  HPDF_ResetError(document_.document);
}

}  // namespace
}  // namespace quillbar
