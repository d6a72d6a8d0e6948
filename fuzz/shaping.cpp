// SPDX-License-Identifier: MIT
// The input is text to shape: a byte that chooses a font of the machine, one for the direction, then UTF-8. It is laid
// out character by character and ordered by direction.
#include <array>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <variant>
#include <vector>

#include "fuzz/decoded_text.h"
#include "fuzz/demand.h"
#include "plugin/engine/fonts/shaping/text_layout.h"
#include "plugin/engine/fonts/truetype/truetype_file.h"
#include "tests/support/synthetic_font.h"

namespace {

using namespace quillbar;
using engine::TextLayout;
using engine::TrueTypeFile;

/// With features of their scripts, each of another kind of shaper.
constexpr std::array kFonts = {"/usr/share/fonts/truetype/lohit-devanagari/Lohit-Devanagari.ttf",
                               "/usr/share/fonts/truetype/tlwg/Garuda.ttf", "/usr/share/fonts/truetype/ezra/SILEOT.ttf",
                               "/usr/share/fonts/opentype/fonts-hosny-amiri/Amiri-Regular.ttf",
                               "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf"};

const std::vector<TrueTypeFile> &Fonts() {
  static const std::vector<TrueTypeFile> fonts = [] {
    std::vector<TrueTypeFile> read;
    const auto add = [&](std::vector<std::uint8_t> bytes) {
      auto font = TrueTypeFile::Read(std::move(bytes));
      if (auto *file = std::get_if<TrueTypeFile>(&font)) read.push_back(std::move(*file));
    };
    add(test::SyntheticFont(80).Build());
    for (const char *path : kFonts) {
      std::ifstream file(path, std::ios::binary);
      if (file) add({std::istreambuf_iterator<char>(file), {}});
    }
    return read;
  }();
  return fonts;
}

void CheckClusters(const TrueTypeFile &font, const TextLayout &layout) {
  std::vector<bool> isCovered(layout.text.size(), false);
  for (const engine::GlyphCluster &cluster : layout.clusters) {
    fuzz::Demand(cluster.count > 0 && cluster.first + cluster.count <= layout.text.size(),
                 "a cluster is a part of the text");
    for (std::uint32_t i = cluster.first; i < cluster.first + cluster.count; ++i) {
      fuzz::Demand(!isCovered[i], "no character is in two clusters");
      isCovered[i] = true;
    }
    fuzz::Demand(cluster.isShaped || (cluster.count == 1 && cluster.glyphCount == 0),
                 "what is not shaped is one character");
    fuzz::Demand(cluster.glyphs + cluster.glyphCount <= layout.glyphs.size(), "a cluster's glyphs are there");
    for (std::uint32_t i = cluster.glyphs; i < cluster.glyphs + cluster.glyphCount; ++i) {
      fuzz::Demand(layout.glyphs[i].glyph < font.GlyphCount(), "a glyph is one of the font's");
    }
  }
  for (const bool is : isCovered) fuzz::Demand(is, "every character is in a cluster");
}

void CheckOrder(const TextLayout &layout) {
  std::vector<bool> isDrawn(layout.clusters.size(), false);
  for (const std::int32_t entry : layout.visual) {
    if (entry < 0) {
      fuzz::Demand(engine::IsDirectionalMark(static_cast<char32_t>(-entry)), "what is no cluster is a mark");
      continue;
    }
    const auto cluster = static_cast<std::size_t>(entry);
    fuzz::Demand(cluster < isDrawn.size() && !isDrawn[cluster], "a cluster is drawn once");
    isDrawn[cluster] = true;
  }
  for (std::size_t i = 0; i < isDrawn.size(); ++i) {
    const engine::GlyphCluster &cluster = layout.clusters[i];
    const bool isMark = cluster.count == 1 && engine::IsDirectionalMark(layout.text[cluster.first]);
    fuzz::Demand(isDrawn[i] != isMark, "everything but directional marks is drawn");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  constexpr std::size_t kHead = 2;
  if (size < kHead) return 0;
  const TrueTypeFile &font = Fonts()[data[0] % Fonts().size()];
  const engine::CharacterMetrics metrics{font.UnitsPerEm(), [&](char32_t character) {
                                           return static_cast<std::int32_t>(font.WidthOf(font.GlyphOf(character)));
                                         }};
  TextLayout plain;
  plain.text = fuzz::Decoded({data + kHead, size - kHead});
  TextLayout ordered;
  ordered.text = plain.text;

  LayOut(font.Shaper(), metrics, plain);
  CheckClusters(font, plain);
  const engine::BidirectionalParagraph paragraph(ordered.text, static_cast<engine::BaseDirection>(data[1] % 3));
  LayOutInOrder(font.Shaper(), metrics, paragraph.RunsOfLine(0, ordered.text.size()), paragraph.IsRightToLeft(),
                ordered);
  CheckClusters(font, ordered);
  CheckOrder(ordered);
  return 0;
}
