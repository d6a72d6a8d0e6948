// SPDX-License-Identifier: MIT
#include "host/program/command_line.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <utility>

#include "host/runtime/platform/file_system.h"

namespace quillbar::program {
namespace {

constexpr int kWrongCommandLine = 2;

}  // namespace

ParsedCommandLine ParseCommandLine(std::vector<std::string> arguments) {
  CommandLine line;
  std::vector<std::string> plugins;
  std::string script;

  CLI::App app("Runs and checks scripts that use plugins, and describes what plugins offer.", "quillbar");
  app.set_version_flag("--version", "quillbar " QUILLBAR_VERSION);
  // A slash starts a path on every platform, never an option.
  app.allow_windows_style_options(false);
  app.require_subcommand(1);
  app.add_option("--plugin", plugins, "Load this plugin; repeat for several. Default: the plugins beside the program")
      ->type_name("FILE")
      ->allow_extra_args(false);

  CLI::App *run = app.add_subcommand("run", "Run a script; exit status 1 when it fails");
  run->fallthrough();
  // What follows the script belongs to the script, even if it looks like an option.
  run->positionals_at_end();
  run->add_flag("--account", line.account,
                "Print the reference ledger of what plugins took and gave back; exit status 1 unless it balances");
  run->add_option("script", script, "The script, a text file")->type_name("SCRIPT")->required();
  run->add_option("arguments", line.arguments, "What the script finds in Arguments")->type_name("ARGUMENTS");

  CLI::App *check = app.add_subcommand("check", "Check a script without running it; exit status 1 for errors");
  check->fallthrough();
  check->add_option("script", script, "The script, a text file")->type_name("SCRIPT")->required();

  CLI::App *describe = app.add_subcommand("describe", "Print every class and member of the plugins, as Markdown");
  describe->fallthrough();

  try {
    // The library expects them in reverse order.
    std::ranges::reverse(arguments);
    app.parse(std::move(arguments));
  } catch (const CLI::ParseError &error) {
    return {std::nullopt, app.exit(error) == 0 ? 0 : kWrongCommandLine};
  }
  line.command = describe->parsed() ? Command::kDescribe : check->parsed() ? Command::kCheck : Command::kRun;
  line.script = host::platform::PathFromUtf8(script);
  for (const std::string &plugin : plugins) line.plugins.push_back(host::platform::PathFromUtf8(plugin));
  return {std::move(line), 0};
}

}  // namespace quillbar::program
