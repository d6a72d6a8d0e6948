// SPDX-License-Identifier: MIT
// Notes and links on a page: annotations of the subtypes "Text" and "Link" (ISO 32000-1, 12.5.6).
//
// An annotation is made whole before it is entered in the document, so that one that is refused, for a number of its
// rectangle or the length of its text, leaves nothing in the file. The page that it is for adds it to its own.
#include <hpdf.h>
#include <hpdf_annotation.h>

#include <array>
#include <string_view>
#include <utility>

#include "plugin/engine/objects/enumeration_numbers.h"
#include "plugin/engine/objects/new_entry.h"
#include "plugin/engine/objects/unfinished_object.h"

namespace {

using quillbar::engine::EnteredIn;
using quillbar::engine::NewArrayIn;
using quillbar::engine::NewDictionaryIn;
using quillbar::engine::UnfinishedDictionary;

constexpr const char *kNote = "Text";
constexpr const char *kLink = "Link";

// The icons of notes (ISO 32000-1, table 172), in the order of HPDF_AnnotIcon.
constexpr std::array kIcons{"Comment", "Key", "Note", "Help", "NewParagraph", "Paragraph", "Insert"};
static_assert(kIcons.size() == HPDF_ANNOT_ICON_EOF);

// An annotation over a rectangle whose bottom and top may have changed places. Null, with the failure marked, when a
// number of it is beyond what can be written or memory is short.
UnfinishedDictionary NewAnnotation(HPDF_MMgr memory, HPDF_Rect rect, const char *subtype) {
  UnfinishedDictionary annotation(HPDF_Dict_New(memory));
  if (annotation == nullptr) return nullptr;
  HPDF_Array corners = NewArrayIn(annotation.get(), "Rect");
  if (corners == nullptr) return nullptr;
  if (rect.top < rect.bottom) std::swap(rect.bottom, rect.top);
  for (const HPDF_REAL number : {rect.left, rect.bottom, rect.right, rect.top}) {
    if (HPDF_Array_AddReal(corners, number) != HPDF_OK) return nullptr;
  }
  if (HPDF_Dict_AddName(annotation.get(), "Type", "Annot") != HPDF_OK) return nullptr;
  if (HPDF_Dict_AddName(annotation.get(), "Subtype", subtype) != HPDF_OK) return nullptr;
  annotation->header.obj_class |= HPDF_OSUBCLASS_ANNOTATION;
  return annotation;
}

// Whether there is a new entry with a string; a text that is too long is refused.
bool AddString(HPDF_Dict owner, const char *key, const char *text, HPDF_Encoder encoder) {
  HPDF_String string = HPDF_String_New(owner->mmgr, text, encoder);
  return string != nullptr && HPDF_Dict_Add(owner, key, string) == HPDF_OK;
}

bool IsAnnotation(HPDF_Annotation annotation) {
  return annotation != nullptr && annotation->header.obj_class == (HPDF_OSUBCLASS_ANNOTATION | HPDF_OCLASS_DICT);
}

// Anything else is reported, where there is a document to report it to.
bool IsNote(HPDF_Annotation annotation) {
  if (!IsAnnotation(annotation)) return false;
  const auto *subtype = static_cast<const HPDF_Name_Rec *>(HPDF_Dict_GetItem(annotation, "Subtype", HPDF_OCLASS_NAME));
  if (subtype != nullptr && std::string_view(subtype->value) == kNote) return true;
  HPDF_RaiseError(annotation->error, HPDF_INVALID_ANNOTATION, 0);
  return false;
}

}  // namespace

