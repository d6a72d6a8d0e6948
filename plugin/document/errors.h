// SPDX-License-Identifier: MIT
#pragma once

#include <hpdf.h>

#include "plugin/script/script_types.h"

/// How the library's failures reach the script: the event `ErrorLog` and two properties.
namespace quillbar::document {

/// The error handler that every document is created with; `userData` is the `PDFDocument`. Raises
/// `ErrorLog`, then notes the numbers: while the event runs, the properties still hold the failure before.
/// The event may use the document. A failure inside it raises an event of its own, 16 deep; deeper ones are
/// only noted, so that a handler that always fails ends.
void HPDF_STDCALL HandleLibraryError(HPDF_STATUS errorNumber, HPDF_STATUS detailNumber, void *userData);

std::uint32_t GetLastErrorNumber(PDFDocument *document);
std::uint32_t GetLastErrorDetailNumber(PDFDocument *document);

/// "ClearError()": sets both numbers to 0. The library itself has nothing to clear.
void ClearError(PDFDocument *document);

}  // namespace quillbar::document
