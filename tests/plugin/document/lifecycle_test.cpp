// SPDX-License-Identifier: MIT
// Documents and what they make: who keeps whom alive.
#include <algorithm>
#include <array>

#include "tests/plugin/driver/plugin_test.h"
#include "tests/support/temporary_folder.h"

namespace quillbar::test {
namespace {

class Lifecycle : public PluginTest {
 protected:
  std::uint64_t Destroyed() { return host().InspectLedger().objectsDestroyed; }
};

TEST_F(Lifecycle, DocumentIsMadeByEitherConstructor) {
  EXPECT_FALSE(NewDocument().IsNil());
  EXPECT_FALSE(NewCompressedDocument().IsNil());
}

TEST_F(Lifecycle, NoOtherClassCanBeMadeByScripts) {
  for (const char *name : {"Page", "Font", "Image", "Annotation", "TextAnnotation", "URLAnnotation", "LinkAnnotation",
                           "ExtendedGraphicsState", "Outline", "Destination"}) {
    EXPECT_THROW(NewObject(name), host::HostError) << name;
  }
}

TEST_F(Lifecycle, EveryOrderOfReleaseKeepsTheDocumentUntilTheLastOneGoes) {
  std::array<int, 4> order{0, 1, 2, 3};
  do {
    SCOPED_TRACE(testing::PrintToString(order));
    const std::uint64_t before = Destroyed();
    {
      std::array<ScriptObject, 4> objects;
      objects[0] = NewObject("PDFDocument");
      objects[1] = objects[0].CallObject("AddPage");
      objects[2] = objects[0].CallObject("AddPage");
      objects[3] = objects[0].CallObject("GetFont", "Helvetica", 1);
      objects[1].Call("SetFont", objects[3], 12);
      for (const int index : order) {
        objects[static_cast<std::size_t>(index)] = {};
        for (const ScriptObject &left : {objects[1], objects[2]}) {
          if (left.IsNil()) continue;
          left.Call("MoveTo", 1, 2);
          left.Call("EndPath");
        }
        if (!objects[3].IsNil()) {
          EXPECT_EQ(objects[3].GetString("Name"), "Helvetica");
        }
        if (!objects[0].IsNil()) {
          EXPECT_NE(objects[0].Call("SaveToString").AsString().Bytes().size(), 0U);
        }
        if (index != order.back()) {
          EXPECT_LT(Destroyed() - before, 4U);
        }
      }
    }
    EXPECT_EQ(Destroyed() - before, 4U);
    ExpectBalancedLedger();
  } while (std::ranges::next_permutation(order).found);
}

TEST_F(Lifecycle, PageKeepsTheDocumentThatNobodyElseRefersTo) {
  const ScriptObject page = NewDocument().AddPage();
  page.Call("Rectangle", 1, 2, 3, 4);
  page.Call("Draw");
  page.Set("LineWidth", -1);
  EXPECT_EQ(page.GetSingle("LineWidth"), 1.0F);
}

TEST_F(Lifecycle, ManyDocumentsLiveSideBySide) {
  std::vector<Document> documents;
  for (int count = 0; count < 20; ++count)
    documents.push_back(count % 2 == 0 ? NewDocument() : NewCompressedDocument());
  for (std::size_t index = 0; index < documents.size(); ++index) {
    const ScriptObject page = documents[index].AddPage();
    page.Call("MoveTo", index, index);
    page.Call("Draw");
  }
  for (std::size_t index = 0; index < documents.size(); ++index) {
    EXPECT_THAT(documents[index].Operators(), testing::ElementsAre(Op("m", index, index), Op("S")));
  }
}

TEST_F(Lifecycle, PagesWithoutALivingPageObjectStayInTheFile) {
  const Document document = NewDocument();
  for (int count = 0; count < 100; ++count) document.AddPage().Set("LineWidth", count);
  EXPECT_EQ(PdfFile(document.Saved()).PageCount(), 100U);
}

TEST_F(Lifecycle, DocumentDataIsAtTheSameDistanceInEveryInstance) {
  const Document first = NewDocument();
  const Document second = NewDocument();
  const host::ClassInfo &info = host().Class("PDFDocument");
  const auto distance = [&](const Document &document) {
    return static_cast<char *>(host().ClassData(document.handle(), info)) -
           reinterpret_cast<char *>(document.handle().Get());
  };
  EXPECT_EQ(distance(first), distance(second));
  EXPECT_EQ(distance(first), info.record->classDataOffset);
}

TEST_F(Lifecycle, CallsWithALibraryThatMadeNoDocumentDoNothing) {
  const Document document = NewDocument();
  const TemporaryFolder folder;
  auto *data = static_cast<void **>(host().ClassData(document.handle(), host().Class("PDFDocument")));
  void *const libraryDocument = std::exchange(data[1], nullptr);
  EXPECT_TRUE(document.GetFont("Helvetica").IsNil());
  EXPECT_EQ(document.Saved(), "");
  EXPECT_TRUE(document.Call("SaveToMemoryBlock").AsObject().IsNil());
  document.Call("Save", NewFolderItem(folder / "nothing.pdf"));
  EXPECT_FALSE(std::filesystem::exists(folder / "nothing.pdf"));
  document.Call("ClearError");
  for (const char *property : {"Author", "Title", "Subject", "Creator", "KeyWords"}) {
    document.Set(property, "text");
    EXPECT_EQ(document.GetString(property), "") << property;
  }
  document.Set("Mode", std::int64_t{1});
  EXPECT_EQ(document.GetInteger("Mode"), 0);
  EXPECT_EQ(document.LastFailure(), Failure{});
  data[1] = libraryDocument;
}

}  // namespace
}  // namespace quillbar::test
