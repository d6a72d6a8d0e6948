// SPDX-License-Identifier: MIT
// An operator that can't be written, because memory runs out, leaves its page as it was.
#include "plugin/engine/pages/page_operator.h"

#include <gtest/gtest.h>
#include <hpdf_conf.h>

#include <cstring>
#include <functional>
#include <string>

#include "plugin/engine/fonts/document_fonts.h"
#include "plugin/engine/pages/page_tree.h"
#include "tests/plugin/engine/driver/failing_allocation.h"
#include "tests/plugin/engine/driver/library_document.h"

namespace quillbar {
namespace {

// The page, the state that it is in and its content.
std::string Everything(HPDF_Page page) {
  const engine::PageAttributes &attributes = engine::AttributesOf(page);
  std::string bytes(sizeof attributes + sizeof *attributes.gstate, '\0');
  std::memcpy(bytes.data(), &attributes, sizeof attributes);
  std::memcpy(bytes.data() + sizeof attributes, attributes.gstate, sizeof *attributes.gstate);
  return bytes + ContentOf(page);
}

struct OperatorCall {
  const char *name;
  std::function<void(HPDF_Page)> enter;
  std::function<HPDF_STATUS(HPDF_Page)> call;
};

void InPage(HPDF_Page) {}
void InPath(HPDF_Page page) { Call<HPDF_Page_MoveTo>(page, 1.0F, 2.0F); }
void InText(HPDF_Page page) { Call<HPDF_Page_BeginText>(page); }
void InSavedState(HPDF_Page page) { Call<HPDF_Page_GSave>(page); }

template <auto Function, typename... Arguments>
OperatorCall On(const char *name, void (*enter)(HPDF_Page), Arguments... arguments) {
  return {name, enter, [=](HPDF_Page page) { return Call<Function>(page, arguments...); }};
}

constexpr HPDF_UINT16 kDash[] = {3, 2};
const std::string kLongText(5000, '(');

const OperatorCall kCalls[] = {
    On<HPDF_Page_SetLineWidth>("w", InPage, 2.5F),
    On<HPDF_Page_SetLineCap>("J", InPage, HPDF_ROUND_END),
    On<HPDF_Page_SetLineJoin>("j", InPage, HPDF_BEVEL_JOIN),
    On<HPDF_Page_SetDash>("d", InPage, kDash, 2U, 1U),
    On<HPDF_Page_GSave>("q", InPage),
    On<HPDF_Page_GRestore>("Q", InSavedState),
    On<HPDF_Page_Concat>("cm", InPage, 1.0F, 0.0F, 0.0F, 1.0F, 10.0F, 20.0F),
    On<HPDF_Page_MoveTo>("m", InPage, 1.0F, 2.0F),
    On<HPDF_Page_LineTo>("l", InPath, 3.0F, 4.0F),
    On<HPDF_Page_CurveTo>("c", InPath, 1.0F, 2.0F, 3.0F, 4.0F, 5.0F, 6.0F),
    On<HPDF_Page_CurveTo2>("v", InPath, 1.0F, 2.0F, 3.0F, 4.0F),
    On<HPDF_Page_CurveTo3>("y", InPath, 1.0F, 2.0F, 3.0F, 4.0F),
    On<HPDF_Page_Rectangle>("re", InPage, 1.0F, 2.0F, 3.0F, 4.0F),
    On<HPDF_Page_Ellipse>("ellipse", InPage, 1.0F, 2.0F, 3.0F, 4.0F),
    On<HPDF_Page_Arc>("arc", InPage, 1.0F, 2.0F, 3.0F, 0.0F, 200.0F),
    On<HPDF_Page_Stroke>("S", InPath),
    On<HPDF_Page_Clip>("W", InPath),
    On<HPDF_Page_BeginText>("BT", InPage),
    On<HPDF_Page_EndText>("ET", InText),
    On<HPDF_Page_SetCharSpace>("Tc", InText, 1.5F),
    On<HPDF_Page_SetWordSpace>("Tw", InText, 1.5F),
    On<HPDF_Page_SetTextLeading>("TL", InText, 12.0F),
    On<HPDF_Page_SetTextRenderingMode>("Tr", InText, HPDF_STROKE),
    On<HPDF_Page_SetTextRise>("Ts", InText, 3.0F),
    On<HPDF_Page_MoveTextPos>("Td", InText, 1.0F, 2.0F),
    On<HPDF_Page_SetTextMatrix>("Tm", InText, 1.0F, 0.0F, 0.0F, 1.0F, 10.0F, 20.0F),
    On<HPDF_Page_MoveToNextLine>("T*", InText),
    On<HPDF_Page_ShowText>("Tj", InText, "text"),
    On<HPDF_Page_ShowText>("long Tj", InText, kLongText.c_str()),
    On<HPDF_Page_ShowTextNextLine>("'", InText, "text"),
    On<HPDF_Page_SetRGBFill>("rg", InPage, 0.5F, 0.25F, 1.0F),
    On<HPDF_Page_SetCMYKStroke>("K", InPage, 0.5F, 0.25F, 1.0F, 0.0F),
};

// The content is filled up to each place before the end of a block of memory, so that the operator is torn at each of its
// bytes if anything can tear it.
TEST(PageOperatorTest, IsWholeOrLeavesThePageAsItWas) {
  for (const OperatorCall &each : kCalls) {
    for (std::size_t room = 0; room < 12; ++room) {
      HPDF_Doc document = HPDF_NewEx([](HPDF_STATUS, HPDF_STATUS, void *) {}, Allocate, std::free, 0, nullptr);
      HPDF_Page page = Call<engine::AddPage>(document);
      HPDF_Font font = Call<engine::GetFont>(document, "Courier", nullptr);
      Call<HPDF_Page_SetFontAndSize>(page, font, 10.0F);
      each.enter(page);
      const HPDF_Stream content = engine::AttributesOf(page).stream;
      const std::string padding(HPDF_STREAM_BUF_SIZ - HPDF_Stream_Size(content) - room, ' ');
      HPDF_Stream_Write(content, reinterpret_cast<const HPDF_BYTE *>(padding.data()),
                        static_cast<HPDF_UINT>(padding.size()));
      const std::string before = Everything(page);

      allowed = 0;
      const HPDF_STATUS status = each.call(page);
      allowed = -1;
      // A short one may fit.
      if (status != HPDF_OK || room == 0) {
        EXPECT_EQ(status, HPDF_STATUS{HPDF_FAILD_TO_ALLOC_MEM}) << each.name << ", room " << room;
        EXPECT_EQ(Everything(page), before) << each.name << ", room " << room;
        EXPECT_EQ(each.call(page), HPDF_STATUS{HPDF_OK}) << each.name;
      }
      EXPECT_NE(Everything(page), before) << each.name;
      HPDF_Free(document);
    }
  }
}

}  // namespace
}  // namespace quillbar
