// SPDX-License-Identifier: MIT
#include "tests/readers/shown_texts.h"

#include <algorithm>
#include <utility>

#include "tests/support/real_fonts.h"
#include "tests/support/utf8_path.h"

namespace quillbar::test {
namespace {

constexpr std::int64_t kWindowsAnsi = 1;

std::vector<std::string> Characters(std::string_view utf8) {
  std::vector<std::string> characters;
  for (const char byte : utf8) {
    if ((static_cast<unsigned char>(byte) & 0xC0) == 0x80)
      characters.back() += byte;
    else
      characters.emplace_back(1, byte);
  }
  return characters;
}

std::string Turned(std::string_view utf8) {
  std::string turned;
  for (const std::string &character : Characters(utf8)) turned.insert(0, character);
  return turned;
}

// Of the basic multilingual plane.
char32_t CodePoint(const std::string &character) {
  const auto bits = [&](std::size_t i, unsigned mask) {
    return static_cast<char32_t>(static_cast<unsigned char>(character[i]) & mask);
  };
  if (character.size() == 1) return bits(0, 0x7F);
  if (character.size() == 2) return bits(0, 0x1F) << 6 | bits(1, 0x3F);
  return bits(0, 0x0F) << 12 | bits(1, 0x3F) << 6 | bits(2, 0x3F);
}

bool IsRightToLeft(char32_t c) { return c >= 0x590 && c < 0x700; }
bool IsHebrewMark(char32_t c) { return (c >= 0x5B0 && c <= 0x5BD) || c == 0x5BF || c == 0x5C1 || c == 0x5C2; }
bool IsArabicMark(char32_t c) { return c >= 0x64B && c <= 0x652; }
bool IsLatinMark(char32_t c) { return c >= 0x300 && c < 0x370; }
// Joiners and direction marks, which change the order of the text around them: they aren't shown themselves.
bool IsControl(char32_t c) { return c >= 0x200C && c <= 0x200F; }

// All of the encodings' characters but one. Ghostscript 10.05 copies nothing for a glyph that isn't there.
bool DejaVuSansHas(char32_t c) { return c != 0x6D2; }

ShownLine Plain(std::string text) { return {text, text, text}; }

// Right-to-left text is passed in the order in which the page has it.
ShownLine Sentence(const std::string &text) {
  if (!IsRightToLeft(CodePoint(Characters(text).front()))) return Plain(text);
  return {Turned(text), Turned(text), text};
}

// Lines of characters, in their order, as far as the font has them.
class Rows {
 public:
  explicit Rows(std::string_view text, bool (*has)(char32_t)) {
    for (const std::string &character : Characters(text)) {
      const char32_t c = CodePoint(character);
      if (!IsControl(c) && has(c)) Add(character, c);
    }
    EndRow();
    EndMirroredRow();
  }

  std::vector<ShownLine> leftToRight;
  std::vector<ShownLine> rightToLeft;

 private:
  void Add(const std::string &character, char32_t c) {
    // Between letters: at the end of a line a space or a hyphen would be layout, and a mark needs a letter.
    if (c == 0xA0 || c == 0xAD)
      leftToRight.push_back(Plain("one" + character + "two"));
    else if (IsLatinMark(c))
      leftToRight.push_back(Plain("x" + character + "y"));
    else if (IsHebrewMark(c))
      rightToLeft.push_back(Plain("\u05D0" + character + "\u05D0"));
    else if (IsArabicMark(c))
      rightToLeft.push_back(Plain("\u0628" + character + "\u0628"));
    else if (IsRightToLeft(c))
      AddTo(mirroredRow_, character, 8, &Rows::EndMirroredRow);
    else
      AddTo(row_, character, 16, &Rows::EndRow);
  }

  void AddTo(std::vector<std::string> &row, const std::string &character, std::size_t most, void (Rows::*end)()) {
    row.push_back(character);
    if (row.size() == most) (this->*end)();
  }

  void EndRow() {
    std::string text;
    for (const std::string &character : std::exchange(row_, {})) text += character;
    if (!text.empty()) leftToRight.push_back(Plain(text));
  }

  // Forwards and backwards, so that it reads alike from both sides.
  void EndMirroredRow() {
    std::string text;
    for (const std::string &character : std::exchange(mirroredRow_, {})) text += character;
    if (!text.empty()) rightToLeft.push_back(Plain(text + Turned(text)));
  }

