// SPDX-License-Identifier: MIT
// What a page's mode, position and graphics state are. What is not a page answers with the values of a new one.
#include "plugin/engine/pages/page_object.h"

using namespace quillbar::engine;

namespace {

// A value of the page's graphics state.
template <typename Value>
Value InState(HPDF_Page page, Value HPDF_GState_Rec::*value, Value otherwise) {
  return IsPage(page) ? AttributesOf(page).gstate->*value : otherwise;
}

// A colour of the page's graphics state: black if the colour there is of another colour space.
HPDF_RGBColor RGBInState(HPDF_Page page, HPDF_RGBColor HPDF_GState_Rec::*colour,
                         HPDF_ColorSpace HPDF_GState_Rec::*space) {
  const bool isRGB = InState(page, space, HPDF_CS_EOF) == HPDF_CS_DEVICE_RGB;
  return isRGB ? AttributesOf(page).gstate->*colour : HPDF_RGBColor{0, 0, 0};
}

}  // namespace

extern "C" {

HPDF_UINT16 HPDF_Page_GetGMode(HPDF_Page page) { return ModeOf(page); }

HPDF_UINT HPDF_Page_GetGStateDepth(HPDF_Page page) { return InState(page, &HPDF_GState_Rec::depth, HPDF_UINT{0}); }

HPDF_REAL HPDF_Page_GetLineWidth(HPDF_Page page) {
  return InState(page, &HPDF_GState_Rec::line_width, HPDF_REAL{HPDF_DEF_LINEWIDTH});
}

HPDF_LineCap HPDF_Page_GetLineCap(HPDF_Page page) {
  return InState(page, &HPDF_GState_Rec::line_cap, HPDF_DEF_LINECAP);
}

HPDF_LineJoin HPDF_Page_GetLineJoin(HPDF_Page page) {
  return InState(page, &HPDF_GState_Rec::line_join, HPDF_DEF_LINEJOIN);
}

HPDF_RGBColor HPDF_Page_GetRGBStroke(HPDF_Page page) {
  return RGBInState(page, &HPDF_GState_Rec::rgb_stroke, &HPDF_GState_Rec::cs_stroke);
}

HPDF_RGBColor HPDF_Page_GetRGBFill(HPDF_Page page) {
  return RGBInState(page, &HPDF_GState_Rec::rgb_fill, &HPDF_GState_Rec::cs_fill);
}

HPDF_REAL HPDF_Page_GetWordSpace(HPDF_Page page) {
  return InState(page, &HPDF_GState_Rec::word_space, HPDF_REAL{HPDF_DEF_WORDSPACE});
}

HPDF_REAL HPDF_Page_GetTextLeading(HPDF_Page page) {
  return InState(page, &HPDF_GState_Rec::text_leading, HPDF_REAL{HPDF_DEF_LEADING});
}

HPDF_Font HPDF_Page_GetCurrentFont(HPDF_Page page) { return InState(page, &HPDF_GState_Rec::font, HPDF_Font{nullptr}); }

// 0 without a font.
HPDF_REAL HPDF_Page_GetCurrentFontSize(HPDF_Page page) {
  return InState(page, &HPDF_GState_Rec::font_size, HPDF_REAL{0});
}

HPDF_TextRenderingMode HPDF_Page_GetTextRenderingMode(HPDF_Page page) {
  return InState(page, &HPDF_GState_Rec::rendering_mode, HPDF_DEF_RENDERING_MODE);
}

HPDF_REAL HPDF_Page_GetTextRise(HPDF_Page page) {
  return InState(page, &HPDF_GState_Rec::text_rise, HPDF_REAL{HPDF_DEF_RISE});
}

// (0, 0) outside of a text object.
HPDF_Point HPDF_Page_GetCurrentTextPos(HPDF_Page page) {
  const bool isInText = (HPDF_Page_GetGMode(page) & HPDF_GMODE_TEXT_OBJECT) != 0;
  return isInText ? AttributesOf(page).text_pos : HPDF_Point{0, 0};
}

}  // extern "C"
