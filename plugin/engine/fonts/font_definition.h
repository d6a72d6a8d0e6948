// SPDX-License-Identifier: MIT
// Font definitions: a face with its metrics, which its fonts in several encodings share.
#pragma once

#include <hpdf.h>
#include <hpdf_fontdef.h>

#include <initializer_list>
#include <memory>
#include <string_view>

namespace quillbar::engine {

struct FontDefinitionDeleter {
  void operator()(HPDF_FontDef definition) const { HPDF_FontDef_Free(definition); }
};

/// A definition that no document has yet.
using OwnedFontDefinition = std::unique_ptr<HPDF_FontDef_Rec, FontDefinitionDeleter>;

/// A new definition that carries `attr`, to be freed by `free`; null when memory ran out. It owns `attr` from then on.
OwnedFontDefinition NewFontDefinition(HPDF_MMgr memory, HPDF_FontDefType kind, void *attr, HPDF_FontDef_FreeFunc free);

/// Names the face; what is longer than a PDF name may be is cut off.
void SetBaseFont(HPDF_FontDef definition, std::string_view name);

/// Entries of a font descriptor (ISO 32000-1, 9.8) that come from the definition.
enum class DescriptorEntry {
  kFontName,
  kFlags,
  kFontBBox,
  kAscent,
  kDescent,
  kCapHeight,
  kXHeight,
  kItalicAngle,
  kStemV,
  kMissingWidth,
};

/// A font descriptor with these entries in this order; `xref` owns it. Null when memory ran out.
HPDF_Dict NewFontDescriptor(const HPDF_FontDef_Rec &definition, HPDF_Xref xref,
                            std::initializer_list<DescriptorEntry> entries);

}  // namespace quillbar::engine
