// SPDX-License-Identifier: MIT
// What scripts cost: the same loops in `quillbar` and in Lua, the same calls of the plugin from a script and from C++.
#include <fmt/core.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "bench/document_contents.h"
#include "bench/measured_command.h"
#include "bench/plugin_writer.h"

namespace quillbar::bench {
namespace {

struct Loop {
  const char *name;
  int size;
  int shortSize;  // only to see that it works
  const char *description;
};

const std::vector<Loop> kLoops{
    {"fib", 29, 10, "calls: Fibonacci number 29, recursively"},
    {"statements", 3'000'000, 100, "simple statements, 3,000,000 rounds"},
    {"calls", 2'000'000, 100, "a Function, 2,000,000 calls"},
    {"methods", 2'000'000, 100, "a method of a class, 2,000,000 calls"},
    {"nbody", 20'000, 10, "n-body: fields of objects, 20,000 steps"},
    {"sieve", 1'000'000, 100, "elements of an array: primes to 1,000,000"},
    {"strings", 300'000, 100, "a text built of 300,000 lines"},
    {"append", 1'000'000, 100, "1,000,000 appends to one text"},
    {"words", 100'000, 100, "a dictionary of 100,000 words, ten look-ups each"},
    {"split", 1'000'000, 100, "1 MB split into fields, ten times"},
};

const std::vector<Loop> kDocuments{
    {"text", 1000, 2, "1,000 pages of 50 lines"},
    {"paths", 300, 2, "300 pages of 1,000 operations"},
    {"show_text", 1000, 2, "ShowText alone, 50,000 times"},
    {"line_to", 300, 2, "LineTo alone, 300,000 times"},
};

constexpr int kProcedures = 20'000;
constexpr int kProceduresInShort = 20;

struct Settings {
  int runs = 7;
  bool isShort = false;
  bool countsInstructions = false;
  std::string lua = "lua5.4";
  std::string only;
  std::string self;
  std::filesystem::path folder;  // for files of this run
};

std::string ScriptFile(const std::string &name, const char *suffix) {
  return fmt::format("{}/{}{}", QUILLBAR_BENCH_SCRIPTS, name, suffix);
}

/// One way of doing something, and what starting its program takes, which doesn't count.
struct Way {
  std::vector<std::string> command;
  std::vector<std::string> start;
};

Way Through(const std::string &program, const std::string &name, const char *suffix,
            const std::vector<std::string> &arguments) {
  const std::vector<std::string> run =
      suffix == std::string(".lua") ? std::vector<std::string>{program} : std::vector<std::string>{program, "run"};
  Way way{run, run};
  way.command.push_back(ScriptFile(name, suffix));
  way.command.insert(way.command.end(), arguments.begin(), arguments.end());
  way.start.push_back(ScriptFile("empty", suffix));
  return way;
}

/// What the ways took, beyond starting their programs: the fastest run of each; they take turns.
class Comparison {
 public:
  Comparison(const Settings &settings, std::vector<Way> ways) : settings_(settings), ways_(std::move(ways)) {
    for (int run = 0; run < settings_.runs; ++run) {
      for (std::size_t way = 0; way < ways_.size(); ++way) {
        RemoveDocument();
        Note(commands_, way, MeasureCommand(ways_[way].command, false));
        Note(starts_, way, MeasureCommand(ways_[way].start, false));
      }
    }
    RemoveDocument();
  }

  double Milliseconds(std::size_t way) const { return commands_[way].milliseconds - starts_[way].milliseconds; }
  const std::string &Output(std::size_t way) const { return commands_[way].output; }

  double MegaInstructions(std::size_t way) const {
    RemoveDocument();
    const std::int64_t all = MeasureCommand(ways_[way].command, true).instructions;
    RemoveDocument();
    return static_cast<double>(all - MeasureCommand(ways_[way].start, true).instructions) * 1e-6;
  }

 private:
  static void Note(std::vector<CommandCost> &costs, std::size_t way, const CommandCost &cost) {
    if (costs.size() <= way) {
      costs.push_back(cost);
    } else if (cost.milliseconds < costs[way].milliseconds) {
      costs[way] = cost;
    }
  }
  // The plugin never overwrites.
  void RemoveDocument() const { std::filesystem::remove(settings_.folder / "document.pdf"); }

  const Settings &settings_;
  std::vector<Way> ways_;
  std::vector<CommandCost> commands_;
  std::vector<CommandCost> starts_;
};

void PrintHead(const Settings &settings, const char *title, const char *peer) {
  fmt::print("\n{:<42} {:>9} {:>9} {:>6}", title, peer, "quillbar", "ratio");
  if (settings.countsInstructions) fmt::print("   {:>9} {:>9} {:>6}", peer, "quillbar", "ratio");
  fmt::print("\n{:<42} {:>9} {:>9} {:>6}", "", "ms", "ms", "");
  if (settings.countsInstructions) fmt::print("   {:>9} {:>9} {:>6}", "M instr.", "M instr.", "");
  fmt::print("\n");
}

/// A line of the table: the first way is the peer.
void PrintRatio(const Settings &settings, const char *description, const Comparison &comparison) {
  const double peer = comparison.Milliseconds(0);
  const double ours = comparison.Milliseconds(1);
  fmt::print("{:<42} {:>9.1f} {:>9.1f} {:>6.2f}", description, peer, ours, ours / peer);
  if (settings.countsInstructions) {
    const double peerInstructions = comparison.MegaInstructions(0);
    const double ourInstructions = comparison.MegaInstructions(1);
    fmt::print("   {:>9.1f} {:>9.1f} {:>6.2f}", peerInstructions, ourInstructions, ourInstructions / peerInstructions);
  }
  fmt::print("\n");
  std::fflush(stdout);
}

bool IsWanted(const Settings &settings, const std::string &name) {
  return settings.only.empty() || name.find(settings.only) != std::string::npos;
}

void CompareLoops(const Settings &settings) {
  const bool hasLua = CanRun(settings.lua);
  PrintHead(settings, "the same loop", "Lua");
  if (!hasLua) fmt::print("{} isn't installed (Debian: apt-get install lua5.4): no peer\n", settings.lua);
  for (const Loop &loop : kLoops) {
    if (!IsWanted(settings, loop.name)) continue;
    const std::vector<std::string> size{std::to_string(settings.isShort ? loop.shortSize : loop.size)};
    std::vector<Way> ways;
    if (hasLua) ways.push_back(Through(settings.lua, loop.name, ".lua", size));
    ways.push_back(Through(QUILLBAR_PROGRAM, loop.name, ".xojo_script", size));
    const Comparison comparison(settings, ways);
    if (!hasLua) {
      fmt::print("{:<42} {:>9} {:>9.1f}\n", loop.description, "", comparison.Milliseconds(0));
      continue;
    }
    if (comparison.Output(0) != comparison.Output(1)) {
      throw std::runtime_error(
          fmt::format("{}: Lua gives {}quillbar {}", loop.name, comparison.Output(0), comparison.Output(1)));
    }
    PrintRatio(settings, loop.description, comparison);
  }
}

void CompareDocuments(const Settings &settings) {
  PrintHead(settings, "the same calls of the plugin", "C++");
  for (const Loop &document : kDocuments) {
    if (!IsWanted(settings, document.name)) continue;
    const std::string pages = std::to_string(settings.isShort ? document.shortSize : document.size);
    const std::string file = (settings.folder / "document.pdf").string();
    const Way direct{{settings.self, "--write", document.name, "--pages", pages, "--to", file},
                     {settings.self, "--write", "nothing"}};
    PrintRatio(settings, document.description,
               Comparison(settings, {direct, Through(QUILLBAR_PROGRAM, document.name, ".xojo_script", {pages, file})}));
  }
}

void MeasureChecking(const Settings &settings) {
  if (!IsWanted(settings, "check")) return;
  const int count = settings.isShort ? kProceduresInShort : kProcedures;
  const std::filesystem::path file = settings.folder / "procedures.xojo_script";
  std::ofstream script(file);
  for (int i = 0; i < count; ++i) {
    script << fmt::format(
        "Sub Work{0}(a As Integer, text As String)\n  Dim total As Integer = a + {0}\n"
        "  If total > 100 Then Print(text + Str(total))\nEnd Sub\n",
        i);
  }
  script.close();
  Way check{{QUILLBAR_PROGRAM, "check", file.string()}, {QUILLBAR_PROGRAM, "run", ScriptFile("empty", ".xojo_script")}};
  fmt::print("\n{:<42} {:>9} {:>9.1f}\n", fmt::format("checking {} procedures of 3 lines", count), "",
             Comparison(settings, {check}).Milliseconds(0));
}

/// The documents of the scripts of these names, written through the plugin's registered functions.
void Write(const std::string &name, int pages, const std::string &file) {
  Lines lines = TextLines();
  if (name == "show_text") lines[0] = "The quick brown fox jumps over the lazy dog, and the dog over the fox again.";
  PluginWriter writer(lines);
  if (name == "nothing") return;
  writer.BeginDocument(false);
  if (name == "text") WriteTextPages(writer, pages);
  if (name == "paths") WritePathPages(writer, pages);
  for (int page = 0; name == "show_text" && page < pages; ++page) {
    writer.BeginPage();
    writer.BeginText();
    writer.SetFont(10.5F);
    for (int line = 0; line < kLinesPerPage; ++line) writer.ShowText(0);
    writer.EndText();
    writer.EndPage();
  }
  for (int page = 0; name == "line_to" && page < pages; ++page) {
    writer.BeginPage();
    writer.MoveTo(50.0F, 50.0F);
    for (int x = 1; x <= kOperationsPerPage; ++x) writer.LineTo(static_cast<float>(x), 400.5F);
    writer.Stroke();
    writer.EndPage();
  }
  writer.EndDocument(file);
}

void Compare(Settings settings) {
  if (settings.isShort) settings.runs = 1;
  settings.folder = std::filesystem::temp_directory_path() / fmt::format("quillbar-scripts-{}", getpid());
  std::filesystem::create_directory(settings.folder);
  fmt::print(
      "Processor time beyond the program's start, the fastest of {} runs, each a process of its own, in turns.\n",
      settings.runs);
  CompareLoops(settings);
  CompareDocuments(settings);
  MeasureChecking(settings);
  std::filesystem::remove_all(settings.folder);
}

}  // namespace
}  // namespace quillbar::bench

int main(int argumentCount, char **arguments) {
  namespace bench = quillbar::bench;
  CLI::App program{"Compares scripts in quillbar with the same in Lua, and with the same calls from C++."};
  bench::Settings settings;
  settings.self = arguments[0];
  program.add_option("--runs", settings.runs, "Runs of each; the fastest counts")
      ->check(CLI::Range(1, 1000))
      ->capture_default_str();
  program.add_option("--only", settings.only, "Only what has this in its name");
  program.add_option("--lua", settings.lua, "The program of Lua 5.4")->capture_default_str();
  program.add_flag("--short", settings.isShort, "One small run of each, to see that all works");
  program.add_flag("--instructions", settings.countsInstructions, "Counts instructions too, with valgrind");
  std::string document;
  std::string file;
  int pages = 1;
  program.add_option("--write", document, "Writes this document in this process; \"nothing\" only gets ready");
  program.add_option("--pages", pages, "With --write: how many pages");
  program.add_option("--to", file, "With --write: the file");
  CLI11_PARSE(program, argumentCount, arguments);
  try {
    if (document.empty()) {
      bench::Compare(settings);
    } else {
      bench::Write(document, pages, file);
    }
  } catch (const std::exception &problem) {
    fmt::print(stderr, "{}\n", problem.what());
    return 1;
  }
  return 0;
}
