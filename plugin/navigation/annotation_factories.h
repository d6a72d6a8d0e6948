// SPDX-License-Identifier: MIT
#pragma once

#include "plugin/script/script_types.h"

/// Annotations: notes, links to addresses and links to places of the document.
namespace quillbar::annotation {

/// The three factories are members of `Page`. Rectangles are in points; `top` and `bottom` are measured from
/// the top on a page that works so. Nil for a nil text, for a rectangle or text that the library refuses, and
/// for a Nil target or one of another document. A link is made even when the library refuses it.
TextAnnotation *CreateTextAnnotation(Page *page, String annotationText, Single left, Single top, Single right,
                                     Single bottom);
URLAnnotation *CreateURLAnnotation(Page *page, String url, Single left, Single top, Single right, Single bottom);
LinkAnnotation *CreateLinkAnnotation(Page *page, Destination *target, Single left, Single top, Single right,
                                     Single bottom);

}  // namespace quillbar::annotation
