// SPDX-License-Identifier: MIT
// The input is a `CFF ` table, or with a first byte of 2 a `CFF2` table, of a font whose other tables are right. What a
// document embeds of it must be a table that draws the same.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <string>
#include <variant>
#include <vector>

#include "fuzz/demand.h"
#include "fuzz/fuzzed_document.h"
#include "fuzz/memory_file.h"
#include "plugin/engine/fonts/cff/cff_program.h"
#include "plugin/engine/fonts/document_fonts.h"
#include "tests/support/synthetic_font.h"

namespace {

using namespace quillbar;
using engine::TrueTypeFile;

constexpr unsigned kGlyphs = 6;

test::FontBytes FontWith(std::span<const std::uint8_t> table) {
  test::SyntheticFont font(kGlyphs);
  const bool isSecond = !table.empty() && table[0] == 2;
  font.tables[isSecond ? "CFF2" : "CFF "].assign(table.begin(), table.end());
  font.signature = 0x4F54544F;  // OTTO
  test::FontBytes bytes = font.Build();
  for (const std::string_view tag : {"glyf", "loca"}) {
    *std::search(bytes.begin(), bytes.end(), tag.begin(), tag.end()) = 'x';
  }
  return bytes;
}

void CheckProgram(const TrueTypeFile &font) {
  std::vector<engine::EmbeddedGlyph> glyphs;
  for (unsigned glyph = 0; glyph < font.GlyphCount(); ++glyph) {
    glyphs.push_back({false, static_cast<std::uint16_t>(glyph), {}, 0});
  }
  const auto again = TrueTypeFile::Read(FontWith(engine::CffProgram(font, glyphs)));
  const auto *embedded = std::get_if<TrueTypeFile>(&again);
  fuzz::Demand(embedded != nullptr && embedded->HasCffOutlines(), "an embedded program is read as one");
  // Both have 1000 units per em. Outlines beyond what a glyph description can say are cut off.
  constexpr int kLargest = 16000, kRounding = 2;
  for (unsigned glyph = 0; glyph < font.GlyphCount(); ++glyph) {
    const auto number = static_cast<std::uint16_t>(glyph);
    const engine::GlyphExtents before = font.Shaper().ExtentsOf(number), after = embedded->Shaper().ExtentsOf(number);
    const int ends[] = {before.left, before.bottom, before.right, before.top};
    if (std::ranges::any_of(ends, [](int end) { return std::abs(end) > kLargest; })) continue;
    // Of a broken outline nothing is known, and what comes before the break is drawn.
    if (std::ranges::all_of(ends, [](int end) { return end == 0; })) continue;
    // It may be smaller: a path of one point covers it in the font, and is not drawn.
    fuzz::Demand(after.left >= before.left - kRounding && after.bottom >= before.bottom - kRounding &&
                     after.right <= before.right + kRounding && after.top <= before.top + kRounding,
                 "an embedded outline reaches no further than the font's");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  const test::FontBytes file = FontWith({data, size});
  const auto read = TrueTypeFile::Read(file);
  const auto *font = std::get_if<TrueTypeFile>(&read);
  if (font == nullptr) return 0;
  CheckProgram(*font);
  const fuzz::MemoryFile onDisk(file);
  fuzz::FuzzedDocument document;
  const char *name = Call<engine::LoadTrueTypeFont>(document.get(), onDisk.LibraryPath());
  if (name == nullptr) return 0;
  document.Show(Call<engine::GetFont>(document.get(), name, "UTF-8"), "ABCDE\n");
  document.Show(Call<engine::GetFont>(document.get(), name, "WinAnsiEncoding"), "ABCDE\n");
  document.Save();
  return 0;
}
