// SPDX-License-Identifier: MIT
// The file in a String and in a MemoryBlock, and saving again and again.
#include "tests/plugin/driver/plugin_test.h"
#include "tests/support/full_disk.h"
#include "tests/support/judges.h"
#include "tests/support/temporary_folder.h"

namespace quillbar::test {
namespace {

using testing::IsEmpty;
using testing::StartsWith;

class Output : public PluginTest {
 protected:
  static void DrawPage(const Document &document, int number) {
    const ScriptObject page = document.AddPage();
    page.Call("BeginText");
    page.Call("SetFont", document.GetFont("Helvetica"), 24);
    page.Call("MoveTextPosition", 72, 700);
    page.Call("ShowText", "Page " + std::to_string(number));
    page.Call("EndText");
    page.Call("Rectangle", 72, 600, 100, 50);
    page.Call("FillAndDraw");
  }
  std::string SavedToMemoryBlock(const Document &document) {
    const ScriptObject block = document.CallObject("SaveToMemoryBlock");
    if (block.IsNil()) return {};
    const std::int64_t size = block.GetInteger("Size");
    return std::string(block.Call("StringValue", 0, size).AsString().Bytes());
  }
  std::string SavedToFile(const Document &document, const std::filesystem::path &file) {
    document.Call("Save", NewFolderItem(file));
    return ReadFile(file);
  }
};

TEST_F(Output, StringHoldsTheRawBytesOfAFileThatReadersTake) {
  const Document document = NewDocument();
  DrawPage(document, 1);
  const host::StringHandle string = document.Call("SaveToString").AsString();
  EXPECT_EQ(string.Encoding(), TextEncoding::kRawBytes);
  EXPECT_THAT(std::string(string.Bytes()), StartsWith("%PDF-1."));
  EXPECT_TRUE(JudgedFlawless(string.Bytes()));
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
}

TEST_F(Output, MemoryBlockIsAsLargeAsTheFileAndHoldsTheSameBytes) {
  const Document document = NewDocument();
  DrawPage(document, 1);
  const std::string expected = document.Saved();
  const ScriptObject block = document.CallObject("SaveToMemoryBlock");
  EXPECT_EQ(block.GetInteger("Size"), static_cast<std::int64_t>(expected.size()));
  EXPECT_EQ(SavedToMemoryBlock(document), expected);
}

TEST_F(Output, AllThreeFormsAreTheSameFile) {
  const TemporaryFolder folder;
  for (const bool isCompressed : {false, true}) {
    const Document document = isCompressed ? NewCompressedDocument() : NewDocument();
    DrawPage(document, 1);
    DrawPage(document, 2);
    const std::string string = document.Saved();
    EXPECT_EQ(SavedToMemoryBlock(document), string);
    EXPECT_EQ(SavedToFile(document, folder / (isCompressed ? "compressed.pdf" : "plain.pdf")), string);
  }
}

TEST_F(Output, EveryMixtureOfTheFormsAnyNumberOfTimesGivesTheSameFile) {
  const TemporaryFolder folder;
  const Document document = NewCompressedDocument();
  DrawPage(document, 1);
  const std::string expected = document.Saved();
  int file = 0;
  for (int first = 0; first < 3; ++first) {
    for (int second = 0; second < 3; ++second) {
      for (int third = 0; third < 3; ++third) {
        for (const int form : {first, second, third}) {
          const std::string saved = form == 0   ? document.Saved()
                                    : form == 1 ? SavedToMemoryBlock(document)
                                                : SavedToFile(document, folder / (std::to_string(++file) + ".pdf"));
          EXPECT_EQ(saved, expected) << first << second << third;
        }
      }
    }
  }
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
}

TEST_F(Output, EachSaveHoldsWhatWasDrawnSince) {
  const Document document = NewDocument();
  for (int number = 1; number <= 10; ++number) {
    DrawPage(document, number);
    const std::string saved = number % 2 == 0 ? document.Saved() : SavedToMemoryBlock(document);
    EXPECT_EQ(PdfFile(saved).PageCount(), static_cast<std::size_t>(number));
  }
  const std::string saved = document.Saved();
  EXPECT_TRUE(JudgedFlawless(std::string_view(saved)));
  EXPECT_THAT(ExtractedText(saved, 10), testing::HasSubstr("Page 10"));
}

TEST_F(Output, PageMayBeDrawnOnAfterASave) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Call("MoveTo", 1, 1);
  page.Call("Draw");
  document.Saved();
  page.Call("MoveTo", 2, 2);
  page.Call("Draw");
  EXPECT_THAT(document.Operators(), testing::ElementsAre(Op("m", 1, 1), Op("S"), Op("m", 2, 2), Op("S")));
}

constexpr int kSavesToTheMiddleOfText = 7;

// A page with text, drawn piece by piece with `save` after each of them.
template <class Save>
std::string DrawnInPieces(const Document &document, Save save) {
  const ScriptObject page = document.AddPage();
  const auto draw = [&](const char *member, const auto &...arguments) {
    page.Call(member, arguments...);
    save();
  };
  draw("SaveState");
  draw("SetFont", document.GetFont("Helvetica"), 24);
  draw("ConcatMatrix", 1, 0, 0, 1, 10, 20);
  draw("SaveState");
  draw("BeginText");
  draw("MoveTextPosition", 72, 700);
  draw("ShowText", "one ");
  draw("ShowText", "two ");
  draw("EndText");
  draw("RestoreState");
  draw("MoveTo", 72, 690);
  draw("LineTo", 144, 690);
  draw("Draw");
  draw("Rectangle", 72, 600, 72, 72);
  draw("Clip");
  draw("EndPath");
  draw("RestoreState");
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
  return PdfFile(document.Saved()).Content(0);
}

TEST_F(Output, SaveLeavesThePageAsItWasWhateverIsOpen) {
  const TemporaryFolder folder;
  const std::string expected = DrawnInPieces(NewDocument(), [] {});
  EXPECT_THAT(expected, testing::HasSubstr("(two ) Tj"));
  for (const bool isEncrypted : {false, true}) {
    for (const bool isCompressed : {false, true}) {
      const Document document = isCompressed ? NewCompressedDocument() : NewDocument();
      if (isEncrypted) document.Call("SetPassword", "owner", "");
      int count = 0;
      const auto save = [&] {
        const std::string saved = document.Saved();
        if (++count == kSavesToTheMiddleOfText) {
          EXPECT_TRUE(JudgedFlawless(std::string_view(saved)));
        }
        if (!isEncrypted) {
          EXPECT_EQ(SavedToMemoryBlock(document), saved);
          EXPECT_EQ(SavedToFile(document, folder / (std::to_string(isCompressed) + std::to_string(count) + ".pdf")),
                    saved);
        }
      };
      EXPECT_EQ(DrawnInPieces(document, save), expected);
    }
  }
}

TEST_F(Output, SaveLeavesModeAndPositionAndOpenStates) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Call("SaveState");
  page.Call("BeginText");
  page.Call("SetFont", document.GetFont("Courier"), 10);
  page.Call("MoveTextPosition", 72, 700);
  page.Call("ShowText", "one");
  EXPECT_EQ(document.Operators().back().name, "Q");
  EXPECT_EQ(page.GetInteger("GraphicsMode"), graphics_mode::kTextObject);
  std::vector<host::Value> position{0.0F, 0.0F};
  host().CallByRef(page.handle(), "GetCurrentTextPosition", position);
  EXPECT_EQ(position[0].AsSingle(), 90);
  EXPECT_EQ(position[1].AsSingle(), 700);
  page.Call("EndText");
  page.Call("RestoreState");
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
}

