// SPDX-License-Identifier: MIT
// Outline trees, read back from the saved file.
#include <gmock/gmock.h>

#include "tests/plugin/driver/plugin_test.h"
#include "tests/support/judges.h"

namespace quillbar::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class OutlineTest : public PluginTest {
 protected:
  static ScriptObject NewOutline(const Document &document, const host::Value &parent, const host::Value &title) {
    return document.CallObject("CreateOutline", parent, title);
  }
  static ScriptObject NewOutline(const Document &document, const host::Value &title) {
    return NewOutline(document, host::Value::Nil(), title);
  }
  static QPDFObjectHandle RootOf(const PdfFile &file) { return file.qpdf().getRoot().getKey("/Outlines"); }
};

std::vector<std::string> TitlesBelow(QPDFObjectHandle entry) {
  std::vector<std::string> titles;
  for (QPDFObjectHandle child = entry.getKey("/First"); child.isDictionary(); child = child.getKey("/Next")) {
    titles.push_back(child.getKey("/Title").getUTF8Value());
    EXPECT_EQ(child.getKey("/Parent").getObjGen(), entry.getObjGen());
  }
  return titles;
}

TEST_F(OutlineTest, EntriesWithoutAParentStandUnderOneRoot) {
  const Document document = NewDocument();
  document.AddPage();
  NewOutline(document, "first");
  NewOutline(document, "second");
  const PdfFile file(document.Saved());
  EXPECT_THAT(TitlesBelow(RootOf(file)), ElementsAre("first", "second"));
  EXPECT_EQ(RootOf(file).getKey("/Count").getIntValue(), 2);
  EXPECT_TRUE(JudgedFlawless(std::string_view(file.bytes())));
}

TEST_F(OutlineTest, TreeIsReadBack) {
  const Document document = NewDocument();
  document.AddPage();
  const ScriptObject first = NewOutline(document, "1"), second = NewOutline(document, "2");
  const ScriptObject inner = NewOutline(document, first, "1.1");
  NewOutline(document, first, "1.2");
  NewOutline(document, inner, "1.1.1");
  const PdfFile file(document.Saved());
  QPDFObjectHandle root = RootOf(file), one = root.getKey("/First");
  EXPECT_THAT(TitlesBelow(root), ElementsAre("1", "2"));
  EXPECT_THAT(TitlesBelow(one), ElementsAre("1.1", "1.2"));
  EXPECT_THAT(TitlesBelow(one.getKey("/First")), ElementsAre("1.1.1"));
  EXPECT_THAT(TitlesBelow(root.getKey("/Last")), IsEmpty());
  EXPECT_EQ(root.getKey("/Count").getIntValue(), 5);
  EXPECT_EQ(one.getKey("/Count").getIntValue(), 3);
  EXPECT_EQ(root.getKey("/Last").getKey("/Prev").getObjGen(), one.getObjGen());
}

TEST_F(OutlineTest, ParentOfAnotherDocumentGivesNil) {
  const Document document = NewDocument(), other = NewDocument();
  const ScriptObject foreign = NewOutline(other, "there");
  EXPECT_TRUE(document.Call("CreateOutline", foreign, "x").IsNil());
  document.AddPage();
  EXPECT_FALSE(PdfFile(document.Saved()).qpdf().getRoot().hasKey("/Outlines"));
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
}

TEST_F(OutlineTest, NilTitleGivesNil) {
  const Document document = NewDocument();
  EXPECT_TRUE(document.Call("CreateOutline", host::Value::Nil(), "").IsNil());
}

TEST_F(OutlineTest, AsciiTitlesAreStoredBareAndOthersAsMarkedUtf16) {
  const Document document = NewDocument();
  document.AddPage();
  NewOutline(document, "plain (with) \\ marks");
  NewOutline(document, "Größe 漢字 😀");
  const PdfFile file(document.Saved());
  QPDFObjectHandle entry = RootOf(file).getKey("/First");
  EXPECT_EQ(entry.getKey("/Title").getStringValue(), "plain (with) \\ marks");
  entry = entry.getKey("/Next");
  using namespace std::string_literals;
  EXPECT_EQ(entry.getKey("/Title").getStringValue(),
            "\xFE\xFF\0G\0r\0\xF6\0\xDF\0e\0 \x6F\x22\x5B\x57\0 \xD8\x3D\xDE\x00"s);
  EXPECT_EQ(entry.getKey("/Title").getUTF8Value(), "Größe 漢字 😀");
}

