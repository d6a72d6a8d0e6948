// SPDX-License-Identifier: MIT
// Names of countries and languages in their own scripts: some 120,000 texts from the translations of iso-codes.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace quillbar::test {

/// A writing system, and the blocks of Unicode that its letters are in.
struct WritingSystem {
  struct Block {
    char32_t first, last;
  };
  const char *name;  // for names of tests
  std::vector<Block> blocks;
  bool isRightToLeft = false;
  std::vector<Block> companions = {};  // characters of other scripts that its names have as well

  /// Whether its names may have a character: one of its own, a companion, or one common to all scripts, as brackets.
  bool Has(char32_t character) const;
};

/// All names with a character of the writing system's own whose characters it may all have and are all `isCovered`, each
/// once.
std::vector<std::string> NamesIn(const WritingSystem &system, const std::function<bool(char32_t)> &isCovered);

/// Evenly chosen ones, at most so many.
std::vector<std::string> EvenlyChosen(std::vector<std::string> names, std::size_t most);

/// Why there are no names here; empty if there are.
std::string ReasonForNoNames();

/// The characters of a text in UTF-8.
std::u32string CharactersOf(const std::string &utf8);

}  // namespace quillbar::test
