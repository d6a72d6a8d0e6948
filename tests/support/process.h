#pragma once

#include <string>
#include <vector>

namespace quillbar::test {

/// How a program ended and what it printed.
struct ProcessResult {
  int exitStatus = -1;  // 128 plus the signal's number when a signal ended it
  std::string output;   // standard output
  std::string errors;   // standard error
};

struct ProcessOptions {
  std::string workingDirectory{};  // empty: that of this process
  std::string input{};             // what the program reads from standard input
  int timeoutSeconds = 60;         // a program that takes longer is killed
};

/// Runs a program, found along PATH, and waits for its end. Throws std::runtime_error when it cannot be
/// started.
ProcessResult RunProcess(const std::vector<std::string> &command, const ProcessOptions &options = {});

}  // namespace quillbar::test