TEST_F(OutlineTest, TitlesOfAnEncryptedFileAreReadBack) {
  const Document document = NewDocument();
  document.AddPage();
  document.Call("SetPassword", "owner", "");
  NewOutline(document, "plain");
  NewOutline(document, "Größe 漢字 😀");
  EXPECT_THAT(TitlesBelow(RootOf(PdfFile(document.Saved(), ""))), ElementsAre("plain", "Größe 漢字 😀"));
}

TEST_F(OutlineTest, LongTitlesEndWhereAStringDoes) {
  const Document document = NewDocument();
  document.AddPage();
  NewOutline(document, std::string(65535, 'x'));
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
  const ScriptObject refused = NewOutline(document, std::string(100000, 'x'));
  EXPECT_FALSE(refused.IsNil()) << "the object is made before the library is asked";
  EXPECT_THAT(document.TakeFailures(), ElementsAre(Failure{library_error::kStringOutOfRange, 0}));
  // It stands for no entry: reading and setting it changes nothing.
  EXPECT_FALSE(refused.Get("Opened").AsBoolean());
  refused.Set("Opened", true);
  const ScriptObject below = NewOutline(document, refused, "below nothing");
  NewOutline(document, below, "and below that");
  refused.Call("SetDestination", document.AddPage().CallObject("CreateDestination"));
  // What was to stand below it is not lost.
  const PdfFile file(document.Saved());
  EXPECT_THAT(TitlesBelow(RootOf(file)), ElementsAre(std::string(65535, 'x'), "below nothing"));
  EXPECT_THAT(TitlesBelow(RootOf(file).getKey("/Last")), ElementsAre("and below that"));
}

TEST_F(OutlineTest, TitlesEndAtANul) {
  const Document document = NewDocument();
  document.AddPage();
  NewOutline(document, host::StringHandle::FromUtf8(std::string_view("one\0two", 7)));
  EXPECT_THAT(TitlesBelow(RootOf(PdfFile(document.Saved()))), ElementsAre("one"));
}

TEST_F(OutlineTest, OpenedIsTrueAtFirstAndChangesTheCount) {
  const Document document = NewDocument();
  document.AddPage();
  const ScriptObject chapter = NewOutline(document, "chapter");
  NewOutline(document, chapter, "section");
  EXPECT_TRUE(chapter.Get("Opened").AsBoolean());
  chapter.Set("Opened", false);
  EXPECT_FALSE(chapter.Get("Opened").AsBoolean());
  const PdfFile file(document.Saved());
  EXPECT_EQ(RootOf(file).getKey("/First").getKey("/Count").getIntValue(), -1);
  EXPECT_EQ(RootOf(file).getKey("/Count").getIntValue(), 1);
  chapter.Set("Opened", true);
  EXPECT_EQ(RootOf(PdfFile(document.Saved())).getKey("/First").getKey("/Count").getIntValue(), 1);
}

TEST_F(OutlineTest, EntriesLeadToDestinations) {
  const Document document = NewDocument();
  document.AddPage();
  const ScriptObject destination = document.AddPage().CallObject("CreateDestination");
  destination.Call("SetLocation", 0.0F, 500.0F, 1.0F);
  const ScriptObject entry = NewOutline(document, "there");
  entry.Call("SetDestination", destination);
  const PdfFile file(document.Saved());
  QPDFObjectHandle view = RootOf(file).getKey("/First").getKey("/Dest");
  EXPECT_EQ(view.getArrayItem(0).getObjGen(), file.Page(1).getObjGen());
  EXPECT_EQ(view.getArrayItem(3).getNumericValue(), 500);
}

TEST_F(OutlineTest, NilAndDestinationsOfAnotherDocumentChangeNothing) {
  const Document document = NewDocument(), other = NewDocument();
  document.AddPage();
  const ScriptObject entry = NewOutline(document, "there");
  entry.Call("SetDestination", host::Value::Nil());
  entry.Call("SetDestination", other.AddPage().CallObject("CreateDestination"));
  EXPECT_FALSE(RootOf(PdfFile(document.Saved())).getKey("/First").hasKey("/Dest"));
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
}

TEST_F(OutlineTest, KeepsItsDocument) {
  ScriptObject entry;
  {
    const Document document = NewDocument();
    entry = NewOutline(document, "kept");
  }
  EXPECT_TRUE(entry.Get("Opened").AsBoolean());
}

TEST_F(OutlineTest, EightThousandLevelsAreSavedAndReadBack) {
  const Document document = NewDocument();
  document.AddPage();
  ScriptObject entry = NewOutline(document, "0");
  for (int level = 1; level < 8000; ++level) entry = NewOutline(document, entry, std::to_string(level));
  const PdfFile file(document.Saved());
  EXPECT_EQ(RootOf(file).getKey("/Count").getIntValue(), 8000);
}

}  // namespace
}  // namespace quillbar::test
