// SPDX-License-Identifier: MIT
// HPDF_CIDFontDef_GetCIDWidth: the width of a character of a built-in CJK face.
//
// libharu's goes through the face's list of widths from its start for each character, and to its end for
// most: ideographs have the default width and stand in no list.
#include <hpdf.h>
#include <hpdf_fontdef.h>

#include <algorithm>

// In 1/1000 em. The list is in ascending order of characters, as the built-in faces' tables are; where one
// occurs twice the first entry counts.
extern "C" HPDF_INT16 HPDF_CIDFontDef_GetCIDWidth(HPDF_FontDef definition, HPDF_UINT16 character) {
  const auto *own = static_cast<HPDF_CIDFontDefAttr>(definition->attr);
  const auto characterOf = [](const void *entry) { return static_cast<const HPDF_CID_Width *>(entry)->cid; };
  void *const *const begin = own->widths->obj;
  void *const *const end = begin + own->widths->count;
  void *const *const found = std::lower_bound(
      begin, end, character, [&](const void *entry, HPDF_UINT16 wanted) { return characterOf(entry) < wanted; });
  if (found == end || characterOf(*found) != character) return own->DW;
  return static_cast<const HPDF_CID_Width *>(*found)->width;
}
