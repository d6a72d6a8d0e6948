// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tests/differential/intended_differences.h"
#include "tests/differential/library_page.h"
#include "tests/support/content_operator.h"

namespace quillbar::differential {

/// A difference between the operators of both sides.
struct ContentDifference {
  std::size_t call = 0;  // the call whose operators differ; the number of calls for what saving adds
  std::string text;
};

/// Compares what the plugin wrote into a page with the reference's content, part by part.
std::optional<ContentDifference> CompareContent(std::vector<test::ContentOperator> plugin, const std::string &reference,
                                                const std::vector<WrittenPart> &parts,
                                                const IntendedDifferences &differences);

}  // namespace quillbar::differential
