// SPDX-License-Identifier: MIT
// The numbers of the page on limits are those of the sources, and of the reference, whose own are tried on the plugin.
#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <map>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "tests/docs/reference_pages.h"
#include "tests/support/pattern.h"
#include "tests/support/temporary_folder.h"

namespace quillbar::test {
namespace {

const std::filesystem::path kRoot = QUILLBAR_ROOT;

/// A row of a table of the page, its cells without blanks around them.
using Row = std::vector<std::string>;

/// The rows of all tables, by what they limit.
std::map<std::string, Row> Rows() {
  std::map<std::string, Row> rows;
  std::istringstream page(ReadFile(kRoot / "docs" / "limits.md"));
  for (std::string line; std::getline(page, line);) {
    if (!line.starts_with("| ") || line.starts_with("| what |")) continue;
    Row row;
    std::istringstream cells(line.substr(2));
    for (std::string cell; std::getline(cells, cell, '|');) {
      const std::size_t begin = cell.find_first_not_of(' ');
      row.push_back(begin == std::string::npos ? "" : cell.substr(begin, cell.find_last_not_of(' ') - begin + 1));
    }
    rows.emplace(row.at(0), row);
  }
  return rows;
}

/// The number that a cell states: "16 MiB", "1,048,576".
std::uint64_t NumberOf(const std::string &cell) {
  const PatternMatch match = WholeMatch(cell, "([0-9,]+)( [KMG]iB)?");
  if (match.empty()) throw std::runtime_error("\"" + cell + "\" is no number");
  const std::uint64_t number = std::stoull(WithReplaced(match[1], ",", ""));
  const std::string &unit = match[2];
  return number << (unit == " KiB" ? 10 : unit == " MiB" ? 20 : unit == " GiB" ? 30 : 0);
}

/// The value of a constant as its source states it: 500, 10'000, 0x7FFFFFFF, 2147483520.0F, std::size_t{16} << 20.
std::uint64_t ConstantIn(const std::string &file, const std::string &name) {
  const std::string source = ReadFile(kRoot / file);
  // Of several, for builds with other limits, the last one counts.
  std::string value;
  for (const PatternMatch &found : MatchesIn(source, "\\b" + name + " = ([^;,]+)[;,]")) value = found[1];
  value = WithReplaced(value, "'|std::size_t|Integer|[{}]|\\.0F", "");
  const PatternMatch match = WholeMatch(value, "\\s*(0x[0-9A-Fa-f]+|[0-9]+)(?: << ([0-9]+))?\\s*");
  if (match.empty()) throw std::runtime_error(file + " has no number in " + name + ": \"" + value + "\"");
  return std::stoull(match[1], nullptr, 0) << (match[2].empty() ? 0 : std::stoi(match[2]));
}

struct Source {
  const char *row, *file, *constant;
  std::uint64_t surplus = 0;  // how much more the source has
};

constexpr Source kSources[] = {
    {"bytes of a file of a script", "host/language/syntax/source_text.h", "kMaxBytes"},
    {"bytes of all its files", "host/language/syntax/source_text.h", "kMaxAllBytes"},
    {"nested blocks and parentheses", "host/language/syntax/parser.h", "kMaxNesting"},
    {"operators in a row", "host/language/syntax/parser.h", "kMaxExpressionHeight", 1},
    {"errors that a check shows", "host/language/syntax/diagnostics.h", "kMaxReported"},
    {"columns that a message shows of a line", "host/language/syntax/diagnostics.h", "kExcerptColumns"},
    {"levels of superclasses", "host/language/check/class_checker.cpp", "kMaxLevels"},
    {"interfaces of a class, also through others", "host/language/check/interface_checker.cpp", "kMaxInterfaces"},
    {"nested calls", "host/language/run/limits.h", "kCalls"},
    {"the machine's stack for them", "host/language/run/limits.h", "kMachineStack"},
    {"variables of all calls in progress", "host/language/run/limits.h", "kVariables"},
    {"bytes of a String", "host/language/run/limits.h", "kStringBytes"},
    {"elements of an array", "host/language/run/limits.h", "kArrayElements"},
    {"dimensions of an array", "host/language/syntax/expression_parser.cpp", "kMost"},
    {"nested objects and arrays in JSON", "host/language/values/json.h", "kMaxDepth"},
    {"hash buckets of a Dictionary that are asked for", "host/language/library/classes/dictionary.cpp", "kMost"},
    {"parameters of a plugin's method", "interface/declaration.h", "kMaxParameters"},
    {"bytes that `watch` shows of what a run prints", "host/program/watch/script_process.h", "kMostOutput"},
    {"bytes of a font file", "plugin/engine/fonts/font_fault.h", "kMaxFontFileBytes"},
    {"bytes of a metrics file (AFM)", "plugin/engine/fonts/type1/type1_definition.cpp", "kMaxAfmBytes"},
    {"bytes of a raster image in memory", "companion/pixel_raster/raster_image.h", "kMaxSize"},
    {"nested calls of event handlers for errors", "plugin/document/errors.cpp", "kDeepestEvent"},
    {"links that a path of a new file may lead through", "plugin/engine/streams/whole_file_posix.cpp", "kMostLinks"},
    {"greatest number that is written", "plugin/engine/objects/numbers.cpp", "kLargest"},
};

TEST(Limits, OfThePageAreThoseOfTheSources) {
  const std::map<std::string, Row> rows = Rows();
  for (const Source &source : kSources) {
    SCOPED_TRACE(source.row);
    ASSERT_TRUE(rows.contains(source.row));
    EXPECT_EQ(NumberOf(rows.at(source.row).at(1)) + source.surplus, ConstantIn(source.file, source.constant));
  }
}

TEST(Limits, OfThePageAreThoseOfTheReference) {
  std::size_t count = 0;
  for (const auto &[name, row] : Rows()) {
    if (row.size() < 3 || !row[2].starts_with('`') || row[2].starts_with("`--")) continue;
    SCOPED_TRACE(name);
    ++count;
    const std::string entry = ReferenceEntry(row[2].substr(1, row[2].size() - 2));
    EXPECT_FALSE(FirstMatchIn(entry, "\\b" + row[1] + "\\b").empty()) << entry;
  }
  EXPECT_EQ(count + std::size(kSources), Rows().size()) << "each row of the page has its source";
}

}  // namespace
}  // namespace quillbar::test
