// SPDX-License-Identifier: MIT
#include "plugin/text/cjk_families.h"

#include "plugin/guard/library_call.h"
#include "plugin/script/document_data.h"

namespace quillbar::text {

namespace {

template <auto UseFonts, auto UseEncodings>
void EnableOnce(HPDF_Doc document, std::uint8_t &enabled) {
  if (enabled != 0) return;
  // Before the calls: should one fail, the handler that is told may use a font of the family.
  enabled = 1;
  Call<UseFonts>(document);
  Call<UseEncodings>(document);
}

}  // namespace

void EnableCjkFamily(PDFDocument *document, CjkFamily family) {
  DocumentData &data = DataOf(document);
  switch (family) {
    case CjkFamily::kJapanese:
      return EnableOnce<HPDF_UseJPFonts, HPDF_UseJPEncodings>(data.libraryDocument, data.japaneseLoaded);
    case CjkFamily::kKorean:
      return EnableOnce<HPDF_UseKRFonts, HPDF_UseKREncodings>(data.libraryDocument, data.koreanLoaded);
    case CjkFamily::kTraditionalChinese:
      return EnableOnce<HPDF_UseCNTFonts, HPDF_UseCNTEncodings>(data.libraryDocument, data.traditionalChineseLoaded);
    case CjkFamily::kSimplifiedChinese:
      return EnableOnce<HPDF_UseCNSFonts, HPDF_UseCNSEncodings>(data.libraryDocument, data.simplifiedChineseLoaded);
  }
}

}  // namespace quillbar::text
