// SPDX-License-Identifier: MIT
#include "host/program/run.h"

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <vector>

#include "host/language/run/limits.h"
#include "host/language/run/run_script.h"
#include "host/program/platform/process.h"
#include "host/program/platform/resource_limits.h"
#include "host/runtime/sandbox.h"
#include "platform/openable_path.h"

namespace quillbar::program {
namespace {

constexpr const char *kStandardInput = "standard input";

/// The room for variables, which every script gets beside its limit.
constexpr std::uint64_t kVariableBytes = language::Limits::kVariables * sizeof(std::int64_t);

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

/// Sets the limits that the user asked for.
void SetLimits(const CommandLine &commandLine) {
  language::Limits &limits = language::Limits::Current();
  if (commandLine.maxCalls != 0) limits.calls = static_cast<std::size_t>(commandLine.maxCalls);
  if (commandLine.maxString != 0) limits.stringBytes = static_cast<std::size_t>(commandLine.maxString);
  if (commandLine.maxElements != 0) limits.arrayElements = static_cast<std::int64_t>(commandLine.maxElements);
  limits.memoryBytes = commandLine.maxMemory;
  limits.seconds = commandLine.maxTime;
  if (limits.memoryBytes != 0) platform::LimitMemory(limits.memoryBytes + kVariableBytes);
  if (limits.seconds > 0) platform::LimitTime(limits.seconds);
}

/// Keeps the files of the script below the folder that the user asked for.
void EnterSandbox(const CommandLine &commandLine) {
  if (commandLine.sandbox.empty()) return;
  host::Sandbox::Enter(commandLine.sandbox);
  // Files that aren't the script's: its text, and the list of what it used, which the kernel only allows when it is there.
  std::vector<std::filesystem::path> sources = commandLine.files;
  if (!IsStandardInput(commandLine)) sources.push_back(commandLine.script);
  if (!commandLine.usedFilesList.empty()) {
    const std::ofstream list(quillbar::platform::OpenablePath(commandLine.usedFilesList), std::ios::app);
  }
  host::Sandbox::ConfineProcess(sources, commandLine.usedFilesList);
}

}  // namespace

int Run(host::Host &host, const CommandLine &commandLine) {
  SetLimits(commandLine);
  EnterSandbox(commandLine);
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
