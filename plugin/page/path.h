// SPDX-License-Identifier: MIT
#pragma once

#include "plugin/script/script_types.h"

/// Building a path and painting it. Positions and lengths are points, angles degrees; y is flipped where the
/// page works from the top.
///
/// Some members act only in certain graphics modes and are silent in any other; the rest call the library in
/// every mode, which refuses with an error record. The unevenness is part of the interface: scripts rely on
/// it.
namespace quillbar::page {

/// Any mode. (x, y) is the rectangle's lower left corner, its upper left one on a page that works from the
/// top.
void Rectangle(Page *page, Single x, Single y, Single width, Single height);
/// Any mode. Around (x, y).
void Ellipse(Page *page, Single x, Single y, Single xRadius, Single yRadius);
/// Any mode. The flip moves the centre only; the angles keep their sense.
void Arc(Page *page, Single x, Single y, Single radius, Single angle1, Single angle2);
/// Page description or path.
void MoveTo(Page *page, Single x, Single y);
/// Path.
void LineTo(Page *page, Single x, Single y);
/// Path. Two control points, then the end point.
void CurveTo(Page *page, Single x1, Single y1, Single x2, Single y2, Single x3, Single y3);
/// Path. The current point is the first control point.
void CurveTo2(Page *page, Single x2, Single y2, Single x3, Single y3);
/// Path. The end point is the second control point.
void CurveTo3(Page *page, Single x1, Single y1, Single x3, Single y3);

/// Any mode. Strokes the path.
void Draw(Page *page);
/// Path. Nonzero winding rule. After `Clip` nothing happens, and the path stays open.
void Fill(Page *page);
/// Path.
void FillAndDraw(Page *page);
/// Any mode. Ends the path without painting it.
void EndPath(Page *page);

}  // namespace quillbar::page
