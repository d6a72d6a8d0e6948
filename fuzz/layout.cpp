// SPDX-License-Identifier: MIT
// The input is a paragraph: a byte for its direction, then its text in UTF-8. It is broken into lines wherever it may
// be, and each line is put in order.
#include <cstdint>
#include <string>
#include <vector>

#include "fuzz/decoded_text.h"
#include "fuzz/demand.h"
#include "plugin/engine/layout/bidirectional.h"
#include "plugin/engine/layout/line_breaks.h"

namespace {

using namespace quillbar;
using engine::BidirectionalParagraph;
using engine::LineBreak;

std::vector<std::size_t> LineStarts(const std::u32string &text) {
  std::vector<std::size_t> starts{0};
  engine::LineBreaker breaker;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const LineBreak itsBreak = breaker.Before(text[i]);
    fuzz::Demand(i > 0 || itsBreak == LineBreak::kNone, "no line is broken before its first character");
    if (itsBreak != LineBreak::kNone) starts.push_back(i);
  }
  return starts;
}

void CheckLine(const BidirectionalParagraph &paragraph, std::size_t start, std::size_t length) {
  std::vector<bool> isShown(length, false);
  for (const engine::VisualRun &run : paragraph.RunsOfLine(start, length)) {
    fuzz::Demand(run.start >= start && run.length > 0 && run.start + run.length <= start + length,
                 "runs are parts of their line");
    fuzz::Demand(run.level <= 127, "no level is above the deepest");
    for (std::size_t i = run.start - start; i < run.start - start + run.length; ++i) {
      fuzz::Demand(!isShown[i], "no character is shown twice");
      isShown[i] = true;
    }
  }
  for (const bool is : isShown) fuzz::Demand(is, "every character is shown");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  if (size == 0) return 0;
  const std::u32string text = fuzz::Decoded({data + 1, size - 1});
  const BidirectionalParagraph paragraph(text, static_cast<engine::BaseDirection>(data[0] % 3));
  CheckLine(paragraph, 0, text.size());
  std::vector<std::size_t> starts = LineStarts(text);
  starts.push_back(text.size());
  for (std::size_t i = 0; i + 1 < starts.size(); ++i) CheckLine(paragraph, starts[i], starts[i + 1] - starts[i]);
  return 0;
}
