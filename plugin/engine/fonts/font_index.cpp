// SPDX-License-Identifier: MIT
#include "plugin/engine/fonts/font_index.h"

#include <hpdf_doc.h>

#include <algorithm>
#include <functional>
#include <utility>

#include "plugin/engine/fonts/font_object.h"
#include "plugin/engine/fonts/truetype/truetype_definition.h"
#include "plugin/engine/fonts/truetype/truetype_name.h"

namespace quillbar::engine {

namespace {

// What tells files apart without reading all of them: how long they are, and their beginnings, where the table directory
// has the checksum of each table.
std::size_t BeginningHash(Bytes file) {
  constexpr std::size_t kBeginning = 512;
  const std::string_view beginning(reinterpret_cast<const char *>(file.data()), std::min(file.size(), kBeginning));
  return std::hash<std::string_view>()(beginning) ^ file.size();
}

}  // namespace

FontIndex &FontIndex::Of(HPDF_Doc document) {
  std::unique_ptr<DocumentPart> &part = static_cast<MemoryManager *>(document->mmgr)->fontIndex;
  if (part == nullptr) part.reset(new FontIndex(document));
  return static_cast<FontIndex &>(*part);
}

void FontIndex::TakeOverDefinitions() {
  for (; definitionCount_ < document_->fontdef_list->count; ++definitionCount_) {
    auto *definition = static_cast<HPDF_FontDef>(HPDF_List_ItemAt(document_->fontdef_list, definitionCount_));
    definitions_.emplace(definition->base_font, definition);
    if (definition->type != HPDF_FONTDEF_TYPE_TRUETYPE) continue;
    const TrueTypeFile &file = TrueTypeOf(definition).file;
    for (std::string &name : OwnNamesOf(file)) ownNames_.emplace(std::move(name), definition);
    files_.emplace(BeginningHash(file.Whole()), definition);
  }
}

HPDF_FontDef FontIndex::FindDefinition(std::string_view name) {
  TakeOverDefinitions();
  const auto found = definitions_.find(name);
  return found == definitions_.end() ? nullptr : found->second;
}

HPDF_FontDef FontIndex::FindOwnName(const std::string &name) {
  TakeOverDefinitions();
  const auto found = ownNames_.find(name);
  return found == ownNames_.end() ? nullptr : found->second;
}

HPDF_FontDef FontIndex::FindTrueTypeFile(Bytes file) {
  TakeOverDefinitions();
  const auto [first, last] = files_.equal_range(BeginningHash(file));
  const auto same = std::find_if(
      first, last, [&](const auto &known) { return std::ranges::equal(TrueTypeOf(known.second).file.Whole(), file); });
  return same == last ? nullptr : same->second;
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
