// SPDX-License-Identifier: MIT
#include "plugin/engine/fonts/shaping/directed_text.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace quillbar::engine {

namespace {

constexpr char32_t kParagraphSeparator = 0x2029;

bool EndsParagraph(char32_t character) {
  return character == U'\n' || character == U'\r' || character == kParagraphSeparator;
}

}  // namespace

DirectedText::DirectedText(std::span<const HPDF_BYTE> bytes, DecodedText decoded)
    : bytes_(bytes), decoded_(std::move(decoded)) {
  const std::u32string_view text = decoded_.characters;
  for (std::size_t start = 0; start < text.size();) {
    const auto end = std::find_if(text.begin() + static_cast<std::ptrdiff_t>(start), text.end(), EndsParagraph);
    const auto after = static_cast<std::size_t>(end - text.begin()) + (end == text.end() ? 0 : 1);
    paragraphs_.push_back({start, BidirectionalParagraph(text.substr(start, after - start))});
    start = after;
  }
}

DirectedText::Range DirectedText::RangeOf(std::span<const HPDF_BYTE> part) const {
  const auto characterAt = [&](std::size_t byte) {
    return static_cast<std::size_t>(std::ranges::upper_bound(decoded_.ends, byte) - decoded_.ends.begin());
  };
  const auto offset = static_cast<std::size_t>(part.data() - bytes_.data());
  return {characterAt(offset), characterAt(offset + part.size())};
}

std::u32string DirectedText::CharactersOf(std::span<const HPDF_BYTE> part) const {
  const auto [first, end] = RangeOf(part);
  return decoded_.characters.substr(first, end - first);
}

DirectedText::Order DirectedText::OrderOf(std::span<const HPDF_BYTE> part) const {
  const auto [first, end] = RangeOf(part);
  auto paragraph = std::ranges::upper_bound(paragraphs_, first, {}, &Paragraph::start);
  if (paragraph != paragraphs_.begin()) --paragraph;
  Order order{{}, paragraph != paragraphs_.end() && paragraph->levels.IsRightToLeft()};
  for (std::size_t at = first; at < end; ++paragraph) {
    const auto next = std::next(paragraph);
    const std::size_t stop = next == paragraphs_.end() ? end : std::min(end, next->start);
    for (VisualRun run : paragraph->levels.RunsOfLine(at - paragraph->start, stop - at)) {
      run.start += paragraph->start - first;
      order.runs.push_back(run);
    }
    at = stop;
  }
  return order;
}

}  // namespace quillbar::engine
