// SPDX-License-Identifier: MIT
// Destinations and annotations, read back from the saved file by qpdf and poppler.
#include <gmock/gmock.h>

#include <deque>
#include <limits>

#include "tests/plugin/driver/plugin_test.h"
#include "tests/support/judges.h"
#include "tests/support/process.h"
#include "tests/support/temporary_folder.h"

namespace quillbar::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

constexpr std::uint32_t kInvalidIcon = 4210;
constexpr std::uint32_t kRealOutOfRange = 0x1057;

std::vector<double> Numbers(QPDFObjectHandle array) {
  std::vector<double> numbers;
  for (QPDFObjectHandle item : array.getArrayAsVector()) numbers.push_back(item.getNumericValue());
  return numbers;
}

/// A test that reads files back whose objects it goes on to look at.
class RereadTest : public PluginTest {
 protected:
  /// The saved document read back; lives as long as the test.
  const PdfFile &Reread(const Document &document) { return files_.emplace_back(document.Saved()); }

 private:
  std::deque<PdfFile> files_;
};

class AnnotationTest : public RereadTest {
 protected:
  static ScriptObject Note(const ScriptObject &page, const host::Value &text = "note") {
    return page.CallObject("CreateTextAnnotation", text, 10.0F, 20.0F, 110.0F, 60.0F);
  }
  static std::vector<QPDFObjectHandle> AnnotationsOf(const PdfFile &file, std::size_t page = 0) {
    QPDFObjectHandle annotations = file.Page(page).getKey("/Annots");
    return annotations.isArray() ? annotations.getArrayAsVector() : std::vector<QPDFObjectHandle>{};
  }
};

TEST_F(AnnotationTest, RectangleIsFlippedOnAPageThatWorksFromTheTop) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Set("Height", 842.0F);
  page.Set("TransformCoordinates", true);
  const ScriptObject target = page.CallObject("CreateDestination");
  Note(page);
  page.Call("CreateURLAnnotation", "http://example.org", 10.0F, 20.0F, 110.0F, 60.0F);
  page.Call("CreateLinkAnnotation", target, 10.0F, 20.0F, 110.0F, 60.0F);
  const PdfFile file(document.Saved());
  ASSERT_THAT(AnnotationsOf(file), SizeIs(3));
  for (QPDFObjectHandle annotation : AnnotationsOf(file)) {
    EXPECT_THAT(Numbers(annotation.getKey("/Rect")), ElementsAre(10, 782, 110, 822));
  }
  EXPECT_TRUE(JudgedFlawless(std::string_view(file.bytes())));
}

TEST_F(AnnotationTest, RectangleInPdfCoordinatesIsTakenAsItIs) {
  const Document document = NewDocument();
  document.AddPage().Call("CreateTextAnnotation", "note", 10.0F, 60.0F, 110.0F, 20.0F);
  const PdfFile file(document.Saved());
  EXPECT_THAT(Numbers(AnnotationsOf(file)[0].getKey("/Rect")), ElementsAre(10, 20, 110, 60));
}

TEST_F(AnnotationTest, KindsAreWhatViewersKnow) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  const ScriptObject target = document.AddPage().CallObject("CreateDestination");
  Note(page);
  page.Call("CreateURLAnnotation", "https://example.org/ä?a=(1)\\", 10.0F, 20.0F, 110.0F, 60.0F);
  page.Call("CreateLinkAnnotation", target, 10.0F, 20.0F, 110.0F, 60.0F);
  const PdfFile file(document.Saved());
  auto annotations = AnnotationsOf(file);
  ASSERT_THAT(annotations, SizeIs(3));
  EXPECT_EQ(annotations[0].getKey("/Subtype").getName(), "/Text");
  EXPECT_EQ(annotations[1].getKey("/Subtype").getName(), "/Link");
  EXPECT_EQ(annotations[1].getKey("/A").getKey("/S").getName(), "/URI");
  EXPECT_EQ(annotations[1].getKey("/A").getKey("/URI").getStringValue(), "https://example.org/ä?a=(1)\\");
  EXPECT_EQ(annotations[2].getKey("/Subtype").getName(), "/Link");
  QPDFObjectHandle view = annotations[2].getKey("/Dest");
  EXPECT_EQ(view.getArrayItem(0).getObjGen(), file.Page(1).getObjGen());
  EXPECT_EQ(view.getArrayItem(1).getName(), "/Fit");
  for (QPDFObjectHandle annotation : annotations) {
    EXPECT_EQ(annotation.getKey("/P").getObjGen(), file.Page(0).getObjGen());
  }

  const TemporaryFolder folder;
  WriteFile(folder / "file.pdf", file.bytes());
  const ProcessResult links = RunProcess({"pdfinfo", "-url", folder / "file.pdf"});
  EXPECT_THAT(links.output, HasSubstr("https://example.org/ä?a=(1)\\"));
}

