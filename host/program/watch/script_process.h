// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

namespace quillbar::program {

/// A process of this program that runs a script, with what it prints.
class ScriptProcess {
 public:
  /// Of each stream so many bytes are kept; the rest is read and dropped.
  static constexpr std::size_t kMostOutput = std::size_t{1} << 20;

  /// Starts the program with these arguments, without standard input. Throws std::system_error.
  explicit ScriptProcess(const std::vector<std::string> &arguments);
  /// Ends the process if it still runs: politely, and after a second by force.
  ~ScriptProcess();
  ScriptProcess(const ScriptProcess &) = delete;
  ScriptProcess &operator=(const ScriptProcess &) = delete;

  /// Reads what is printed for up to this long; true when the process has ended.
  bool Wait(std::chrono::milliseconds time);

  /// After the end: the exit status, 128 and the number of the signal that ended it.
  int status() const { return status_; }
  const std::string &output() const { return output_; }
  const std::string &errors() const { return errors_; }

 private:
  void Read(int &end, std::string &text);

  pid_t process_ = -1;
  int outputEnd_ = -1;
  int errorsEnd_ = -1;
  int status_ = -1;
  std::string output_, errors_;
};

}  // namespace quillbar::program
