// SPDX-License-Identifier: MIT
// What embedded and built-in fonts of multi-byte codes share; the latter are in cid/. In place of libharu's
// hpdf_font_cid.c.
#include "plugin/engine/fonts/type0_font.h"

#include <hpdf_font.h>

#include "plugin/engine/errors/out_of_memory.h"
#include "plugin/engine/fonts/cid/cid_font.h"
#include "plugin/engine/fonts/truetype/truetype_type0_font.h"
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

extern "C" HPDF_Font HPDF_Type0Font_New(HPDF_MMgr memory, HPDF_FontDef definition, HPDF_Encoder encoder,
                                        HPDF_Xref xref) {
  using namespace quillbar::engine;
  // Before anything is made: libharu refuses the encoder too, and loses the object that it has begun.
  if (encoder->type != HPDF_ENCODER_TYPE_DOUBLE_BYTE) {
    HPDF_SetError(memory->error, HPDF_INVALID_ENCODER_TYPE, 0);
    return nullptr;
  }
  const auto newFont = definition->type == HPDF_FONTDEF_TYPE_TRUETYPE ? NewTrueTypeType0Font : NewCidFont;
  return OrOutOfMemory(memory->error, [&] { return newFont(memory, definition, encoder, xref); });
}
