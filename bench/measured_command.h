// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace quillbar::bench {

/// What a program took, from its start to its end.
struct CommandCost {
  double milliseconds = 0;        // of the processors, in the program and for it in the system
  double elapsed = 0;             // milliseconds that passed
  std::int64_t peakBytes = 0;     // peak resident memory
  std::int64_t instructions = 0;  // in the program; only where they were counted
  std::string output;             // standard output
};

/// Runs a program, found along PATH, and measures it. Counting instructions runs it under valgrind, some fifty times
/// slower. Throws std::runtime_error when the program can't be started or fails.
CommandCost MeasureCommand(std::vector<std::string> command, bool countsInstructions);

/// Whether a program can be started by this name.
bool CanRun(const std::string &program);

}  // namespace quillbar::bench
