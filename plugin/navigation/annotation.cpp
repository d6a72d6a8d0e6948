#include "plugin/navigation/annotation.h"

#include "plugin/document/owned_by_document.h"
#include "plugin/navigation/annotation_data.h"

namespace quillbar::annotation {

void Initialize(Object annotation) { AnnotationDataOf(annotation).page = nullptr; }

void Finalize(Object annotation) { Let(AnnotationDataOf(annotation).page); }

void Constructor(Annotation *annotation) { AnnotationDataOf(annotation).page = nullptr; }
void TextConstructor(TextAnnotation *annotation) { AnnotationDataOf(annotation).page = nullptr; }
void UrlConstructor(URLAnnotation *annotation) { AnnotationDataOf(annotation).page = nullptr; }
void LinkConstructor(LinkAnnotation *annotation) { AnnotationDataOf(annotation).page = nullptr; }

TextAnnotation *CreateTextAnnotation(Page *, String, Single, Single, Single, Single) { return nullptr; }

URLAnnotation *CreateURLAnnotation(Page *, String, Single, Single, Single, Single) { return nullptr; }

LinkAnnotation *CreateLinkAnnotation(Page *, Destination *, Single, Single, Single, Single) {
  return nullptr;
}

void SetIcon(TextAnnotation *, AnnotationIcon) {}

void SetColor(TextAnnotation *, Color) {}

void SetOpened(TextAnnotation *, Boolean) {}

}  // namespace quillbar::annotation
