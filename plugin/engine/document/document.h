// SPDX-License-Identifier: MIT
/// A document's beginning and its saves.
#pragma once

#include <hpdf.h>

#include "plugin/engine/document/document_writer.h"

namespace quillbar::engine {

/// A new, empty document whose information names this system as its producer; to be freed with HPDF_Free. `handler` is
/// called with the document's failures and `userData`. Null, and nobody is told, when memory is short.
HPDF_Doc NewDocument(HPDF_Error_Handler handler, void *userData);

/// Saves the document into a new file at `utf16Path` (UTF-16 in the machine's byte order, ended by a 16-bit nul). The
/// file is whole or absent, and never replaces one. HPDF_FILE_OPEN_ERROR when it can't be begun, HPDF_FILE_IO_ERROR
/// when it can't be written, both with errno as detail. The document can be worked on and saved again. `progress`, which
/// may be null, is told after each object; when it gives the save up, that is a failure with ECANCELED.
HPDF_STATUS SaveToFile(HPDF_Doc document, const char *utf16Path, SaveProgress progress);

/// Saves the document into its own memory stream, of which HPDF_GetStreamSize tells the size in bytes and from which
/// HPDF_ReadFromStream reads; what an earlier save left there is gone.
HPDF_STATUS SaveToMemory(HPDF_Doc document);

/// Moves what SaveToMemory has saved, HPDF_GetStreamSize bytes, to `bytes`. The document's stream is empty then, and has
/// given its memory back on the way: there is never more than one copy and a small block of another.
void TakeSaved(HPDF_Doc document, HPDF_BYTE *bytes);

}  // namespace quillbar::engine
