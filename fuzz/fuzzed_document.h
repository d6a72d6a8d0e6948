// SPDX-License-Identifier: MIT
// A library document as the plugin makes it, for one input: failures are ignored, and everything that the document
// made is freed with it.
#pragma once

#include <hpdf.h>

#include <string>

#include "fuzz/demand.h"
#include "plugin/engine/document/document.h"
#include "plugin/engine/pages/page_tree.h"
#include "plugin/guard/library_call.h"

namespace quillbar::fuzz {

/// A document that is freed with everything in it.
class FuzzedDocument {
 public:
  FuzzedDocument() : document_(engine::NewDocument(&FuzzedDocument::Handle, this)) {
    Call<HPDF_UseUTFEncodings>(get());
  }
  ~FuzzedDocument() { HPDF_Free(document_); }
  FuzzedDocument(const FuzzedDocument &) = delete;
  FuzzedDocument &operator=(const FuzzedDocument &) = delete;

  HPDF_Doc get() const { return document_; }

  /// Saves into memory twice: the second save finds what the first one left.
  void Save() {
    Call<engine::SaveToMemory>(document_);
    if (Call<engine::SaveToMemory>(document_) != HPDF_OK || !QUILLBAR_WATCHES_VALUES) return;
    std::string file(Call<HPDF_GetStreamSize>(document_), '\0');
    Call<engine::TakeSaved>(document_, reinterpret_cast<HPDF_BYTE *>(file.data()));
    DemandSet(file);
  }

  /// Shows a text with a font, on a page of its own.
  void Show(HPDF_Font font, const char *text) {
    if (font == nullptr) return;
    HPDF_Page page = Call<engine::AddPage>(document_);
    Call<HPDF_Page_BeginText>(page);
    Call<HPDF_Page_SetFontAndSize>(page, font, 20.0F);
    Call<HPDF_Page_MoveTextPos>(page, 40.0F, 700.0F);
    Call<HPDF_Page_ShowText>(page, text);
    Call<HPDF_Page_MeasureText>(page, text, 100.0F, HPDF_TRUE, nullptr);
    Call<HPDF_Page_EndText>(page);
  }

 private:
  static void Handle(HPDF_STATUS, HPDF_STATUS, void *self) {
    HPDF_ResetError(static_cast<FuzzedDocument *>(self)->document_);
  }

  HPDF_Doc document_;
};

}  // namespace quillbar::fuzz
