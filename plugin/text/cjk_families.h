// SPDX-License-Identifier: MIT
#pragma once

#include "plugin/script/script_types.h"

/// The library's built-in Chinese, Japanese and Korean fonts. They are not embedded; the viewer brings the
/// faces.
namespace quillbar::text {

enum class CjkFamily { kJapanese, kKorean, kTraditionalChinese, kSimplifiedChinese };

/// Makes a family's fonts and encodings known to a document's library, once for each document.
void EnableCjkFamily(PDFDocument *document, CjkFamily family);

}  // namespace quillbar::text
