// SPDX-License-Identifier: MIT
// Fonts of Debian packages that are odd in one way or another: all are loaded, named as libharu names them,
// shown, and their files judged.
#include <gmock/gmock.h>

#include "tests/plugin/engine/driver/font_document.h"
#include "tests/support/real_fonts.h"

namespace quillbar {
namespace {

using testing::IsEmpty;

struct OddFont {
  const char *oddity;
  const char *package;
  const char *file;     // TrueType, or the metrics of a Type 1 font
  const char *program;  // null for TrueType
  const char *name;
};

void PrintTo(const OddFont &font, std::ostream *out) { *out << font.oddity; }

constexpr OddFont kOddFonts[] = {
    {"Dingbats", "fonts-urw-base35", "/usr/share/fonts/type1/urw-base35/D050000L.afm",
     "/usr/share/fonts/type1/urw-base35/D050000L.t1", "D050000L"},
    {"Symbols", "fonts-urw-base35", "/usr/share/fonts/type1/urw-base35/StandardSymbolsPS.afm",
     "/usr/share/fonts/type1/urw-base35/StandardSymbolsPS.t1", "StandardSymbolsPS"},
    {"Chancery", "fonts-urw-base35", "/usr/share/fonts/type1/urw-base35/Z003-MediumItalic.afm",
     "/usr/share/fonts/type1/urw-base35/Z003-MediumItalic.t1", "Z003-MediumItalic"},
    {"FixedPitch", "fonts-urw-base35", "/usr/share/fonts/type1/urw-base35/NimbusMonoPS-BoldItalic.afm",
     "/usr/share/fonts/type1/urw-base35/NimbusMonoPS-BoldItalic.t1", "NimbusMonoPS-BoldItalic"},
    {"Oblique", "fonts-urw-base35", "/usr/share/fonts/type1/urw-base35/URWGothic-BookOblique.afm",
     "/usr/share/fonts/type1/urw-base35/URWGothic-BookOblique.t1", "URWGothic-BookOblique"},
    {"CyrillicSegments", "t1-cyrillic", "/usr/share/fonts/X11/Type1/a010013d.afm",
     "/usr/share/fonts/X11/Type1/a010013d.pfb", "URWGothicCYR-Book"},
    {"HebrewMarks", "fonts-sil-ezra", "/usr/share/fonts/truetype/ezra/SILEOT.ttf", nullptr, "EzraSIL"},
    {"ChineseBitmaps", "fonts-arphic-gbsn00lp", "/usr/share/fonts/truetype/arphic-gbsn00lp/gbsn00lp.ttf", nullptr,
     "BousungEG-Light-GB"},
    {"KoreanSyllables", "fonts-nanum", "/usr/share/fonts/truetype/nanum/NanumGothic.ttf", nullptr, "NanumGothic"},
    {"HighAscent", "fonts-tlwg-garuda-ttf", "/usr/share/fonts/truetype/tlwg/Garuda.ttf", nullptr, "Garuda"},
    {"StyleOfOneWord", "fonts-tlwg-garuda-ttf", "/usr/share/fonts/truetype/tlwg/Garuda-BoldOblique.ttf", nullptr,
     "Garuda-BoldOblique,BoldOblique"},
    {"DevanagariForms", "fonts-lohit-deva", "/usr/share/fonts/truetype/lohit-devanagari/Lohit-Devanagari.ttf", nullptr,
     "Lohit-Devanagari"},
    {"StyleBesideTheName", "fonts-dejavu-core", "/usr/share/fonts/truetype/dejavu/DejaVuSansMono-Bold.ttf", nullptr,
     "DejaVuSansMono-Bold,Bold"},
};

class OddFontTest : public testing::TestWithParam<OddFont> {};

TEST_P(OddFontTest, IsLoadedNamedAndShown) {
  const OddFont &font = GetParam();
  QUILLBAR_NEEDS_FONT(font.file, font.package);
  test::FontDocument document;
  const char *name = font.program == nullptr ? document.Load(font.file) : document.LoadType1(font.file, font.program);
  ASSERT_STREQ(name, font.name);
  document.Show(document.Font(name, "WinAnsiEncoding"), "Sphinx 0123 \xD7 4");
  EXPECT_TRUE(test::Flawless(document.SaveToString()));
  EXPECT_THAT(document.TakeCodes(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Debian, OddFontTest, testing::ValuesIn(kOddFonts),
                         [](const auto &made) { return std::string(made.param.oddity); });

}  // namespace
}  // namespace quillbar
