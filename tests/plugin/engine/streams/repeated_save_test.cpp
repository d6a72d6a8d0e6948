// SPDX-License-Identifier: MIT
// A document is saved any number of times, into memory and into files, and each save is whole.
#include <gmock/gmock.h>

#include "plugin/engine/pages/page_tree.h"
#include "plugin/engine/security/encryption_mode.h"
#include "tests/plugin/engine/driver/deflate_scope.h"
#include "tests/plugin/engine/driver/library_document.h"
#include "tests/plugin/engine/driver/library_path.h"
#include "tests/support/pdf_file.h"
#include "tests/support/temporary_folder.h"

namespace quillbar {
namespace {

using testing::IsEmpty;

struct Kind {
  const char *name;
  bool compressed;
  HPDF_UINT keyLength;
};

void PrintTo(const Kind &kind, std::ostream *out) { *out << kind.name; }

class RepeatedSave : public testing::TestWithParam<Kind> {
 protected:
  RepeatedSave() {
    if (GetParam().compressed) Call<HPDF_SetCompressionMode>(document_.document, HPDF_COMP_ALL);
    if (GetParam().keyLength != 0) {
      Call<HPDF_SetPassword>(document_.document, "owner", "user");
      Call<engine::SetEncryptionMode>(document_.document, HPDF_ENCRYPT_R3, GetParam().keyLength);
    }
    Call<HPDF_SetInfoAttr>(document_.document, HPDF_INFO_TITLE, "Saved often");
  }

  // One page more, of more than a buffer.
  void AddPage() {
    HPDF_Page page = Call<engine::AddPage>(document_.document);
    for (int i = 0; i < 500; ++i) {
      Call<HPDF_Page_Rectangle>(page, static_cast<float>(i), static_cast<float>(pages_.size()), 10.5F, 20.25F);
    }
    Call<HPDF_Page_Fill>(page);
    pages_.push_back(page);
  }

  void ExpectWhole(std::string bytes) {
    ASSERT_NE(bytes, "");
    test::PdfFile pdf(std::move(bytes), GetParam().keyLength != 0 ? "user" : nullptr);
    ASSERT_EQ(pdf.PageCount(), pages_.size());
    for (std::size_t i = 0; i < pages_.size(); ++i) EXPECT_EQ(pdf.Content(i), ContentOf(pages_[i]));
    EXPECT_EQ(pdf.qpdf().getTrailer().getKey("/Info").getKey("/Title").getUTF8Value(), "Saved often");
    EXPECT_THAT(document_.TakeCodes(), IsEmpty());
  }

  void SaveToFile() {
    const std::filesystem::path path = folder_ / "saved.pdf";
    EXPECT_EQ(Call<engine::SaveToFile>(document_.document, LibraryPath(path), nullptr), HPDF_OK);
    ExpectWhole(test::ReadFile(path));
    std::filesystem::remove(path);
  }

  const DeflateScope compressor_;
  test::TemporaryFolder folder_;
  LibraryDocument document_;
  std::vector<HPDF_Page> pages_;
};

TEST_P(RepeatedSave, IntoMemoryAndFilesInAnyOrder) {
  for (int round = 0; round < 3; ++round) {
    AddPage();
    ExpectWhole(document_.SaveToString());
    ExpectWhole(document_.SaveToString());
    SaveToFile();
    AddPage();
    SaveToFile();
    ExpectWhole(document_.SaveToString());
  }
}

TEST_P(RepeatedSave, ThoughNobodyReadTheOneBefore) {
  AddPage();
  EXPECT_EQ(Call<engine::SaveToMemory>(document_.document), HPDF_OK);
  AddPage();
  ExpectWhole(document_.SaveToString());
}

TEST_P(RepeatedSave, ThoughTheOneBeforeWasReadInPart) {
  AddPage();
  EXPECT_EQ(Call<engine::SaveToMemory>(document_.document), HPDF_OK);
  HPDF_BYTE some[500];
  HPDF_UINT32 size = sizeof some;
  EXPECT_EQ(Call<HPDF_ReadFromStream>(document_.document, some, &size), HPDF_OK);
  AddPage();
  ExpectWhole(document_.SaveToString());
}

INSTANTIATE_TEST_SUITE_P(Kinds, RepeatedSave,
                         testing::Values(Kind{"Plain", false, 0}, Kind{"Compressed", true, 0},
                                         Kind{"Encrypted", false, 16}, Kind{"CompressedAndEncrypted", true, 5}),
                         [](const auto &test) { return test.param.name; });

}  // namespace
}  // namespace quillbar
