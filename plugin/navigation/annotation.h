#pragma once

#include "plugin/bridge/script_types.h"

/// Annotations: notes, links to addresses and links to places of the document.
namespace quillbar::annotation {

void Initialize(Object annotation);
void Finalize(Object annotation);
void Constructor(Annotation *annotation);
void TextConstructor(TextAnnotation *annotation);
void UrlConstructor(URLAnnotation *annotation);
void LinkConstructor(LinkAnnotation *annotation);

TextAnnotation *CreateTextAnnotation(Page *page, String annotationText, Single left, Single top, Single right,
                                     Single bottom);
URLAnnotation *CreateURLAnnotation(Page *page, String url, Single left, Single top, Single right,
                                   Single bottom);
LinkAnnotation *CreateLinkAnnotation(Page *page, Destination *target, Single left, Single top, Single right,
                                     Single bottom);

void SetIcon(TextAnnotation *annotation, AnnotationIcon icon);
void SetColor(TextAnnotation *annotation, Color value);
void SetOpened(TextAnnotation *annotation, Boolean value);

}  // namespace quillbar::annotation
