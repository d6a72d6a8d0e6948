// SPDX-License-Identifier: MIT
#include "plugin/engine/fonts/shaping/text_layout.h"

#include <algorithm>
#include <span>

namespace quillbar::engine {

namespace {

// A cluster of more characters or glyphs is shown character by character: no language has such, and hostile fonts do.
constexpr std::uint32_t kLargestCluster = 64;

// Cut off like the advance widths of single glyphs, so that letters are as wide in a shaped text as in any other.
std::int32_t Per1000(std::int64_t units, unsigned unitsPerEm) {
  return static_cast<std::int32_t>(
      std::clamp<std::int64_t>(units * 1000 / static_cast<std::int64_t>(unitsPerEm), -32768, 32767));
}

class Layouter {
 public:
  Layouter(const Shaper &shaper, const CharacterMetrics &metrics, TextLayout &layout)
      : shaper_(shaper), metrics_(metrics), layout_(layout) {
    layout_.clusters.reserve(layout_.text.size());
  }

  void Add(const ScriptRun &run) {
    if (run.layout == RunLayout::kCharacters) return AddCharacters(run.first, run.first + run.count, run.isRightToLeft);
    const auto glyphs = static_cast<std::uint32_t>(layout_.glyphs.size());
    shaper_.Shape(layout_.text, run, layout_.glyphs);
    AddShaped(run, glyphs);
  }

 private:
  void AddCharacters(std::uint32_t first, std::uint32_t after, bool isRightToLeft) {
    for (std::uint32_t i = first; i < after; ++i) {
      const char32_t character = layout_.text[i];
      const bool isMark = layout_.isOrdered && IsDirectionalMark(character);
      layout_.clusters.push_back({i, 1, 0, 0, isMark ? 0 : metrics_.advanceOf(character), isMark, isRightToLeft});
    }
  }

  // Takes the glyphs from `glyph` on apart, which show `run` in visual order.
  void AddShaped(const ScriptRun &run, std::uint32_t glyph) {
    const auto end = static_cast<std::uint32_t>(layout_.glyphs.size());
    const std::uint32_t after = run.first + run.count;
    if (glyph == end) {
      for (std::uint32_t i = run.first; i < after; ++i)
        layout_.clusters.push_back({i, 1, glyph, 0, 0, true, run.isRightToLeft});
      return;
    }
    starts_.clear();
    for (std::uint32_t i = glyph; i < end; ++i) {
      if (i == glyph || layout_.glyphs[i].cluster != layout_.glyphs[i - 1].cluster) starts_.push_back(i);
    }
    starts_.push_back(end);
    const std::size_t count = starts_.size() - 1;
    std::uint32_t first = run.first;
    for (std::size_t i = 0; i < count; ++i) {
      // In the order of the text.
      const std::size_t cluster = run.isRightToLeft ? count - 1 - i : i;
      const std::size_t next = run.isRightToLeft ? cluster - 1 : cluster + 1;
      const std::uint32_t clusterEnd = i + 1 < count ? layout_.glyphs[starts_[next]].cluster : after;
      Add(first, clusterEnd, starts_[cluster], starts_[cluster + 1], run.isRightToLeft);
      first = clusterEnd;
    }
  }

  void Add(std::uint32_t first, std::uint32_t after, std::uint32_t glyph, std::uint32_t endGlyph, bool isRightToLeft) {
    // The missing glyph stands for one character, side by side with others: a mark's would cover its letter.
    const auto isMissing = [](const ShapedGlyph &shaped) { return shaped.glyph == 0; };
    const auto shown = std::span(layout_.glyphs).subspan(glyph, endGlyph - glyph);
    const bool isTooLarge = after - first > kLargestCluster || endGlyph - glyph > kLargestCluster;
    if (isTooLarge || std::ranges::any_of(shown, isMissing)) return AddCharacters(first, after, isRightToLeft);
    std::int64_t advance = 0;
    for (std::uint32_t i = glyph; i < endGlyph; ++i) advance += layout_.glyphs[i].advance;
    layout_.clusters.push_back(
        {first, after - first, glyph, endGlyph - glyph, Per1000(advance, metrics_.unitsPerEm), true, isRightToLeft});
  }

