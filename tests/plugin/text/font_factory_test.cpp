// SPDX-License-Identifier: MIT
// The three members that make fonts, and what a font tells about itself.
#include <gmock/gmock.h>
#include <hpdf.h>

#include "plugin/engine/fonts/truetype/truetype_file.h"
#include "tests/plugin/text/text_page.h"
#include "tests/support/judges.h"
#include "tests/support/process.h"
#include "tests/support/real_fonts.h"
#include "tests/support/synthetic_font.h"
#include "tests/support/temporary_folder.h"

namespace quillbar::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class FontFactory : public TextTest {
 protected:
  std::string WriteFont(const FontBytes &font, const char *name = "font.ttf") {
    WriteFile(folder_ / name, {reinterpret_cast<const char *>(font.data()), font.size()});
    return (folder_ / name).string();
  }
  std::string WriteText(const char *name, std::string_view text) {
    WriteFile(folder_ / name, text);
    return (folder_ / name).string();
  }
  std::string FolderPath() const { return folder_.path().string(); }

 private:
  TemporaryFolder folder_;
};

// The encoder that the library took for a font, as a page that uses it says.
std::string EncoderOf(const Document &document, const ScriptObject &font) {
  const ScriptObject page = document.AddPage();
  page.Call("SetFont", font, 10);
  const PdfFile file(document.Saved());
  const std::size_t last = file.PageCount() - 1;
  return file.Font(last, file.Operators(last).at(0).operands.at(0).text).getKey("/Encoding").getName();
}

struct CjkName {
  const char *name;
  const char *encoder;
};

TEST_F(FontFactory, BuiltInFamiliesAreFoundByTheBeginningOfTheirName) {
  const Document document = NewDocument();
  for (const CjkName &one :
       {CjkName{"MS-Mincho", "/90msp-RKSJ-H"}, CjkName{"MS-Mincho,Bold", "/90msp-RKSJ-H"},
        CjkName{"MS-Gothic,Italic", "/90msp-RKSJ-H"}, CjkName{"MS-PMincho", "/90msp-RKSJ-H"},
        CjkName{"MS-PGothic,BoldItalic", "/90msp-RKSJ-H"}, CjkName{"DotumChe", "/KSCms-UHC-H"},
        CjkName{"Dotum,Bold", "/KSCms-UHC-H"}, CjkName{"BatangChe,Italic", "/KSCms-UHC-H"},
        CjkName{"Batang", "/KSCms-UHC-H"}, CjkName{"MingLiU", "/ETen-B5-H"}, CjkName{"MingLiU,Bold", "/ETen-B5-H"},
        CjkName{"SimSun", "/GBK-EUC-H"}, CjkName{"SimHei,BoldItalic", "/GBK-EUC-H"}}) {
    const ScriptObject font = document.GetFont(one.name, font_encoding::kWindowsAnsi);
    ASSERT_FALSE(font.IsNil()) << one.name;
    EXPECT_EQ(font.GetString("Name"), one.name);
    EXPECT_EQ(EncoderOf(document, font), one.encoder) << one.name;
  }
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
}

TEST_F(FontFactory, BuiltInFamiliesIgnoreTheEncoding) {
  const Document document = NewDocument();
  for (const std::int64_t encoding : {0, 11, 100, -5})
    EXPECT_FALSE(document.GetFont("MS-Mincho,Bold", encoding).IsNil()) << encoding;
}

TEST_F(FontFactory, FamilyIsRegisteredOnceForEachDocument) {
  // A second registration of the same encodings is a failure that the library reports.
  const Document document = NewDocument();
  for (int i = 0; i < 2; ++i) {
    for (const char *name : {"Dotum", "MS-Gothic", "SimSun", "MingLiU"})
      EXPECT_FALSE(document.GetFont(name, font_encoding::kWindowsAnsi).IsNil()) << name;
  }
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
}

TEST_F(FontFactory, UnknownStyleOfABuiltInFamilyGivesNil) {
  const Document document = NewDocument();
  EXPECT_TRUE(document.GetFont("MS-Mincho,Wide", font_encoding::kWindowsAnsi).IsNil());
  // The Japanese family was tried, then the standard fonts.
  EXPECT_THAT(document.TakeFailures(), SizeIs(2));
}

