// SPDX-License-Identifier: MIT
// Every font file of a folder, loaded through the plugin and through libharu alone: what loads, what is refused and
// why, and whether names, metrics and widths agree.
#include <fmt/core.h>
#include <hpdf.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "host/runtime/host.h"
#include "host/runtime/text_encoding.h"

namespace quillbar::bench {
namespace {

namespace fs = std::filesystem;

struct FontFiles {
  fs::path metrics;  // AFM; empty for a TrueType file
  fs::path program;
};

struct Outcome {
  std::string refusal;  // empty if the font was loaded
  std::map<std::string, std::string> facts;
  std::map<unsigned, float> widths;  // by character, in 1/1000 of the size
};

// The characters that are measured: all that an encoding of Latin letters has, or a selection of what TrueType files
// have.
std::vector<unsigned> CharactersOf(const FontFiles &font) {
  using Range = std::pair<unsigned, unsigned>;
  const std::vector<Range> ranges =
      font.metrics.empty() ? std::vector<Range>{{0x20, 0x7E},     {0xA0, 0x24F},    {0x370, 0x52F},   {0x5D0, 0x5EA},
                                                {0x621, 0x64A},   {0x905, 0x939},   {0xE01, 0xE3A},   {0x1E00, 0x1EFF},
                                                {0x2010, 0x2044}, {0x3041, 0x3096}, {0x4E00, 0x4E40}, {0xAC00, 0xAC40}}
                           : std::vector<Range>{{0x20, 0x7E}, {0xA1, 0xAC}, {0xAE, 0xFF}};
  std::vector<unsigned> characters;
  for (const auto &[first, last] : ranges) {
    for (unsigned c = first; c <= last; ++c) characters.push_back(c);
  }
  return characters;
}

std::string Utf8(unsigned character) {
  std::string text;
  if (character < 0x80) return {static_cast<char>(character)};
  if (character < 0x800) {
    text += static_cast<char>(0xC0 | character >> 6);
  } else {
    text += static_cast<char>(0xE0 | character >> 12);
    text += static_cast<char>(0x80 | (character >> 6 & 0x3F));
  }
  return text + static_cast<char>(0x80 | (character & 0x3F));
}

constexpr float kSize = 100;
constexpr float kWide = 30000;

std::string Number(double value) { return fmt::format("{:.0f}", value); }

Outcome ThroughPlugin(host::Host &host, const FontFiles &font) {
  Outcome outcome;
  const host::ObjectHandle document = host.Create("PDFDocument");
  const host::Value program = host.Create("FolderItem", {font.program.string()});
  const host::Value loaded = font.metrics.empty()
                                 ? host.Call(document, "LoadTrueTypeFont", {program})
                                 : host.Call(document, "LoadType1Font",
                                             {host.Create("FolderItem", {font.metrics.string()}), program,
                                              host.Constant("Font.FontEncodingEnum.WINDOWS_ANSI")});
  if (loaded.AsObject().IsNil()) {
    outcome.refusal = fmt::format("error {}, detail {}", host.Get(document, "LastErrorNumber").AsInteger(),
                                  host.Get(document, "LastErrorDetailNumber").AsInteger());
    return outcome;
  }
  const host::ObjectHandle face = loaded.AsObject();
  outcome.facts["name"] = host.Get(face, "Name").Utf8();
  for (const char *fact : {"Ascent", "Descent"})
    outcome.facts[fact] = Number(static_cast<double>(host.Get(face, fact).AsInteger()));
  for (const char *side : {"Left", "Bottom", "Right", "Top"})
    outcome.facts[side] = Number(host.Get(face, std::string("BoundingBox") + side).AsDouble());
  const host::ObjectHandle page = host.Call(document, "AddPage").AsObject();
  host.Call(page, "SetFont", {face, kSize});
  for (const unsigned character : CharactersOf(font)) {
    std::vector<host::Value> arguments{Utf8(character), kWide, false, 0.0F};
    host.CallByRef(page, "MeasureText", arguments);
    outcome.widths[character] = arguments[3].AsSingle() * 1000 / kSize;
  }
  return outcome;
}

HPDF_STATUS firstError = 0;

void Note(HPDF_STATUS number, HPDF_STATUS, void *) {
  if (firstError == 0) firstError = number;
}

// Written as lines of text, for the process that waits for it.
std::string ThroughLibrary(const FontFiles &font) {
  const HPDF_Doc document = HPDF_New(Note, nullptr);
  HPDF_UseUTFEncodings(document);
  const char *name = font.metrics.empty()
                         ? HPDF_LoadTTFontFromFile(document, font.program.c_str(), HPDF_TRUE)
                         : HPDF_LoadType1FontFromFile(document, font.metrics.c_str(), font.program.c_str());
  const HPDF_Font face =
      name == nullptr ? nullptr : HPDF_GetFont(document, name, font.metrics.empty() ? "UTF-8" : "WinAnsiEncoding");
  if (face == nullptr) return fmt::format("refused error {}\n", firstError);
  const HPDF_Box box = HPDF_Font_GetBBox(face);
  std::string report = fmt::format("fact name {}\nfact Ascent {}\nfact Descent {}\n", HPDF_Font_GetFontName(face),
                                   HPDF_Font_GetAscent(face), HPDF_Font_GetDescent(face));
  for (const auto &[side, value] :
       {std::pair{"Left", box.left}, {"Bottom", box.bottom}, {"Right", box.right}, {"Top", box.top}})
    report += fmt::format("fact {} {}\n", side, Number(value));
  const HPDF_Page page = HPDF_AddPage(document);
  HPDF_Page_SetFontAndSize(page, face, kSize);
  for (const unsigned character : CharactersOf(font)) {
    const std::string text = font.metrics.empty() ? Utf8(character) : std::string{static_cast<char>(character)};
    float width = 0;
    HPDF_Page_MeasureText(page, text.c_str(), kWide, HPDF_FALSE, &width);
    report += fmt::format("width {} {}\n", character, width * 1000 / kSize);
  }
  return report;
}

// libharu reads past a bad file's end, so each file gets a process of its own.
Outcome ThroughLibraryAlone(const FontFiles &font) {
  int ends[2];
  if (pipe(ends) != 0) throw std::runtime_error("no pipe");
  std::fflush(stdout);
  const pid_t child = fork();
  if (child == 0) {
    close(ends[0]);
    alarm(20);
    const std::string report = ThroughLibrary(font);
    const bool isWritten = write(ends[1], report.data(), report.size()) == static_cast<ssize_t>(report.size());
    _exit(isWritten ? 0 : 1);
  }
  close(ends[1]);
  std::string report;
  char buffer[4096];
  for (ssize_t size = 0; (size = read(ends[0], buffer, sizeof buffer)) > 0;)
    report.append(buffer, static_cast<std::size_t>(size));
  close(ends[0]);
  int status = 0;
  waitpid(child, &status, 0);

  Outcome outcome;
  if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) outcome.refusal = "crashed";
  std::istringstream lines(report);
  for (std::string line; std::getline(lines, line);) {
    std::istringstream words(line);
    std::string kind, key;
    words >> kind >> key;
    std::string value;
    std::getline(words >> std::ws, value);
    if (kind == "refused") outcome.refusal = key + " " + value;
    if (kind == "fact") outcome.facts[key] = value;
    if (kind == "width") outcome.widths[static_cast<unsigned>(std::stoul(key))] = std::stof(value);
  }
  return outcome;
}

std::vector<FontFiles> FontsIn(const fs::path &folder) {
  std::vector<FontFiles> fonts;
  std::map<std::string, fs::path> programs;  // of Type 1 fonts, by their files' names
  std::vector<fs::path> metrics;
  for (const fs::directory_entry &entry : fs::recursive_directory_iterator(folder)) {
    if (!entry.is_regular_file()) continue;
    const fs::path &file = entry.path();
    const std::string kind = file.extension().string();
    if (kind == ".ttf" || kind == ".ttc" || kind == ".TTF") fonts.push_back({{}, file});
    if (kind == ".pfb" || kind == ".pfa" || kind == ".t1") programs.emplace(file.stem().string(), file);
    if (kind == ".afm") metrics.push_back(file);
  }
  for (const fs::path &file : metrics) {
    const auto program = programs.find(file.stem().string());
    if (program != programs.end()) fonts.push_back({file, program->second});
  }
  std::ranges::sort(fonts, {}, [](const FontFiles &font) { return std::pair(font.metrics, font.program); });
  return fonts;
}

struct Tally {
  int files = 0, loaded = 0, refused = 0, onlyHere = 0, onlyThere = 0, differing = 0;
};

// The facts and widths in which two readings differ, for a reader.
std::string DifferencesOf(const Outcome &ours, const Outcome &theirs, bool isType1) {
  std::string text;
  for (const auto &[fact, value] : theirs.facts) {
    if (ours.facts.at(fact) != value) text += fmt::format(" {}: {} for {};", fact, ours.facts.at(fact), value);
  }
  int widths = 0;
  std::string first;
  for (const auto &[character, width] : theirs.widths) {
    // libharu gives a character that a Type 1 file lacks no width at all, the plugin the width of the space.
    if (isType1 && width == 0) continue;
    if (std::abs(ours.widths.at(character) - width) < 0.5F) continue;
    if (widths++ == 0) first = fmt::format("U+{:04X} {} for {}", character, ours.widths.at(character), width);
  }
  if (widths != 0) text += fmt::format(" {} widths, the first {};", widths, first);
  return text;
}

void Survey(host::Host &host, const FontFiles &font, Tally &tally) {
  const Outcome ours = ThroughPlugin(host, font), theirs = ThroughLibraryAlone(font);
  const std::string shown = font.program.filename().string();
  ++tally.files;
  ++(ours.refusal.empty() ? tally.loaded : tally.refused);
  if (!ours.refusal.empty()) {
    fmt::print("{}: refused: {}; libharu: {}\n", shown, ours.refusal,
               theirs.refusal.empty() ? "loads it" : theirs.refusal);
    if (theirs.refusal.empty()) ++tally.onlyThere;
    return;
  }
  if (!theirs.refusal.empty()) {
    ++tally.onlyHere;
    fmt::print("{}: loaded; libharu: {}\n", shown, theirs.refusal);
    return;
  }
  const std::string differences = DifferencesOf(ours, theirs, !font.metrics.empty());
  if (differences.empty()) return;
  ++tally.differing;
  fmt::print("{}:{}\n", shown, differences);
}

void Print(const char *kind, const Tally &tally) {
  fmt::print(
      "{}: {} files, {} loaded, {} refused; {} loaded that libharu refuses, {} refused that it loads; {} "
      "differ\n",
      kind, tally.files, tally.loaded, tally.refused, tally.onlyHere, tally.onlyThere, tally.differing);
}

}  // namespace
}  // namespace quillbar::bench

int main(int argumentCount, char **arguments) {
  using namespace quillbar::bench;
  if (argumentCount != 2) {
    fmt::print(stderr, "usage: fonts FOLDER\n");
    return 2;
  }
  try {
    quillbar::host::Host host;
    host.LoadPlugin(QUILLBAR_COMPANION_FILE);
    host.LoadPlugin(QUILLBAR_PLUGIN_FILE);
    Tally trueType, type1;
    for (const FontFiles &font : FontsIn(arguments[1])) Survey(host, font, font.metrics.empty() ? trueType : type1);
    Print("TrueType", trueType);
    Print("Type 1", type1);
  } catch (const std::exception &problem) {
    fmt::print(stderr, "{}\n", problem.what());
    return 1;
  }
  return 0;
}
