// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace quillbar::program {

enum class Command { kRun, kCheck, kDescribe, kWatch };

/// What the user asked for.
struct CommandLine {
  Command command = Command::kRun;
  std::vector<std::filesystem::path> plugins;  // none: those beside the program
  std::filesystem::path script;                // "-" is standard input
  std::vector<std::filesystem::path> files;    // of classes and modules
  std::vector<std::string> arguments;          // everything after the script, options included
  bool account = false;
  bool json = false;
  std::filesystem::path sandbox;  // the folder below which the script's files stay; empty: anywhere
  // How far the script may go; 0: as far as the language and the machine allow.
  std::uint64_t maxMemory = 0;    // bytes
  double maxTime = 0;             // seconds
  std::uint64_t maxCalls = 0;     // nested calls
  std::uint64_t maxString = 0;    // bytes of a String
  std::uint64_t maxElements = 0;  // of an array
  int port = 0;                   // of the page of a watched script; 0: any free one
  /// Where a run lists the files that the script asked for, each path in UTF-8 and ended by a NUL; empty: nowhere.
  std::filesystem::path usedFilesList;
};

/// A command line, or the exit status when there is nothing left to do: 0 after help or the version, 2 after a
/// mistake, which has been explained on the error output.
struct ParsedCommandLine {
  std::optional<CommandLine> commandLine;
  int status = 0;
};

/// Reads the command line. `arguments` are UTF-8, without the name of the program. A file in place of a command is run.
ParsedCommandLine ParseCommandLine(std::vector<std::string> arguments);

}  // namespace quillbar::program
