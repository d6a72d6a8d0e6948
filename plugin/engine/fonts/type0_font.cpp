// SPDX-License-Identifier: MIT
// What embedded fonts of multi-byte codes (truetype/) and built-in ones (cid/) share.
#include "plugin/engine/fonts/type0_font.h"

#include "plugin/engine/objects/new_entry.h"

namespace quillbar::engine {

HPDF_STATUS AddDescendant(HPDF_Dict font, HPDF_Dict descendant) {
  HPDF_Array descendants = NewArrayIn(font, "DescendantFonts");
  return descendants == nullptr ? HPDF_Error_GetCode(font->error) : HPDF_Array_Add(descendants, descendant);
}

HPDF_STATUS AddVerticalMetrics(HPDF_Dict cidFont, HPDF_INT32 height, HPDF_INT32 advance) {
  HPDF_Array metrics = NewArrayIn(cidFont, "DW2");
  if (metrics == nullptr) return HPDF_Error_GetCode(cidFont->error);
  return HPDF_Array_AddNumber(metrics, height) | HPDF_Array_AddNumber(metrics, advance);
}

HPDF_STATUS AddCharacterCollection(HPDF_Dict cidFont, const char *registry, const char *ordering,
                                   HPDF_INT32 supplement) {
  HPDF_Dict system = NewDictionaryIn(cidFont, "CIDSystemInfo");
  if (system == nullptr) return HPDF_Error_GetCode(cidFont->error);
  HPDF_STATUS status = HPDF_Dict_Add(system, "Registry", HPDF_String_New(cidFont->mmgr, registry, nullptr));
  status |= HPDF_Dict_Add(system, "Ordering", HPDF_String_New(cidFont->mmgr, ordering, nullptr));
  return status | HPDF_Dict_AddNumber(system, "Supplement", supplement);
}

}  // namespace quillbar::engine