  std::vector<std::uint32_t> starts_;  // of the clusters' glyphs, and where the last one ends
  const Shaper &shaper_;
  const CharacterMetrics &metrics_;
  TextLayout &layout_;
};

constexpr char32_t kLeftToRightMark = 0x200E, kRightToLeftMark = 0x200F;

// Puts the clusters of ordered text into the order in which they are drawn.
class VisualOrder {
 public:
  VisualOrder(bool isRightToLeft, bool needsMarks, TextLayout &layout)
      : isRightToLeft_(isRightToLeft), needsMarks_(needsMarks), layout_(layout) {}

  void Add(const VisualRun &run) {
    const auto startsBefore = [](const GlyphCluster &cluster, std::size_t first) { return cluster.first < first; };
    const auto begin = layout_.clusters.begin();
    const auto first = std::lower_bound(begin, layout_.clusters.end(), run.start, startsBefore);
    const auto last = std::lower_bound(first, layout_.clusters.end(), run.start + run.length, startsBefore);
    if (!run.IsRightToLeft()) {
      if (isRightToLeft_) AddMark(kRightToLeftMark);
      for (auto cluster = first; cluster != last; ++cluster) AddCluster(cluster - begin);
      return;
    }
    bool isInNumber = false;
    for (auto cluster = last; cluster != first;) {
      --cluster;
      const bool isNumber = needsMarks_ && isRightToLeft_ && IsNumberPart(layout_.text[cluster->first]);
      if (isNumber && !isInNumber) AddMark(kRightToLeftMark);
      isInNumber = isNumber;
      AddCluster(cluster - begin);
    }
    if (!isRightToLeft_) AddMark(kLeftToRightMark);
  }

 private:
  void AddCluster(std::ptrdiff_t cluster) {
    const GlyphCluster &added = layout_.clusters[static_cast<std::size_t>(cluster)];
    const bool isMark = added.count == 1 && IsDirectionalMark(layout_.text[added.first]);
    if (!isMark) layout_.visual.push_back(static_cast<std::int32_t>(cluster));
  }
  void AddMark(char32_t mark) {
    if (needsMarks_) layout_.visual.push_back(-static_cast<std::int32_t>(mark));
  }

  bool isRightToLeft_;
  bool needsMarks_;
  TextLayout &layout_;
};

}  // namespace

void LayOut(const Shaper &shaper, const CharacterMetrics &metrics, TextLayout &layout) {
  std::vector<ScriptRun> runs;
  AppendScriptRuns(layout.text, 0, static_cast<std::uint32_t>(layout.text.size()), false, false, runs);
  Layouter layouter(shaper, metrics, layout);
  for (const ScriptRun &run : runs) layouter.Add(run);
}

void LayOutInOrder(const Shaper &shaper, const CharacterMetrics &metrics, const std::vector<VisualRun> &runs,
                   bool isRightToLeft, TextLayout &layout) {
  layout.isOrdered = true;
  std::vector<VisualRun> logical = runs;
  std::ranges::sort(logical, {}, &VisualRun::start);
  std::vector<ScriptRun> scripts;
  for (const VisualRun &run : logical) {
    AppendScriptRuns(layout.text, static_cast<std::uint32_t>(run.start),
                     static_cast<std::uint32_t>(run.start + run.length), true, run.IsRightToLeft(), scripts);
  }
  Layouter layouter(shaper, metrics, layout);
  for (const ScriptRun &run : scripts) layouter.Add(run);

  const bool isOfOneDirection =
      std::ranges::all_of(runs, [&](const VisualRun &run) { return run.IsRightToLeft() == isRightToLeft; });
  const bool needsMarks = !isOfOneDirection || (isRightToLeft && std::ranges::any_of(layout.text, IsNumberPart));
  VisualOrder order(isRightToLeft, needsMarks, layout);
  for (const VisualRun &run : runs) order.Add(run);
}

}  // namespace quillbar::engine
