#pragma once

#include "plugin/bridge/script_types.h"

/// Measuring text and setting it in boxes. Lengths are characters of the script's text, sizes points.
namespace quillbar::text {

Integer MeasureText(Page *page, String text, Single width, Boolean wordWrap);
Integer MeasureTextWidth(Page *page, String text, Single width, Boolean wordWrap, Single *outWidth);
Single TextRectMeasure(Page *page, String text, Single width, Integer *outLineCount);
void TextRect(Page *page, String text, Single left, Single top, Single right, Single bottom,
              TextAlignment alignment, Integer *length);
void TextRectBaseline(Page *page, String text, Single left, Single baseline, Single width, Single height,
                      TextAlignment alignment, Integer *length);

}  // namespace quillbar::text
