// SPDX-License-Identifier: MIT
#include "host/program/command_line.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>
#include <iterator>
#include <string_view>
#include <utility>

#include "host/runtime/platform/file_system.h"
#include "interface/declaration.h"

namespace quillbar::program {
namespace {

constexpr int kWrongCommandLine = 2;
constexpr std::string_view kPluginOption = "--plugin";
constexpr std::string_view kAccountOption = "--account";
constexpr std::string_view kSandboxOption = "--sandbox";
constexpr std::string_view kMaxMemoryOption = "--max-memory";
constexpr std::string_view kMaxTimeOption = "--max-time";
constexpr std::string_view kMaxCallsOption = "--max-calls";
constexpr std::string_view kMaxStringOption = "--max-string";
constexpr std::string_view kMaxElementsOption = "--max-elements";

/// The options with a value that a script may follow without the word "run".
constexpr std::string_view kOptionsWithValues[] = {kPluginOption,   kSandboxOption,   kMaxMemoryOption,  kMaxTimeOption,
                                                   kMaxCallsOption, kMaxStringOption, kMaxElementsOption};

/// Whether this word is "--option=value" for one of those.
bool HasItsValue(const std::string &word) {
  return std::ranges::any_of(kOptionsWithValues, [&](std::string_view option) {
    return word.size() > option.size() && word.starts_with(option) && word[option.size()] == '=';
  });
}

/// The first word that is neither an option nor the value of one: the command, or the file that stands in its place.
/// Null when there is none, or an option that a command must come before.
const std::string *FirstPositional(const std::vector<std::string> &words) {
  for (std::size_t i = 0; i < words.size(); ++i) {
    const std::string &word = words[i];
    if (std::ranges::find(kOptionsWithValues, word) != std::end(kOptionsWithValues)) {
      ++i;
    } else if (word == "-" || !word.starts_with('-')) {
      return &word;
    } else if (word != kAccountOption && !HasItsValue(word)) {
      return nullptr;
    }
  }
  return nullptr;
}

/// Whether a word after the script names a file of classes and modules, which belongs to the script.
bool IsSourceFile(const std::string &word) {
  constexpr std::string_view kExtensions[] = {".xojo_code", ".xojo_script"};
  return std::ranges::any_of(kExtensions, [&](std::string_view extension) {
    return word.size() > extension.size() &&
           SameName(std::string_view(word).substr(word.size() - extension.size()), extension);
  });
}

/// Moves the source files at the start of the arguments to the files of the script; "--" ends them.
void TakeFiles(CommandLine &line) {
  const auto end = std::ranges::find_if_not(line.arguments, IsSourceFile);
  for (auto word = line.arguments.begin(); word != end; ++word) {
    line.files.push_back(host::platform::PathFromUtf8(*word));
  }
  const bool isMarked = end != line.arguments.end() && *end == "--";
  line.arguments.erase(line.arguments.begin(), end + (isMarked ? 1 : 0));
}

/// The options that say how far a script may go.
void AddLimits(CLI::App &command, CommandLine &line) {
  constexpr double kMostSeconds = 1e7, kLeastSeconds = 0.001;
  constexpr std::uint64_t kLeastMemory = std::uint64_t{1} << 20, kMostMemory = std::uint64_t{1} << 50,
                          kMostString = std::uint64_t{1} << 30, kMostCalls = 1'000'000, kMostElements = 2'000'000'000;
  const auto size = [&](std::string_view option, std::uint64_t &value, const char *help, std::uint64_t least,
                        std::uint64_t most) {
    command.add_option(std::string(option), value, help)
        ->type_name("SIZE")
        ->transform(CLI::AsSizeValue(false))
        ->check(CLI::Range(least, most));
  };
  size(kMaxMemoryOption, line.maxMemory, "End the script, with exit status 125, when it needs more memory (K, M, G)",
       kLeastMemory, kMostMemory);
  command.add_option(std::string(kMaxTimeOption), line.maxTime, "End the script, with exit status 124, after so long")
      ->type_name("SECONDS")
      ->check(CLI::Range(kLeastSeconds, kMostSeconds));
  command.add_option(std::string(kMaxCallsOption), line.maxCalls, "Nested calls. Default: 10000")
      ->type_name("NUMBER")
      ->check(CLI::Range(std::uint64_t{1}, kMostCalls));
  size(kMaxStringOption, line.maxString, "Length of a String (K, M, G). Default, and the most: 1G", 1, kMostString);
  command.add_option(std::string(kMaxElementsOption), line.maxElements, "Elements of an array. Default: 50000000")
      ->type_name("NUMBER")
      ->check(CLI::Range(std::uint64_t{1}, kMostElements));
}

/// Whether a word that is no command is meant as a script: it is there, or looks like a file's name.
bool IsMeantAsScript(const std::string &word) {
  return word == "-" || word.find_first_of("./\\") != std::string::npos ||
         host::platform::KindOf(host::platform::PathFromUtf8(word)) != host::platform::FileKind::kNone;
}

}  // namespace

ParsedCommandLine ParseCommandLine(std::vector<std::string> arguments) {
  CommandLine line;
  std::vector<std::string> plugins;
  std::string script;
  std::string sandbox;

  CLI::App app("Runs and checks scripts that use plugins, and describes what plugins offer.", "quillbar");
  app.set_version_flag("--version", "quillbar " QUILLBAR_VERSION);
  // A slash starts a path on every platform, never an option.
  app.allow_windows_style_options(false);
  app.require_subcommand(1);
  app.add_option(std::string(kPluginOption), plugins,
                 "Load this plugin; repeat for several. Default: the plugins beside the program")
      ->type_name("FILE")
      ->allow_extra_args(false);
  constexpr const char *kScript = "The script, a text file, or - for standard input";

  CLI::App *run = app.add_subcommand("run", "Run a script; exit status 1 when it fails");
  run->fallthrough();
  // What follows the script belongs to the script, even if it looks like an option.
  run->positionals_at_end();
  run->add_flag(std::string(kAccountOption), line.account,
                "Print the reference ledger of what plugins took and gave back; exit status 1 unless it balances");
  const auto addSandbox = [&](CLI::App &command) {
    command
        .add_option(std::string(kSandboxOption), sandbox,
                    "Keep the files that the script reads and writes below this folder")
        ->type_name("FOLDER");
  };
  addSandbox(*run);
  AddLimits(*run, line);
  // For watching alone.
  std::string usedFilesList;
  run->add_option("--list-files", usedFilesList)->group("");
  run->add_option("script", script, kScript)->type_name("SCRIPT")->required();
  constexpr const char *kArguments =
      "Files of its classes and modules (.xojo_code, .xojo_script), then what the script finds in Arguments";
  run->add_option("arguments", line.arguments, kArguments)->type_name("[FILES] [ARGUMENTS]");

  CLI::App *check = app.add_subcommand("check", "Check a script without running it; exit status 1 for errors");
  check->fallthrough();
  check->add_option("script", script, kScript)->type_name("SCRIPT")->required();
  std::vector<std::string> checkedFiles;
  check->add_option("files", checkedFiles, "Files of its classes and modules")
      ->type_name("FILES")
      ->check([](const std::string &file) {
        return IsSourceFile(file) ? std::string() : "the names of its files end with .xojo_code or .xojo_script";
      });

  CLI::App *watch = app.add_subcommand("watch",
                                       "Run a script at every change of it or of the files that it uses, and show its "
                                       "documents in the browser");
  watch->fallthrough();
  watch->positionals_at_end();
  watch->add_option("--port", line.port, "The port of the page, on this machine alone. Default: any free one")
      ->type_name("NUMBER")
      ->check(CLI::Range(1, 65535));
  addSandbox(*watch);
  AddLimits(*watch, line);
  watch->add_option("script", script, "The script, a text file")->type_name("SCRIPT")->required();
  watch->add_option("arguments", line.arguments, kArguments)->type_name("[FILES] [ARGUMENTS]");

  CLI::App *describe = app.add_subcommand("describe", "Print every class and member of the plugins, as Markdown");
  describe->fallthrough();
  describe->add_flag("--json", line.json, "Print them as JSON, for other programs");

  // After the commands, which would inherit it.
  app.footer("quillbar SCRIPT [FILES] [ARGUMENTS] is short for quillbar run SCRIPT [FILES] [ARGUMENTS].");

  const std::string *first = FirstPositional(arguments);
  const auto isFirst = [&](const CLI::App *command) { return command->get_name() == *first; };
  if (first != nullptr && app.get_subcommands(isFirst).empty()) {
    if (!IsMeantAsScript(*first)) {
      std::cerr << "quillbar: \"" << *first
                << "\" is neither a command nor a file; quillbar --help lists the commands\n";
      return {std::nullopt, kWrongCommandLine};
    }
    arguments.insert(arguments.begin(), "run");
  }

  try {
    // The library expects them in reverse order.
    std::ranges::reverse(arguments);
    app.parse(std::move(arguments));
  } catch (const CLI::ParseError &error) {
    return {std::nullopt, app.exit(error) == 0 ? 0 : kWrongCommandLine};
  }
  line.command = describe->parsed() ? Command::kDescribe
                 : check->parsed()  ? Command::kCheck
                 : watch->parsed()  ? Command::kWatch
                                    : Command::kRun;
  line.usedFilesList = host::platform::PathFromUtf8(usedFilesList);
  line.sandbox = host::platform::PathFromUtf8(sandbox);
  line.script = host::platform::PathFromUtf8(script);
  for (const std::string &file : checkedFiles) line.files.push_back(host::platform::PathFromUtf8(file));
  TakeFiles(line);
  for (const std::string &plugin : plugins) line.plugins.push_back(host::platform::PathFromUtf8(plugin));
  return {std::move(line), 0};
}

}  // namespace quillbar::program
