// SPDX-License-Identifier: MIT
#include "tests/docs/reference_pages.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "tests/support/pattern.h"
#include "tests/support/process.h"
#include "tests/support/temporary_folder.h"

namespace quillbar::test {

std::string ReferenceEntry(const std::string &qualifiedName) {
  const std::size_t dot = qualifiedName.find('.');
  const std::string member = qualifiedName.substr(dot + 1);
  const std::filesystem::path folder = std::filesystem::path(QUILLBAR_DOCS) / "reference";
  const std::string page = ReadFile(folder / (qualifiedName.substr(0, dot) + ".md"));
  for (std::size_t at = page.find("\n##"); at != std::string::npos; at = page.find("\n##", at + 1)) {
    const std::size_t name = page.find(' ', at) + 1;
    const std::size_t end = page.find('\n', name);
    if ((", " + page.substr(name, end - name) + ",").find(", " + member + ",") == std::string::npos) continue;
    return WithReplaced(page.substr(end, page.find("\n#", end) - end), "\n +|\n", " ");
  }
  throw std::runtime_error("the reference doesn't describe " + qualifiedName);
}

std::string ReasonNotToCheck() {
#if defined(_WIN32)
  return "the pages are the same on every system; they are checked on Linux";
#else
  return std::filesystem::exists("/usr/bin/python3") ? "" : "there is no /usr/bin/python3, which runs the checks";
#endif
}

std::string FaultsFoundBy(const std::string &check, const std::filesystem::path &docs,
                          const std::filesystem::path &facts) {
  const std::filesystem::path script = std::filesystem::path(QUILLBAR_DOCS) / "site" / check;
  const ProcessResult result = RunProcess({"/usr/bin/python3", script, docs, facts});
  EXPECT_EQ(result.errors, "");
  EXPECT_EQ(result.exitStatus, result.output.empty() ? 0 : 1);
  return result.output;
}

}  // namespace quillbar::test
