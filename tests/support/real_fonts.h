// SPDX-License-Identifier: MIT
// Fonts of Debian packages that the tests read; scripts/packages.sh installs them.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <ostream>
#include <string>
#include <vector>

namespace quillbar::test {

/// A font file, and a text for it.
struct RealFont {
  const char *script;
  const char *package;
  const char *path;
  const char *text;  // UTF-8
};

inline void PrintTo(const RealFont &font, std::ostream *out) { *out << font.script; }

inline constexpr char kDejaVuSans[] = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";
inline constexpr char kRomanMetrics[] = "/usr/share/fonts/type1/urw-base35/C059-Roman.afm";
inline constexpr char kRomanProgram[] = "/usr/share/fonts/type1/urw-base35/C059-Roman.t1";
inline constexpr char kGaruda[] = "/usr/share/fonts/truetype/tlwg/Garuda.ttf";
inline constexpr char kEzra[] = "/usr/share/fonts/truetype/ezra/SILEOT.ttf";
/// With CFF outlines, a variable font, and a collection.
inline constexpr char kEbGaramond[] = "/usr/share/fonts/opentype/ebgaramond/EBGaramond12-Regular.otf";
inline constexpr char kInterVariable[] = "/usr/share/fonts/truetype/inter-vf/Inter.var.ttf";
inline constexpr char kMicroHei[] = "/usr/share/fonts/truetype/wqy/wqy-microhei.ttc";
inline constexpr char kAmiri[] = "/usr/share/fonts/opentype/fonts-hosny-amiri/Amiri-Regular.ttf";
inline constexpr char kIpaMincho[] = "/usr/share/fonts/opentype/ipafont-mincho/ipam.ttf";

/// Files that are not fonts: without an end, or endlessly empty.
#ifdef _WIN32
inline constexpr const char *kDevices[] = {"NUL", "\\\\.\\NUL", "CON"};
#else
inline constexpr const char *kDevices[] = {"/dev/zero", "/dev/null", "/dev/random"};
#endif

/// One font for each script, all with outlines in a `glyf` table.
inline const std::vector<RealFont> &RealTrueTypeFonts() {
  static const std::vector<RealFont> fonts{
      {"Latin", "fonts-dejavu-core", kDejaVuSans, "Zwölf Boxkämpfer – €"},
      {"Greek", "fonts-dejavu-core", kDejaVuSans, "Ξεσκεπάζω την ψυχοφθόρα"},
      {"Cyrillic", "fonts-dejavu-core", kDejaVuSans, "Съешь же ещё этих мягких"},
      {"Japanese", "fonts-ipafont-mincho", kIpaMincho, "いろはにほへと色は匂へど"},
      {"Korean", "fonts-nanum", "/usr/share/fonts/truetype/nanum/NanumGothic.ttf", "키스의 고유조건은"},
      {"Chinese", "fonts-arphic-gbsn00lp", "/usr/share/fonts/truetype/arphic-gbsn00lp/gbsn00lp.ttf",
       "天地玄黄宇宙洪荒"},
      {"Thai", "fonts-tlwg-garuda-ttf", kGaruda, "เปนมนษยสดประเสรฐ"},
      {"Devanagari", "fonts-lohit-deva", "/usr/share/fonts/truetype/lohit-devanagari/Lohit-Devanagari.ttf",
       "ऋषय कमल गगन"},
      {"Hebrew", "fonts-sil-ezra", kEzra, "דגסקרןשט"},
  };
  return fonts;
}

}  // namespace quillbar::test

/// Skips the test with a message where a font's package is not installed.
#define QUILLBAR_NEEDS_FONT(path, package) \
  if (!std::filesystem::exists(path)) GTEST_SKIP() << "needs " << (path) << " of the Debian package " << (package)
