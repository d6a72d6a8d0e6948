// SPDX-License-Identifier: MIT
#pragma once

#include <hpdf.h>

#include "binding/class_data.h"
#include "plugin/script/script_types.h"

namespace quillbar {

/// Appends an output intent with an ICC profile to the document, see output_intent.h.
using OutputIntentHook = void (*)(PDFDocument *document, const char *name, Integer componentCount, const void *profile,
                                  Integer byteCount);

/// The private data of a `PDFDocument`, zero-filled by the host before the constructor runs. Other code
/// reads it by offset, so the order of the fields is fixed.
struct DocumentData {
  OutputIntentHook outputIntentHook;
  HPDF_Doc libraryDocument;
  // Whether the library's fonts and encodings of a family are registered on this document; once at most.
  std::uint8_t japaneseLoaded;
  std::uint8_t koreanLoaded;
  std::uint8_t traditionalChineseLoaded;
  std::uint8_t simplifiedChineseLoaded;
  // The last failure: the library's own numbers.
  std::uint32_t lastError;
  std::uint32_t lastErrorDetail;

  static ClassRecord definition;
};

static_assert(offsetof(DocumentData, libraryDocument) == sizeof(void *));
static_assert(offsetof(DocumentData, japaneseLoaded) == 2 * sizeof(void *));
static_assert(offsetof(DocumentData, simplifiedChineseLoaded) == 2 * sizeof(void *) + 3);
static_assert(offsetof(DocumentData, lastError) == 2 * sizeof(void *) + 4);
static_assert(offsetof(DocumentData, lastErrorDetail) == 2 * sizeof(void *) + 8);

inline DocumentData &DataOf(PDFDocument *document) { return *ClassData<DocumentData>(document); }
inline HPDF_Doc HandleOf(PDFDocument *document) { return DataOf(document).libraryDocument; }

}  // namespace quillbar
