// SPDX-License-Identifier: MIT
#pragma once

#include <hpdf.h>

namespace quillbar::engine {

/// Loads a TrueType file, which is then embedded wherever it is used. The same file is loaded once, and two files are
/// two fonts, also of one name or of none.
///
/// `path` is in UTF-16, see native_file.h. Returns the name by which `GetFont` finds the font, which the document
/// owns; null for a failure, which is raised.
const char *LoadTrueTypeFont(HPDF_Doc document, const char *path);

/// Loads a Type 1 font from its metrics (AFM) and, unless that path is null, its program (PFB or PFA), which is then
/// embedded. Otherwise like `LoadTrueTypeFont`, but a second font of the same name is refused with HPDF_FONT_EXISTS.
const char *LoadType1Font(HPDF_Doc document, const char *metricsPath, const char *programPath);

/// The font of a name in an encoding: a standard font, a built-in one of a family that was enabled, or one that was
/// loaded, a TrueType font also under its PostScript name. Without an encoding a font of signs gets its own, any other
/// one PDF's StandardEncoding. Asked for again, it is the same font. The document owns it; null for a failure, which
/// is raised: HPDF_INVALID_ENCODER_TYPE is a standard or Type 1 font in an encoding of several bytes for a character,
/// or a built-in Chinese, Japanese or Korean one in an encoding of one.
HPDF_Font GetFont(HPDF_Doc document, const char *name, const char *encoding);

}  // namespace quillbar::engine
