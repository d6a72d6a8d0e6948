// SPDX-License-Identifier: MIT
// Memory that runs out at every point of making an outline, an annotation or a view: the call fails, what was there
// stays as it was, and the document can be used and freed.
#include <gmock/gmock.h>

#include <vector>

#include "tests/plugin/engine/driver/failing_allocation.h"

namespace quillbar {
namespace {

using testing::ElementsAre;

HPDF_Outline EntryOf(HPDF_Outline entry, const char *key) {
  return static_cast<HPDF_Outline>(HPDF_Dict_GetItem(entry, key, HPDF_OCLASS_DICT));
}

TEST(AllocationFailure, OutlineStaysATree) {
  FailAtEveryAllocation([](HPDF_Doc document, HPDF_Page) {
    const bool done = Call<HPDF_CreateOutline>(document, nullptr, "title", nullptr) != nullptr;
    const long left = std::exchange(allowed, -1);
    HPDF_Outline next = Call<HPDF_CreateOutline>(document, nullptr, "next", nullptr);
    EXPECT_NE(next, nullptr);
    std::vector<HPDF_Outline> entries;
    for (HPDF_Outline entry = EntryOf(document->outlines, "First"); entry; entry = EntryOf(entry, "Next")) {
      EXPECT_EQ(EntryOf(entry, "Parent"), document->outlines);
      EXPECT_EQ(EntryOf(entry, "Prev"), entries.empty() ? nullptr : entries.back());
      entries.push_back(entry);
    }
    EXPECT_EQ(entries.size(), done ? 2U : 1U);
    EXPECT_EQ(EntryOf(document->outlines, "Last"), next);
    allowed = left;
    return done;
  });
}

TEST(AllocationFailure, SecondOutlineLeavesTheFirst) {
  FailAtEveryAllocation([](HPDF_Doc document, HPDF_Page) {
    const long left = std::exchange(allowed, -1);
    HPDF_Outline first = Call<HPDF_CreateOutline>(document, nullptr, "first", nullptr);
    allowed = left;
    HPDF_Outline second = Call<HPDF_CreateOutline>(document, nullptr, "second", nullptr);
    allowed = -1;
    EXPECT_EQ(EntryOf(document->outlines, "First"), first);
    EXPECT_EQ(EntryOf(document->outlines, "Last"), second != nullptr ? second : first);
    EXPECT_EQ(EntryOf(first, "Next"), second);
    return second != nullptr;
  });
}

TEST(AllocationFailure, AnnotationLeavesNoObject) {
  FailAtEveryAllocation([](HPDF_Doc document, HPDF_Page page) {
    const unsigned objects = document->xref->entries->count;
    if (Call<HPDF_Page_CreateURILinkAnnot>(page, HPDF_Rect{0, 0, 1, 1}, "http://a") != nullptr) return true;
    // The page may have run out of memory for an annotation that was made.
    EXPECT_LE(document->xref->entries->count, objects + 1);
    return false;
  });
  FailAtEveryAllocation([](HPDF_Doc, HPDF_Page page) {
    return Call<HPDF_Page_CreateTextAnnot>(page, HPDF_Rect{0, 0, 1, 1}, "note", nullptr) != nullptr;
  });
}

TEST(AllocationFailure, DestinationKeepsItsView) {
  FailAtEveryAllocation([](HPDF_Doc, HPDF_Page page) {
    const long left = std::exchange(allowed, -1);
    HPDF_Destination destination = Call<HPDF_Page_CreateDestination>(page);
    EXPECT_EQ(Call<HPDF_Destination_SetXYZ>(destination, 1, 2, 3), HPDF_OK);
    allowed = left;
    const bool done = Call<HPDF_Destination_SetXYZ>(destination, 4, 5, 6) == HPDF_OK;
    allowed = -1;
    std::vector<HPDF_REAL> numbers;
    for (HPDF_UINT i = 2; i < destination->list->count; ++i) {
      numbers.push_back(static_cast<HPDF_Real>(HPDF_Array_GetItem(destination, i, HPDF_OCLASS_REAL))->value);
    }
    if (done) {
      EXPECT_THAT(numbers, ElementsAre(4, 5, 6));
    } else {
      EXPECT_THAT(numbers, ElementsAre(1, 2, 3));
    }
    return done;
  });
}

}  // namespace
}  // namespace quillbar
