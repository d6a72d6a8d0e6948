// SPDX-License-Identifier: MIT
// Colour operators: RG rg K k (ISO 32000-1, table 74).
#include "plugin/engine/pages/page_operator.h"

using namespace quillbar::engine;

namespace {

template <typename... Components>
bool AnyIsBeyondOne(Components... components) {
  return ((components < 0 || components > 1) || ...);
}

}  // namespace

extern "C" {

/// RG: the colour of lines in DeviceRGB, each component from 0 to 1.
HPDF_STATUS HPDF_Page_SetRGBStroke(HPDF_Page page, HPDF_REAL red, HPDF_REAL green, HPDF_REAL blue) {
  return PageOperator(page, kInPage | kInText)
      .RefuseIf(AnyIsBeyondOne(red, green, blue))
      .Write(red, green, blue, "RG")
      .Then([&](PageAttributes &now) {
        now.gstate->rgb_stroke = {red, green, blue};
        now.gstate->cs_stroke = HPDF_CS_DEVICE_RGB;
      });
}

/// rg: the colour of fillings in DeviceRGB.
HPDF_STATUS HPDF_Page_SetRGBFill(HPDF_Page page, HPDF_REAL red, HPDF_REAL green, HPDF_REAL blue) {
  return PageOperator(page, kInPage | kInText)
      .RefuseIf(AnyIsBeyondOne(red, green, blue))
      .Write(red, green, blue, "rg")
      .Then([&](PageAttributes &now) {
        now.gstate->rgb_fill = {red, green, blue};
        now.gstate->cs_fill = HPDF_CS_DEVICE_RGB;
      });
}

/// K: the colour of lines in DeviceCMYK, each component from 0 to 1.
HPDF_STATUS HPDF_Page_SetCMYKStroke(HPDF_Page page, HPDF_REAL cyan, HPDF_REAL magenta, HPDF_REAL yellow,
                                    HPDF_REAL black) {
  return PageOperator(page, kInPage | kInText)
      .RefuseIf(AnyIsBeyondOne(cyan, magenta, yellow, black))
      .Write(cyan, magenta, yellow, black, "K")
      .Then([&](PageAttributes &now) {
        now.gstate->cmyk_stroke = {cyan, magenta, yellow, black};
        now.gstate->cs_stroke = HPDF_CS_DEVICE_CMYK;
      });
}

/// k: the colour of fillings in DeviceCMYK.
HPDF_STATUS HPDF_Page_SetCMYKFill(HPDF_Page page, HPDF_REAL cyan, HPDF_REAL magenta, HPDF_REAL yellow,
                                  HPDF_REAL black) {
  return PageOperator(page, kInPage | kInText)
      .RefuseIf(AnyIsBeyondOne(cyan, magenta, yellow, black))
      .Write(cyan, magenta, yellow, black, "k")
      .Then([&](PageAttributes &now) {
        now.gstate->cmyk_fill = {cyan, magenta, yellow, black};
        now.gstate->cs_fill = HPDF_CS_DEVICE_CMYK;
      });
}

}  // extern "C"
