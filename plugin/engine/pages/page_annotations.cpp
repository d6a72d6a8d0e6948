// SPDX-License-Identifier: MIT
// Destinations and annotations on a page: its entry Annots (ISO 32000-1, 12.5.2).
#include <hpdf_annotation.h>
#include <hpdf_destination.h>
#include <hpdf_encoder.h>

#include "plugin/engine/objects/new_entry.h"
#include "plugin/engine/pages/page_object.h"

using namespace quillbar::engine;

namespace {

// Whether the annotation is on the page now; if not, memory ran out.
bool Add(HPDF_Page page, HPDF_Annotation annotation) {
  auto *annotations = static_cast<HPDF_Array>(HPDF_Dict_GetItem(page, "Annots", HPDF_OCLASS_ARRAY));
  if (annotations == nullptr) annotations = NewArrayIn(page, "Annots");
  return annotations != nullptr && HPDF_Array_Add(annotations, annotation) == HPDF_OK &&
         HPDF_Dict_Add(annotation, "P", page) == HPDF_OK;
}

// Puts a new annotation, null if it could not be made, on its page. Null with the failure reported if there is none.
HPDF_Annotation Placed(HPDF_Page page, HPDF_Annotation annotation) {
  if (annotation != nullptr && Add(page, annotation)) return annotation;
  HPDF_CheckError(page->error);
  return nullptr;
}

HPDF_Annotation Refused(HPDF_Page page, HPDF_STATUS code) {
  HPDF_RaiseError(page->error, code, 0);
  return nullptr;
}

}  // namespace

extern "C" {

HPDF_Destination HPDF_Page_CreateDestination(HPDF_Page page) {
  if (!IsPage(page)) return nullptr;
  HPDF_Destination destination = HPDF_Destination_New(page->mmgr, page, AttributesOf(page).xref);
  if (destination == nullptr) HPDF_CheckError(page->error);
  return destination;
}

HPDF_Annotation HPDF_Page_CreateTextAnnot(HPDF_Page page, HPDF_Rect place, const char *text, HPDF_Encoder encoder) {
  if (!IsPage(page)) return nullptr;
  if (encoder != nullptr && !HPDF_Encoder_Validate(encoder)) return Refused(page, HPDF_INVALID_ENCODER);
  return Placed(page,
                HPDF_MarkupAnnot_New(page->mmgr, AttributesOf(page).xref, place, text, encoder, HPDF_ANNOT_TEXT_NOTES));
}

HPDF_Annotation HPDF_Page_CreateLinkAnnot(HPDF_Page page, HPDF_Rect place, HPDF_Destination destination) {
  if (!IsPage(page)) return nullptr;
  if (!HPDF_Destination_Validate(destination)) return Refused(page, HPDF_INVALID_DESTINATION);
  return Placed(page, HPDF_LinkAnnot_New(page->mmgr, AttributesOf(page).xref, place, destination));
}

HPDF_Annotation HPDF_Page_CreateURILinkAnnot(HPDF_Page page, HPDF_Rect place, const char *uri) {
  if (!IsPage(page)) return nullptr;
  if (uri == nullptr || *uri == '\0') return Refused(page, HPDF_INVALID_URI);
  return Placed(page, HPDF_URILinkAnnot_New(page->mmgr, AttributesOf(page).xref, place, uri));
}

}  // extern "C"
