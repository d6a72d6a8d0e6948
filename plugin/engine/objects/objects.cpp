// SPDX-License-Identifier: MIT
// What all objects have in common: they are written and freed by their class. A container holds an indirect object by a
// reference, which libharu calls a proxy.
#include <hpdf.h>
#include <hpdf_objects.h>
#include <hpdf_utils.h>

#include <charconv>
#include <cstring>
#include <iterator>
#include <new>

#include "plugin/engine/objects/compact_objects.h"

namespace quillbar::engine {

namespace {

HPDF_UINT16 ClassOf(const void *object) {
  return static_cast<HPDF_UINT16>(static_cast<const HPDF_Obj_Header *>(object)->obj_class & HPDF_OCLASS_ANY);
}

HPDF_STATUS WriteReference(const HPDF_Obj_Header &target, HPDF_Stream stream) {
  constexpr HPDF_UINT32 kNumber = 0x00FFFFFF;
  constexpr char kEnd[] = {' ', 'R'};
  char text[24];  // more than two numbers of 32 bits take
  char *end = std::to_chars(text, std::end(text), target.obj_id & kNumber).ptr;
  *end++ = ' ';
  end = std::to_chars(end, std::end(text), target.gen_no).ptr;
  std::memcpy(end, kEnd, sizeof kEnd);
  end += sizeof kEnd;
  return HPDF_Stream_Write(stream, reinterpret_cast<const HPDF_BYTE *>(text), static_cast<HPDF_UINT>(end - text));
}

}  // namespace

}  // namespace quillbar::engine

using namespace quillbar::engine;

extern "C" {

/// Frees what a container holds: a direct object, or a reference. Nothing happens for null and for an indirect object,
/// which the table of references owns.
void HPDF_Obj_Free(HPDF_MMgr memory, void *object) {
  if (object == nullptr) return;
  if ((static_cast<HPDF_Obj_Header *>(object)->obj_id & HPDF_OTYPE_INDIRECT) == 0) HPDF_Obj_ForceFree(memory, object);
}

/// Frees any object; nothing happens for null.
void HPDF_Obj_ForceFree(HPDF_MMgr memory, void *object) {
  if (object == nullptr) return;
  switch (ClassOf(object)) {
    case HPDF_OCLASS_STRING:
      return HPDF_String_Free(static_cast<HPDF_String>(object));
    case HPDF_OCLASS_BINARY:
      return HPDF_Binary_Free(static_cast<HPDF_Binary>(object));
    case HPDF_OCLASS_ARRAY:
      return HPDF_Array_Free(static_cast<HPDF_Array>(object));
    case HPDF_OCLASS_DICT:
      return HPDF_Dict_Free(static_cast<HPDF_Dict>(object));
    case kConstantClass:
      return;
    default:
      HPDF_FreeMem(memory, object);
  }
}

/// Writes what a container holds: a reference to an indirect object, a direct object itself, and of a hidden one nothing.
HPDF_STATUS HPDF_Obj_Write(void *object, HPDF_Stream stream, HPDF_Encrypt encryption) {
  const auto *header = static_cast<const HPDF_Obj_Header *>(object);
  if ((header->obj_id & HPDF_OTYPE_HIDDEN) != 0) return HPDF_OK;
  if (header->obj_class != HPDF_OCLASS_PROXY) return HPDF_Obj_WriteValue(object, stream, encryption);
  return WriteReference(*static_cast<const HPDF_Obj_Header *>(static_cast<HPDF_Proxy>(object)->obj), stream);
}

/// Writes the object itself. `encryption` may be null.
HPDF_STATUS HPDF_Obj_WriteValue(void *object, HPDF_Stream stream, HPDF_Encrypt encryption) {
  switch (ClassOf(object)) {
    case HPDF_OCLASS_NAME:
      return HPDF_Name_Write(static_cast<HPDF_Name>(object), stream);
    case HPDF_OCLASS_NUMBER:
      return HPDF_Number_Write(static_cast<HPDF_Number>(object), stream);
    case HPDF_OCLASS_REAL:
      return HPDF_Real_Write(static_cast<HPDF_Real>(object), stream);
    case HPDF_OCLASS_STRING:
      return HPDF_String_Write(static_cast<HPDF_String>(object), stream, encryption);
    case HPDF_OCLASS_BINARY:
      return HPDF_Binary_Write(static_cast<HPDF_Binary>(object), stream, encryption);
    case HPDF_OCLASS_ARRAY:
      return HPDF_Array_Write(static_cast<HPDF_Array>(object), stream, encryption);
    case HPDF_OCLASS_DICT:
      return HPDF_Dict_Write(static_cast<HPDF_Dict>(object), stream, encryption);
    case HPDF_OCLASS_BOOLEAN:
      return HPDF_Boolean_Write(static_cast<HPDF_Boolean>(object), stream);
    case HPDF_OCLASS_NULL:
      return HPDF_Stream_WriteStr(stream, "null");
    case kBoxClass:
      return WriteBox(*static_cast<BoxObject *>(object), stream);
    case kConstantClass:
      return HPDF_Stream_WriteStr(stream, static_cast<ConstantObject *>(object)->text);
    default:
      return HPDF_ERR_UNKNOWN_CLASS;
  }
}

/// A reference to an indirect object; null, with the error record set, when memory is short.
HPDF_Proxy HPDF_Proxy_New(HPDF_MMgr memory, void *object) {
  void *const block = HPDF_GetMem(memory, sizeof(HPDF_Proxy_Rec));
  return block != nullptr ? new (block) HPDF_Proxy_Rec{{0, 0, HPDF_OCLASS_PROXY}, object} : nullptr;
}

}  // extern "C"
