// SPDX-License-Identifier: MIT
#include "plugin/navigation/annotation.h"

#include "binding/owned.h"
#include "plugin/guard/library_call.h"
#include "plugin/guard/library_value.h"
#include "plugin/navigation/annotation_data.h"
#include "plugin/navigation/destination_data.h"
#include "plugin/page/coordinates.h"
#include "plugin/script/colour_conversion.h"
#include "plugin/script/owned_by_document.h"

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
  data.page = Keep(page);
  data.kind = kind;
  return annotation;
}

/// The encoder that turns the library's UTF-8 texts into what the file holds; null for a page without a
/// document.
HPDF_Encoder CurrentEncoder(const PageData &page) {
  return page.libraryDocument != nullptr ? Call<HPDF_GetCurrentEncoder>(*page.libraryDocument) : nullptr;
}

}  // namespace

void Initialize(Object annotation) { AnnotationDataOf(annotation).page = nullptr; }

void Finalize(Object annotation) { Let(AnnotationDataOf(annotation).page); }

void Constructor(Annotation *annotation) { AnnotationDataOf(annotation).page = nullptr; }
void TextConstructor(TextAnnotation *annotation) { AnnotationDataOf(annotation).page = nullptr; }
void UrlConstructor(URLAnnotation *annotation) { AnnotationDataOf(annotation).page = nullptr; }
void LinkConstructor(LinkAnnotation *annotation) { AnnotationDataOf(annotation).page = nullptr; }

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

void SetIcon(TextAnnotation *annotation, AnnotationIcon icon) {
  const HPDF_Annotation handle = AnnotationDataOf(annotation).annotationHandle;
  if (handle != nullptr) Call<HPDF_TextAnnot_SetIcon>(handle, ToLibrary<HPDF_AnnotIcon>(icon));
}

void SetColor(TextAnnotation *annotation, Color value) {
  const HPDF_Annotation handle = AnnotationDataOf(annotation).annotationHandle;
  if (handle != nullptr) Call<HPDF_Annot_SetRGBColor>(handle, ToLibraryColor(value));
}

void SetOpened(TextAnnotation *annotation, Boolean value) {
  const HPDF_Annotation handle = AnnotationDataOf(annotation).annotationHandle;
  if (handle != nullptr) Call<HPDF_TextAnnot_SetOpened>(handle, value != 0 ? HPDF_TRUE : HPDF_FALSE);
}

}  // namespace quillbar::annotation
