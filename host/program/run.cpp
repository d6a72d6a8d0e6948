// SPDX-License-Identifier: MIT
#include "host/program/run.h"

#include <iostream>

#include "host/language/run_script.h"

namespace quillbar::program {

int Run(host::Host &host, const CommandLine &commandLine) {
  const int status = language::RunScript(host, commandLine.script, commandLine.arguments, std::cout, std::cerr);
  if (!commandLine.account) return status;
  const host::Balance balance = host.balance();
  std::cerr << balance.Report();
  return balance.IsEven() ? status : 1;
}

}  // namespace quillbar::program
