// SPDX-License-Identifier: MIT
// The code blocks of the documentation.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

namespace quillbar::test {

/// A script on a page: a block that is fenced with three backticks and the word "vb". Further words of the fence are for
/// these tests alone, which no reader of the page sees:
///
///   name=N      other blocks can continue this one
///   after=N     a fragment, which continues the block of this name, also on another page
///   picture=P   the first page of its document is shown as pictures/P.png
///
/// What the script prints is the block after it when that one is fenced as "text".
struct CodeBlock {
  std::filesystem::path page;
  std::size_t line = 0;      // of the fence, from 1
  std::string name;          // empty: none
  std::string continued;     // the name of the block that it continues; empty: it is complete
  std::string picture;       // empty: none
  std::string code;          // with a line feed at the end of each line
  std::string output;        // what the page says that it prints
  bool showsPicture = true;  // whether the page shows the picture
};

/// The scripts of a page in Markdown. A word of a fence that isn't one of the above throws std::runtime_error.
std::vector<CodeBlock> CodeBlocksOf(const std::filesystem::path &page);

}  // namespace quillbar::test
