#include "plugin/text/measure.h"

namespace quillbar::text {

Integer MeasureText(Page *, String, Single, Boolean) { return -1; }

Integer MeasureTextWidth(Page *, String, Single, Boolean, Single *) { return -1; }

Single TextRectMeasure(Page *, String, Single, Integer *outLineCount) {
  *outLineCount = 0;
  return 0;
}

void TextRect(Page *, String, Single, Single, Single, Single, TextAlignment, Integer *length) { *length = 0; }

void TextRectBaseline(Page *, String, Single, Single, Single, Single, TextAlignment, Integer *length) {
  *length = 0;
}

}  // namespace quillbar::text