extern "C" {

/// A new note. `encoder` turns `text` into Unicode; with none the bytes are taken as they are. Null, with the failure
/// marked for the caller to report, for a rectangle out of range (HPDF_REAL_OUT_OF_RANGE), a text that is too long
/// (HPDF_STRING_OUT_OF_RANGE), another kind of annotation (HPDF_INVALID_ANNOTATION) and when memory is short.
HPDF_Annotation HPDF_MarkupAnnot_New(HPDF_MMgr memory, HPDF_Xref xref, HPDF_Rect rect, const char *text,
                                     HPDF_Encoder encoder, HPDF_AnnotType kind) {
  if (kind != HPDF_ANNOT_TEXT_NOTES) {
    HPDF_SetError(memory->error, HPDF_INVALID_ANNOTATION, 0);
    return nullptr;
  }
  UnfinishedDictionary note = NewAnnotation(memory, rect, kNote);
  if (note == nullptr || !AddString(note.get(), "Contents", text, encoder)) return nullptr;
  return EnteredIn(xref, std::move(note));
}

/// A new link to an address. Null, with the failure marked, as for a note.
HPDF_Annotation HPDF_URILinkAnnot_New(HPDF_MMgr memory, HPDF_Xref xref, HPDF_Rect rect, const char *uri) {
  UnfinishedDictionary link = NewAnnotation(memory, rect, kLink);
  if (link == nullptr) return nullptr;
  HPDF_Dict action = NewDictionaryIn(link.get(), "A");
  if (action == nullptr || HPDF_Dict_AddName(action, "Type", "Action") != HPDF_OK ||
      HPDF_Dict_AddName(action, "S", "URI") != HPDF_OK || !AddString(action, "URI", uri, nullptr)) {
    return nullptr;
  }
  return EnteredIn(xref, std::move(link));
}

/// A new link to a place in the document. Null, with the failure marked, as for a note.
HPDF_Annotation HPDF_LinkAnnot_New(HPDF_MMgr memory, HPDF_Xref xref, HPDF_Rect rect, HPDF_Destination target) {
  UnfinishedDictionary link = NewAnnotation(memory, rect, kLink);
  if (link == nullptr || HPDF_Dict_Add(link.get(), "Dest", target) != HPDF_OK) return nullptr;
  return EnteredIn(xref, std::move(link));
}

/// Sets a note's icon. A number beyond the icons is HPDF_ANNOT_INVALID_ICON with that number as its detail, and what is
/// not a note HPDF_INVALID_ANNOTATION.
QUILLBAR_ANY_ENUMERATION_NUMBER HPDF_STATUS HPDF_TextAnnot_SetIcon(HPDF_Annotation annotation, HPDF_AnnotIcon icon) {
  const auto number = static_cast<HPDF_UINT>(icon);
  if (annotation != nullptr && number >= kIcons.size()) {
    return HPDF_RaiseError(annotation->error, HPDF_ANNOT_INVALID_ICON, number);
  }
  if (!IsNote(annotation)) return HPDF_INVALID_ANNOTATION;
  if (HPDF_Dict_AddName(annotation, "Name", kIcons[number]) != HPDF_OK) return HPDF_CheckError(annotation->error);
  return HPDF_OK;
}

/// Sets whether viewers show a note's text at first. What is not a note is HPDF_INVALID_ANNOTATION.
HPDF_STATUS HPDF_TextAnnot_SetOpened(HPDF_Annotation annotation, HPDF_BOOL isOpen) {
  if (!IsNote(annotation)) return HPDF_INVALID_ANNOTATION;
  HPDF_Boolean value = HPDF_Boolean_New(annotation->mmgr, isOpen);
  if (value == nullptr) return HPDF_CheckError(annotation->error);
  return HPDF_Dict_Add(annotation, "Open", value);
}

/// Sets the colour of an annotation of any kind, in DeviceRGB from 0 to 1. Returns the marked failure.
HPDF_STATUS HPDF_Annot_SetRGBColor(HPDF_Annotation annotation, HPDF_RGBColor color) {
  if (!IsAnnotation(annotation)) return HPDF_INVALID_ANNOTATION;
  HPDF_Array components = NewArrayIn(annotation, "C");
  if (components == nullptr) return HPDF_Error_GetCode(annotation->error);
  for (const HPDF_REAL component : {color.r, color.g, color.b}) {
    if (HPDF_Array_AddReal(components, component) != HPDF_OK) return HPDF_Error_GetCode(annotation->error);
  }
  return HPDF_OK;
}

}  // extern "C"
