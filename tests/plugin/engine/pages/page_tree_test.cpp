// SPDX-License-Identifier: MIT
// Page trees of any size.
#include <gmock/gmock.h>

#include "plugin/engine/pages/page_tree.h"
#include "tests/plugin/engine/driver/failing_allocation.h"
#include "tests/plugin/engine/driver/library_document.h"
#include "tests/support/pdf_file.h"
#include "tests/support/process.h"
#include "tests/support/sample.h"
#include "tests/support/temporary_folder.h"

namespace quillbar {
namespace {

using testing::AllOf;
using testing::ContainsRegex;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr int kFlat = 32'767;

class PageTree : public testing::Test {
 protected:
  void AddPages(int count) {
    for (; count > 0; --count) {
      const HPDF_Page page = Call<engine::AddPage>(document_.document);
      ASSERT_NE(page, nullptr) << "after " << added_;
      ++added_;
      // Widths that tell some pages from their neighbours.
      Call<HPDF_Page_SetWidth>(page, static_cast<float>(100 + added_ % 1000));
    }
  }

  static float WidthOf(int page) { return static_cast<float>(100 + page % 1000); }

  LibraryDocument document_;
  int added_ = 0;
};

HPDF_Array KidsOf(HPDF_Dict node) {
  return static_cast<HPDF_Array>(HPDF_Dict_GetItem(node, "Kids", HPDF_OCLASS_ARRAY));
}

QPDFObjectHandle RootOf(QPDF &file) { return file.getRoot().getKey("/Pages"); }

TEST_F(PageTree, IsFlatAsLongAsOneArrayHoldsIt) {
  AddPages(kFlat);
  const std::string bytes = document_.SaveToString();
  QPDF file;
  file.processMemoryFile("file", bytes.data(), bytes.size());
  QPDFObjectHandle root = RootOf(file);
  EXPECT_EQ(root.getKey("/Count").getIntValue(), kFlat);
  ASSERT_EQ(root.getKey("/Kids").getArrayNItems(), kFlat);
  for (const int page : {1, kFlat / 2, kFlat}) {
    QPDFObjectHandle kid = root.getKey("/Kids").getArrayItem(page - 1);
    EXPECT_EQ(kid.getKey("/Type").getName(), "/Page");
    EXPECT_EQ(kid.getKey("/Parent").getObjGen(), root.getObjGen());
  }
  EXPECT_THAT(document_.TakeCodes(), IsEmpty());
}

TEST_F(PageTree, HasFurtherNodesBeyondThat) {
  AddPages(kFlat);
  const HPDF_Page last = Call<HPDF_GetCurrentPage>(document_.document);
  AddPages(1);
  // A page that has moved works on as before.
  Call<HPDF_Page_SetHeight>(last, 777.0F);
  EXPECT_EQ(Call<HPDF_Page_GetHeight>(last), 777.0F);
  AddPages(1);
  EXPECT_THAT(document_.TakeCodes(), IsEmpty());

  const test::TemporaryFolder folder;
  test::WriteFile(folder / "file.pdf", document_.SaveToString());
  QPDF file;
  file.processFile((folder / "file.pdf").string().c_str());
  QPDFObjectHandle root = RootOf(file);
  EXPECT_EQ(root.getKey("/Count").getIntValue(), kFlat + 2);
  ASSERT_EQ(root.getKey("/Kids").getArrayNItems(), 2);
  int before = 0;
  for (const int count : {kFlat, 2}) {
    QPDFObjectHandle node = root.getKey("/Kids").getArrayItem(before / kFlat);
    EXPECT_EQ(node.getKey("/Type").getName(), "/Pages");
    EXPECT_EQ(node.getKey("/Parent").getObjGen(), root.getObjGen());
    EXPECT_EQ(node.getKey("/Count").getIntValue(), count);
    ASSERT_EQ(node.getKey("/Kids").getArrayNItems(), count);
    for (const int kid : {0, 1, count / 2, count - 1}) {
      QPDFObjectHandle leaf = node.getKey("/Kids").getArrayItem(kid);
      EXPECT_EQ(leaf.getKey("/Parent").getObjGen(), node.getObjGen()) << kid;
      EXPECT_EQ(leaf.getKey("/MediaBox").getArrayItem(2).getNumericValue(), WidthOf(before + kid + 1)) << kid;
    }
    before += count;
  }

  const test::ProcessResult counted = test::RunProcess({"qpdf", "--show-npages", folder / "file.pdf"});
  EXPECT_THAT(counted.output, HasSubstr("32769")) << counted.errors;
  const test::ProcessResult shown = test::RunProcess({"pdfinfo", "-f", "32767", "-l", "32769", folder / "file.pdf"});
  EXPECT_EQ(shown.exitStatus, 0);
  EXPECT_THAT(shown.errors, IsEmpty());
  EXPECT_THAT(shown.output,
              AllOf(ContainsRegex("Pages: +32769"), ContainsRegex("Page 32767 size: +867 x 777"),
                    ContainsRegex("Page 32768 size: +868 x 841"), ContainsRegex("Page 32769 size: +869 x 841")));
}

TEST_F(PageTree, HasAsManyNodesAsItNeeds) {
  AddPages(2 * kFlat + 1);
  EXPECT_EQ(HPDF_Array_Items(KidsOf(document_.document->root_pages)), 3U);
  EXPECT_THAT(document_.TakeCodes(), IsEmpty());
}

// How many pages are in the tree below a node, or below a page, which has no kids: one.
int PagesBelow(HPDF_Dict node) {
  const HPDF_Array kids = KidsOf(node);
  if (kids == nullptr) return 1;
  int pages = 0;
  for (HPDF_UINT i = 0; i < HPDF_Array_Items(kids); ++i) {
    pages += PagesBelow(static_cast<HPDF_Dict>(HPDF_Array_GetItem(kids, i, HPDF_OCLASS_DICT)));
  }
  return pages;
}

// The page for which the tree needs further nodes, with memory that runs out at each point of it.
TEST(PageTreeShortage, LeavesTheTreeAsItWas) {
  allowed = -1;
  HPDF_Doc document = HPDF_NewEx([](HPDF_STATUS, HPDF_STATUS, void *) {}, Allocate, std::free, 0, nullptr);
  ASSERT_NE(document, nullptr);
  for (int page = 0; page < kFlat; ++page) ASSERT_NE(Call<engine::AddPage>(document), nullptr);
  long limit = 0;
  for (HPDF_Page added = nullptr; added == nullptr; ++limit) {
    ASSERT_LT(limit, 1000) << "the page is never added";
    allowed = limit;
    added = Call<engine::AddPage>(document);
    allowed = -1;
    HPDF_ResetError(document);
  }
  EXPECT_GT(limit, 10);
  ASSERT_NE(Call<engine::AddPage>(document), nullptr);
  EXPECT_EQ(PagesBelow(document->root_pages), kFlat + 2);
  std::string bytes;
  if (!test::TakesSamples()) {
    EXPECT_EQ(Call<engine::SaveToMemory>(document), HPDF_OK);
    bytes.resize(Call<HPDF_GetStreamSize>(document));
    auto size = static_cast<HPDF_UINT32>(bytes.size());
    EXPECT_EQ(Call<HPDF_ReadFromStream>(document, reinterpret_cast<HPDF_BYTE *>(bytes.data()), &size), HPDF_OK);
  }
  HPDF_Free(document);
  if (bytes.empty()) return;
  QPDF file;
  file.processMemoryFile("file", bytes.data(), bytes.size());
  EXPECT_EQ(RootOf(file).getKey("/Count").getIntValue(), kFlat + 2);
  EXPECT_EQ(file.getAllPages().size(), static_cast<std::size_t>(kFlat + 2));
}

}  // namespace
}  // namespace quillbar
