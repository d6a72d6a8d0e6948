// SPDX-License-Identifier: MIT
// The same documents written by the plugin and by other libraries, each a program of its own: checked, measured and
// compared with the plugin.
#include <fmt/core.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "bench/document_contents.h"
#include "bench/measured_command.h"

namespace quillbar::bench {
namespace {

namespace fs = std::filesystem;

struct Peer {
  std::string name;
  std::vector<std::string> command;
  bool writesPlain = true;
  std::string missing;  // why it is left out; empty: it isn't
};

struct Document {
  std::string content;
  bool isCompressed;
  int pages;
  std::string description;
};

struct Settings {
  fs::path programs, sources, modules;
  int runs = 5;
  bool isShort = false;
  fs::path folder;
};

Peer Program(const Settings &settings, const std::string &name, const std::string &target, const std::string &missing,
             bool writesPlain = true) {
  const std::string program = (settings.programs / target).string();
  return {name, {program}, writesPlain, CanRun(program) ? "" : missing};
}

Peer NodeScript(const Settings &settings, const std::string &name, const std::string &module, const std::string &script,
                bool writesPlain = true) {
  const bool isThere = CanRun("node") && fs::exists(settings.modules / "node_modules" / module);
  return {name,
          {"node", (settings.sources / script).string()},
          writesPlain,
          isThere ? "" : fmt::format("no module {} in {}", module, settings.modules.string())};
}

// Debian's Python has it; another one may come first along PATH.
Peer ReportLab(const Settings &settings) {
  const std::string script = (settings.sources / "reportlab_peer.py").string();
  for (const char *python : {"python3", "/usr/bin/python3"}) {
    if (std::system(fmt::format("{} -c 'import reportlab' >/dev/null 2>&1", python).c_str()) == 0) {
      return {"ReportLab", {python, script}, true, ""};
    }
  }
  return {"ReportLab", {}, true, "Python has no module reportlab"};
}

// The plugin first: the others are compared with it.
std::vector<Peer> Peers(const Settings &settings) {
  std::vector<Peer> peers;
  peers.push_back(Program(settings, "plugin", "peer_plugin", "not built"));
  peers.push_back(Program(settings, "libharu", "peer_libharu", "not built"));
  peers.push_back(Program(settings, "cairo", "peer_cairo", "not there when the build was configured", false));
  peers.push_back(Program(settings, "PoDoFo", "peer_podofo", "not there when the build was configured"));
  peers.push_back(ReportLab(settings));
  peers.push_back(NodeScript(settings, "PDFKit", "pdfkit", "pdfkit.mjs"));
  peers.push_back(NodeScript(settings, "jsPDF", "jspdf", "jspdf.mjs"));
  peers.push_back(NodeScript(settings, "pdf-lib", "pdf-lib", "pdf_lib.mjs", false));
  peers.push_back({"capypdf", {}, true, "Debian 12 has no package of it"});
  return peers;
}

CommandCost Write(const Settings &settings, const Peer &peer, const Document &document, int pages) {
  const fs::path file = settings.folder / "document.pdf";
  // The plugin never overwrites.
  fs::remove(file);
  std::vector<std::string> command = peer.command;
  command.insert(command.end(),
                 {document.content, std::to_string(pages), document.isCompressed ? "compressed" : "plain",
                  (settings.folder / "lines.txt").string(), file.string()});
  return MeasureCommand(std::move(command), false);
}

/// The first and last page must have every line of text as poppler reads it, or none on pages of paths; and qpdf must
/// find the pages, and nothing wrong.
void Check(const Settings &settings, const Peer &peer, const Document &document, const Lines &lines) {
  const std::string file = (settings.folder / "document.pdf").string();
  const std::string pages = std::to_string(document.pages);
  const auto fail = [&](const std::string &what) {
    throw std::runtime_error(fmt::format("{}, {}: {}", peer.name, document.description, what));
  };
  MeasureCommand({"qpdf", "--check", file}, false);
  const std::string found = MeasureCommand({"qpdf", "--show-npages", file}, false).output;
  if (std::atoi(found.c_str()) != document.pages) fail(fmt::format("qpdf finds {} pages, not {}", found, pages));
  for (const std::string &page : {std::string("1"), pages}) {
    const std::string text = MeasureCommand({"pdftotext", "-layout", "-f", page, "-l", page, file, "-"}, false).output;
    const bool isText = document.content == "text";
    for (const std::string &line : lines) {
      if ((text.find(line) != std::string::npos) != isText) fail(fmt::format("page {} isn't as it must be", page));
    }
  }
}

/// What the pages took beyond a document of one page, which costs the start of the program and the loading of its
/// libraries: the fastest run of each.
struct Result {
  double milliseconds = 0;
  double elapsed = 0;
  double peakMebibytes = 0;
  double growthMebibytes = 0;
  double kilobytes = 0;
};

void PrintRow(const Peer &peer, const Document &document, const Result &result, const Result &plugin) {
  const double pages = document.pages - 1;
  fmt::print("{:<10} {:>9.0f} {:>9.1f} {:>8.1f} {:>8.1f} {:>9.0f} {:>7.2f} {:>7.2f}\n", peer.name,
             pages / result.elapsed * 1e3, result.milliseconds, result.peakMebibytes, result.growthMebibytes,
             result.kilobytes, result.milliseconds / plugin.milliseconds, result.kilobytes / plugin.kilobytes);
  std::fflush(stdout);
}

/// The peers take turns, so that a change of the machine's speed affects all.
void Compare(const Settings &settings, const std::vector<Peer> &peers, const Document &document, const Lines &lines) {
  fmt::print("\n{}\n", document.description);
  if (!settings.isShort) {
    fmt::print("{:<10} {:>9} {:>9} {:>8} {:>8} {:>9} {:>7} {:>7}\n", "", "pages/s", "CPU ms", "MiB peak", "MiB more",
               "KB file", "time", "size");
  }
  std::vector<const Peer *> taking;
  for (const Peer &peer : peers) {
    if (peer.missing.empty() && (document.isCompressed || peer.writesPlain)) taking.push_back(&peer);
  }
  struct Runs {
    CommandCost one, all;
    double kilobytes = 0;
  };
  std::vector<Runs> runs(taking.size());
  const auto keepFastest = [](CommandCost &fastest, const CommandCost &cost, bool isFirst) {
    if (isFirst) {
      fastest = cost;
      return;
    }
    fastest.milliseconds = std::min(fastest.milliseconds, cost.milliseconds);
    fastest.elapsed = std::min(fastest.elapsed, cost.elapsed);
    fastest.peakBytes = std::min(fastest.peakBytes, cost.peakBytes);
  };
  for (int run = 0; run < settings.runs; ++run) {
    for (std::size_t i = 0; i < taking.size(); ++i) {
      keepFastest(runs[i].one, Write(settings, *taking[i], document, 1), run == 0);
      keepFastest(runs[i].all, Write(settings, *taking[i], document, document.pages), run == 0);
      if (run > 0) continue;
      Check(settings, *taking[i], document, lines);
      runs[i].kilobytes = static_cast<double>(fs::file_size(settings.folder / "document.pdf")) * 1e-3;
    }
  }
  std::vector<Result> results;
  for (const Runs &run : runs) {
    constexpr double kMebibyte = 1024.0 * 1024.0;
    results.push_back({run.all.milliseconds - run.one.milliseconds, run.all.elapsed - run.one.elapsed,
                       static_cast<double>(run.all.peakBytes) / kMebibyte,
                       static_cast<double>(run.all.peakBytes - run.one.peakBytes) / kMebibyte, run.kilobytes});
  }
  for (std::size_t i = 0; i < taking.size(); ++i) {
    if (settings.isShort) {
      fmt::print("{:<10} written, and checked\n", taking[i]->name);
    } else {
      PrintRow(*taking[i], document, results[i], results[0]);
    }
  }
  for (const Peer &peer : peers) {
    if (peer.missing.empty() && !document.isCompressed && !peer.writesPlain) {
      fmt::print("{:<10} only writes compressed pages\n", peer.name);
    }
  }
}

void CompareAll(Settings settings) {
  if (settings.isShort) settings.runs = 1;
  settings.folder = fs::temp_directory_path() / fmt::format("quillbar-peers-{}", getpid());
  fs::create_directory(settings.folder);
  const Lines lines = TextLines();
  {
    std::ofstream file(settings.folder / "lines.txt");
    for (const std::string &line : lines) file << line << '\n';
  }
  setenv("QUILLBAR_PEERS", settings.modules.c_str(), 1);
  const std::vector<Peer> peers = Peers(settings);
  if (!peers.front().missing.empty()) throw std::runtime_error("the plugin's own program isn't built");
  if (!settings.isShort) {
    fmt::print(
        "The pages beyond the first: processor time, the fastest of {} runs, each a process of its own, in turns.\n"
        "time and size are divided by the plugin's.\n",
        settings.runs);
  }
  for (const Peer &peer : peers) {
    if (!peer.missing.empty()) fmt::print("LEFT OUT: {}: {}\n", peer.name, peer.missing);
  }
  const int textPages = settings.isShort ? 2 : kTextPages, pathPages = settings.isShort ? 2 : kPathPages;
  const std::string texts = fmt::format("{} pages of {} lines", textPages, kLinesPerPage);
  const std::string paths = fmt::format("{} pages of {} operations", pathPages, kOperationsPerPage);
  Compare(settings, peers, {"text", false, textPages, texts}, lines);
  Compare(settings, peers, {"text", true, textPages, texts + ", compressed"}, lines);
  Compare(settings, peers, {"paths", false, pathPages, paths}, lines);
  Compare(settings, peers, {"paths", true, pathPages, paths + ", compressed"}, lines);
  fs::remove_all(settings.folder);
}

}  // namespace
}  // namespace quillbar::bench

int main(int argumentCount, char **arguments) {
  namespace bench = quillbar::bench;
  CLI::App program{"Compares the plugin with other libraries that write PDF files; bench/compare-peers installs them."};
  bench::Settings settings;
  settings.programs = bench::fs::path(arguments[0]).parent_path();
  settings.sources = QUILLBAR_BENCH_PEERS;
  settings.modules = QUILLBAR_PEER_MODULES;
  program.add_option("--runs", settings.runs, "Runs of each; the fastest counts")
      ->check(CLI::Range(1, 1000))
      ->capture_default_str();
  program.add_flag("--short", settings.isShort, "One run of two pages each, to see that all works");
  CLI11_PARSE(program, argumentCount, arguments);
  try {
    bench::CompareAll(settings);
  } catch (const std::exception &problem) {
    fmt::print(stderr, "{}\n", problem.what());
    return 1;
  }
  return 0;
}
