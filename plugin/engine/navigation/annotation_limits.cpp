// SPDX-License-Identifier: MIT
// The annotations that pages create are refused for their text or rectangle before they exist, and icons by
// number.
//
// libharu enters the annotation in the document and then finds that its text is longer than a string may be,
// or that a number of its rectangle is beyond what it writes: half an annotation stays in the file. Its test
// of icon numbers depends on whether the compiler gives the enumeration a sign.
#include <hpdf.h>
#include <hpdf_annotation.h>
#include <hpdf_utils.h>

#include "plugin/engine/objects/writable_number.h"

extern "C" {

HPDF_Annotation Libharu_HPDF_MarkupAnnot_New(HPDF_MMgr memory, HPDF_Xref xref, HPDF_Rect rect, const char *text,
                                             HPDF_Encoder encoder, HPDF_AnnotType subtype);
HPDF_Annotation Libharu_HPDF_URILinkAnnot_New(HPDF_MMgr memory, HPDF_Xref xref, HPDF_Rect rect, const char *uri);
HPDF_Annotation Libharu_HPDF_LinkAnnot_New(HPDF_MMgr memory, HPDF_Xref xref, HPDF_Rect rect, HPDF_Destination target);
HPDF_STATUS Libharu_HPDF_TextAnnot_SetIcon(HPDF_Annotation annotation, HPDF_AnnotIcon icon);

}  // extern "C"

namespace {

using quillbar::engine::IsWritable;

// Marks the failure, if there is one, for the caller to raise.
bool RectIsGood(HPDF_MMgr memory, const HPDF_Rect &rect) {
  if (IsWritable(rect.left) && IsWritable(rect.bottom) && IsWritable(rect.right) && IsWritable(rect.top)) {
    return true;
  }
  HPDF_SetError(memory->error, HPDF_REAL_OUT_OF_RANGE, 0);
  return false;
}

bool TextIsGood(HPDF_MMgr memory, const char *text) {
  if (HPDF_StrLen(text, HPDF_LIMIT_MAX_STRING_LEN + 1) <= HPDF_LIMIT_MAX_STRING_LEN) return true;
  HPDF_SetError(memory->error, HPDF_STRING_OUT_OF_RANGE, 0);
  return false;
}

}  // namespace

extern "C" {

HPDF_Annotation HPDF_MarkupAnnot_New(HPDF_MMgr memory, HPDF_Xref xref, HPDF_Rect rect, const char *text,
                                     HPDF_Encoder encoder, HPDF_AnnotType subtype) {
  if (!RectIsGood(memory, rect) || !TextIsGood(memory, text)) return nullptr;
  return Libharu_HPDF_MarkupAnnot_New(memory, xref, rect, text, encoder, subtype);
}

HPDF_Annotation HPDF_URILinkAnnot_New(HPDF_MMgr memory, HPDF_Xref xref, HPDF_Rect rect, const char *uri) {
  if (!RectIsGood(memory, rect) || !TextIsGood(memory, uri)) return nullptr;
  return Libharu_HPDF_URILinkAnnot_New(memory, xref, rect, uri);
}

HPDF_Annotation HPDF_LinkAnnot_New(HPDF_MMgr memory, HPDF_Xref xref, HPDF_Rect rect, HPDF_Destination target) {
  return RectIsGood(memory, rect) ? Libharu_HPDF_LinkAnnot_New(memory, xref, rect, target) : nullptr;
}

HPDF_STATUS HPDF_TextAnnot_SetIcon(HPDF_Annotation annotation, HPDF_AnnotIcon icon) {
  if (annotation != nullptr && static_cast<HPDF_UINT>(icon) >= HPDF_ANNOT_ICON_EOF) {
    return HPDF_RaiseError(annotation->error, HPDF_ANNOT_INVALID_ICON, static_cast<HPDF_STATUS>(icon));
  }
  return Libharu_HPDF_TextAnnot_SetIcon(annotation, icon);
}

}  // extern "C"
