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
/// readable characters. Every line of std::cout is passed on when it ends, wherever it goes.
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

/// Whether std::cerr is shown on a screen that understands the control sequences of terminals (ECMA-48), by which a line
/// is written again and text gets its colours.
bool ErrorsAreOnATerminal();

/// Whether the user has colors on such a screen: unless the variable NO_COLOR is set to anything (no-color.org).
bool WantsColors();

/// The columns of that screen; 80 when it doesn't tell.
int TerminalColumns();

/// Everything on standard input, as the bytes that it has.
std::string ReadStandardInput();

/// From now on Ctrl-C, and the system's polite request to end, become a host::Interruption. The second time they end the
/// program at once.
void TurnSignalsIntoInterruptions();

}  // namespace quillbar::program::platform
