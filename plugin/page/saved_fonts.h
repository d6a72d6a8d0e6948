// SPDX-License-Identifier: MIT
#pragma once

#include "plugin/script/script_types.h"

namespace quillbar::page {

/// The library saves its own face and size with a page's graphics state. What belongs to them on this side,
/// the `Font`, its size, the encoding in which text is converted and whether the font is automatic, is kept
/// here for each state that is open.

/// To be called before the library is asked to save the page's state. Throws std::bad_alloc.
void MakeRoomForFont(Page *page);

/// To be called when the library has saved the page's state, for which room was made. The font stays locked until its
/// state is restored.
void SaveFont(Page *page);

/// To be called after the library was asked to restore a state: brings back the font of the state that the
/// library is in now, and changes nothing when it refused.
void RestoreFont(Page *page);

/// Lets go of the fonts of a page that ends.
void ForgetSavedFonts(Page *page);

}  // namespace quillbar::page
