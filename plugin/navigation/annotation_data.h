// SPDX-License-Identifier: MIT
#pragma once

#include <hpdf.h>

#include "binding/class_data.h"
#include "plugin/page/page_data.h"
#include "plugin/script/script_types.h"

namespace quillbar {

enum class AnnotationKind : std::uint32_t { Text = 1, Url = 2, Link = 3 };

/// The private data of an `Annotation`, which its three subclasses share. The order of the fields is fixed.
struct AnnotationData {
  HPDF_Annotation annotationHandle;  // null for a link that the library refused
  PageData *pageData;                // not counted: `page` keeps it
  HPDF_Doc *libraryDocument;
  Page *page;  // locked while kept
  AnnotationKind kind;

  static ClassRecord definition;
};

extern ClassRecord textAnnotationDefinition;
extern ClassRecord urlAnnotationDefinition;
extern ClassRecord linkAnnotationDefinition;

/// For the class and its subclasses: their data is the superclass's.
inline AnnotationData &AnnotationDataOf(Object annotation) { return *ClassData<AnnotationData>(annotation); }
inline AnnotationData &DataOf(Annotation *annotation) { return AnnotationDataOf(annotation); }
inline AnnotationData &DataOf(TextAnnotation *annotation) { return AnnotationDataOf(annotation); }
inline AnnotationData &DataOf(URLAnnotation *annotation) { return AnnotationDataOf(annotation); }
inline AnnotationData &DataOf(LinkAnnotation *annotation) { return AnnotationDataOf(annotation); }
inline HPDF_Annotation HandleOf(TextAnnotation *note) { return AnnotationDataOf(note).annotationHandle; }

}  // namespace quillbar
