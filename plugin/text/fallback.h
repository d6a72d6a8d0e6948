// SPDX-License-Identifier: MIT
#pragma once

#include "plugin/script/script_types.h"

namespace quillbar::text {

/// Makes a page's current font fit a text, if the font was made with automatic encoding: leaves it as it is,
/// or switches it to another single-byte encoding, to the font with which the script answers `ResolveFont`,
/// or to a built-in Chinese, Japanese or Korean face. A switch changes the `Font` in place and lasts until
/// the next one. To be called before the text is converted: the page's text encoding follows the font. What
/// the library refuses changes neither. False when the page has no font: a handler may have taken it away.
bool FitFontToText(Page *page, String text);

}  // namespace quillbar::text
