// SPDX-License-Identifier: MIT
#include "tests/docs/reference_pages.h"

#include <filesystem>
#include <regex>
#include <stdexcept>

#include "tests/support/temporary_folder.h"

namespace quillbar::test {

std::string ReferenceEntry(const std::string &qualifiedName) {
  const std::size_t dot = qualifiedName.find('.');
  const std::string member = qualifiedName.substr(dot + 1);
  const std::filesystem::path folder = std::filesystem::path(QUILLBAR_DOCS) / "reference";
  const std::string page = ReadFile(folder / (qualifiedName.substr(0, dot) + ".md"));
  const std::regex heading("\n##+ ([^\n]+)\n");
  for (std::sregex_iterator match(page.begin(), page.end(), heading), end; match != end; ++match) {
    if ((", " + match->str(1) + ",").find(", " + member + ",") == std::string::npos) continue;
    const std::string after = match->suffix();
    return std::regex_replace(after.substr(0, after.find("\n#")), std::regex("\n +|\n"), " ");
  }
  throw std::runtime_error("the reference doesn't describe " + qualifiedName);
}

}  // namespace quillbar::test
