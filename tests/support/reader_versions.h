// SPDX-License-Identifier: MIT
// The releases of the programs that read PDF files here. Some read a text otherwise than their older releases did.
#pragma once

#include <compare>

namespace quillbar::test {

struct Version {
  int major, minor;
  auto operator<=>(const Version &) const = default;
};

/// The release of MuPDF or of Ghostscript, as its program tells it. Throws std::runtime_error where that can't be read.
Version MuPdfVersion();
Version GhostscriptVersion();

/// Whether MuPDF takes text on the page as running from left to right, and reverses right-to-left text.
inline bool MuPdfTurnsRightToLeft() { return MuPdfVersion() >= Version{1, 25}; }

/// Whether MuPDF puts a blank beside a mark for which its stand-in for a font that isn't embedded has no glyph, and takes a
/// mark at the left end of a line to the line before.
inline bool MuPdfDividesMarks() { return MuPdfVersion() >= Version{1, 26}; }

}  // namespace quillbar::test
