// SPDX-License-Identifier: MIT
#include "host/program/platform/process.h"

namespace quillbar::program::platform {

std::vector<std::string> ProgramArguments(int argumentCount, char **arguments) {
  return argumentCount < 1 ? std::vector<std::string>()
                           : std::vector<std::string>(arguments + 1, arguments + argumentCount);
}

// Terminals show the same bytes that files store.
struct Utf8Output::Screens {};
Utf8Output::Utf8Output() = default;
Utf8Output::~Utf8Output() = default;

}  // namespace quillbar::program::platform
