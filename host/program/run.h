// SPDX-License-Identifier: MIT
#pragma once

#include "host/program/command_line.h"
#include "host/runtime/host.h"

namespace quillbar::program {

/// Runs the script. Returns what language::RunScript does, and 1 too when a report was asked for and the reference ledger
/// does not balance. The report goes to the error output, so that it never mixes with what the script prints.
int Run(host::Host &host, const CommandLine &commandLine);

/// Checks the script without running it. Returns 0, or 1 after every error has been shown.
int Check(host::Host &host, const CommandLine &commandLine);

}  // namespace quillbar::program