TEST_F(FontFactory, BuiltInFacesShowTheirScripts) {
  const Document document = NewDocument();
  struct Sample {
    const char *name, *text;
  };
  for (const Sample &sample : {Sample{"MS-Mincho", "日本語のテキスト"}, Sample{"Batang", "한국어 텍스트"},
                               Sample{"SimSun", "简体中文"}, Sample{"MingLiU", "繁體中文"}}) {
    const ScriptObject page = TextPage(document, document.GetFont(sample.name), 20);
    page.Call("MoveTextPosition", 50, 500);
    page.Call("ShowText", sample.text);
    page.Call("EndText");
    EXPECT_EQ(ExtractedText(document.Saved()).find(sample.text) == std::string::npos, false) << sample.name;
  }
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
}

TEST_F(FontFactory, NilNameGivesNilInSilence) {
  const Document document = NewDocument();
  EXPECT_TRUE(document.GetFont("", font_encoding::kAutomatic).IsNil());
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
}

TEST_F(FontFactory, EncodingThatIsNoMemberGivesNil) {
  const Document document = NewDocument();
  EXPECT_TRUE(document.GetFont("Helvetica", 11).IsNil());
}

TEST_F(FontFactory, HostWithoutComparisonsFindsNoFamilyByAccident) {
  host::HostOptions options;
  options.missing = {"RuntimeStringCompare"};
  StartHost({QUILLBAR_COMPANION_FILE, QUILLBAR_PLUGIN_FILE}, options);
  const Document document = NewDocument();
  EXPECT_EQ(document.GetFont("Helvetica").GetString("Name"), "Helvetica");
}

TEST_F(FontFactory, TrueTypeFileIsLoadedAndFoundAgainByItsName) {
  const Document document = NewDocument();
  const ScriptObject font = LoadTrueType(document, WriteFont(SyntheticFont().Build()));
  ASSERT_FALSE(font.IsNil());
  EXPECT_EQ(font.GetString("Name"), "Synthetic");
  EXPECT_EQ(font.GetInteger("Ascent"), 800);
  EXPECT_EQ(font.GetInteger("Descent"), -200);
  EXPECT_FLOAT_EQ(font.GetSingle("BoundingBoxTop"), 800);
  const ScriptObject again = document.GetFont("Synthetic", font_encoding::kCyrillic);
  ASSERT_FALSE(again.IsNil());
  EXPECT_EQ(again.GetString("Name"), "Synthetic");
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
}

TEST_F(FontFactory, MissingFilesFoldersAndNilGiveNilInSilence) {
  const Document document = NewDocument();
  EXPECT_TRUE(LoadTrueType(document, FolderPath() + "/missing.ttf").IsNil());
  EXPECT_TRUE(LoadTrueType(document, FolderPath()).IsNil());
  EXPECT_TRUE(document.CallObject("LoadTrueTypeFont", host::Value::Nil()).IsNil());
  const std::string file = WriteText("font.afm", "");
  for (const std::string &other : {FolderPath(), FolderPath() + "/missing.afm"}) {
    EXPECT_TRUE(document.CallObject("LoadType1Font", NewFolderItem(file), NewFolderItem(other), 1).IsNil());
    EXPECT_TRUE(document.CallObject("LoadType1Font", NewFolderItem(other), NewFolderItem(file), 1).IsNil());
  }
  EXPECT_TRUE(document.CallObject("LoadType1Font", NewFolderItem(file), host::Value::Nil(), 1).IsNil());
  EXPECT_TRUE(document.CallObject("LoadType1Font", host::Value::Nil(), NewFolderItem(file), 1).IsNil());
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
}

TEST_F(FontFactory, FolderIsRecognisedByHostsOfBothKinds) {
  // Before version 2020 a host names the property Directory.
  for (const double version : {2013.1, 2019.03, 2020.0, 2025.02}) {
    host::HostOptions options;
    options.version = version;
    StartHost({QUILLBAR_COMPANION_FILE, QUILLBAR_PLUGIN_FILE}, options);
    const Document document = NewDocument();
    EXPECT_TRUE(LoadTrueType(document, FolderPath()).IsNil()) << version;
    EXPECT_FALSE(LoadTrueType(document, WriteFont(SyntheticFont().Build())).IsNil()) << version;
    EXPECT_THAT(document.TakeFailures(), IsEmpty()) << version;
  }
}

