// SPDX-License-Identifier: MIT
#include "plugin/page/saved_fonts.h"

#include <unordered_map>
#include <vector>

#include "plugin/guard/library_call.h"
#include "plugin/page/page_data.h"
#include "plugin/script/wrapper.h"

namespace quillbar::page {

namespace {

struct SavedFont {
  Font *font;  // locked while kept; null when no font was set
  std::uint32_t textEncoding;
  float size;
  std::uint8_t automaticEncoding;
};

/// The pages with open states, innermost state last. Beside the pages because the layout of their private
/// data is fixed. Plain process-wide data: all calls come on the host's script thread.
std::unordered_map<const Page *, std::vector<SavedFont>> &SavedFonts() {
  static std::unordered_map<const Page *, std::vector<SavedFont>> fonts;
  return fonts;
}

}  // namespace

void MakeRoomForFont(Page *page) {
  std::vector<SavedFont> &saved = SavedFonts()[page];
  saved.reserve(saved.size() + 1);
}

void SaveFont(Page *page) {
  const PageData &data = DataOf(page);
  Font *font = data.currentFont == nullptr ? nullptr : Retain(data.currentFont);
  SavedFonts()[page].push_back({font, data.textEncoding, data.fontSize, data.automaticEncoding});
}

void RestoreFont(Page *page) {
  const auto found = SavedFonts().find(page);
  if (found == SavedFonts().end()) return;
  PageData &data = DataOf(page);
  std::vector<SavedFont> &saved = found->second;
  // The first state of a page has the depth 1 and can't be restored.
  const HPDF_UINT depth = Call<HPDF_Page_GetGStateDepth>(data.pageHandle);
  while (!saved.empty() && saved.size() >= depth) {
    const SavedFont state = saved.back();
    saved.pop_back();
    Release(data.currentFont);
    data.currentFont = state.font;
    data.textEncoding = state.textEncoding;
    data.fontSize = state.size;
    data.automaticEncoding = state.automaticEncoding;
  }
  if (saved.empty()) SavedFonts().erase(found);
}

void ForgetSavedFonts(Page *page) {
  const auto fonts = SavedFonts().extract(page);
  if (fonts.empty()) return;
  for (SavedFont &state : fonts.mapped()) Release(state.font);
}

}  // namespace quillbar::page
