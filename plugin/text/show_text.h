// SPDX-License-Identifier: MIT
#pragma once

#include "plugin/page/page_data.h"

/// Showing text. Both members act in a text object once a font was set, and are silent otherwise; so they are for a nil
/// text. A font made with automatic encoding is fitted to the text first (fallback.h).
namespace quillbar::text {

/// Whether text can be shown: in a text object, once a font was set.
bool CanShowText(const PageData &page);

/// Shows a text at the current position, which moves to its end.
void ShowText(Page *page, String text);

/// Shows a text on the next line. A leading of 0 is replaced by the suggested one for this line alone.
void ShowTextNextLine(Page *page, String text);

}  // namespace quillbar::text
