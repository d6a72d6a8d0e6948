// SPDX-License-Identifier: MIT
#pragma once

#include <hpdf.h>

namespace quillbar::engine {

/// A font of an embedded TrueType file in an encoding of one byte for each character; null for a failure. `definition`
/// must be of type HPDF_FONTDEF_TYPE_TRUETYPE; `xref` owns the font. Throws std::bad_alloc.
HPDF_Font NewTrueTypeSimpleFont(HPDF_MMgr memory, HPDF_FontDef definition, HPDF_Encoder encoder, HPDF_Xref xref);

}  // namespace quillbar::engine
