// SPDX-License-Identifier: MIT
// Images on a page: one that is refused leaves no saved state, and each is listed once.
#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "plugin/engine/pages/page_tree.h"
#include "tests/plugin/engine/driver/library_document.h"
#include "tests/plugin/engine/driver/small_image.h"

namespace quillbar {
namespace {

using testing::ElementsAre;

class DrawImage : public testing::Test {
 protected:
  LibraryDocument document_;
  HPDF_Page page_ = Call<engine::AddPage>(document_.document);
};

TEST_F(DrawImage, ImageAtTheDeepestSavedStateIsRefusedWhole) {
  HPDF_Image image = SmallImage(document_.document);
  while (Call<HPDF_Page_GetGStateDepth>(page_) < HPDF_LIMIT_MAX_GSTATE) {
    ASSERT_EQ(Call<HPDF_Page_GSave>(page_), HPDF_OK);
  }
  const std::string before = ContentOf(page_);
  EXPECT_EQ(Call<HPDF_Page_DrawImage>(page_, image, 1, 2, 3, 4), HPDF_STATUS{HPDF_EXCEED_GSTATE_LIMIT});
  EXPECT_THAT(document_.TakeCodes(), ElementsAre(HPDF_EXCEED_GSTATE_LIMIT));
  EXPECT_EQ(ContentOf(page_), before);
  EXPECT_EQ(Call<HPDF_Page_GetGStateDepth>(page_), HPDF_UINT{HPDF_LIMIT_MAX_GSTATE});

  EXPECT_EQ(Call<HPDF_Page_GRestore>(page_), HPDF_OK);
  EXPECT_EQ(Call<HPDF_Page_DrawImage>(page_, image, 1, 2, 3, 4), HPDF_OK);
  EXPECT_THAT(ContentOf(page_), testing::EndsWith("Q\nq\n3 0 0 4 1 2 cm\n/X1 Do\nQ\n"));
}

TEST_F(DrawImage, ImageOfAnotherLibraryDocumentLeavesNoSavedState) {
  LibraryDocument other;
  HPDF_Image image = SmallImage(other.document);
  EXPECT_EQ(Call<HPDF_Page_DrawImage>(page_, image, 1, 2, 3, 4), HPDF_STATUS{HPDF_PAGE_INVALID_XOBJECT});
  EXPECT_EQ(Call<HPDF_Page_DrawImage>(page_, nullptr, 1, 2, 3, 4), HPDF_STATUS{HPDF_INVALID_OBJECT});
  EXPECT_EQ(ContentOf(page_), "");
  EXPECT_EQ(Call<HPDF_Page_GetGStateDepth>(page_), 1U);
}

// Each has a name of its own, by which it is called again, up to the limit of a dictionary.
TEST_F(DrawImage, ManyImagesOfAPageAreListedOnceUpToTheLimit) {
  const auto draw = [&](HPDF_Image image) { return Call<HPDF_Page_DrawImage>(page_, image, 1, 2, 3, 4); };
  std::vector<HPDF_Image> images;
  for (int i = 0; i < HPDF_LIMIT_MAX_DICT_ELEMENT; ++i) {
    images.push_back(SmallImage(document_.document));
    ASSERT_EQ(draw(images.back()), HPDF_OK) << i;
  }
  EXPECT_EQ(draw(SmallImage(document_.document)), HPDF_STATUS{HPDF_PAGE_INVALID_XOBJECT});
  EXPECT_THAT(document_.TakeCodes(), ElementsAre(HPDF_PAGE_INVALID_XOBJECT));
  const std::size_t before = ContentOf(page_).size();
  EXPECT_EQ(draw(images[0]), HPDF_OK);
  EXPECT_EQ(draw(images[2999]), HPDF_OK);
  EXPECT_EQ(ContentOf(page_).substr(before), "q\n3 0 0 4 1 2 cm\n/X1 Do\nQ\nq\n3 0 0 4 1 2 cm\n/X3000 Do\nQ\n");
}

}  // namespace
}  // namespace quillbar
