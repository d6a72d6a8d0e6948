// SPDX-License-Identifier: MIT
#pragma once

#include "plugin/page/page_data.h"

/// From script coordinates to PDF coordinates. With `TransformCoordinates` on, the script's origin is the
/// top-left corner and y grows downwards; x, widths, heights, radii and angles never change. All arithmetic
/// is in single precision, one rounding for each subtraction.
namespace quillbar {

/// The y of a point.
inline float FlipY(const PageData &page, float y) { return page.transformCoordinates != 0 ? page.cachedHeight - y : y; }

/// The lower edge of a rectangle that the script names by its top-left corner.
inline float FlipRectangleY(const PageData &page, float y, float height) {
  if (page.transformCoordinates == 0) return y;
  const float top = page.cachedHeight - y;
  return top - height;
}

}  // namespace quillbar
