// SPDX-License-Identifier: MIT
#include "plugin/navigation/annotation_factories.h"

#include "binding/owned.h"
#include "plugin/guard/library_call.h"
#include "plugin/navigation/annotation_data.h"
#include "plugin/navigation/destination_data.h"
#include "plugin/page/coordinates.h"
#include "plugin/script/wrapper.h"

namespace quillbar::annotation {

namespace {

HPDF_Rect LibraryRect(const PageData &page, Single left, Single top, Single right, Single bottom) {
  return {left, FlipY(page, bottom), right, FlipY(page, top)};
}

/// The object that scripts get for a library annotation, which keeps the page alive.
template <FixedString QualifiedName, class Class>
Class *NewAnnotation(Page *page, HPDF_Annotation handle, AnnotationKind kind) {
  auto *annotation = static_cast<Class *>(CreateInstance<QualifiedName>());
  if (annotation == nullptr) return nullptr;
  AnnotationData &data = AnnotationDataOf(annotation);
  data.annotationHandle = handle;
  data.pageData = &DataOf(page);
  data.libraryDocument = DataOf(page).libraryDocument;
  data.page = Retain(page);
  data.kind = kind;
  return annotation;
}

/// The encoder that turns the library's UTF-8 texts into what the file holds; null for a page without a
/// document.
HPDF_Encoder CurrentEncoder(const PageData &page) {
  return page.libraryDocument != nullptr ? Call<HPDF_GetCurrentEncoder>(*page.libraryDocument) : nullptr;
}

}  // namespace

TextAnnotation *CreateTextAnnotation(Page *page, String annotationText, Single left, Single top, Single right,
                                     Single bottom) {
  const StringData text(annotationText, TextEncoding::kUtf8);
  if (!text) return nullptr;
  const PageData &data = DataOf(page);
  const HPDF_Annotation handle = Call<HPDF_Page_CreateTextAnnot>(
      data.pageHandle, LibraryRect(data, left, top, right, bottom), text.bytes(), CurrentEncoder(data));
  if (handle == nullptr) return nullptr;
  return NewAnnotation<"QuillbarPDFWriter.TextAnnotation", TextAnnotation>(page, handle, AnnotationKind::Text);
}

URLAnnotation *CreateURLAnnotation(Page *page, String url, Single left, Single top, Single right, Single bottom) {
  const StringData text(url, TextEncoding::kUtf8);
  if (!text) return nullptr;
  const PageData &data = DataOf(page);
  const HPDF_Annotation handle =
      Call<HPDF_Page_CreateURILinkAnnot>(data.pageHandle, LibraryRect(data, left, top, right, bottom), text.bytes());
  if (handle == nullptr) return nullptr;
  return NewAnnotation<"QuillbarPDFWriter.URLAnnotation", URLAnnotation>(page, handle, AnnotationKind::Url);
}

LinkAnnotation *CreateLinkAnnotation(Page *page, Destination *target, Single left, Single top, Single right,
                                     Single bottom) {
  const PageData &data = DataOf(page);
  if (target == nullptr || DataOf(target).libraryDocument != data.libraryDocument) return nullptr;
  const HPDF_Annotation handle = Call<HPDF_Page_CreateLinkAnnot>(
      data.pageHandle, LibraryRect(data, left, top, right, bottom), DataOf(target).destinationHandle);
  return NewAnnotation<"QuillbarPDFWriter.LinkAnnotation", LinkAnnotation>(page, handle, AnnotationKind::Link);
}

}  // namespace quillbar::annotation
