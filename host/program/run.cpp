// SPDX-License-Identifier: MIT
#include "host/program/run.h"

#include <iostream>

#include "host/language/run/run_script.h"

namespace quillbar::program {

int Run(host::Host &host, const CommandLine &commandLine) {
  const int status = language::RunScript(host, commandLine.script, commandLine.arguments, std::cout, std::cerr);
  if (!commandLine.account) return status;
  const host::LedgerReport report = host.InspectLedger();
  std::cerr << report.Text();
  return report.IsBalanced() ? status : 1;
}

}  // namespace quillbar::program
