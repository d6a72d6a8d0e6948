// SPDX-License-Identifier: MIT
// Font definitions of all kinds, in place of libharu's hpdf_fontdef.c.
#include "plugin/engine/fonts/font_definition.h"

#include <cstring>

namespace quillbar::engine {

namespace {

HPDF_STATUS AddEntry(HPDF_Dict descriptor, const HPDF_FontDef_Rec &definition, DescriptorEntry entry) {
  switch (entry) {
    case DescriptorEntry::kFontName:
      return HPDF_Dict_AddName(descriptor, "FontName", definition.base_font);
    case DescriptorEntry::kFlags:
      return HPDF_Dict_AddNumber(descriptor, "Flags", static_cast<HPDF_INT32>(definition.flags));
    case DescriptorEntry::kFontBBox:
      return HPDF_Dict_Add(descriptor, "FontBBox", HPDF_Box_Array_New(descriptor->mmgr, definition.font_bbox));
    case DescriptorEntry::kAscent:
      return HPDF_Dict_AddNumber(descriptor, "Ascent", definition.ascent);
    case DescriptorEntry::kDescent:
      return HPDF_Dict_AddNumber(descriptor, "Descent", definition.descent);
    case DescriptorEntry::kCapHeight:
      return HPDF_Dict_AddNumber(descriptor, "CapHeight", definition.cap_height);
    case DescriptorEntry::kXHeight:
      return HPDF_Dict_AddNumber(descriptor, "XHeight", definition.x_height);
    case DescriptorEntry::kItalicAngle:
      return HPDF_Dict_AddNumber(descriptor, "ItalicAngle", definition.italic_angle);
    case DescriptorEntry::kStemV:
      return HPDF_Dict_AddNumber(descriptor, "StemV", definition.stemv);
    case DescriptorEntry::kMissingWidth:
      return HPDF_Dict_AddNumber(descriptor, "MissingWidth", definition.missing_width);
  }
  return HPDF_OK;
}

}  // namespace

OwnedFontDefinition NewFontDefinition(HPDF_MMgr memory, HPDF_FontDefType kind, void *attr, HPDF_FontDef_FreeFunc free) {
  auto *definition = static_cast<HPDF_FontDef>(HPDF_GetMem(memory, sizeof(HPDF_FontDef_Rec)));
  if (definition == nullptr) return nullptr;
  *definition = {};
  definition->sig_bytes = HPDF_FONTDEF_SIG_BYTES;
  definition->mmgr = memory;
  definition->error = memory->error;
  definition->type = kind;
  definition->free_fn = free;
  definition->attr = attr;
  return OwnedFontDefinition(definition);
}

void SetBaseFont(HPDF_FontDef definition, std::string_view name) {
  std::memset(definition->base_font, 0, sizeof definition->base_font);
  name.copy(definition->base_font, HPDF_LIMIT_MAX_NAME_LEN);
}

HPDF_Dict NewFontDescriptor(const HPDF_FontDef_Rec &definition, HPDF_Xref xref,
                            std::initializer_list<DescriptorEntry> entries) {
  HPDF_Dict descriptor = HPDF_Dict_New(definition.mmgr);
  if (descriptor == nullptr || HPDF_Xref_Add(xref, descriptor) != HPDF_OK) return nullptr;
  HPDF_STATUS status = HPDF_Dict_AddName(descriptor, "Type", "FontDescriptor");
  for (const DescriptorEntry entry : entries) status |= AddEntry(descriptor, definition, entry);
  return status == HPDF_OK ? descriptor : nullptr;
}

}  // namespace quillbar::engine

extern "C" {

// The document that the descriptor belonged to is gone.
void HPDF_FontDef_Cleanup(HPDF_FontDef definition) {
  if (definition == nullptr) return;
  if (definition->clean_fn != nullptr) definition->clean_fn(definition);
  definition->descriptor = nullptr;
}

void HPDF_FontDef_Free(HPDF_FontDef definition) {
  if (definition == nullptr) return;
  if (definition->free_fn != nullptr) definition->free_fn(definition);
  HPDF_FreeMem(definition->mmgr, definition);
}

}  // extern "C"
