// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <vector>

/// What the system gives the program and takes from it.
namespace quillbar::program::platform {

/// The arguments after the program's name, as UTF-8. The parameters are those of `main`.
std::vector<std::string> ProgramArguments(int argumentCount, char **arguments);

/// While it lives, std::cout and std::cerr take UTF-8: written to files and pipes byte for byte, shown on a screen as
/// readable characters.
class Utf8Output {
 public:
  Utf8Output();
  Utf8Output(const Utf8Output &) = delete;
  Utf8Output &operator=(const Utf8Output &) = delete;
  ~Utf8Output();

 private:
  struct Screens;
  std::unique_ptr<Screens> screens_;
};

}  // namespace quillbar::program::platform
