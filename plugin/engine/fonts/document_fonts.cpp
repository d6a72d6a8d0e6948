// SPDX-License-Identifier: MIT
// HPDF_LoadTTFontFromFile and HPDF_GetFont: what TrueType fonts are called in a document.
//
// libharu takes two files of one name for one font, whatever is in them.
#include <hpdf.h>
#include <hpdf_doc.h>

#include <algorithm>
#include <new>
#include <string_view>

#include "plugin/engine/fonts/truetype/truetype_definition.h"
#include "plugin/engine/fonts/truetype/truetype_name.h"

extern "C" HPDF_Font Libharu_HPDF_GetFont(HPDF_Doc document, const char *name, const char *encoding);

namespace quillbar::engine {

namespace {

// The first of the document's fonts that `fits` is true of; null if there is none.
template <typename Predicate>
HPDF_FontDef FindDefinition(HPDF_Doc document, Predicate fits) {
  for (HPDF_UINT i = 0; i < document->fontdef_list->count; ++i) {
    auto *definition = static_cast<HPDF_FontDef>(HPDF_List_ItemAt(document->fontdef_list, i));
    if (fits(definition)) return definition;
  }
  return nullptr;
}

HPDF_FontDef FindName(HPDF_Doc document, std::string_view name) {
  return FindDefinition(document, [&](HPDF_FontDef definition) { return name == definition->base_font; });
}

bool IsSameFile(const TrueTypeFile &one, const TrueTypeFile &other) {
  return std::ranges::equal(one.Whole(), other.Whole());
}

// Takes the definition over; the name under which the document has the font, or null.
const char *Register(HPDF_Doc document, HPDF_FontDef definition) {
  const TrueTypeFile &file = TrueTypeOf(definition).font;
  const HPDF_FontDef same = FindDefinition(document, [&](HPDF_FontDef known) {
    return known->type == HPDF_FONTDEF_TYPE_TRUETYPE && IsSameFile(TrueTypeOf(known).font, file);
  });
  if (same != nullptr) {
    HPDF_FontDef_Free(definition);
    return same->base_font;
  }
  for (unsigned attempt = 0; FindName(document, definition->base_font) != nullptr; ++attempt)
    SetName(definition, LibraryNameWithSuffix(file, kLongestTrueTypeName, attempt));
  if (HPDF_List_Add(document->fontdef_list, definition) != HPDF_OK) {
    HPDF_FontDef_Free(definition);
    return nullptr;
  }
  return definition->base_font;
}

const char *Load(HPDF_Doc document, const char *path) {
  HPDF_Stream stream = HPDF_FileReader_New(document->mmgr, path);
  if (!HPDF_Stream_Validate(stream)) return nullptr;
  HPDF_FontDef definition = HPDF_TTFontDef_Load(document->mmgr, stream, HPDF_TRUE);
  if (definition == nullptr) return nullptr;
  try {
    return Register(document, definition);
  } catch (const std::bad_alloc &) {
    HPDF_FontDef_Free(definition);
    HPDF_SetError(&document->error, HPDF_FAILD_TO_ALLOC_MEM, 0);
    return nullptr;
  }
}

}  // namespace

}  // namespace quillbar::engine

using namespace quillbar::engine;

extern "C" {

// Fonts are always embedded.
const char *HPDF_LoadTTFontFromFile(HPDF_Doc document, const char *path, HPDF_BOOL) {
  if (!HPDF_HasDoc(document)) return nullptr;
  const char *name = Load(document, path);
  if (name == nullptr) HPDF_CheckError(&document->error);
  return name;
}

// A loaded TrueType font is also found by its PostScript name, which other programs show.
HPDF_Font HPDF_GetFont(HPDF_Doc document, const char *name, const char *encoding) {
  if (!HPDF_HasDoc(document)) return nullptr;
  if (name != nullptr && FindName(document, name) == nullptr) {
    try {
      const HPDF_FontDef definition = FindDefinition(document, [&](HPDF_FontDef known) {
        return known->type == HPDF_FONTDEF_TYPE_TRUETYPE && IsOwnName(TrueTypeOf(known).font, name);
      });
      if (definition != nullptr) name = definition->base_font;
    } catch (const std::bad_alloc &) {
      HPDF_RaiseError(&document->error, HPDF_FAILD_TO_ALLOC_MEM, 0);
      return nullptr;
    }
  }
  return Libharu_HPDF_GetFont(document, name, encoding);
}

}  // extern "C"
