// SPDX-License-Identifier: MIT
// Writes the same documents through the plugin and with libharu alone, and prints what each took.
#include <fmt/core.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "bench/document_contents.h"
#include "bench/library_writer.h"
#include "bench/measured_run.h"
#include "bench/plugin_writer.h"

namespace quillbar::bench {
namespace {

enum class Content { kText, kPaths, kMixed };

struct Document {
  std::string name;
  std::string description;
  Content content;
  bool isCompressed;
  bool isTrueType = false;
};

constexpr int kMixedTextPages = 500;
constexpr int kMixedPathPages = 100;
constexpr const char *kTrueTypeFile = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";

const std::vector<Document> kDocuments{
    {"text", "1,000 pages of 50 lines", Content::kText, false},
    {"text-compressed", "1,000 pages of 50 lines, compressed", Content::kText, true},
    {"truetype", "1,000 pages of 50 lines, TrueType", Content::kText, false, true},
    {"truetype-compressed", "1,000 pages of 50 lines, TrueType, compressed", Content::kText, true, true},
    {"paths", "300 pages of 1,000 operations", Content::kPaths, false},
    {"paths-compressed", "300 pages of 1,000 operations, compressed", Content::kPaths, true},
    {"mixed", "500 pages of text and 100 of operations", Content::kMixed, false},
    {"mixed-compressed", "the same, compressed", Content::kMixed, true},
};

const std::vector<std::string> kWriters{"libharu", "plugin"};

template <class Writer>
MeasuredPart Prepare(const Document &document, const std::string &file) {
  static const Lines kLines = TextLines();
  const auto writer = std::make_shared<Writer>(kLines);
  return [=] {
    writer->BeginDocument(document.isCompressed, document.isTrueType ? kTrueTypeFile : "");
    switch (document.content) {
      case Content::kText:
        WriteTextPages(*writer);
        break;
      case Content::kPaths:
        WritePathPages(*writer);
        break;
      case Content::kMixed:
        WriteTextPages(*writer, kMixedTextPages);
        WritePathPages(*writer, kMixedPathPages);
        break;
    }
    writer->EndDocument(file);
    const auto size = static_cast<std::int64_t>(std::filesystem::file_size(file));
    // The plugin never overwrites.
    std::filesystem::remove(file);
    return size;
  };
}

Run RunOf(const Document &document, const std::string &writer, const std::string &file) {
  return [=] {
    return writer == "plugin" ? Prepare<PluginWriter>(document, file) : Prepare<LibraryWriter>(document, file);
  };
}

// The medians; of the processor's time the least, which other programs on the machine change the least.
Measurement Summary(std::vector<Measurement> runs) {
  const auto middle = [&](auto field) {
    std::ranges::nth_element(runs, runs.begin() + static_cast<std::ptrdiff_t>(runs.size() / 2), {}, field);
    return runs[runs.size() / 2].*field;
  };
  Measurement median;
  median.seconds = middle(&Measurement::seconds);
  median.processorSeconds = std::ranges::min_element(runs, {}, &Measurement::processorSeconds)->processorSeconds;
  median.peakBytes = middle(&Measurement::peakBytes);
  median.growthBytes = middle(&Measurement::growthBytes);
  median.fileBytes = middle(&Measurement::fileBytes);
  return median;
}

// A column of the table: libharu's figure, the plugin's, and the second divided by the first.
struct Figure {
  const char *unit;
  double scale;
  double (*of)(const Measurement &);
};

constexpr Figure kFigures[] = {
    {"ms", 1e-3, [](const Measurement &measured) { return measured.seconds; }},
    {"CPU ms", 1e-3, [](const Measurement &measured) { return measured.processorSeconds; }},
    {"MiB peak", 1 << 20, [](const Measurement &measured) { return static_cast<double>(measured.growthBytes); }},
    {"KB file", 1e3, [](const Measurement &measured) { return static_cast<double>(measured.fileBytes); }},
};

void Compare(int runs, const std::string &file) {
  fmt::print(
      "Median of {} runs, of the processor's time the least; each in its own process, the two writers in turn.\n\n",
      runs);
  fmt::print("{:<46}", "document");
  for (const Figure &figure : kFigures)
    fmt::print("  {:>23} {:>6}", fmt::format("libharu, plugin {}", figure.unit), "ratio");
  fmt::print("\n");
  for (const Document &document : kDocuments) {
    std::vector<std::vector<Measurement>> measured(kWriters.size());
    for (int run = 0; run < runs; ++run) {
      for (std::size_t writer = 0; writer < kWriters.size(); ++writer) {
        measured[writer].push_back(MeasureInOwnProcess(RunOf(document, kWriters[writer], file)));
      }
    }
    const Measurement library = Summary(measured[0]);
    const Measurement plugin = Summary(measured[1]);
    fmt::print("{:<46}", document.description);
    for (const Figure &figure : kFigures) {
      fmt::print("  {:>11.1f} {:>11.1f} {:>6.3f}", figure.of(library) / figure.scale, figure.of(plugin) / figure.scale,
                 figure.of(plugin) / figure.of(library));
    }
    fmt::print("\n");
    std::fflush(stdout);
  }
}

// Once, in this process, for profilers.
void Profile(const std::string &name, const std::string &writer, const std::string &file) {
  const auto document = std::ranges::find(kDocuments, name, &Document::name);
  RunOf(*document, writer, file)()();
}

}  // namespace
}  // namespace quillbar::bench

int main(int argumentCount, char **arguments) {
  namespace bench = quillbar::bench;
  CLI::App program{"Writes the same documents through the plugin and with libharu alone, and compares."};
  int runs = 7;
  program.add_option("--runs", runs, "Runs of each document and writer; their median counts")
      ->check(CLI::Range(1, 1000))
      ->capture_default_str();
  std::string document;
  std::string writer = "plugin";
  std::vector<std::string> names;
  for (const bench::Document &one : bench::kDocuments) names.push_back(one.name);
  program.add_option("--profile", document, "Writes this document once, in this process, for a profiler")
      ->check(CLI::IsMember(names));
  program.add_option("--writer", writer, "With --profile: who writes")
      ->check(CLI::IsMember(bench::kWriters))
      ->capture_default_str();
  CLI11_PARSE(program, argumentCount, arguments);

  if (!std::filesystem::exists(bench::kTrueTypeFile)) {
    fmt::print(stderr, "{} is missing: install fonts-dejavu-core.\n", bench::kTrueTypeFile);
    return 1;
  }
  const std::filesystem::path file =
      std::filesystem::temp_directory_path() / fmt::format("quillbar-bench-{}.pdf", getpid());
  try {
    if (document.empty()) {
      bench::Compare(runs, file.string());
    } else {
      bench::Profile(document, writer, file.string());
    }
  } catch (const std::exception &problem) {
    fmt::print(stderr, "{}\n", problem.what());
    return 1;
  }
  return 0;
}
