// SPDX-License-Identifier: MIT
#include "host/language/syntax/names.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>

namespace quillbar::language {
namespace {

/// The edit distance with swaps of neighbours as one edit (optimal string alignment).
std::size_t EditDistance(std::string_view one, std::string_view other) {
  std::vector<std::size_t> beforeLast(other.size() + 1), last(other.size() + 1), row(other.size() + 1);
  for (std::size_t j = 0; j <= other.size(); ++j) last[j] = j;
  for (std::size_t i = 1; i <= one.size(); ++i) {
    row[0] = i;
    for (std::size_t j = 1; j <= other.size(); ++j) {
      const std::size_t change = one[i - 1] == other[j - 1] ? 0 : 1;
      row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + change});
      const bool swapped = i > 1 && j > 1 && one[i - 1] == other[j - 2] && one[i - 2] == other[j - 1];
      if (swapped) row[j] = std::min(row[j], beforeLast[j - 2] + 1);
    }
    std::swap(beforeLast, last);
    std::swap(last, row);
  }
  return last[other.size()];
}

}  // namespace

std::string FoldName(std::string_view name) {
  std::string folded(name);
  std::transform(folded.begin(), folded.end(), folded.begin(), AsciiLower);
  return folded;
}

std::string_view NearestName(std::string_view name, const std::vector<std::string_view> &candidates) {
  constexpr std::size_t kLongestName = 64;
  if (name.size() > kLongestName) return {};
  const std::string folded = FoldName(name);
  std::size_t best = name.size() <= 4 ? 2 : 3;
  std::string_view nearest;
  for (const std::string_view candidate : candidates) {
    if (candidate.size() > name.size() + 2 || name.size() > candidate.size() + 2) continue;
    const std::size_t distance = EditDistance(folded, FoldName(candidate));
    if (distance < best && distance < name.size()) {
      best = distance;
      nearest = candidate;
    }
  }
  return nearest;
}

std::string Suggestion(std::string_view name, const std::vector<std::string_view> &candidates) {
  const std::string_view nearest = NearestName(name, candidates);
  return nearest.empty() ? std::string() : fmt::format("; did you mean \"{}\"?", nearest);
}

bool NameLess::operator()(std::string_view one, std::string_view other) const {
  return std::lexicographical_compare(one.begin(), one.end(), other.begin(), other.end(),
                                      [](char a, char b) { return AsciiLower(a) < AsciiLower(b); });
}

}  // namespace quillbar::language
