// SPDX-License-Identifier: MIT
#include "plugin/engine/fonts/font_index.h"

#include <hpdf_doc.h>

#include "plugin/engine/fonts/font_object.h"

namespace quillbar::engine {

FontIndex &FontIndex::Of(HPDF_Doc document) {
  std::unique_ptr<DocumentPart> &part = static_cast<MemoryManager *>(document->mmgr)->fontIndex;
  if (part == nullptr) part.reset(new FontIndex(document));
  return static_cast<FontIndex &>(*part);
}

HPDF_FontDef FontIndex::FindDefinition(std::string_view name) {
  for (; definitionCount_ < document_->fontdef_list->count; ++definitionCount_) {
    auto *definition = static_cast<HPDF_FontDef>(HPDF_List_ItemAt(document_->fontdef_list, definitionCount_));
    definitions_.emplace(definition->base_font, definition);
  }
  const auto found = definitions_.find(name);
  return found == definitions_.end() ? nullptr : found->second;
}

HPDF_Font FontIndex::FindFont(const HPDF_FontDef_Rec *definition, std::string_view encoding) {
  for (; fontCount_ < document_->font_mgr->count; ++fontCount_) {
    auto *font = static_cast<HPDF_Font>(HPDF_List_ItemAt(document_->font_mgr, fontCount_));
    fonts_.emplace(FontObjectOf(font).fontdef, font);
  }
  const auto [first, last] = fonts_.equal_range(definition);
  for (auto font = first; font != last; ++font) {
    if (encoding == FontObjectOf(font->second).encoder->name) return font->second;
  }
  return nullptr;
}

}  // namespace quillbar::engine
