// SPDX-License-Identifier: MIT
#include "tests/readers/known_limits.h"

#include <algorithm>
#include <string_view>

#include "tests/support/pattern.h"
#include "tests/support/reader_versions.h"

namespace quillbar::test {
namespace {

using enum TextReader;
using enum Treatment;

// Whether a mark of Latin, Hebrew or Arabic text begins there, in UTF-8.
bool IsMarkAt(std::string_view text, std::size_t at) {
  if (at + 2 > text.size()) return false;
  const auto first = static_cast<unsigned char>(text[at]), second = static_cast<unsigned char>(text[at + 1]);
  return first == 0xCC || (first == 0xCD && second <= 0xAF) || (first == 0xD6 && second >= 0x91) ||
         (first == 0xD7 && second <= 0x87) || (first == 0xD9 && second >= 0x8B && second <= 0x92);
}

const std::vector<Treatment> kAny{kAsWritten, kRewrittenByGhostscript, kLinearizedByQpdf};
const std::vector<Treatment> kNotRewritten{kAsWritten, kLinearizedByQpdf};
const std::vector<Treatment> kRewritten{kRewrittenByGhostscript};
constexpr char kLatin1OfStandardFonts[] = "^(Helvetica|Times|Courier).* in (WindowsAnsi|Cp1252|Iso8859_15)$";
const std::vector<TextReader> kAll(std::begin(kTextReaders), std::end(kTextReaders));

}  // namespace

const std::vector<KnownLimit> &KnownLimits() {
  static const std::vector<KnownLimit> limits = [] {
    std::vector<KnownLimit> all;
    const auto add = [&all](bool isThere, std::initializer_list<KnownLimit> more) {
      if (isThere) all.insert(all.end(), more);
    };
    // Ghostscript's losses come first, since readers see what it left.
    add(GhostscriptVersion() < Version{10, 5},
        {{kAll, kRewritten, kLatin1OfStandardFonts, "\u00AD", "-",
          "it trusts the name of a glyph: the soft hyphen is a hyphen"},
         {kAll, kRewritten, kLatin1OfStandardFonts, "\u00A0", " ", "likewise, the no-break space a space"},
         {kAll, kRewritten, "^Symbol$", "\u0394", "\u2206", "likewise, the letter Delta the sign for a difference"},
         {kAll, kRewritten, "^Symbol$", "\u03A9", "\u2126", "likewise, the letter Omega the sign for ohms"},
         {kAll, kRewritten, "^Symbol$", "\u03BC", "\u00B5", "likewise, the letter my the sign for a millionth"}});
    add(MuPdfVersion() < Version{1, 25},
        {{{kMuPdf},
          kNotRewritten,
          "^Helvetica in MacRoman$",
          "\u25CA",
          "\u25CA ",
          "its stand-in for Helvetica has no lozenge, and it takes the place for a space"}});
    add(true, {{{kPoppler, kMuPdf, kPdfJs}, kAny, "", "\u00A0", " ", "they copy a no-break space as a space"},
               {{kPdfJs}, kAny, "", "\u00AD", "", "it leaves out soft hyphens, so that a divided word is found"},
               {{kMuPdf, kPdfium}, kAny, "", "\uFB01", "fi", "they take ligatures apart"},
               {{kMuPdf, kPdfium}, kAny, "", "\uFB02", "fl", "they take ligatures apart"}});
    return all;
  }();
  return limits;
}

std::vector<KnownLimit> KnownLimitsOf(TextReader reader, Treatment treatment, const std::string &page) {
  std::vector<KnownLimit> limits;
  for (const KnownLimit &limit : KnownLimits()) {
    if (std::ranges::find(limit.readers, reader) != limit.readers.end() &&
        std::ranges::find(limit.treatments, treatment) != limit.treatments.end() &&
        !FirstMatchIn(page, limit.pages).empty())
      limits.push_back(limit);
  }
  return limits;
}

std::string WithLimits(std::string line, const std::vector<KnownLimit> &limits) {
  for (const KnownLimit &limit : limits) {
    const std::string_view shown = limit.shown, read = limit.read;
    for (std::size_t at = 0; (at = line.find(shown, at)) != line.npos; at += read.size())
      line.replace(at, shown.size(), read);
  }
  return line;
}

std::string WithoutBlanksBesideMarks(const std::string &line) {
  std::string kept;
  for (std::size_t i = 0; i < line.size(); ++i) {
    const bool isBesideMark = IsMarkAt(line, i + 1) || (i >= 2 && IsMarkAt(line, i - 2));
    if (line[i] != ' ' || !isBesideMark) kept += line[i];
  }
  return kept;
}

}  // namespace quillbar::test