  std::vector<std::string> row_;
  std::vector<std::string> mirroredRow_;
};

std::string Ascii() {
  std::string text;
  for (char c = '!'; c <= '~'; ++c) text += c;
  return text;
}

struct Page {
  const char *direction;  // for its name
  std::vector<ShownLine> lines;
};

// The sentence, if the font has all of it, then every character. Right-to-left text gets a page of its own, since
// readers put a page in the order of most of its letters.
std::vector<Page> PagesFor(const EncodingText &text, bool (*has)(char32_t)) {
  std::vector<Page> pages{{"", Rows(Ascii() + text.characters, has).leftToRight},
                          {", right to left", Rows(text.characters, has).rightToLeft}};
  const std::vector<std::string> sentence = Characters(text.sentence);
  if (std::all_of(sentence.begin(), sentence.end(), [&](const std::string &c) { return has(CodePoint(c)); })) {
    std::vector<ShownLine> &lines = pages[IsRightToLeft(CodePoint(sentence.front())) ? 1 : 0].lines;
    lines.insert(lines.begin(), Sentence(text.sentence));
  }
  if (pages[1].lines.empty()) pages.pop_back();
  return pages;
}

// Codes of a font that has an encoding of its own are passed as ASCII.
ShownLine Codes(const char *text, const char *characters) { return {text, characters, characters}; }

// The standard fonts have no line drawings. MuPDF's stand-ins for them put spaces there.
bool StandardFontsHave(char32_t c) { return c != 0x2320 && c != 0x2321 && !(c >= 0x2500 && c <= 0x25A0); }

// The characters of the encodings that C059 and Nimbus Sans have.
bool UrwFontsHave(char32_t c) {
  constexpr std::u32string_view kMissing = U"\u01A0\u01A1\u01AF\u01B0\u037A\u20AA\u20AB\uF8FF";
  const bool isDottedLetter = c >= 0x1E02 && c <= 0x1E6B;
  return !IsRightToLeft(c) && !IsLatinMark(c) && !isDottedLetter && kMissing.find(c) == kMissing.npos;
}

bool IsOfRussian(char32_t c) { return c < 0x7F || (c >= 0x410 && c < 0x450) || c == 0x401 || c == 0x451; }

}  // namespace

ShownTexts::ShownTexts(const Document &document, FontKind kind) : document_(document) {
  if (kind == FontKind::kTrueType) ShowTrueType();
  if (kind == FontKind::kStandard) ShowStandard();
  if (kind == FontKind::kType1) ShowType1();
}

void ShownTexts::ShowTrueType() {
  const ScriptObject font = document_.CallObject("LoadTrueTypeFont", File(kDejaVuSans));
  for (const EncodingText &text : EncodingTexts()) {
    ShowAll("TrueType in UTF-8, characters of ", font, text, DejaVuSansHas);
    ShowAll("TrueType in ", FontIn(font, text), text, DejaVuSansHas);
  }
  for (const RealFont &real : RealTrueTypeFonts()) {
    const ScriptObject one = document_.CallObject("LoadTrueTypeFont", File(real.path));
    Show(std::string("TrueType, ") + real.script, one, {Sentence(real.text)});
  }
}

void ShownTexts::ShowStandard() {
  for (const EncodingText &text : EncodingTexts())
    ShowAll("Helvetica in ", document_.GetFont("Helvetica", text.encoding), text, StandardFontsHave);
  for (const char *face :
       {"Helvetica-Bold", "Helvetica-Oblique", "Helvetica-BoldOblique", "Times-Roman", "Times-Bold", "Times-Italic",
        "Times-BoldItalic", "Courier", "Courier-Bold", "Courier-Oblique", "Courier-BoldOblique"}) {
    for (const EncodingText &text : EncodingTexts()) {
      const std::string_view name = text.name;
      if (name == "WindowsAnsi" || name == "Iso8859_7" || name == "Cp1251")
        ShowAll(face + std::string(" in "), document_.GetFont(face, text.encoding), text, StandardFontsHave);
    }
  }
  Show("Symbol", document_.GetFont("Symbol", kWindowsAnsi),
       {Codes("!\"#$%&'()*+,-./0123456789:;<=>?", "!∀#∃%&∋()∗+,−./0123456789:;<=>?"),
        Codes("@ABCDEFGHIJKLMNOPQRSTUVWXYZ[\\]^_", "≅ΑΒΧΔΕΦΓΗΙϑΚΛΜΝΟΠΘΡΣΤΥςΩΞΨΖ[∴]⊥_"),
        Codes("abcdefghijklmnopqrstuvwxyz{|}~", "αβχδεφγηιϕκλμνοπθρστυϖωξψζ{|}∼")});
  Show("ZapfDingbats", document_.GetFont("ZapfDingbats", kWindowsAnsi),
       {Codes("!\"#$%&'()*+,-./0123456789:;<=>?", "✁✂✃✄☎✆✇✈✉☛☞✌✍✎✏✐✑✒✓✔✕✖✗✘✙✚✛✜✝✞✟"),
        Codes("@ABCDEFGHIJKLMNOPQRSTUVWXYZ[\\]^_", "✠✡✢✣✤✥✦✧★✩✪✫✬✭✮✯✰✱✲✳✴✵✶✷✸✹✺✻✼✽✾✿"),
        Codes("abcdefghijklmnopqrstuvwxyz{|}~", "❁❂❃❄❅❆❇❈❉❊❋●❍■❏❐❑❒▲▼◆❖◗❘❙❚❛❜❝❞")});
}

void ShownTexts::ShowType1() {
  const ScriptObject roman =
      document_.CallObject("LoadType1Font", File(kRomanMetrics), File(kRomanProgram), kWindowsAnsi);
  // Names of glyphs: by their numbers, and in the Cyrillic style.
  const std::filesystem::path urw = "/usr/share/fonts/type1/urw-base35";
  const ScriptObject sans = document_.CallObject("LoadType1Font", File(urw / "NimbusSans-Regular.afm"),
                                                 File(urw / "NimbusSans-Regular.t1"), kWindowsAnsi);
  const std::filesystem::path cyrillic = "/usr/share/fonts/X11/Type1";
  const ScriptObject gothic = document_.CallObject("LoadType1Font", File(cyrillic / "a010013d.afm"),
                                                   File(cyrillic / "a010013d.pfb"), kWindowsAnsi);
  for (const EncodingText &text : EncodingTexts()) {
    ShowAll("C059 in ", FontIn(roman, text), text, UrwFontsHave);
    const std::string_view name = text.name;
    if (name == "WindowsAnsi" || name == "Iso8859_2" || name == "Iso8859_7" || name == "Cp1251")
      ShowAll("Nimbus Sans in ", FontIn(sans, text), text, UrwFontsHave);
    if (name == "Iso8859_5" || name == "Cp1251" || name == "Koi8R")
      ShowAll("URW Gothic in ", FontIn(gothic, text), text, IsOfRussian);
  }
}

ScriptObject ShownTexts::FontIn(const ScriptObject &font, const EncodingText &text) const {
  return document_.GetFont(font.GetString("Name").c_str(), text.encoding);
}

void ShownTexts::ShowAll(const std::string &name, const ScriptObject &font, const EncodingText &text,
                         bool (*has)(char32_t)) {
  for (const auto &[direction, lines] : PagesFor(text, has)) Show(name + text.name + direction, font, lines);
}

void ShownTexts::Show(const std::string &name, const ScriptObject &font, std::vector<ShownLine> lines) {
  ASSERT_FALSE(font.IsNil()) << name;
  constexpr float kLine = 16;
  const float height = kLine * static_cast<float>(lines.size() + 2);
  const ScriptObject page = document_.AddPage();
  page.Set("Height", height);
  page.Call("BeginText");
  page.Call("SetFont", font, 10);
  page.Call("MoveTextPosition", 20, height - kLine);
  for (const ShownLine &line : lines) {
    page.Call("ShowText", line.text);
    page.Call("MoveTextPosition", 0, -kLine);
  }
  page.Call("EndText");
  pages_.push_back({name, std::move(lines)});
}

ScriptObject ShownTexts::File(const std::filesystem::path &path) const {
  return {document_.host(), document_.host().Create("FolderItem", {Utf8(path)})};
}

}  // namespace quillbar::test
