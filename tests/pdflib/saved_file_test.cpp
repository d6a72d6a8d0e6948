// A saved file is whole or absent.
#include <gmock/gmock.h>

#include <cerrno>

#ifndef _WIN32
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#endif

#include "tests/pdflib/deflate_scope.h"
#include "tests/pdflib/library_document.h"
#include "tests/pdflib/library_path.h"
#include "tests/support/full_disk.h"
#include "tests/support/pdf_file.h"
#include "tests/support/temporary_folder.h"

namespace quillbar {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class SavedFile : public testing::Test {
 protected:
  HPDF_STATUS Save() { return Call<HPDF_SaveToFile>(document_.document, LibraryPath(path_)); }

  // More than the C library buffers, and not easily compressed.
  void DrawMuch() {
    std::uint32_t random = 1;
    Call<HPDF_Page_MoveTo>(page_, 0.0F, 0.0F);
    for (int i = 0; i < 40'000; ++i) {
      random = random * 1664525 + 1013904223;
      Call<HPDF_Page_LineTo>(page_, static_cast<float>(random >> 12) / 1000,
                             static_cast<float>(random & 0xFFFF) / 100);
    }
    Call<HPDF_Page_Stroke>(page_);
  }

  test::TemporaryFolder folder_;
  const std::filesystem::path path_ = folder_ / "saved.pdf";
  LibraryDocument document_;
  HPDF_Page page_ = Call<HPDF_AddPage>(document_.document);
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
  page_ = Call<HPDF_AddPage>(document_.document);
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
  EXPECT_EQ(Call<HPDF_SaveToFile>(document_.document, LibraryPath(disk / "a.pdf")),
            HPDF_STATUS{HPDF_FILE_IO_ERROR});
  EXPECT_THAT(document_.failures, ElementsAre(Failure{HPDF_FILE_IO_ERROR, ENOSPC}));
  EXPECT_TRUE(std::filesystem::is_empty(disk));
}

TEST_F(SavedFile, ASaveThatFailsInsideTheLibraryLeavesNothing) {
  Call<HPDF_SetCompressionMode>(document_.document, HPDF_COMP_ALL);
  page_ = Call<HPDF_AddPage>(document_.document);
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

// A pipe whose reader has gone: writing fails, and what the path names is no file of ours.
TEST_F(SavedFile, WhatIsNoRegularFileIsNotRemoved) {
#ifdef _WIN32
  GTEST_SKIP() << "pipes of Windows do not lie in folders, so none could be removed";
#else
  std::signal(SIGPIPE, SIG_IGN);
  ASSERT_EQ(mkfifo(path_.c_str(), 0600), 0);
  const int reader = open(path_.c_str(), O_RDONLY | O_NONBLOCK);
  ASSERT_GE(reader, 0);
  HPDF_Stream stream = HPDF_FileWriter_New(document_.document->mmgr, LibraryPath(path_));
  ASSERT_NE(stream, nullptr);
  HPDF_Stream_WriteStr(stream, "text");
  close(reader);
  HPDF_Stream_Free(stream);
  EXPECT_EQ(document_.document->error.error_no, HPDF_STATUS{HPDF_FILE_IO_ERROR});
  EXPECT_EQ(document_.document->error.detail_no, HPDF_STATUS{EPIPE});
  EXPECT_TRUE(std::filesystem::exists(path_));
#endif
}

}  // namespace
}  // namespace quillbar
