// SPDX-License-Identifier: MIT
#pragma once

#include "binding/members.h"
#include "binding/service.h"
#include "plugin/script/script_types.h"

namespace quillbar {

/// The events of `PDFDocument`, with the C++ types of their handlers.
using ResolveFontEvent = Event<
    "ResolveFont(text as String, detectedLanguageScript as "
    "QuillbarPDFWriter.PDFDocument.LanguageScript, currentFont as QuillbarPDFWriter.Font) as "
    "QuillbarPDFWriter.Font",
    Font *(PDFDocument *, String, LanguageScript, Font *)>;
using ErrorLogEvent = Event<"ErrorLog(errorNumber as UInt32, detailErrorNumber as UInt32)",
                            void(PDFDocument *, std::uint32_t, std::uint32_t)>;

/// In the order of their slots.
using PDFDocumentEvents = Events<ResolveFontEvent, ErrorLogEvent>;

/// Raises an event of a document: calls its handler with these arguments. Nothing is called, and the
/// result is empty, when the script has no handler for the event. A result belongs to the caller.
template <class EventLine, class... Arguments>
auto RaiseEvent(PDFDocument *document, Arguments... arguments) {
  using Handler = typename EventLine::Handler;
  using Result = decltype(Handler()(document, arguments...));
  const std::intptr_t slot = PDFDocumentEvents::RecordOf<EventLine>().slot;
  const auto handler = reinterpret_cast<Handler>(CallHost<service::GetEventInstance>(document, slot));
  if (handler == nullptr) return Result();
  return handler(document, arguments...);
}

}  // namespace quillbar
