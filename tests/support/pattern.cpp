// SPDX-License-Identifier: MIT
#include "tests/support/pattern.h"

#include <regex>

namespace quillbar::test {
namespace {

PatternMatch TextsOf(const std::smatch &found) {
  PatternMatch match;
  for (const auto &part : found) match.push_back(part.str());
  return match;
}

}  // namespace

std::vector<PatternMatch> MatchesIn(const std::string &text, const std::string &pattern) {
  const std::regex expression(pattern);
  std::vector<PatternMatch> matches;
  for (std::sregex_iterator found(text.begin(), text.end(), expression), end; found != end; ++found) {
    matches.push_back(TextsOf(*found));
  }
  return matches;
}

PatternMatch FirstMatchIn(const std::string &text, const std::string &pattern) {
  std::smatch found;
  return std::regex_search(text, found, std::regex(pattern)) ? TextsOf(found) : PatternMatch();
}

PatternMatch WholeMatch(const std::string &text, const std::string &pattern) {
  std::smatch found;
  return std::regex_match(text, found, std::regex(pattern)) ? TextsOf(found) : PatternMatch();
}

std::string WithReplaced(const std::string &text, const std::string &pattern, const std::string &replacement) {
  return std::regex_replace(text, std::regex(pattern), replacement);
}

}  // namespace quillbar::test
