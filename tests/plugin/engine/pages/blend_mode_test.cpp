// SPDX-License-Identifier: MIT
// Blend modes beyond the table, and those of a state that a page uses.
#include <gmock/gmock.h>

#include "plugin/engine/pages/page_tree.h"
#include "tests/plugin/engine/driver/library_document.h"

namespace quillbar {
namespace {

using testing::ElementsAre;

class BlendMode : public testing::Test {
 protected:
  LibraryDocument document_;
  HPDF_Page page_ = Call<engine::AddPage>(document_.document);
};

TEST_F(BlendMode, BlendModesBeyondTheTableAreRefused) {
  HPDF_ExtGState state = Call<HPDF_CreateExtGState>(document_.document);
  for (const int mode : {12, 13, 1000, -1}) {
    EXPECT_EQ(Call<HPDF_ExtGState_SetBlendMode>(state, static_cast<HPDF_BlendMode>(mode)),
              HPDF_STATUS{HPDF_EXT_GSTATE_OUT_OF_RANGE});
    EXPECT_THAT(document_.TakeCodes(), ElementsAre(HPDF_EXT_GSTATE_OUT_OF_RANGE));
  }
  EXPECT_EQ(Call<HPDF_ExtGState_SetBlendMode>(state, HPDF_BM_EXCLUSHON), HPDF_OK);
  EXPECT_EQ(Call<HPDF_Page_SetExtGState>(page_, state), HPDF_OK);
  EXPECT_EQ(Call<HPDF_ExtGState_SetBlendMode>(state, static_cast<HPDF_BlendMode>(12)),
            HPDF_STATUS{HPDF_EXT_GSTATE_READ_ONLY});
}

}  // namespace
}  // namespace quillbar
