// SPDX-License-Identifier: MIT
#pragma once

#include "plugin/script/script_types.h"

/// `Destination`: a view of a page to jump to.
namespace quillbar::destination {

/// "CreateDestination() as Destination" of `Page`: the page as a whole, until `SetLocation` narrows it.
Destination *CreateDestination(Page *page);

/// "SetLocation(x as Single,y as Single, zoom as Single)": the view with (x, y) at the window's upper left
/// corner, in points from the page's lower left corner (never flipped), magnified `zoom` times. The library
/// refuses negative coordinates and zooms below 0.08 or above 32 with error 4153; the view stays as it was.
void SetLocation(Destination *destination, Single x, Single y, Single zoom);

}  // namespace quillbar::destination
