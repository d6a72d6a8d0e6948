// SPDX-License-Identifier: MIT
// Fonts of multi-byte codes (ISO 32000-1, 9.7): a Type0 font and its descendant, the CIDFont that has the glyphs.
#pragma once

#include <hpdf.h>

namespace quillbar::engine {

/// Makes `descendant` the font's only one.
HPDF_STATUS AddDescendant(HPDF_Dict font, HPDF_Dict descendant);

/// The position vector's height and the advance in vertical writing of a CIDFont's characters, in 1/1000 of the font
/// size.
HPDF_STATUS AddVerticalMetrics(HPDF_Dict cidFont, HPDF_INT32 height, HPDF_INT32 advance);

/// Names the collection that numbers a CIDFont's characters.
HPDF_STATUS AddCharacterCollection(HPDF_Dict cidFont, const char *registry, const char *ordering,
                                   HPDF_INT32 supplement);

}  // namespace quillbar::engine
