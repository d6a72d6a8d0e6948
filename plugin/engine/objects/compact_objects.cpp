// SPDX-License-Identifier: MIT
#include "plugin/engine/objects/compact_objects.h"

#include <hpdf_utils.h>

#include <new>
#include <string_view>

#include "plugin/engine/objects/new_entry.h"
#include "plugin/engine/objects/number_text.h"

namespace quillbar::engine {

HPDF_STATUS AddBox(HPDF_Dict owner, const char *key, const HPDF_Box &box) {
  void *const memory = HPDF_GetMem(owner->mmgr, sizeof(BoxObject));
  if (memory == nullptr) return HPDF_Error_GetCode(owner->error);
  if (AppendEntry(owner, key, new (memory) BoxObject{{HPDF_OTYPE_DIRECT, 0, kBoxClass}, box}) != nullptr)
    return HPDF_OK;
  HPDF_FreeMem(owner->mmgr, memory);
  return HPDF_Error_GetCode(owner->error);
}

HPDF_STATUS AddConstant(HPDF_Dict owner, const char *key, const ConstantObject &constant) {
  return AppendEntry(owner, key, const_cast<ConstantObject *>(&constant)) != nullptr ? HPDF_OK
                                                                                     : HPDF_Error_GetCode(owner->error);
}

HPDF_STATUS WriteBox(const BoxObject &object, HPDF_Stream stream) {
  char text[4 * (kRoomForReal + 1) + 3];
  char *end = text;
  const auto append = [&end](std::string_view part) { end += part.copy(end, part.size()); };
  append("[ ");
  for (const HPDF_REAL number : {object.box.left, object.box.bottom, object.box.right, object.box.top}) {
    end = WriteReal(end, number);
    append(" ");
  }
  append("]");
  return HPDF_Stream_Write(stream, reinterpret_cast<const HPDF_BYTE *>(text), static_cast<HPDF_UINT>(end - text));
}

}  // namespace quillbar::engine
