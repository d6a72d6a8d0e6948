// SPDX-License-Identifier: MIT
/// The resources of a page: what its content calls by name (ISO 32000-1, 7.8.3).
#pragma once

#include "plugin/engine/pages/content_writer.h"
#include "plugin/engine/pages/page_object.h"

namespace quillbar::engine {

/// A category of resources.
struct ResourceCategory {
  /// The category's dictionary on a page; null until the page uses one of them.
  HPDF_Dict PageAttributes::*dictionary;
  /// The key under which the page's resources have that dictionary.
  const char *key;
  /// Names are this letter and a number.
  char letter;
};

inline constexpr ResourceCategory kFonts{&PageAttributes::fonts, "Font", 'F'};
inline constexpr ResourceCategory kXObjects{&PageAttributes::xobjects, "XObject", 'X'};
inline constexpr ResourceCategory kGraphicsStates{&PageAttributes::ext_gstates, "ExtGState", 'E'};

/// The name under which `page` has `resource`, which is listed now if it was not. Its text is null when memory ran out
/// or the page has too many resources of this category (4,095).
ResourceName NameOfResource(HPDF_Page page, const ResourceCategory &category, HPDF_Dict resource);

}  // namespace quillbar::engine
