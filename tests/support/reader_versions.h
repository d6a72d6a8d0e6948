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

}  // namespace quillbar::test
