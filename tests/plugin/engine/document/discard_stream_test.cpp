// SPDX-License-Identifier: MIT
// A stream that could not be filled goes without a trace. The sanitizers watch what is freed, and when.
#include "plugin/engine/document/discard_stream.h"

#include <hpdf_utils.h>

#include "plugin/engine/pages/page_tree.h"
#include "tests/plugin/engine/driver/library_document.h"
#include "tests/support/pdf_file.h"

namespace quillbar {
namespace {

class DiscardedStream : public testing::Test {
 protected:
  HPDF_Doc document() const { return document_.document; }
  HPDF_UINT ObjectCount() const { return document()->xref->entries->count; }
  HPDF_Dict NewStream() const { return Call<HPDF_DictStream_New>(document()->mmgr, document()->xref); }

  LibraryDocument document_;
};

TEST_F(DiscardedStream, LeavesTheObjectsThatWereThereBefore) {
  const HPDF_UINT before = ObjectCount();
  HPDF_Dict stream = NewStream();
  ASSERT_NE(stream, nullptr);
  EXPECT_EQ(ObjectCount(), before + 2);
  engine::DiscardStream(document(), stream);
  EXPECT_EQ(ObjectCount(), before);
}

TEST_F(DiscardedStream, GivesItsNumbersToTheObjectsThatFollow) {
  engine::DiscardStream(document(), NewStream());
  ASSERT_NE(Call<engine::AddPage>(document()), nullptr);
  const test::PdfFile file(document_.SaveToString());
  ASSERT_TRUE(file.IsOpen());
  EXPECT_EQ(file.PageCount(), 1U);
}

TEST_F(DiscardedStream, StaysWhenItIsNoLongerTheLastOne) {
  HPDF_Dict stream = NewStream();
  ASSERT_NE(Call<engine::AddPage>(document()), nullptr);
  const HPDF_UINT before = ObjectCount();
  engine::DiscardStream(document(), stream);
  EXPECT_EQ(ObjectCount(), before);
  EXPECT_EQ(test::PdfFile(document_.SaveToString()).PageCount(), 1U);
}

}  // namespace
}  // namespace quillbar
