// SPDX-License-Identifier: MIT
#pragma once

#include <hpdf.h>

namespace quillbar::engine {

/// A font of a built-in Chinese, Japanese or Korean face in one of the encodings of its script; null for a failure. It
/// is not embedded. `definition` must be of type HPDF_FONTDEF_TYPE_CID, `encoder` of multi-byte codes; `xref` owns the
/// font. Throws std::bad_alloc.
HPDF_Font NewCidFont(HPDF_MMgr memory, HPDF_FontDef definition, HPDF_Encoder encoder, HPDF_Xref xref);

}  // namespace quillbar::engine
