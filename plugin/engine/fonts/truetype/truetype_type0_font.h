// SPDX-License-Identifier: MIT
#pragma once

#include <hpdf.h>

#include <span>
#include <string>
#include <string_view>

namespace quillbar::engine {

/// A font of an embedded TrueType file for text in a multi-byte encoding; null for a failure. `xref` owns it. Throws
/// std::bad_alloc.
HPDF_Font NewTrueTypeType0Font(HPDF_MMgr memory, HPDF_FontDef definition, HPDF_Encoder encoder, HPDF_Xref xref);

/// Appends the codes of `text`, four hexadecimal digits each, under which the page names its characters; characters
/// shown for the first time get codes. `afterSpace` is appended after each white space, as text is measured. `font`
/// must be of type HPDF_FONT_TYPE0_TT. Throws std::bad_alloc.
void AppendCodesInHex(HPDF_Font font, std::span<const HPDF_BYTE> text, std::string_view afterSpace, std::string &hex);

}  // namespace quillbar::engine
