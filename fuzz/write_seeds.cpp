// SPDX-License-Identifier: MIT
// write_seeds FOLDER: writes the inputs from which the fuzz targets start, in a folder for each target. Everything is
// made here, or taken from fonts that the machine has.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <iostream>
#include <iterator>
#include <map>
#include <numeric>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/call_seeds.h"
#include "fuzz/image_seeds.h"
#include "fuzz/member_seeds.h"
#include "plugin/engine/fonts/cff/cff_program.h"
#include "plugin/engine/fonts/truetype/truetype_subset.h"
#include "tests/support/jpeg_maker.h"
#include "tests/support/synthetic_font.h"

namespace {

using namespace quillbar;
using test::FontBytes;
using test::SyntheticFont;

/// The seeds of one target.
class SeedFolder {
 public:
  explicit SeedFolder(const std::filesystem::path &path) : path_(path) { std::filesystem::create_directories(path); }

  void Add(const std::string &name, std::string_view bytes) const {
    std::ofstream(path_ / name, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  }
  void Add(const std::string &name, const FontBytes &bytes) const {
    Add(name, std::string_view(reinterpret_cast<const char *>(bytes.data()), bytes.size()));
  }

 private:
  std::filesystem::path path_;
};

std::string ReadFile(const std::filesystem::path &path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

/// Some letters of a real font, with its hints and composite glyphs; nothing where the font is missing.
FontBytes SubsetOf(const std::filesystem::path &path) {
  const std::string file = ReadFile(path);
  auto read = engine::TrueTypeFile::Read({file.begin(), file.end()});
  const auto *font = std::get_if<engine::TrueTypeFile>(&read);
  if (font == nullptr) return {};
  std::vector<engine::EmbeddedGlyph> glyphs{{false, 0, {}, 0}};
  std::map<std::uint16_t, std::uint16_t> characters;
  for (const char16_t character : std::u16string_view(u" ABx\u00C4\u00E9\u03A9")) {
    characters.emplace(character, static_cast<std::uint16_t>(glyphs.size()));
    glyphs.push_back({false, font->GlyphOf(character), {}, 0});
  }
  return engine::SubsetTrueType(*font, glyphs, characters);
}

/// The synthetic font with CFF outlines.
FontBytes WithCffOutlines() {
  SyntheticFont font;
  const auto read = engine::TrueTypeFile::Read(font.Build());
  std::vector<engine::EmbeddedGlyph> glyphs;
  for (std::uint16_t glyph = 0; glyph < 4; ++glyph) glyphs.push_back({false, glyph, {}, 0});
  font.tables["CFF "] = engine::CffProgram(std::get<engine::TrueTypeFile>(read), glyphs);
  font.signature = 0x4F54544F;  // OTTO
  FontBytes bytes = font.Build();
  for (const std::string_view tag : {"glyf", "loca"})
    *std::search(bytes.begin(), bytes.end(), tag.begin(), tag.end()) = 'x';
  return bytes;
}

/// `CFF ` tables: the synthetic font's, and some letters of a real font of each kind.
void WriteCffTables(const SeedFolder &folder) {
  const auto add = [&](const std::string &name, std::vector<std::uint8_t> bytes) {
    auto read = engine::TrueTypeFile::Read(std::move(bytes));
    const auto *font = std::get_if<engine::TrueTypeFile>(&read);
    if (font == nullptr) return;
    std::vector<engine::EmbeddedGlyph> glyphs{{false, 0, {}, 0}};
    for (const char16_t character : std::u16string_view(u"Ag\u00C4%@"))
      glyphs.push_back({false, font->GlyphOf(character), {}, 0});
    folder.Add(name, engine::CffProgram(*font, glyphs));
  };
  add("synthetic", SyntheticFont(120, 0x20).Build());
  for (const char *path : {"/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf",
                           "/usr/share/fonts/opentype/ebgaramond/EBGaramond12-Regular.otf"}) {
    const std::string file = ReadFile(path);
    add(std::filesystem::path(path).stem().string(), {file.begin(), file.end()});
  }
}

void WriteTrueTypeFonts(const SeedFolder &folder) {
  folder.Add("small", SyntheticFont().Build());
  SyntheticFont composite(6);
  composite.SetOutline(2, SyntheticFont::Composite({1, 3}));
  composite.SetOutline(4, SyntheticFont::Composite({2, 5}));
  folder.Add("composite", composite.Build());
  folder.Add("cff", WithCffOutlines());
  // With what the shaper reads.
  for (const char *path :
       {"/usr/share/fonts/truetype/lohit-devanagari/Lohit-Devanagari.ttf", "/usr/share/fonts/truetype/tlwg/Garuda.ttf"})
    folder.Add(std::filesystem::path(path).stem().string(), ReadFile(path));
  SyntheticFont groups;
  groups.SetCharacterMap(3, 10, SyntheticFont::GroupMap({{'A', 'B', 1}, {0x1F600, 0x1F600, 3}}));
  folder.Add("groups", groups.Build());
  SyntheticFont symbols;
  symbols.SetCharacterMap(3, 0, SyntheticFont::SegmentMap({{0xF041, 0xF043, 0x10000 - 0xF040}}));
  folder.Add("symbols", symbols.Build());
  SyntheticFont bytes;
  FontBytes table;
  for (const std::uint32_t number : {0u, 262u, 0u}) engine::Append16(table, number);
  for (int code = 0; code < 256; ++code) table.push_back(static_cast<std::uint8_t>(code % 4));
  bytes.SetCharacterMap(1, 0, table);
  folder.Add("bytes", bytes.Build());
  for (const char *name : {"DejaVuSans", "DejaVuSerif-Bold"}) {
    const FontBytes subset = SubsetOf("/usr/share/fonts/truetype/dejavu/" + std::string(name) + ".ttf");
    if (!subset.empty()) folder.Add(name, subset);
  }
}

void WriteType1Fonts(const SeedFolder &folder) {
  using namespace std::string_view_literals;
  const std::string metrics =
      R"(StartFontMetrics 4.1
FontName Small
EncodingScheme AdobeStandardEncoding
Weight Bold
ItalicAngle -12.5
IsFixedPitch true
FontBBox -10 -200 900 800
CapHeight 700
XHeight 500
Ascender 750
Descender -250
StdHW 20
StdVW 80
StartCharMetrics 3
C 32 ; WX 250 ; N space ; B 0 0 0 0 ;
CH <41> ; WX 722.5 ; N A ; L x y ;
C -1 ; W0X 500 ; N Adieresis ;
EndCharMetrics
)";
  const std::string plain = "%!PS-AdobeFont-1.0: Small\n/FontName /Small def\ncurrentfile eexec\n";
  const std::string trailer = std::string(512, '0') + "\ncleartomark\n";
  folder.Add("metrics", metrics);
  folder.Add("plain", metrics + '\0' + plain + "0123456789ABCDEF\n" + trailer);
  const auto segment = [](char kind, const std::string &bytes) {
    const auto length = static_cast<unsigned>(bytes.size());
    return std::string("\x80") + kind + static_cast<char>(length & 0xFF) + static_cast<char>(length >> 8) +
           std::string(2, '\0') + bytes;
  };
  folder.Add("segments", metrics + '\0' + segment(1, plain) + segment(2, "\x01\x02\x03\x04") + segment(1, trailer) +
                             std::string("\x80\x03"sv));
}

void WriteJpegs(const SeedFolder &folder) {
  for (const int components : {1, 3, 4}) {
    for (const bool progressive : {false, true}) {
      const std::string file =
          MakeJpeg({.width = 9, .height = 7, .components = components, .progressive = progressive});
      const std::string name = "jpeg" + std::to_string(components) + (progressive ? "progressive" : "baseline");
      folder.Add(name, file);
      folder.Add(name + "turned", WithExifOrientation(file, 6));
    }
  }
}

void WriteDeclarations(const SeedFolder &folder) {
  folder.Add("class",
             R"(Probe
FolderItem
mConstructor(size as Integer = 2, ByRef out as Single)
mNames(list() as String, Optional kind as KindEnum) as String()
sMake() as Probe
eChanged(sender as Probe, value as Variant) as Boolean
pNumber as Int32
pKind as KindEnum
nKindEnum as Integer
=NONE = 0
=MINUS = -1
=HEX = &hFF
)");
  folder.Add("declaration", "MeasureText(text as String, width as Single, ByRef outWidth as Single) as Integer");
  folder.Add("member", "NAME = &h7F");
}

void WriteTexts(const SeedFolder &folder) {
  const std::string text = "aA\xC3\xA4\xC3\x84\xE2\x82\xAC\xF0\x9F\x98\x80 ASCII text of more than eight bytes";
  // Encoding numbers as the target counts them: UTF-8 to UTF-16, to Latin 1, to raw bytes, and double-byte sets.
  for (const std::string &head :
       {std::string("\0\1\1\5", 4), std::string("\0\5\2\3", 4), std::string("\1\0\1\xFF", 4),
        std::string("\0\3\1\5", 4), std::string("\x1D\x1E\1\5", 4), std::string("\x1F\x20\2\4", 4)}) {
    folder.Add("text" + std::to_string(static_cast<int>(head[0])) + "-" + std::to_string(static_cast<int>(head[1])),
               head + text);
  }
}

/// A text of each script's own rules, with each of the fonts and in each direction.
void WriteShapedTexts(const SeedFolder &folder) {
  const std::map<std::string, std::string> texts = {
      {"devanagari", "\u0915\u094D\u0937\u093F \u0928\u092E\u0938\u094D\u0924\u0947 \u0930\u094D\u0915"},
      {"thai", "\u0E01\u0E34\u0E49 \u0E44\u0E17\u0E22\u0E33"},
      {"hebrew", "\u200F\u05E9\u05B8\u05DC\u05D5\u05DD (1) abc"},
      {"arabic", "\u0627\u0644\u0633\u0651\u0644\u0627\u0645 \u0661\u0662 \u202Eab\u202C"},
      {"marks", "e\u0301\u0323 A\u030A \u200D\uFE0F\U0001F468\u200D\U0001F469 fi"},
      {"khmer", "\u1780\u17D2\u1798\u17C2 \u0995\u09CD\u09B7 \u1005\u1039\u1005"},
  };
  for (const auto &[name, text] : texts) {
    for (char font = 0; font < 6; ++font) {
      folder.Add(name + std::to_string(font), std::string{font, static_cast<char>(font % 3)} + text);
    }
  }
}

void WriteParagraphs(const SeedFolder &folder) {
  folder.Add("hebrew", std::string(1, '\0') + "\u200F\u05D0\u05D1 (abc) 12, [\u05D2]!");
  folder.Add("arabic", "\1\u0627\u0644 \u0661\u0662-50% \u2067x\u2069 \u202Ey\u202C \u202Bz\u202C \u2068\u0300\u2069");
  folder.Add("japanese", "\2\u300C\u65E5\u672C\u300D\u3001\u3061\u3087\u30FC PDF\uFF08\uD55C\uFF09\u3002");
  folder.Add("thai", "\2\u0E44\u0E17\u0E22\u0E19\u0E35\u0E49\u0E46 \u1781\u17D2\u1798\u17C2\u200B\u1005\u1039\u1005");
}

void WriteRequests(const SeedFolder &folder) {
  const std::string end = " HTTP/1.1\r\nHost: 127.0.0.1:PORT\r\n\r\n";
  folder.Add("page", "GET /TOKEN/" + end);
  folder.Add("state", "GET /TOKEN/state?after=0" + end);
  folder.Add("document", "GET /TOKEN/documents/fuzz/0" + end);
  folder.Add("part", "GET /TOKEN/documents/fuzz/0 HTTP/1.1\r\nHost: localhost:PORT\r\nRange: bytes=1-3,-2\r\n\r\n");
  folder.Add("stranger", "GET /TOKEN/ HTTP/1.1\r\nHost: example.org\r\n\r\n");
  folder.Add("guess", "HEAD /../%2e/..%5c?a=b&c=%00#d HTTP/1.0\r\nHost: 127.0.0.1:PORT\r\nConnection: close\r\n\r\n");
  folder.Add("body",
             "POST /TOKEN/ HTTP/1.1\r\nHost: 127.0.0.1:PORT\r\nTransfer-Encoding: chunked\r\n"
             "Content-Type: multipart/form-data; boundary=x\r\n\r\n4\r\n--x\r\r\n0\r\n\r\n");
  folder.Add("two", "GET /TOKEN/" + end + "GET /TOKEN/state?after=99" + end);
}

/// Classes, modules and interfaces as projects store them, each with a script that uses it.
void WriteProjectFiles(const SeedFolder &folder) {
  const std::string point = R"(#tag Class
Protected Class Point
Inherits Shape
Implements Named, Sized
	#tag Event
		Sub Moved(x As Double)
		  Print Str(x)
		End Sub
	#tag EndEvent
	#tag Method, Flags = &h0
		Sub Constructor(x As Double, Optional y As Double = 1.5)
		  Self.X = x
		  mY = y
		End Sub
	#tag EndMethod
	#tag Hook, Flags = &h0
		Event Changed(y As Double) As Boolean
	#tag EndHook
	#tag DelegateDeclaration, Flags = &h0
		Delegate Function Filter(p As Point) As Boolean
	#tag EndDelegateDeclaration
	#tag ComputedProperty, Flags = &h0
		#tag Getter
			Get
			  Return mY
			End Get
		#tag EndGetter
		#tag Setter
			Set
			  mY = value
			End Set
		#tag EndSetter
		Y As Double
	#tag EndComputedProperty
	#tag Property, Flags = &h0
		X As Double = 2
	#tag EndProperty
	#tag Property, Flags = &h21
		Private mY As Double
	#tag EndProperty
	#tag Constant, Name = kLimit, Type = Double, Dynamic = False, Default = \"4", Scope = Public
	#tag EndConstant
	#tag Enum, Name = Kind, Type = Integer, Flags = &h0
		Round
		  Square = 4
	#tag EndEnum
	#tag ViewBehavior
		#tag ViewProperty
			Name="Name"
		#tag EndViewProperty
	#tag EndViewBehavior
End Class
#tag EndClass
)";
  const std::string shape = R"(#tag Class
Protected Class Shape
	#tag Hook, Flags = &h0
		Event Moved(x As Double)
	#tag EndHook
	#tag Method, Flags = &h0
		Shared Function Unit() As Shape
		  Return New Shape
		End Function
	#tag EndMethod
End Class
#tag EndClass
)";
  const std::string interfaces = R"(#tag Interface
Protected Interface Named
	#tag Method, Flags = &h0
		Function Name() As String
		End Function
	#tag EndMethod
End Interface
#tag EndInterface
)";
  const std::string module = R"(#tag Module