TEST_F(AnnotationTest, NotesKeepEveryCharacter) {
  for (const char *text : {"plain", "Größe — 漢字 עברית 😀", "(open \\ and ) closed", "two\nlines"}) {
    const Document document = NewDocument();
    Note(document.AddPage(), text);
    const PdfFile file(document.Saved());
    EXPECT_EQ(AnnotationsOf(file)[0].getKey("/Contents").getUTF8Value(), text);
  }
}

TEST_F(AnnotationTest, TextEndsAtANul) {
  const Document document = NewDocument();
  Note(document.AddPage(), host::StringHandle::FromUtf8(std::string_view("one\0two", 7)));
  const PdfFile file(document.Saved());
  EXPECT_EQ(AnnotationsOf(file)[0].getKey("/Contents").getUTF8Value(), "one");
}

TEST_F(AnnotationTest, TooLongTextsGiveNilAndOneErrorAndLeaveNothing) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  const std::string tooLong(100000, 'x');
  EXPECT_TRUE(page.Call("CreateTextAnnotation", tooLong, 0.0F, 0.0F, 1.0F, 1.0F).IsNil());
  EXPECT_TRUE(page.Call("CreateURLAnnotation", tooLong, 0.0F, 0.0F, 1.0F, 1.0F).IsNil());
  EXPECT_THAT(document.TakeFailures(),
              ElementsAre(Failure{library_error::kStringOutOfRange, 0}, Failure{library_error::kStringOutOfRange, 0}));
  const PdfFile file(document.Saved());
  EXPECT_THAT(AnnotationsOf(file), IsEmpty());
  EXPECT_TRUE(JudgedFlawless(std::string_view(file.bytes())));
}

TEST_F(AnnotationTest, NilTextsAndTargetsGiveNilInSilence) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  EXPECT_TRUE(page.Call("CreateTextAnnotation", "", 0.0F, 0.0F, 1.0F, 1.0F).IsNil());
  EXPECT_TRUE(page.Call("CreateURLAnnotation", "", 0.0F, 0.0F, 1.0F, 1.0F).IsNil());
  EXPECT_TRUE(page.Call("CreateLinkAnnotation", host::Value::Nil(), 0.0F, 0.0F, 1.0F, 1.0F).IsNil());
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
}

TEST_F(AnnotationTest, TargetOfAnotherDocumentGivesNil) {
  const Document document = NewDocument(), other = NewDocument();
  const ScriptObject foreign = other.AddPage().CallObject("CreateDestination");
  EXPECT_TRUE(document.AddPage().Call("CreateLinkAnnotation", foreign, 0.0F, 0.0F, 1.0F, 1.0F).IsNil());
  EXPECT_THAT(AnnotationsOf(Reread(document)), IsEmpty());
}

TEST_F(AnnotationTest, LinkIsReturnedEvenWhenTheLibraryRefusesIt) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  const ScriptObject target = page.CallObject("CreateDestination");
  EXPECT_FALSE(page.Call("CreateLinkAnnotation", target, 0.0F, 0.0F, 1e30F, 1.0F).IsNil());
  EXPECT_THAT(document.TakeFailures(), ElementsAre(Failure{kRealOutOfRange, 0}));
  EXPECT_THAT(AnnotationsOf(Reread(document)), IsEmpty());
}

TEST_F(AnnotationTest, RectanglesOutOfRangeAreRefused) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  for (const float number : {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity(), 1e30F}) {
    EXPECT_TRUE(page.Call("CreateTextAnnotation", "note", number, 0.0F, 1.0F, 1.0F).IsNil());
    EXPECT_TRUE(page.Call("CreateURLAnnotation", "http://a", 0.0F, 0.0F, 1.0F, number).IsNil());
    EXPECT_THAT(document.TakeFailures(), SizeIs(2));
  }
  const PdfFile file(document.Saved());
  EXPECT_THAT(AnnotationsOf(file), IsEmpty());
}

TEST_F(AnnotationTest, IconsAreWrittenByName) {
  const char *names[] = {"/Comment", "/Key", "/Note", "/Help", "/NewParagraph", "/Paragraph", "/Insert"};
  for (std::int64_t icon = 0; icon < 7; ++icon) {
    const Document document = NewDocument();
    Note(document.AddPage()).Call("SetIcon", icon);
    EXPECT_EQ(AnnotationsOf(Reread(document))[0].getKey("/Name").getName(), names[icon]);
  }
}

TEST_F(AnnotationTest, IconsBeyondTheEnumerationRecordAnError) {
  const Document document = NewDocument();
  const ScriptObject note = Note(document.AddPage());
  for (const std::int64_t icon : {std::int64_t{7}, std::int64_t{8}, std::int64_t{-1}, kHighBitOnly}) {
    note.Call("SetIcon", icon);
    EXPECT_EQ(document.LastFailure().number, kInvalidIcon);
    EXPECT_THAT(document.TakeFailures(), SizeIs(1));
    document.Call("ClearError");
  }
  EXPECT_FALSE(AnnotationsOf(Reread(document))[0].hasKey("/Name"));
}

