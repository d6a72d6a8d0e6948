#pragma once

#include "plugin/bridge/script_types.h"

namespace quillbar::text {

/// A script may answer `ResolveFont` with a font of another document. The library refuses to use it, yet the
/// switched `Font` refers to it from then on: the other document is kept alive as long as the `Font` is.
void KeepDocumentOfFace(const Font *font, PDFDocument *document);

/// Lets go of what was kept for a font that ends.
void ForgetDocumentsOfFaces(const Font *font);

}  // namespace quillbar::text
