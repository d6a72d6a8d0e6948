// SPDX-License-Identifier: MIT
// Operators of text: objects BT ET, state Tc Tw TL Tf Tr Ts and positioning Td Tm T* (ISO 32000-1, tables 105, 107 and
// 108). Those that show text are in text_showing.cpp.
#include <hpdf_font.h>

#include <cmath>
#include <cstdint>

#include "plugin/engine/objects/enumeration_numbers.h"
#include "plugin/engine/pages/page_operator.h"
#include "plugin/engine/text/text_position.h"

using namespace quillbar::engine;

namespace {

// A size as the detail of an error: its whole part, or 0 if that has no room there.
HPDF_STATUS DetailOf(HPDF_REAL size) {
  const bool hasRoom = std::fabs(size) < 0x1p63F;
  return hasRoom ? static_cast<HPDF_STATUS>(static_cast<std::int64_t>(size)) : 0;
}

}  // namespace

extern "C" {

/// BT: begins a text object, at (0, 0).
HPDF_STATUS HPDF_Page_BeginText(HPDF_Page page) {
  return PageOperator(page, kInPage).Write("BT").Then([](PageAttributes &now) {
    now.text_pos = {0, 0};
    now.text_matrix = {1, 0, 0, 1, 0, 0};
    now.gmode = HPDF_GMODE_TEXT_OBJECT;
  });
}

/// ET: ends it.
HPDF_STATUS HPDF_Page_EndText(HPDF_Page page) {
  return PageOperator(page, kInText).Write("ET").Then([](PageAttributes &now) {
    now.text_pos = {0, 0};
    now.gmode = HPDF_GMODE_PAGE_DESCRIPTION;
  });
}

/// Tc: the space added after each character, from -30 to 300 text space units.
HPDF_STATUS HPDF_Page_SetCharSpace(HPDF_Page page, HPDF_REAL space) {
  return PageOperator(page, kInPage | kInText)
      .RefuseIf(space < HPDF_MIN_CHARSPACE || space > HPDF_MAX_CHARSPACE)
      .Write(space, "Tc")
      .Then([&](PageAttributes &now) { now.gstate->char_space = space; });
}

/// Tw: the space added after each word space, from -30 to 300 text space units.
HPDF_STATUS HPDF_Page_SetWordSpace(HPDF_Page page, HPDF_REAL space) {
  return PageOperator(page, kInPage | kInText)
      .RefuseIf(space < HPDF_MIN_WORDSPACE || space > HPDF_MAX_WORDSPACE)
      .Write(space, "Tw")
      .Then([&](PageAttributes &now) { now.gstate->word_space = space; });
}

/// TL: the distance of lines in text space units.
HPDF_STATUS HPDF_Page_SetTextLeading(HPDF_Page page, HPDF_REAL leading) {
  return PageOperator(page, kInPage | kInText).Write(leading, "TL").Then([&](PageAttributes &now) {
    now.gstate->text_leading = leading;
  });
}

/// Tf: a font of the same document and its size, above 0 and at most 600 text space units.
HPDF_STATUS HPDF_Page_SetFontAndSize(HPDF_Page page, HPDF_Font font, HPDF_REAL size) {
  PageOperator set(page, kInPage | kInText);
  set.RefuseIf(!HPDF_Font_Validate(font), HPDF_PAGE_INVALID_FONT)
      .RefuseIf(size <= 0 || size > HPDF_MAX_FONTSIZE, HPDF_PAGE_INVALID_FONT_SIZE, DetailOf(size))
      .RefuseIf([&](const PageAttributes &) { return page->mmgr != font->mmgr; }, HPDF_PAGE_INVALID_FONT);
  const ResourceName name = set.NameOf(kFonts, font, HPDF_PAGE_INVALID_FONT);
  return set.Write(name, size, "Tf").Then([&](PageAttributes &now) {
    now.gstate->font = font;
    now.gstate->font_size = size;
    now.gstate->writing_mode = static_cast<HPDF_FontAttr>(font->attr)->writing_mode;
  });
}

/// Tr: whether text is filled, stroked, or clips.
QUILLBAR_ANY_ENUMERATION_NUMBER HPDF_STATUS HPDF_Page_SetTextRenderingMode(HPDF_Page page,
                                                                           HPDF_TextRenderingMode mode) {
  const auto number = static_cast<HPDF_UINT>(mode);
  return PageOperator(page, kInPage | kInText)
      .RefuseIf(number >= HPDF_RENDERING_MODE_EOF, HPDF_PAGE_OUT_OF_RANGE, number)
      .Write(number, "Tr")
      .Then([&](PageAttributes &now) { now.gstate->rendering_mode = mode; });
}

/// Ts: how far text is above its line, in text space units.
HPDF_STATUS HPDF_Page_SetTextRise(HPDF_Page page, HPDF_REAL rise) {
  return PageOperator(page, kInPage | kInText).Write(rise, "Ts").Then([&](PageAttributes &now) {
    now.gstate->text_rise = rise;
  });
}

/// Td: begins a line at (x, y) from where the current one begins, in text space units.
HPDF_STATUS HPDF_Page_MoveTextPos(HPDF_Page page, HPDF_REAL x, HPDF_REAL y) {
  return PageOperator(page, kInText).Write(x, y, "Td").Then([&](PageAttributes &now) {
    HPDF_TransMatrix &matrix = now.text_matrix;
    matrix.x += x * matrix.a + y * matrix.c;
    matrix.y += y * matrix.d + x * matrix.b;
    now.text_pos = {matrix.x, matrix.y};
  });
}

/// Tm: the text matrix. One that makes all text a line or a point is refused, if its zeros show it.
HPDF_STATUS HPDF_Page_SetTextMatrix(HPDF_Page page, HPDF_REAL a, HPDF_REAL b, HPDF_REAL c, HPDF_REAL d, HPDF_REAL x,
                                    HPDF_REAL y) {
  return PageOperator(page, kInText)
      .RefuseIf((a == 0 || d == 0) && (b == 0 || c == 0), HPDF_INVALID_PARAMETER)
      .Write(a, b, c, d, x, y, "Tm")
      .Then([&](PageAttributes &now) {
        now.text_matrix = {a, b, c, d, x, y};
        now.text_pos = {x, y};
      });
}

/// T*: begins a line one text leading below the current one.
HPDF_STATUS HPDF_Page_MoveToNextLine(HPDF_Page page) {
  return PageOperator(page, kInText).Write("T*").Then(BeginNextLine);
}

}  // extern "C"
