// SPDX-License-Identifier: MIT
#pragma once

#include "plugin/script/script_types.h"

/// Fill and stroke colours. Setting one acts in page description and in text objects, and is silent in any
/// other mode. Components run from 0 to 1; the library refuses others.
namespace quillbar::page {

/// Colours as scripts have them. A colour that was set as CMYK, or never, reads as black; the top byte is not
/// used and reads as zero.
Color GetFillColor(Page *page);
void SetFillColor(Page *page, std::intptr_t parameter, Color value);
Color GetStrokeColor(Page *page);
void SetStrokeColor(Page *page, std::intptr_t parameter, Color value);

void SetRGBFill(Page *page, Single r, Single g, Single b);
void SetRGBStroke(Page *page, Single r, Single g, Single b);
void SetCMYKFill(Page *page, Single c, Single m, Single y, Single k);
void SetCMYKStroke(Page *page, Single c, Single m, Single y, Single k);

}  // namespace quillbar::page
