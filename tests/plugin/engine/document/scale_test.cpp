// SPDX-License-Identifier: MIT
// Large documents: what each page takes of memory until it is saved, and that one thing among many costs what one among
// few does. Bytes are counted, not seconds: a list that grows by a fixed number of places, and is copied each time,
// fetches more for each of many items.
#include <gtest/gtest.h>
#include <hpdf.h>

#include <cstdlib>
#include <string>
#include <unordered_map>

#include "plugin/engine/document/document.h"
#include "plugin/engine/fonts/document_fonts.h"
#include "plugin/engine/pages/page_tree.h"
#include "plugin/guard/library_call.h"
#include "tests/plugin/engine/driver/small_image.h"
#include "tests/support/sample.h"

namespace quillbar {
namespace {

// What the C library's blocks are in fact: with a head of a pointer's width, in steps of two.
std::size_t BlockSize(std::size_t size) {
  constexpr std::size_t kWord = sizeof(void *);
  return (size + kWord + 2 * kWord - 1) / (2 * kWord) * (2 * kWord);
}

std::size_t bytesInUse = 0;
std::size_t bytesFetched = 0;  // so far
std::unordered_map<void *, std::size_t> blocks;

void *Allocate(HPDF_UINT size) {
  void *block = std::malloc(size);
  blocks[block] = BlockSize(size);
  bytesInUse += BlockSize(size);
  bytesFetched += BlockSize(size);
  return block;
}

void Free(void *block) {
  const auto known = blocks.find(block);
  bytesInUse -= known->second;
  blocks.erase(known);
  std::free(block);
}

class CountedDocument {
 public:
  CountedDocument() : document_(HPDF_NewEx(nullptr, &Allocate, &Free, 0, nullptr)) {
    font_ = Call<engine::GetFont>(document_, "Helvetica", "WinAnsiEncoding");
  }
  ~CountedDocument() { HPDF_Free(document_); }
  CountedDocument(const CountedDocument &) = delete;
  CountedDocument &operator=(const CountedDocument &) = delete;

  HPDF_Doc get() const { return document_; }
  HPDF_Page page() const { return page_; }

  void AddPage() {
    page_ = Call<engine::AddPage>(document_);
    Call<HPDF_Page_BeginText>(page_);
    Call<HPDF_Page_SetFontAndSize>(page_, font_, 11.0F);
    Call<HPDF_Page_MoveTextPos>(page_, 56.0F, 780.0F);
    Call<HPDF_Page_ShowText>(page_, "A page with one line of text, of as many letters as fit onto an A4 page.");
    Call<HPDF_Page_EndText>(page_);
  }

 private:
  HPDF_Doc document_;
  HPDF_Font font_;
  HPDF_Page page_ = nullptr;
};

TEST(LargeDocument, APageWithOneLineOfTextTakesTwoAndAHalfKilobytesAtMost) {
  CountedDocument document;
  document.AddPage();
  constexpr std::size_t kPages = 1000;
  const std::size_t before = bytesInUse;
  for (std::size_t page = 0; page < kPages; ++page) document.AddPage();
  EXPECT_LE((bytesInUse - before) / kPages, 2560U);
}

// Bytes that a document fetches for each of `count` items and for saving them.
template <typename Add>
std::size_t BytesForEachOf(int count, Add add) {
  CountedDocument document;
  document.AddPage();
  const std::size_t before = bytesFetched;
  for (int item = 0; item < count; ++item) add(document, item);
  EXPECT_EQ(Call<engine::SaveToMemory>(document.get()), HPDF_STATUS{HPDF_OK});
  return (bytesFetched - before) / static_cast<std::size_t>(count);
}

template <typename Add>
void ExpectNoMoreForMany(Add add) {
  const std::size_t few = BytesForEachOf(1000, add), many = BytesForEachOf(test::TakesSamples() ? 5000 : 20'000, add);
  EXPECT_LE(many, few * 6 / 5);
}

TEST(LargeDocument, APageAmongManyTakesNoMoreThanOneAmongFew) {
  ExpectNoMoreForMany([](CountedDocument &document, int) { document.AddPage(); });
}

TEST(LargeDocument, AnOutlineEntryAmongManyTakesNoMoreThanOneAmongFew) {
  ExpectNoMoreForMany([](CountedDocument &document, int item) {
    Call<HPDF_CreateOutline>(document.get(), nullptr, std::to_string(item).c_str(), nullptr);
  });
}

TEST(LargeDocument, AnAnnotationAmongManyTakesNoMoreThanOneAmongFew) {
  ExpectNoMoreForMany([](CountedDocument &document, int) {
    Call<HPDF_Page_CreateURILinkAnnot>(document.page(), HPDF_Rect{0, 0, 10, 10}, "https://example.com/");
  });
}

TEST(LargeDocument, AnImageAmongManyTakesNoMoreThanOneAmongFew) {
  ExpectNoMoreForMany([](CountedDocument &document, int item) {
    if (item % 100 == 0) document.AddPage();
    Call<HPDF_Page_DrawImage>(document.page(), SmallImage(document.get()), 0.0F, 0.0F, 1.0F, 1.0F);
  });
}

// The index of fonts against a search from the beginning: the first definition of a name counts, also of one that came
// later.
TEST(LargeDocument, FindsEachOfItsFonts) {
  CountedDocument document;
  const HPDF_Doc library = document.get();
  const HPDF_Font helvetica = Call<engine::GetFont>(library, "Helvetica", "WinAnsiEncoding");
  ASSERT_NE(helvetica, nullptr);
  EXPECT_EQ(Call<engine::GetFont>(library, "Helvetica", "WinAnsiEncoding"), helvetica);
  const HPDF_Font otherEncoding = Call<engine::GetFont>(library, "Helvetica", "ISO8859-2");
  EXPECT_NE(otherEncoding, helvetica);
  EXPECT_EQ(Call<engine::GetFont>(library, "MS-Mincho", "90msp-RKSJ-H"), nullptr);
  Call<HPDF_UseJPFonts>(library);
  Call<HPDF_UseJPEncodings>(library);
  const HPDF_Font japanese = Call<engine::GetFont>(library, "MS-Mincho", "90msp-RKSJ-H");
  ASSERT_NE(japanese, nullptr);
  EXPECT_EQ(Call<engine::GetFont>(library, "MS-Mincho", "90msp-RKSJ-H"), japanese);
  EXPECT_EQ(Call<engine::GetFont>(library, "Helvetica", "WinAnsiEncoding"), helvetica);
  EXPECT_EQ(Call<engine::GetFont>(library, "Helvetica", "ISO8859-2"), otherEncoding);
  EXPECT_EQ(Call<engine::GetFont>(library, "Nothing", "WinAnsiEncoding"), nullptr);
}

}  // namespace
}  // namespace quillbar
