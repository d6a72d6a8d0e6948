// SPDX-License-Identifier: MIT
#pragma once

#include "plugin/script/script_types.h"

/// Annotations: notes, links to addresses and links to places of the document.
namespace quillbar::annotation {

/// Class constructor of `Annotation` and its subclasses: no page.
void Initialize(Object annotation);
/// Class destructor: lets the page go. The library's annotation belongs to its document.
void Finalize(Object annotation);
/// "Constructor()" of each class: an annotation that belongs to no page.
void Constructor(Annotation *annotation);
void TextConstructor(TextAnnotation *annotation);
void UrlConstructor(URLAnnotation *annotation);
void LinkConstructor(LinkAnnotation *annotation);

/// The three factories are members of `Page`. Rectangles are in points; `top` and `bottom` are measured from
/// the top on a page that works so. Nil for a nil text, for a rectangle or text that the library refuses, and
/// for a Nil target or one of another document. A link is made even when the library refuses it.
TextAnnotation *CreateTextAnnotation(Page *page, String annotationText, Single left, Single top, Single right,
                                     Single bottom);
URLAnnotation *CreateURLAnnotation(Page *page, String url, Single left, Single top, Single right, Single bottom);
LinkAnnotation *CreateLinkAnnotation(Page *page, Destination *target, Single left, Single top, Single right,
                                     Single bottom);

/// "SetIcon(icon as TextAnnotation.AnnotationIconEnum)": the library refuses numbers beyond the enumeration
/// with error 4210.
void SetIcon(TextAnnotation *annotation, AnnotationIcon icon);
/// "SetColor(value as Color)": the note's colour.
void SetColor(TextAnnotation *annotation, Color value);
/// "SetOpened(value as Boolean)": whether viewers show the note's window from the start.
void SetOpened(TextAnnotation *annotation, Boolean value);

}  // namespace quillbar::annotation