TEST_F(FontFactory, RefusedFilesGiveNilAndAnErrorWithItsReason) {
  SyntheticFont compact;
  compact.signature = 0x4F54544F;
  SyntheticFont collection;
  collection.signature = 0x74746366;
  SyntheticFont webFont;
  webFont.signature = 0x774F4646;
  FontBytes truncated = SyntheticFont().Build();
  truncated.resize(truncated.size() / 2);
  const std::string letter = "Dear reader";

  struct Refused {
    FontBytes file;
    engine::FontFault fault;
  };
  const Document document = NewDocument();
  for (const Refused &refused :
       {Refused{compact.Build(), engine::FontFault::kCffOutlines},
        Refused{collection.Build(), engine::FontFault::kCollection},
        Refused{webFont.Build(), engine::FontFault::kWebFont}, Refused{truncated, engine::FontFault::kTableOutsideFile},
        Refused{FontBytes(letter.begin(), letter.end()), engine::FontFault::kNotTrueType},
        Refused{{}, engine::FontFault::kTooShort}}) {
    EXPECT_TRUE(LoadTrueType(document, WriteFont(refused.file)).IsNil());
    EXPECT_THAT(document.TakeFailures(),
                ElementsAre(Failure{HPDF_TTF_INVALID_FOMAT, static_cast<std::uint32_t>(refused.fault)}));
  }
}

TEST_F(FontFactory, DevicesAreRefusedWithoutBeingRead) {
  const Document document = NewDocument();
  std::size_t seen = 0;
  for (const char *device : kDevices) {
    // What the host doesn't see is a missing file, which gives Nil in silence.
    if (NewFolderItem(device).Get("Exists").AsBoolean()) ++seen;
    EXPECT_TRUE(LoadTrueType(document, device).IsNil()) << device;
  }
  EXPECT_THAT(document.TakeFailures(), SizeIs(seen));
}

TEST_F(FontFactory, Type1FontIsLoadedWithItsEncoding) {
  QUILLBAR_NEEDS_FONT(kRomanMetrics, "fonts-urw-base35");
  const Document document = NewDocument();
  const auto load = [&](std::int64_t encoding) {
    return document.CallObject("LoadType1Font", NewFolderItem(kRomanMetrics), NewFolderItem(kRomanProgram), encoding);
  };
  const ScriptObject font = load(font_encoding::kWindowsAnsi);
  ASSERT_FALSE(font.IsNil());
  EXPECT_EQ(font.GetString("Name"), "C059-Roman");
  EXPECT_LT(font.GetSingle("BoundingBoxBottom"), 0);
  EXPECT_GT(font.GetSingle("BoundingBoxTop"), 700);
  EXPECT_FALSE(document.GetFont("C059-Roman", font_encoding::kMacRoman).IsNil());
  const ScriptObject page = TextPage(document, font, 20);
  page.Call("MoveTextPosition", 50, 500);
  page.Call("ShowText", "Ægir’s façade");
  page.Call("EndText");
  const std::string saved = document.Saved();
  EXPECT_TRUE(JudgedFlawless(std::string_view(saved)));
  EXPECT_EQ(ExtractedText(saved).substr(0, 17), "Ægir’s façade");
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
}

TEST_F(FontFactory, Type1FontInAnUnknownEncodingIsNilThoughItIsLoaded) {
  QUILLBAR_NEEDS_FONT(kRomanMetrics, "fonts-urw-base35");
  const Document document = NewDocument();
  EXPECT_TRUE(
      document.CallObject("LoadType1Font", NewFolderItem(kRomanMetrics), NewFolderItem(kRomanProgram), 16).IsNil());
  EXPECT_FALSE(document.GetFont("C059-Roman").IsNil());
}

TEST_F(FontFactory, BoundingBoxIsReadOnceAndKeptThroughSwitches) {
  const Document document = NewDocument();
  const ScriptObject font = document.GetFont("Courier", font_encoding::kAutomatic);
  const float top = font.GetSingle("BoundingBoxTop");
  const std::int64_t ascent = font.GetInteger("Ascent");
  const ScriptObject page = TextPage(document, font);
  page.Call("ShowText", "日本語");  // switches to a Japanese face
  EXPECT_EQ(font.GetSingle("BoundingBoxTop"), top);
  EXPECT_EQ(font.GetInteger("Ascent"), ascent);
  EXPECT_EQ(font.GetString("Name"), "Courier");
  page.Call("EndText");
}

TEST_F(FontFactory, BoundingBoxFirstReadAfterASwitchIsThatOfTheFaceInUse) {
  const Document document = NewDocument();
  const ScriptObject japanese = document.GetFont("MS-Mincho");
  const ScriptObject font = document.GetFont("Courier", font_encoding::kAutomatic);
  const ScriptObject page = TextPage(document, font);
  page.Call("ShowText", "日本語");
  page.Call("EndText");
  EXPECT_EQ(font.GetSingle("BoundingBoxTop"), japanese.GetSingle("BoundingBoxTop"));
  EXPECT_EQ(font.GetInteger("Ascent"), document.GetFont("Courier").GetInteger("Ascent"));
}

}  // namespace
}  // namespace quillbar::test
