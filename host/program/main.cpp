// SPDX-License-Identifier: MIT
// quillbar: runs and checks scripts that use plugins, and describes what plugins offer.
#include <exception>
#include <iostream>
#include <new>
#include <optional>

#include "host/language/syntax/message_colors.h"
#include "host/program/command_line.h"
#include "host/program/describe.h"
#include "host/program/platform/process.h"
#include "host/program/plugins.h"
#include "host/program/progress_bar.h"
#include "host/program/run.h"
#include "host/program/used_files.h"
#include "host/program/watch/watch.h"

namespace {

constexpr int kFailure = 1;

int Execute(const quillbar::program::CommandLine &commandLine) {
  namespace platform = quillbar::program::platform;
  if (commandLine.command == quillbar::program::Command::kWatch) {
    platform::TurnSignalsIntoInterruptions();
    return quillbar::program::Watch(commandLine);
  }
  std::optional<quillbar::program::ProgressBar> bar;
  quillbar::host::HostOptions options;
  if (platform::ErrorsAreOnATerminal()) {
    if (platform::WantsColors()) quillbar::language::UseColors(std::cerr);
    bar.emplace(std::cerr, platform::TerminalColumns());
    options.progress = [&](std::uint32_t done, std::uint32_t total) { bar->Report(done, total); };
  }
  const quillbar::program::UsedFiles usedFiles(commandLine.usedFilesList, options);
  quillbar::host::Host host(options);
  quillbar::program::LoadPlugins(host, commandLine.plugins);
  switch (commandLine.command) {
    case quillbar::program::Command::kRun:
      return quillbar::program::Run(host, commandLine);
    case quillbar::program::Command::kCheck:
      return quillbar::program::Check(host, commandLine);
    case quillbar::program::Command::kWatch:
      break;  // without a host of its own
    case quillbar::program::Command::kDescribe:
      std::cout << (commandLine.json ? quillbar::program::DescribeAsJson(host.registry())
                                     : quillbar::program::Describe(host.registry()));
  }
  return 0;
}

}  // namespace

int main(int argumentCount, char **arguments) {
  using namespace quillbar::program;
  const platform::Utf8Output utf8Output;
  const auto [commandLine, status] = ParseCommandLine(platform::ProgramArguments(argumentCount, arguments));
  if (!commandLine) return status;
  try {
    const int executed = Execute(*commandLine);
    if (std::cout.flush()) return executed;
    std::cerr << "quillbar: the output can't be written; is its disk full?\n";
    return kFailure;
  } catch (const std::bad_alloc &) {
    std::cerr << "quillbar: there is not enough memory"
              << (commandLine->maxMemory != 0 ? "; the limit is that of --max-memory\n" : "\n");
    return kFailure;
  } catch (const std::exception &error) {
    std::cerr << "quillbar: " << error.what() << '\n';
    return kFailure;
  }
}
