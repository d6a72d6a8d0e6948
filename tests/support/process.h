// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <ostream>
#include <string>
#include <variant>
#include <vector>

namespace quillbar::test {

/// How a program ended and what it printed.
struct ProcessResult {
  int exitStatus = -1;  // 128 plus the signal's number when a signal ended it
  std::string output;   // standard output
  std::string errors;   // standard error
};

/// How to run a program.
struct ProcessOptions {
  std::filesystem::path workingDirectory{};  // empty: that of this process
  std::string input{};                       // what the program reads from standard input
  std::string interruptAt{};                 // not on Windows: Ctrl-C comes when this is printed; empty: never
  int timeoutSeconds = 60;                   // a program that takes longer is killed
};

/// A word of a command: a text in UTF-8, passed unchanged, or a path, written as the program that is started writes
/// paths. The two differ when a Windows program, run by Wine, starts a program of Unix.
class ProcessArgument {
 public:
  ProcessArgument(const char *text) : word_(std::string(text)) {}          // NOLINT: words are written as texts
  ProcessArgument(std::string text) : word_(std::move(text)) {}            // NOLINT
  ProcessArgument(std::filesystem::path path) : word_(std::move(path)) {}  // NOLINT

  /// Null for a text.
  const std::filesystem::path *AsPath() const { return std::get_if<std::filesystem::path>(&word_); }
  /// The text in UTF-8, or the path as this process writes it.
  std::string Text() const;

 private:
  std::variant<std::string, std::filesystem::path> word_;
};

inline void PrintTo(const ProcessArgument &argument, std::ostream *out) { *out << argument.Text(); }

using Command = std::vector<ProcessArgument>;

/// Runs a program, found along PATH, and waits for its end. Throws std::runtime_error when it can't be started. On
/// Windows, but not under Wine, a test whose program isn't installed is skipped with a message.
ProcessResult RunProcess(const Command &command, const ProcessOptions &options = {});

}  // namespace quillbar::test