Protected Module Drawing
	#tag Method, Flags = &h1
		Protected Function Twice(Extends x As Double) As Double
		  Return 2 * x
		End Function
	#tag EndMethod
	#tag Note, Name = Read me
		Anything.
	#tag EndNote
	#tag Property, Flags = &h1
		Protected Count As Integer
	#tag EndProperty
End Module
#tag EndModule
)";
  const auto joined = [&folder](const std::string &name, std::initializer_list<std::string> files) {
    std::string seed;
    for (const std::string &file : files) seed += (seed.empty() ? "" : std::string(1, '\0')) + file;
    folder.Add(name, seed);
  };
  joined("shape", {"Dim s As Shape = Shape.Unit\n", shape});
  joined("point", {"Dim p As New Point(1)\np.Y = p.X\nPrint p.Name\n", point, shape, interfaces});
  joined("module", {"Dim d As Double = 2\nPrint Str(d.Twice + Drawing.Count)\n", module});
  joined("declared", {"Print Twice(2)\n", "Function Twice(x As Double) As Double\nReturn 2 * x\nEnd Function\n"});
}

/// The code blocks of a page of the documentation.
std::vector<std::string> ListingsOf(const std::filesystem::path &page) {
  std::vector<std::string> listings;
  std::ifstream file(page);
  bool isInside = false;
  for (std::string line; std::getline(file, line);) {
    if (line.starts_with("```")) {
      isInside = line == "```vb";
      if (isInside) listings.emplace_back();
    } else if (isInside) {
      listings.back() += line + '\n';
    }
  }
  return listings;
}

