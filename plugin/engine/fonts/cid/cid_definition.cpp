// SPDX-License-Identifier: MIT
// Definitions of the built-in Chinese, Japanese and Korean faces, in place of libharu's hpdf_fontdef_cid.c. Their
// metrics are libharu's, in hpdf_fontdef_cns.c and its like, which fill in a definition when it is first asked for.
#include "plugin/engine/fonts/cid/cid_definition.h"

#include <algorithm>
#include <memory>

#include "plugin/engine/errors/out_of_memory.h"
#include "plugin/engine/fonts/font_definition.h"

namespace quillbar::engine {

namespace {

CidDefinition &AttributesOf(HPDF_FontDef definition) { return *static_cast<CidDefinition *>(definition->attr); }

void Free(HPDF_FontDef definition) { delete &AttributesOf(definition); }

}  // namespace

// Most ideographs have the default width and are in no list, so libharu, which goes through the list from its start,
// does so to its end. Where a character occurs twice the first entry counts.
HPDF_INT16 CidDefinition::WidthOf(HPDF_UINT16 cid) const {
  const auto found = std::ranges::lower_bound(widths, cid, {}, &HPDF_CID_Width::cid);
  return found == widths.end() || found->cid != cid ? defaultWidth : found->width;
}

}  // namespace quillbar::engine

using namespace quillbar::engine;

extern "C" {

HPDF_FontDef HPDF_CIDFontDef_New(HPDF_MMgr memory, char *name, HPDF_FontDef_InitFunc initialize) {
  return OrOutOfMemory(memory->error, [&]() -> HPDF_FontDef {
    constexpr HPDF_INT16 kMissingWidth = 500;
    auto own = std::make_unique<CidDefinition>();
    OwnedFontDefinition definition = NewFontDefinition(memory, HPDF_FONTDEF_TYPE_UNINITIALIZED, own.get(), Free);
    if (definition == nullptr) return nullptr;
    static_cast<void>(own.release());
    SetBaseFont(definition.get(), name);
    definition->init_fn = initialize;
    definition->missing_width = kMissingWidth;
    return definition.release();
  });
}

// Takes a list over that ends with the CID 0xFFFF, whole or not at all: a face that could not be filled in is filled
// in when it is asked for again.
HPDF_STATUS HPDF_CIDFontDef_AddWidth(HPDF_FontDef definition, const HPDF_CID_Width *widths) {
  return OrOutOfMemory(definition->error, [&] {
    const HPDF_CID_Width *end = widths;
    while (end->cid != 0xFFFF) ++end;
    std::vector<HPDF_CID_Width> &own = AttributesOf(definition).widths;
    own.insert(own.end(), widths, end);
    return HPDF_STATUS{HPDF_OK};
  });
}

// Makes a face bold or italic that has been filled in as the upright one.
HPDF_STATUS HPDF_CIDFontDef_ChangeStyle(HPDF_FontDef definition, HPDF_BOOL isBold, HPDF_BOOL isItalic) {
  constexpr HPDF_INT16 kSlant = 11;  // degrees
  if (isBold != HPDF_FALSE) {
    definition->stemv = static_cast<HPDF_UINT16>(2 * definition->stemv);
    definition->flags |= HPDF_FONT_FOURCE_BOLD;
  }
  if (isItalic != HPDF_FALSE) {
    definition->italic_angle = static_cast<HPDF_INT16>(definition->italic_angle - kSlant);
    definition->flags |= HPDF_FONT_ITALIC;
  }
  return HPDF_OK;
}

}  // extern "C"
