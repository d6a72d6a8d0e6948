// SPDX-License-Identifier: MIT
#pragma once

#include "host/program/command_line.h"
#include "host/runtime/host.h"

namespace quillbar::program {

/// Runs the script; 0 when it went well, 1 when it failed or, if asked, when the reference ledger does not balance. The
/// report of the ledger goes to the error output, so that it never mixes with what the script prints.
int Run(host::Host &host, const CommandLine &commandLine);

}  // namespace quillbar::program
