#pragma once

#include "plugin/page/page_data.h"

namespace quillbar {

/// The height of a font's bounding box, in points at `size`: the distance of lines that fits any of its
/// glyphs.
float SuggestedLeading(HPDF_Font font, float size);

/// Replaces a text leading of 0 by the suggested one while it lives, and puts back what was there.
class LeadingForOneLine {
 public:
  explicit LeadingForOneLine(HPDF_Page page);
  ~LeadingForOneLine();
  LeadingForOneLine(const LeadingForOneLine &) = delete;
  LeadingForOneLine &operator=(const LeadingForOneLine &) = delete;

 private:
  HPDF_Page page_;
  float before_;
};

}  // namespace quillbar
