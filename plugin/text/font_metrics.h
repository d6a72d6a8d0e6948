// SPDX-License-Identifier: MIT
#pragma once

#include <hpdf.h>

#include "plugin/script/script_types.h"

/// `Font`: how an instance begins, and its metrics.
namespace quillbar::text {

/// Class constructor: no document, no faces parked.
void Initialize(Object font);

/// In 1/1000 of the font size, of the face that the font was made with; 0 when the library has none.
Integer GetAscent(Font *font);
Integer GetDescent(Font *font);

/// The library's name of that face, by which `GetFont` finds it again; empty when the library has none.
String GetName(Font *font);

/// The box that holds every glyph, in 1/1000 of the font size. It is taken from the face in use when an edge of it is
/// read first, and then kept. Zeros for a font without a document.
const HPDF_Rect &BoundingBoxOf(Font *font);

/// The property that is an edge of the box.
template <HPDF_REAL HPDF_Rect::*Edge>
Single GetBoundingBox(Font *font) {
  return BoundingBoxOf(font).*Edge;
}

}  // namespace quillbar::text
