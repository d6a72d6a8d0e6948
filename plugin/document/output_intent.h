// SPDX-License-Identifier: MIT
#pragma once

#include "plugin/script/script_types.h"

namespace quillbar::document {

/// Appends an output intent to the document: an ICC profile of `byteCount` bytes for `componentCount` colour
/// components, under the nul-terminated `name`. The plugin publishes it in the document's private data,
/// `DocumentData::outputIntentHook`, for other code, and doesn't call it itself.
void AppendOutputIntent(PDFDocument *document, const char *name, Integer componentCount, const void *profile,
                        Integer byteCount);

}  // namespace quillbar::document
