// SPDX-License-Identifier: MIT
#include "host/program/platform/process.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <iterator>
#include <string_view>

#include "host/runtime/interruption.h"

namespace quillbar::program::platform {
namespace {

extern "C" void Interrupt(int signal) {
  if (host::Interruption::Request(signal)) return;
  std::signal(signal, SIG_DFL);
  std::raise(signal);
}

}  // namespace

std::vector<std::string> ProgramArguments(int argumentCount, char **arguments) {
  return argumentCount < 1 ? std::vector<std::string>()
                           : std::vector<std::string>(arguments + 1, arguments + argumentCount);
}

// Terminals show the same bytes that files store.
struct Utf8Output::Screens {};
Utf8Output::Utf8Output() {
  // std::cout writes through the C library's stream.
  std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
}
Utf8Output::~Utf8Output() = default;

bool ErrorsAreOnATerminal() {
  const char *kind = std::getenv("TERM");
  return isatty(STDERR_FILENO) != 0 && kind != nullptr && *kind != '\0' && std::string_view(kind) != "dumb";
}

bool WantsColors() {
  const char *refusal = std::getenv("NO_COLOR");
  return refusal == nullptr || *refusal == '\0';
}

int TerminalColumns() {
  constexpr int kUsual = 80;
  winsize size{};
  return ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : kUsual;
}

std::string ReadStandardInput() { return {std::istreambuf_iterator<char>(std::cin), std::istreambuf_iterator<char>()}; }

void TurnSignalsIntoInterruptions() {
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    struct sigaction action {};
    // What the starter of the program has turned off, as nohup does, stays off.
    if (sigaction(signal, nullptr, &action) != 0 || action.sa_handler == SIG_IGN) continue;
    action.sa_handler = Interrupt;
    sigemptyset(&action.sa_mask);
    // A read that waits ends, so that the script goes on to where it notices the interruption.
    action.sa_flags = 0;
    sigaction(signal, &action, nullptr);
  }
}

}  // namespace quillbar::program::platform
