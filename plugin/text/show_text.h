// SPDX-License-Identifier: MIT
#pragma once

#include "plugin/script/script_types.h"

/// Showing text. Both members act in a text object once a font was set, and are silent otherwise; so they are
/// for a nil text. A font made with automatic encoding is fitted to the text first (fallback.h).
namespace quillbar::text {

void ShowText(Page *page, String text);

/// On the next line. A leading of 0 is replaced by the suggested one for this line alone.
void ShowTextNextLine(Page *page, String text);

}  // namespace quillbar::text