void WriteCalls(const SeedFolder &folder) {
  fuzz::ForEachCallSeed([&](const std::string &name, std::string_view sequence) { folder.Add(name, sequence); });
}

void WriteScripts(const SeedFolder &folder) {
  fuzz::ForEachMemberSeed(
      [&](const std::string &name, std::string_view script) { folder.Add("members-of-" + name, script); });
  for (const auto &entry : std::filesystem::directory_iterator(QUILLBAR_DOCUMENTATION)) {
    int number = 0;
    for (const std::string &listing : ListingsOf(entry.path()))
      folder.Add(entry.path().stem().string() + std::to_string(++number), listing);
  }
  for (const auto &entry : std::filesystem::directory_iterator(QUILLBAR_EXAMPLES)) {
    if (entry.path().extension() == ".xojo_script") folder.Add(entry.path().stem().string(), ReadFile(entry.path()));
  }
  folder.Add("language",
             "Enum Kind\nOne\nTwo = 5\nEnd Enum\nConst kMost = 3\nDim names() As String = Array(\"a\", \"b\")\n"
             "For i As Integer = 0 To kMost\nIf i Mod 2 = 0 And Not (i = 2) Then\n"
             "names.Add(Str(i) + Mid(\"hello\", i + 1, 2))\nElse\nContinue For\nEnd If\nNext\n"
             "Select Case names.Count\nCase 1 To 3, Is > 9\nPrint(\"few\")\nCase Else\nPrint(Total(1, 2.5))\n"
             "End Select\nDo\nExit Do\nLoop Until True\nWhile False\nWend\nFor Each n As String In names\n"
             "Print(n.Uppercase.Replace(\"A\", \"\xC3\xA4\"))\nNext\n"
             "Function Total(a As Integer, ByVal b As Double = 1) As Double\nTry\nReturn a + b ^ 2\n"
             "Catch e As RuntimeException\nReturn -1\nFinally\nPrint(Format(b, \"-#,##0.00\"))\nEnd Try\n"
             "End Function\n");
  folder.Add("document",
             R"(Dim d As New PDFDocument(New CompressorHandle)
Dim p As Page = d.AddPage
p.SetSize(Page.PageSizeEnum.A4, Page.PageDirectionEnum.PORTRAIT)
p.BeginText
p.SetFont(d.GetFont("Helvetica", Font.FontEncodingEnum.WINDOWS_ANSI), 24)
p.MoveTextPosition(72, 96)
p.ShowText("Text")
p.EndText
p.Rectangle(1, 2.5, 30, 40)
p.Draw
Print(d.SaveToMemoryBlock.Size)
)");
}

