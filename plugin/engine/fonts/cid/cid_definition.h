// SPDX-License-Identifier: MIT
#pragma once

#include <hpdf.h>
#include <hpdf_fontdef.h>

#include <vector>

namespace quillbar::engine {

/// What the font definition of a built-in Chinese, Japanese or Korean face carries: widths by CID, the number of a
/// character in the face's character collection (ISO 32000-1, 9.7.4.3), in 1/1000 of the font size.
struct CidDefinition {
  HPDF_INT16 WidthOf(HPDF_UINT16 cid) const;

  /// In ascending order; all other characters have the default width.
  std::vector<HPDF_CID_Width> widths;
  HPDF_INT16 defaultWidth = 1000;
  /// In vertical writing: the height of the position vector, and the advance, which is downwards.
  HPDF_INT16 verticalHeight = 880;
  HPDF_INT16 verticalAdvance = -1000;
};

/// `definition` must be of type HPDF_FONTDEF_TYPE_CID.
inline const CidDefinition &CidOf(const HPDF_FontDef_Rec &definition) {
  return *static_cast<const CidDefinition *>(definition.attr);
}

}  // namespace quillbar::engine
