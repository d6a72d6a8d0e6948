// SPDX-License-Identifier: MIT
#pragma once

#include "host/program/command_line.h"

namespace quillbar::program {

/// Runs the script at every change of it or of a file that it asked for, and shows what comes of it on a page for the
/// browser, until Ctrl-C. Returns 0, or 1 when the page can't be served. Each run is a process of its own.
int Watch(const CommandLine &commandLine);

}  // namespace quillbar::program