void WriteJson(const SeedFolder &folder) {
  folder.Add("object",
             R"({"name": "Ada \u00e9 \ud83d\ude00", "list": [1, -2.5e3, true, false, null], "in": {"a": {}}})");
  folder.Add("numbers", "[0, -0.0, 9223372036854775807, 18446744073709551615, 0.1, 1e-300, 123456789012345678901]");
  folder.Add("text", R"("say \"hi\" \\ \/ \b\f\n\r\t")");
}

}  // namespace

int main(int argumentCount, char **arguments) {
  if (argumentCount != 2) {
    std::cerr << "usage: write_seeds FOLDER\n";
    return 2;
  }
  const std::filesystem::path root = arguments[1];
  WriteTrueTypeFonts(SeedFolder(root / "truetype_font"));
  WriteCffTables(SeedFolder(root / "cff_outlines"));
  WriteType1Fonts(SeedFolder(root / "type1_font"));
  WriteJpegs(SeedFolder(root / "jpeg_image"));
  WriteJpegs(SeedFolder(root / "image_file"));
  fuzz::ForEachImageSeed([folder = SeedFolder(root / "image_file")](const std::string &name, std::string_view file) {
    folder.Add(name, file);
  });
  WriteDeclarations(SeedFolder(root / "declaration"));
  WriteTexts(SeedFolder(root / "text"));
  WriteParagraphs(SeedFolder(root / "layout"));
  WriteShapedTexts(SeedFolder(root / "shaping"));
  WriteJson(SeedFolder(root / "json"));
  WriteScripts(SeedFolder(root / "script"));
  WriteCalls(SeedFolder(root / "calls"));
  WriteProjectFiles(SeedFolder(root / "project_file"));
  WriteRequests(SeedFolder(root / "page_request"));
  return 0;
}
