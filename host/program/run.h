// SPDX-License-Identifier: MIT
#pragma once

#include "host/program/command_line.h"
#include "host/runtime/host.h"

namespace quillbar::program {

/// Runs the script. Returns 0, or 1 when it failed or, if a report was asked for, when the reference ledger does not
/// balance. The report goes to the error output, so that it never mixes with what the script prints.
int Run(host::Host &host, const CommandLine &commandLine);

}  // namespace quillbar::program
