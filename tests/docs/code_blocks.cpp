// SPDX-License-Identifier: MIT
#include "tests/docs/code_blocks.h"

#include <sstream>
#include <stdexcept>

#include "tests/support/temporary_folder.h"

namespace quillbar::test {
namespace {

/// Takes the words after "vb" of a fence.
void TakeWords(const std::string &fence, CodeBlock &block) {
  std::istringstream words(fence);
  std::string word;
  words >> word;
  while (words >> word) {
    const std::size_t equals = word.find('=');
    const std::string key = word.substr(0, equals);
    const std::string value = equals == std::string::npos ? "" : word.substr(equals + 1);
    if (key == "name") {
      block.name = value;
    } else if (key == "after") {
      block.continued = value;
    } else if (key == "picture") {
      block.picture = value;
    } else {
      throw std::runtime_error(block.page.string() + ":" + std::to_string(block.line) + ": the fence says " + word);
    }
  }
}

}  // namespace

std::vector<CodeBlock> CodeBlocksOf(const std::filesystem::path &page) {
  const std::string text = ReadFile(page);
  std::istringstream lines(text);
  std::vector<CodeBlock> blocks;
  std::string line;
  std::string fence;     // what the open fence says after its backticks
  bool open = false;     // inside a fenced block
  bool follows = false;  // only empty lines since a script
  for (std::size_t number = 1; std::getline(lines, line); ++number) {
    if (line.starts_with("```")) {
      open = !open;
      if (!open) {
        follows = fence == "vb" || fence.starts_with("vb ");
        continue;
      }
      fence = line.substr(3);
      if (fence == "vb" || fence.starts_with("vb ")) {
        blocks.emplace_back();
        blocks.back().page = page;
        blocks.back().line = number;
        TakeWords(fence, blocks.back());
      } else if (fence != "text" || !follows) {
        fence.clear();
      }
    } else if (open && fence == "text") {
      blocks.back().output += line + "\n";
    } else if (open && !fence.empty()) {
      blocks.back().code += line + "\n";
    } else if (!line.empty()) {
      follows = false;
    }
  }
  for (CodeBlock &block : blocks) {
    block.showsPicture = block.picture.empty() || text.find("pictures/" + block.picture + ".png)") != std::string::npos;
  }
  return blocks;
}

}  // namespace quillbar::test
