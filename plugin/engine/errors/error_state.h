// SPDX-License-Identifier: MIT
/// What the guard around library calls needs from the library's error module.
///
/// A guarded call counts itself in its error record's `call_depth`. While the count isn't 0, a failure that the
/// library raises is kept in `raised_no` and `raised_detail_no` (the first one counts) and `error_no` stays set, so
/// that every caller inside the library sees the failure; the handler runs when the call has left the library.
#pragma once

#include <hpdf.h>

namespace quillbar::engine {

/// Ends a guarded call in which something went wrong: leaves `error` clean and calls the document's handler once. The
/// failure is, in this order: the one raised first, the one that the library marked last without raising it, or
/// `bareStatus`, a status that the library returned without doing either. Returns the failure's code, whatever the
/// handler did; the handler finds the library idle, so it may call it again on the same document.
HPDF_STATUS FinishFailedCall(HPDF_Error error, HPDF_STATUS bareStatus);

/// Marks a shortage of memory in the record, which may be null, and returns HPDF_FAILD_TO_ALLOC_MEM.
HPDF_STATUS NoteShortage(HPDF_Error error) noexcept;

/// Tells the document's handler of a shortage of memory outside of guarded calls. Inside one it is a failure of that
/// call. Nothing happens for null.
void ReportShortage(HPDF_Doc document);

/// How many handlers of this document are running; more than one when a call made by a handler failed in turn.
inline unsigned RunningHandlers(HPDF_Doc document) { return document ? document->error.handler_depth : 0; }

}  // namespace quillbar::engine
