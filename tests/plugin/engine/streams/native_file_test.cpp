// SPDX-License-Identifier: MIT
// Files are opened by UTF-16 paths.
#include "plugin/engine/streams/native_file.h"
#include "plugin/engine/pages/page_tree.h"

#include <gmock/gmock.h>

#include <cerrno>
#include <cstring>

#include "plugin/engine/fonts/document_fonts.h"
#include "tests/plugin/engine/driver/library_document.h"
#include "tests/plugin/engine/driver/library_path.h"
#include "tests/support/system_error.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/unwritable_folder.h"

namespace quillbar {
namespace {

using testing::ElementsAre;
using testing::StartsWith;

class NativeFile : public testing::Test {
 protected:
  // Saves to a path that cannot be opened and returns the failure's detail, the platform's error number.
  int DetailOfRefusedSave(const LibraryPath &path) {
    EXPECT_EQ(Call<engine::SaveToFile>(document_.document, path, nullptr), HPDF_STATUS{HPDF_FILE_OPEN_ERROR});
    EXPECT_EQ(document_.failures.size(), 1U);
    if (document_.failures.empty()) return 0;
    EXPECT_EQ(document_.failures[0].code, HPDF_STATUS{0x1017});
    const int detail = static_cast<int>(document_.failures[0].detail);
    document_.failures.clear();
    return detail;
  }

  test::TemporaryFolder folder_;
  LibraryDocument document_;
  HPDF_Page page_ = Call<engine::AddPage>(document_.document);
};

TEST_F(NativeFile, AnyCharacterMayStandInAPath) {
  const std::filesystem::path path = folder_ / "Grüße 日本 \U0001F58B.pdf";
  EXPECT_EQ(Call<engine::SaveToFile>(document_.document, LibraryPath(path), nullptr), HPDF_OK);
  EXPECT_THAT(test::ReadFile(path), StartsWith("%PDF-"));
}

TEST_F(NativeFile, ThePathMayLieOnAnOddAddress) {
  const std::filesystem::path path = folder_ / "odd.pdf";
  const std::u16string text = path.u16string();
  std::vector<char> bytes(1 + (text.size() + 1) * 2);
  std::memcpy(bytes.data() + 1, text.c_str(), (text.size() + 1) * 2);
  EXPECT_EQ(Call<engine::SaveToFile>(document_.document, bytes.data() + 1, nullptr), HPDF_OK);
  EXPECT_TRUE(std::filesystem::exists(path));
}

TEST_F(NativeFile, APathThatIsNoTextIsRefused) {
#ifdef _WIN32
  GTEST_SKIP() << "names of Windows are UTF-16 as they stand, text or not";
#endif
  EXPECT_EQ(DetailOfRefusedSave(LibraryPath((folder_ / "a").u16string() + char16_t{0xD800} + u"b")), EILSEQ);
  EXPECT_EQ(DetailOfRefusedSave(LibraryPath((folder_ / "a").u16string() + char16_t{0xDC00})), EILSEQ);
  EXPECT_TRUE(folder_.IsEmpty());
}

TEST_F(NativeFile, NoPathIsRefused) {
  EXPECT_EQ(Call<engine::SaveToFile>(document_.document, nullptr, nullptr), HPDF_STATUS{HPDF_FILE_OPEN_ERROR});
  EXPECT_THAT(document_.TakeCodes(), ElementsAre(HPDF_FILE_OPEN_ERROR));
  EXPECT_EQ(DetailOfRefusedSave(LibraryPath(std::u16string())), ENOENT);
}

TEST_F(NativeFile, AMissingFolderIsReportedWithThePlatformsErrorNumber) {
  EXPECT_EQ(DetailOfRefusedSave(LibraryPath(folder_ / "missing" / "a.pdf")), ENOENT);
}

TEST_F(NativeFile, AFolderInPlaceOfAFileIsReportedWithThePlatformsErrorNumber) {
  EXPECT_EQ(DetailOfRefusedSave(LibraryPath(folder_.path())), test::system_error::kFolder);
  EXPECT_TRUE(std::filesystem::is_directory(folder_.path()));
}

TEST_F(NativeFile, AnUnwritableFolderIsReportedWithThePlatformsErrorNumber) {
  {
    const test::UnwritableFolder locked(folder_.path());
    if (!locked.IsInForce()) GTEST_SKIP() << "this user may write everywhere";
    EXPECT_EQ(DetailOfRefusedSave(LibraryPath(folder_ / "a.pdf")), EACCES);
  }
  EXPECT_TRUE(folder_.IsEmpty());
}

TEST_F(NativeFile, FilesAreReadByUtf16PathsToo) {
  const std::filesystem::path path = folder_ / "Schrift ü.bin";
  test::WriteFile(path, "font data");
  HPDF_Stream stream = HPDF_FileReader_New(document_.document->mmgr, LibraryPath(path));
  ASSERT_NE(stream, nullptr);
  char bytes[9];
  HPDF_UINT size = sizeof bytes;
  EXPECT_EQ(HPDF_Stream_Read(stream, reinterpret_cast<HPDF_BYTE *>(bytes), &size), HPDF_OK);
  EXPECT_EQ(std::string(bytes, size), "font data");
  HPDF_Stream_Free(stream);
}

TEST_F(NativeFile, AFontFileThatCannotBeOpenedIsReported) {
  EXPECT_EQ(Call<engine::LoadTrueTypeFont>(document_.document, LibraryPath(folder_ / "no.ttf")), nullptr);
  EXPECT_THAT(document_.failures, ElementsAre(Failure{HPDF_FILE_OPEN_ERROR, ENOENT}));
}

TEST_F(NativeFile, AFontFileThatCannotBeReadIsReported) {
#ifdef _WIN32
  GTEST_SKIP() << "Windows has no file whose first bytes can't be read";
#endif
  const char *const unreadable = "/proc/self/mem";
  if (!std::filesystem::exists(unreadable)) GTEST_SKIP() << "this system has no file whose first bytes can't be read";
  EXPECT_EQ(Call<engine::LoadTrueTypeFont>(document_.document, LibraryPath(unreadable)), nullptr);
  EXPECT_THAT(document_.TakeCodes(), ElementsAre(HPDF_FILE_IO_ERROR));
  const LibraryPath metrics(unreadable), program(unreadable);
  EXPECT_EQ(Call<engine::LoadType1Font>(document_.document, metrics, program), nullptr);
  EXPECT_THAT(document_.TakeCodes(), ElementsAre(HPDF_FILE_IO_ERROR));
}

TEST_F(NativeFile, AFontFileWhosePathIsNoTextIsReported) {
#ifdef _WIN32
  GTEST_SKIP() << "names of Windows are UTF-16 as they stand, text or not";
#endif
  const LibraryPath path((folder_ / "a").u16string() + char16_t{0xD800} + u"b");
  EXPECT_EQ(Call<engine::LoadTrueTypeFont>(document_.document, path), nullptr);
  EXPECT_THAT(document_.failures, ElementsAre(Failure{HPDF_FILE_OPEN_ERROR, EILSEQ}));
}

}  // namespace
}  // namespace quillbar
