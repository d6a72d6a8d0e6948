// SPDX-License-Identifier: MIT
#include "host/program/run.h"

#include <iostream>

#include "host/language/run/run_script.h"
#include "host/program/platform/process.h"

namespace quillbar::program {
namespace {

constexpr const char *kStandardInput = "standard input";

bool IsStandardInput(const CommandLine &commandLine) { return commandLine.script == "-"; }

int RunIt(host::Host &host, const CommandLine &commandLine) {
  if (!IsStandardInput(commandLine)) {
    platform::TurnSignalsIntoInterruptions();
    return language::RunScript(host, commandLine.script, commandLine.arguments, std::cout, std::cerr, std::cin,
                               commandLine.files);
  }
  std::string text = platform::ReadStandardInput();
  platform::TurnSignalsIntoInterruptions();
  return language::RunText(host, kStandardInput, std::move(text), commandLine.arguments, std::cout, std::cerr, std::cin,
                           commandLine.files);
}

}  // namespace

int Run(host::Host &host, const CommandLine &commandLine) {
  const int status = RunIt(host, commandLine);
  if (!commandLine.account) return status;
  const host::LedgerReport report = host.InspectLedger();
  std::cerr << report.Text();
  return report.IsBalanced() || status != 0 ? status : 1;
}

int Check(host::Host &host, const CommandLine &commandLine) {
  if (!IsStandardInput(commandLine))
    return language::CheckScript(host, commandLine.script, std::cerr, commandLine.files);
  return language::CheckText(host, kStandardInput, platform::ReadStandardInput(), std::cerr, commandLine.files);
}

}  // namespace quillbar::program
