// SPDX-License-Identifier: MIT
#pragma once

#include "plugin/script/script_types.h"

/// The page's size and its coordinate system.
namespace quillbar::page {

/// "SetSize(size as Page.PageSizeEnum,direction as Page.PageDirectionEnum)": a standard size. Both count
/// as unsigned numbers of 32 bits, whatever the host's Integer has: sizes above 12 and directions above 1 are
/// ignored; 12, which isn't a size, is the library's to refuse.
void SetSize(Page *page, PageSize size, PageDirection direction);

/// `Height` in points, from 3 to 14,400; error 4180 outside.
void SetHeight(Page *page, std::intptr_t parameter, Single value);

/// `TransformCoordinates`: whether y is measured from the top. The height that the flip works with is taken
/// when the flag is turned on, and again by `SetSize` and by setting `Height` while it is on; never otherwise.
Boolean GetTransformCoordinates(Page *page);
void SetTransformCoordinates(Page *page, std::intptr_t parameter, Boolean value);

}  // namespace quillbar::page
