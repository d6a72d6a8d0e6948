// SPDX-License-Identifier: MIT
#include "tests/support/reader_versions.h"

#include <stdexcept>
#include <string>

#include "tests/support/pattern.h"
#include "tests/support/process.h"

namespace quillbar::test {
namespace {

Version VersionIn(const Command &command) {
  const ProcessResult result = RunProcess(command);
  const std::string text = result.output + result.errors;
  const PatternMatch found = FirstMatchIn(text, "([0-9]+)[.]([0-9]+)");
  if (found.empty()) throw std::runtime_error(command.front().Text() + " tells no version: " + text);
  return {std::stoi(found[1]), std::stoi(found[2])};
}

}  // namespace

Version MuPdfVersion() {
  static const Version version = VersionIn({"mutool", "-v"});
  return version;
}

Version GhostscriptVersion() {
  static const Version version = VersionIn({"gs", "--version"});
  return version;
}

}  // namespace quillbar::test
