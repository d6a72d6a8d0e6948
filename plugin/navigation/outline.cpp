// SPDX-License-Identifier: MIT
#include "plugin/navigation/outline.h"

#include <algorithm>
#include <string_view>

#include "binding/owned.h"
#include "plugin/guard/library_call.h"
#include "plugin/navigation/destination_data.h"
#include "plugin/navigation/outline_data.h"
#include "plugin/script/wrapper.h"

namespace quillbar::outline {

namespace {

/// How the library is to write a title: as it is when it is ASCII (null); otherwise as UTF-16 after its byte order
/// mark, which the document's UTF-8 encoder does. Some viewers take UTF-8 for bytes, with its mark or without.
HPDF_Encoder EncoderOf(HPDF_Doc document, std::string_view title) {
  const bool isAscii = std::ranges::all_of(title, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
  return isAscii || document == nullptr ? nullptr : Call<HPDF_GetCurrentEncoder>(document);
}

/// The library's entry; null when it is refused. What is made below an entry that was refused comes at the
/// top: the library takes a null parent for that, and no entry is lost.
HPDF_Outline NewEntry(HPDF_Doc document, Outline *parent, const char *title) {
  const HPDF_Outline parentHandle = parent != nullptr ? DataOf(parent).outlineHandle : nullptr;
  return Call<HPDF_CreateOutline>(document, parentHandle, title, EncoderOf(document, title));
}

}  // namespace

Outline *CreateOutline(PDFDocument *document, Outline *parentOutLine, String title) {
  HPDF_Doc *libraryDocument = &DataOf(document).libraryDocument;
  if (parentOutLine != nullptr && DataOf(parentOutLine).libraryDocument != libraryDocument) return nullptr;
  const StringData text(title, TextEncoding::kUtf8);
  if (!text) return nullptr;
  Outline *outline = NewOwnedByDocument<"QuillbarPDFWriter.Outline", Outline, OutlineData>(document);
  if (outline == nullptr) return nullptr;
  DataOf(outline).outlineHandle = NewEntry(*libraryDocument, parentOutLine, text.bytes());
  return outline;
}

void SetDestination(Outline *outline, Destination *target) {
  if (target == nullptr || DataOf(target).libraryDocument != DataOf(outline).libraryDocument) return;
  Call<HPDF_Outline_SetDestination>(DataOf(outline).outlineHandle, DataOf(target).destinationHandle);
}

}  // namespace quillbar::outline
