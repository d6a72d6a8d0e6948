// SPDX-License-Identifier: MIT
// A Page without a library page, as a failed AddPage leaves it: everything is answered, nothing is drawn.
#include "tests/plugin/driver/plugin_test.h"

namespace quillbar::test {
namespace {

using testing::IsEmpty;

class NullPage : public PluginTest {
 protected:
  // The first field of a Page's data is the library's page.
  ScriptObject AddPageWithoutLibraryPage(const Document &document) {
    const ScriptObject page = document.AddPage();
    *static_cast<void **>(host().ClassData(page.handle(), host().Class("Page"))) = nullptr;
    return page;
  }
};

TEST_F(NullPage, GettersReadTheLibrarysValuesForAnInvalidPage) {
  const Document document = NewDocument();
  const ScriptObject page = AddPageWithoutLibraryPage(document);
  EXPECT_EQ(page.GetInteger("FillColor"), 0);
  EXPECT_EQ(page.GetInteger("StrokeColor"), 0);
  EXPECT_EQ(page.GetSingle("LineWidth"), 1.0F);
  EXPECT_EQ(page.GetInteger("LineCapType"), 0);
  EXPECT_EQ(page.GetInteger("LineJoinType"), 0);
  EXPECT_EQ(page.GetInteger("GraphicsMode"), 0);
  EXPECT_EQ(page.GetSingle("Height"), 0.0F);
  EXPECT_EQ(page.GetSingle("Width"), 0.0F);
  EXPECT_EQ(page.GetInteger("TextRenderingMode"), 0);
  EXPECT_EQ(page.GetSingle("TextLeading"), 0.0F);
  EXPECT_EQ(page.GetSingle("TextRise"), 0.0F);
  EXPECT_EQ(page.GetSingle("WordSpace"), 0.0F);
  EXPECT_EQ(page.Call("SuggestedTextLeading").AsSingle(), 0.0F);
  EXPECT_FALSE(page.Get("TransformCoordinates").AsBoolean());
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
}

TEST_F(NullPage, EveryOtherMemberDoesNothing) {
  const Document document = NewDocument();
  const ScriptObject font = document.GetFont("Helvetica");
  const ScriptObject page = AddPageWithoutLibraryPage(document);
  host::ArrayHandle dashes = host::ArrayHandle::Create(host::TypeKind::kUInt16, 2);
  dashes.Set(0, 3);
  dashes.Set(1, 3);
  for (const bool fromTop : {false, true}) {
    page.Set("TransformCoordinates", fromTop);
    page.Call("SetSize", 3, 0);
    page.Set("Height", 100);
    page.Set("Width", 100);
    page.Call("Rectangle", 1, 2, 3, 4);
    page.Call("Ellipse", 1, 2, 3, 4);
    page.Call("Arc", 1, 2, 3, 4, 5);
    page.Call("MoveTo", 1, 2);
    page.Call("LineTo", 1, 2);
    page.Call("CurveTo", 1, 2, 3, 4, 5, 6);
    page.Call("CurveTo2", 1, 2, 3, 4);
    page.Call("CurveTo3", 1, 2, 3, 4);
    for (const char *method : {"Draw", "Fill", "FillAndDraw", "EndPath", "Clip", "SaveState", "RestoreState",
                               "ResetDashPattern", "BeginText", "EndText", "MoveTextPositionNextLine"}) {
      page.Call(method);
    }
    page.Call("SetDashPattern", dashes, 0);
    page.Call("SetRGBFill", 0, 0, 0);
    page.Call("SetRGBStroke", 0, 0, 0);
    page.Call("SetCMYKFill", 0, 0, 0, 0);
    page.Call("SetCMYKStroke", 0, 0, 0, 0);
    page.Call("ConcatMatrix", 1, 0, 0, 1, 0, 0);
    page.Set("FillColor", static_cast<Color>(0));
    page.Set("StrokeColor", static_cast<Color>(0));
    page.Set("LineWidth", 2);
    page.Set("LineCapType", 1);
    page.Set("LineJoinType", 1);
    page.Call("SetFont", font, 12);
    page.Call("MoveTextPosition", 1, 2);
    page.Call("ShowText", "text");
    page.Call("ShowTextNextLine", "text");
    page.Call("SetTextMatrix", 1, 0, 0, 1, 0, 0);
    page.Call("SetTextRotation", 30, 1, 2);
    page.Set("TextRenderingMode", 1);
    page.Set("TextLeading", 1);
    page.Set("TextRise", 1);
    page.Set("WordSpace", 1);
    std::vector<host::Value> position{host::Value(3.0F), host::Value(4.0F)};
    host().CallByRef(page.handle(), "GetCurrentTextPosition", position);
    EXPECT_EQ(position[0].AsSingle(), 3.0F);
    EXPECT_EQ(position[1].AsSingle(), 4.0F);
  }
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
  EXPECT_THAT(document.Operators(), IsEmpty());
}

TEST_F(NullPage, IsWhatAddPageGivesWhenTheLibraryHasNoDocument) {
  const Document document = NewDocument();
  // The second field of a document's data is the library's document.
  auto *data = static_cast<void **>(host().ClassData(document.handle(), host().Class("PDFDocument")));
  void *const libraryDocument = std::exchange(data[1], nullptr);
  const ScriptObject page = document.AddPage();
  EXPECT_FALSE(page.IsNil());
  EXPECT_EQ(page.GetInteger("GraphicsMode"), 0);
  page.Call("Rectangle", 1, 2, 3, 4);
  data[1] = libraryDocument;
  EXPECT_EQ(PdfFile(document.AddPage().IsNil() ? "" : document.Saved()).PageCount(), 1U);
}

}  // namespace
}  // namespace quillbar::test
