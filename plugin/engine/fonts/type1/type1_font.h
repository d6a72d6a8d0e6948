// SPDX-License-Identifier: MIT
#pragma once

#include <hpdf.h>

namespace quillbar::engine {

/// A font of a standard face or a Type 1 file in an encoding of one byte for each character; null for a failure.
/// `definition` must be of type HPDF_FONTDEF_TYPE_TYPE1; `xref` owns the font. Throws std::bad_alloc.
HPDF_Font NewType1Font(HPDF_MMgr memory, HPDF_FontDef definition, HPDF_Encoder encoder, HPDF_Xref xref);

}  // namespace quillbar::engine
