// SPDX-License-Identifier: MIT
// ECMAScript's regular expressions, for all tests in one file: a compiler takes a second for <regex>. GoogleTest's own
// know neither sets nor counts on Windows. A pattern that is none throws std::regex_error.
#pragma once

#include <string>
#include <vector>

namespace quillbar::test {

/// What matched as a whole, and then the text of each group; empty for a group that took no part.
using PatternMatch = std::vector<std::string>;

/// Every place of `text` that matches, in order.
std::vector<PatternMatch> MatchesIn(const std::string &text, const std::string &pattern);

/// The first of them; empty without any.
PatternMatch FirstMatchIn(const std::string &text, const std::string &pattern);

/// The match of the whole text; empty if it doesn't match.
PatternMatch WholeMatch(const std::string &text, const std::string &pattern);

/// `text` with `replacement` (`$1` is the first group) in every place that matches.
std::string WithReplaced(const std::string &text, const std::string &pattern, const std::string &replacement);

}  // namespace quillbar::test
