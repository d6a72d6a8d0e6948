// SPDX-License-Identifier: MIT
#pragma once

#include "plugin/page/page_data.h"

namespace quillbar {

/// The height of a font's bounding box, in points at `size`: the distance of lines that fits any of its
/// glyphs.
float SuggestedLeading(HPDF_Font font, float size);

/// Restores a page's text leading when it goes out of scope.
class RestoredLeading {
 public:
  explicit RestoredLeading(HPDF_Page page);
  ~RestoredLeading();
  RestoredLeading(const RestoredLeading &) = delete;
  RestoredLeading &operator=(const RestoredLeading &) = delete;

 protected:
  HPDF_Page page_;
  float before_;
};

/// Replaces a text leading of 0 by the suggested one, and restores it at the end of the scope.
class LeadingForOneLine : RestoredLeading {
 public:
  explicit LeadingForOneLine(HPDF_Page page);
};

}  // namespace quillbar
