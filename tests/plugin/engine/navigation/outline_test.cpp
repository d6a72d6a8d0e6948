// SPDX-License-Identifier: MIT
// Outlines: what is refused leaves nothing, counts follow what is open, and trees of any depth are saved at once.
#include <gmock/gmock.h>

#include <chrono>
#include <string>

#include "tests/plugin/engine/driver/library_document.h"

namespace quillbar {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class Outlines : public testing::Test {
 protected:
  unsigned ObjectCount() const { return document_.document->xref->entries->count; }

  LibraryDocument document_;
};

TEST_F(Outlines, RefusedOutlineLeavesNoObject) {
  HPDF_Outline chapter = Call<HPDF_CreateOutline>(document_.document, nullptr, "chapter", nullptr);
  const unsigned objects = ObjectCount();
  const std::string tooLong(65536, 'x'), longest(65535, 'x');
  EXPECT_EQ(Call<HPDF_CreateOutline>(document_.document, chapter, tooLong.c_str(), nullptr), nullptr);
  EXPECT_THAT(document_.TakeCodes(), ElementsAre(HPDF_STRING_OUT_OF_RANGE));
  EXPECT_EQ(ObjectCount(), objects);
  EXPECT_NE(Call<HPDF_CreateOutline>(document_.document, chapter, longest.c_str(), nullptr), nullptr);
}

TEST_F(Outlines, DeepOutlinesAreSavedAtOnce) {
  HPDF_Outline entry = nullptr;
  for (int depth = 0; depth < 60000; ++depth) {
    entry = Call<HPDF_CreateOutline>(document_.document, entry, "deeper", nullptr);
    ASSERT_NE(entry, nullptr);
  }
  const auto start = std::chrono::steady_clock::now();
  const std::string saved = document_.SaveToString();
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
  EXPECT_THAT(saved.substr(0, 2000), HasSubstr("/Count 60000\n"));
  EXPECT_THAT(document_.TakeCodes(), IsEmpty());
}

TEST_F(Outlines, OutlineCountsFollowWhatIsOpen) {
  HPDF_Outline first = Call<HPDF_CreateOutline>(document_.document, nullptr, "first", nullptr);
  HPDF_Outline second = Call<HPDF_CreateOutline>(document_.document, nullptr, "second", nullptr);
  HPDF_Outline inner = Call<HPDF_CreateOutline>(document_.document, first, "inner", nullptr);
  Call<HPDF_CreateOutline>(document_.document, inner, "leaf 1", nullptr);
  Call<HPDF_CreateOutline>(document_.document, inner, "leaf 2", nullptr);
  const auto count = [](HPDF_Dict entry) {
    auto *number = static_cast<HPDF_Number>(HPDF_Dict_GetItem(entry, "Count", HPDF_OCLASS_NUMBER));
    return number ? number->value : 0;
  };
  HPDF_Outline root = document_.document->outlines;

  document_.SaveToString();
  EXPECT_EQ(count(root), 5);
  EXPECT_EQ(count(first), 3);
  EXPECT_EQ(count(inner), 2);
  EXPECT_EQ(count(second), 0);

  Call<HPDF_Outline_SetOpened>(inner, HPDF_FALSE);
  document_.SaveToString();
  EXPECT_EQ(count(root), 3);
  EXPECT_EQ(count(first), 1);
  EXPECT_EQ(count(inner), -2);

  Call<HPDF_Outline_SetOpened>(first, HPDF_FALSE);
  document_.SaveToString();
  EXPECT_EQ(count(root), 2);
  EXPECT_EQ(count(first), -1);
}

}  // namespace
}  // namespace quillbar
