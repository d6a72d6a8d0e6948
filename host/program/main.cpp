// quillbar: runs scripts that use plugins, and describes what plugins offer.
#include <exception>
#include <iostream>

#include "host/program/command_line.h"
#include "host/program/describe.h"
#include "host/program/platform/process.h"
#include "host/program/plugins.h"
#include "host/program/run.h"

namespace {

constexpr int kFailure = 1;

int Execute(const quillbar::program::CommandLine &commandLine) {
  quillbar::host::Host host;
  quillbar::program::LoadPlugins(host, commandLine.plugins);
  if (commandLine.command == quillbar::program::Command::kRun)
    return quillbar::program::Run(host, commandLine);
  std::cout << quillbar::program::Describe(host.registry()) << std::flush;
  return std::cout ? 0 : kFailure;
}

}  // namespace

int main(int argumentCount, char **arguments) {
  using namespace quillbar::program;
  const platform::Utf8Output utf8Output;
  const auto [commandLine, status] = ParseCommandLine(platform::ProgramArguments(argumentCount, arguments));
  if (!commandLine) return status;
  try {
    return Execute(*commandLine);
  } catch (const std::exception &error) {
    std::cerr << "quillbar: " << error.what() << '\n';
    return kFailure;
  }
}
