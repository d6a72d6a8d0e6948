// SPDX-License-Identifier: MIT
#pragma once

#include "plugin/script/script_types.h"

/// Building a path. Positions and lengths are points, angles degrees; y is flipped where the page works from the top.
///
/// A member for which graphics modes are named is silent in any other; the rest call the library in every mode, which
/// refuses with an error. The unevenness is part of the interface: scripts rely on it. What paints a path only
/// forwards, see the table of `Page`.
namespace quillbar::page {

/// Adds a rectangle with (x, y) as its lower left corner, its upper left one on a page that works from the top.
void Rectangle(Page *page, Single x, Single y, Single width, Single height);

/// Adds an ellipse around (x, y).
void Ellipse(Page *page, Single x, Single y, Single xRadius, Single yRadius);

/// Adds an arc around (x, y), from `angle1` clockwise to `angle2`, 0 at the top. The flip moves the centre only; the
/// angles keep their sense.
void Arc(Page *page, Single x, Single y, Single radius, Single angle1, Single angle2);

/// Begins a path, or a further part of it, at (x, y). Page description or path.
void MoveTo(Page *page, Single x, Single y);

/// Adds a line to (x, y). Path.
void LineTo(Page *page, Single x, Single y);

/// Adds a curve: two control points, then the end point. Path.
void CurveTo(Page *page, Single x1, Single y1, Single x2, Single y2, Single x3, Single y3);

/// Adds a curve whose first control point is the current point. Path.
void CurveTo2(Page *page, Single x2, Single y2, Single x3, Single y3);

/// Adds a curve whose second control point is its end point. Path.
void CurveTo3(Page *page, Single x1, Single y1, Single x3, Single y3);

}  // namespace quillbar::page