TEST_F(Output, SaveThatFailsLeavesThePageAsItWas) {
  const TemporaryFolder folder;
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Call("BeginText");
  page.Call("SetFont", document.GetFont("Courier"), 10);
  page.Call("ShowText", "one");
  for (const std::size_t limit : {0, 300, 600}) {
    const FileSizeLimit full(limit);
    QUILLBAR_NEEDS(full);
    document.Call("Save", NewFolderItem(folder / "saved.pdf"));
    EXPECT_EQ(document.TakeFailures().size(), 1U);
  }
  page.Call("ShowText", "two");
  page.Call("EndText");
  EXPECT_THAT(document.Operators(),
              testing::ElementsAre(Op("BT"), testing::_, Op("Tj", "one"), Op("Tj", "two"), Op("ET")));
}

TEST_F(Output, ProducerIsThePlugin) {
  const Document document = NewDocument();
  document.AddPage();
  EXPECT_EQ(PdfFile(document.Saved()).Information("/Producer"), "Quillbar PDF Plugin");
}

TEST_F(Output, DocumentWithoutPagesGivesWhatTheLibraryMakesOfIt) {
  const Document document = NewDocument();
  const std::string saved = document.Saved();
  if (saved.empty()) {
    EXPECT_FALSE(document.TakeFailures().empty());
  } else {
    EXPECT_THAT(saved, StartsWith("%PDF-1."));
    EXPECT_THAT(document.TakeFailures(), IsEmpty());
  }
  DrawPage(document, 1);
  const std::string withPage = document.Saved();
  EXPECT_TRUE(JudgedFlawless(std::string_view(withPage)));
}

TEST_F(Output, SavesOfALargeDocumentAreWhole) {
  const Document document = NewDocument();
  for (int number = 0; number < 60; ++number) {
    const ScriptObject page = document.AddPage();
    page.Call("MoveTo", 0, 0);
    for (int line = 0; line < 300; ++line) page.Call("LineTo", line, number);
    page.Call("Draw");
  }
  const PdfFile file(document.Saved());
  ASSERT_EQ(file.PageCount(), 60U);
  EXPECT_EQ(file.Operators(59).size(), 302U);
  EXPECT_EQ(SavedToMemoryBlock(document), file.bytes());
}

}  // namespace
}  // namespace quillbar::test