TEST_F(AnnotationTest, ColorAndOpenStateAreWritten) {
  const Document document = NewDocument();
  const ScriptObject note = Note(document.AddPage());
  note.Call("SetColor", Color{0xAA00FF80});
  note.Call("SetOpened", true);
  QPDFObjectHandle written = AnnotationsOf(Reread(document))[0];
  const auto color = Numbers(written.getKey("/C"));
  ASSERT_THAT(color, SizeIs(3));
  EXPECT_EQ(color[0], 0);
  EXPECT_EQ(color[1], 1);
  EXPECT_NEAR(color[2], 0.5019608, 1e-5);
  EXPECT_TRUE(written.getKey("/Open").getBoolValue());
  note.Call("SetOpened", false);
  EXPECT_FALSE(AnnotationsOf(Reread(document))[0].getKey("/Open").getBoolValue());
}

TEST_F(AnnotationTest, KeepsItsPageAndDocumentWhileEverythingElseIsReleased) {
  ScriptObject note, link, destination;
  {
    const Document document = NewDocument();
    const ScriptObject page = document.AddPage();
    destination = page.CallObject("CreateDestination");
    note = Note(page);
    link = page.CallObject("CreateLinkAnnotation", destination, 0.0F, 0.0F, 1.0F, 1.0F);
  }
  note.Call("SetIcon", std::int64_t{1});
  note.Call("SetColor", Color{0xFF0000});
  destination.Call("SetLocation", 1.0F, 2.0F, 1.0F);
  note = ScriptObject();
  destination.Call("SetLocation", 2.0F, 2.0F, 1.0F);
}

TEST_F(AnnotationTest, SubclassesAreAnnotations) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  const ScriptObject url = page.CallObject("CreateURLAnnotation", "http://a", 0.0F, 0.0F, 1.0F, 1.0F);
  for (const ScriptObject &annotation : {Note(page), url}) {
    EXPECT_TRUE(annotation.handle().Class().IsSubclassOf(host().Class("Annotation")));
  }
}

class DestinationTest : public RereadTest {
 protected:
  /// What the view of a link to the destination reads, without its page.
  std::string ViewOf(const Document &document) {
    QPDFObjectHandle view = Reread(document).Page(0).getKey("/Annots").getArrayItem(0).getKey("/Dest");
    std::string text;
    for (int item = 1; item < view.getArrayNItems(); ++item) text += view.getArrayItem(item).unparse() + " ";
    return text;
  }
};

TEST_F(DestinationTest, IsTheWholePageUntilItIsSet) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  const ScriptObject destination = page.CallObject("CreateDestination");
  page.Call("CreateLinkAnnotation", destination, 0.0F, 0.0F, 1.0F, 1.0F);
  EXPECT_EQ(ViewOf(document), "/Fit ");
  destination.Call("SetLocation", 0.0F, 800.0F, 1.0F);
  EXPECT_EQ(ViewOf(document), "/XYZ 0 800 1 ");
}

TEST_F(DestinationTest, LocationIsNotFlipped) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  page.Set("TransformCoordinates", true);
  const ScriptObject destination = page.CallObject("CreateDestination");
  page.Call("CreateLinkAnnotation", destination, 0.0F, 0.0F, 1.0F, 1.0F);
  destination.Call("SetLocation", 10.0F, 20.0F, 2.5F);
  EXPECT_EQ(ViewOf(document), "/XYZ 10 20 2.5 ");
}

TEST_F(DestinationTest, RefusedLocationsRecordAnErrorAndLeaveTheView) {
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  const ScriptObject destination = page.CallObject("CreateDestination");
  page.Call("CreateLinkAnnotation", destination, 0.0F, 0.0F, 1.0F, 1.0F);
  const float nan = std::numeric_limits<float>::quiet_NaN();
  struct Location {
    float x, y, zoom;
  };
  for (const Location &location : {Location{0, 0, 0},
                                   {0, 0, 0.08F},
                                   {0, 0, 0.0799F},
                                   {0, 0, -5},
                                   {-1, 0, 1},
                                   {0, -1, 1},
                                   {0, 0, 32.5F},
                                   {nan, 0, 1},
                                   {0, nan, 1},
                                   {0, 0, nan}}) {
    destination.Call("SetLocation", location.x, location.y, location.zoom);
    EXPECT_THAT(document.TakeFailures(), ElementsAre(Failure{4153, 0}))
        << location.x << ", " << location.y << ", " << location.zoom;
    EXPECT_EQ(document.LastFailure().number, 4153U);
  }
  EXPECT_EQ(ViewOf(document), "/Fit ");
  destination.Call("SetLocation", 0.0F, 0.0F, 32.0F);
  destination.Call("SetLocation", 1e30F, 0.0F, 1.0F);
  EXPECT_THAT(document.TakeFailures(), ElementsAre(Failure{kRealOutOfRange, 0}));
  EXPECT_EQ(ViewOf(document), "/XYZ 0 0 32 ");
}

}  // namespace
}  // namespace quillbar::test
