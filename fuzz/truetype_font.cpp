// SPDX-License-Identifier: MIT
// The input is a TrueType or OpenType file. Its last bytes, taken as UTF-16, are also the text that is shown with it: readers of
// fonts ignore what follows the tables.
#include <algorithm>
#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <vector>

#include "fuzz/demand.h"
#include "fuzz/fuzzed_document.h"
#include "fuzz/memory_file.h"
#include "plugin/engine/fonts/big_endian.h"
#include "plugin/engine/fonts/document_fonts.h"
#include "plugin/engine/fonts/truetype/truetype_subset.h"

namespace {

using namespace quillbar;

constexpr std::size_t kTextUnits = 16;

void AppendUtf8(std::string &text, unsigned unit) {
  if (unit == 0) return;
  if (unit < 0x80) {
    text.push_back(static_cast<char>(unit));
  } else if (unit < 0x800) {
    text += {static_cast<char>(0xC0 | unit >> 6), static_cast<char>(0x80 | (unit & 0x3F))};
  } else {
    // Halves of surrogate pairs become bytes that are not UTF-8, which text from outside may contain as well.
    text += {static_cast<char>(0xE0 | unit >> 12), static_cast<char>(0x80 | (unit >> 6 & 0x3F)),
             static_cast<char>(0x80 | (unit & 0x3F))};
  }
}

/// What a document embeds of an accepted font must be a font by the same rules.
void CheckSubset(std::span<const std::uint8_t> file) {
  const auto read = engine::TrueTypeFile::Read({file.begin(), file.end()});
  const auto *font = std::get_if<engine::TrueTypeFile>(&read);
  if (font == nullptr) return;
  if (font->HasCffOutlines()) return;
  std::vector<engine::EmbeddedGlyph> glyphs{{false, 0, {}, 0}};
  std::map<std::uint16_t, std::uint16_t> characters;
  for (unsigned character = 0x20; character < 0x100; ++character) {
    if (font->GlyphOf(character) == 0) continue;
    characters.emplace(static_cast<std::uint16_t>(character), static_cast<std::uint16_t>(glyphs.size()));
    glyphs.push_back({false, font->GlyphOf(character), {}, 0});
  }
  // One that is composed of all of them.
  engine::EmbeddedGlyph composed{true, 0, {}, 500};
  for (const engine::EmbeddedGlyph &glyph : glyphs) composed.parts.push_back({glyph.glyph, 40000, -7});
  glyphs.push_back(composed);
  const auto again = engine::TrueTypeFile::Read(engine::SubsetTrueType(*font, glyphs, characters));
  const auto *subset = std::get_if<engine::TrueTypeFile>(&again);
  fuzz::Demand(subset != nullptr, "an embedded font passes the checks that its file has passed");
  for (const auto &[character, glyph] : characters) {
    fuzz::Demand(subset->GlyphOf(character) == glyph, "an embedded font finds the glyphs of its characters");
    fuzz::Demand(subset->AdvanceOf(glyph) == font->AdvanceOf(glyphs[glyph].glyph), "an embedded glyph keeps its width");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  const std::span<const std::uint8_t> file(data, size);
  std::string text = "ABC \xF0\x9F\x98\x80\n", narrow = text;
  for (std::size_t at = size - std::min(size, 2 * kTextUnits); at + 2 <= size; at += 2) {
    AppendUtf8(text, engine::U16(file, at));
    if (file[at] != 0) narrow.push_back(static_cast<char>(file[at]));
  }
  const fuzz::MemoryFile font(file);
  fuzz::FuzzedDocument document;
  const char *name = Call<engine::LoadTrueTypeFont>(document.get(), font.LibraryPath());
  if (name == nullptr) return 0;
  CheckSubset(file);
  HPDF_Font shaped = Call<engine::GetFont>(document.get(), name, "UTF-8");
  document.Show(shaped, text.c_str());
  // Scripts whose features the shaper asks a font for, and order.
  document.Show(shaped,
                "\u0915\u094D\u0937\u093F \u0995\u09CD\u09B7 \u0E01\u0E34\u0E49 e\u0301\u0323 \u1780\u17D2\u1798");
  document.Show(shaped, ("\u200F\u0633\u0644\u0627\u0645 (1) \u05E9\u05B8 " + text).c_str());
  document.Show(Call<engine::GetFont>(document.get(), name, "WinAnsiEncoding"), narrow.c_str());
  document.Save();
  return 0;
}
