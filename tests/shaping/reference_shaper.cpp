// SPDX-License-Identifier: MIT
#include "tests/shaping/reference_shaper.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <sstream>
#include <stdexcept>

#include "tests/support/process.h"
#include "tests/support/temporary_folder.h"

namespace quillbar::test {
namespace {

constexpr char kOnlyMarks[] = "--features=-kern,-liga,-clig,-calt";
constexpr char kNoFeatures[] =
    "--features=-kern,-dist,-liga,-clig,-dlig,-rlig,-calt,-rclt,-ccmp,-locl,-mark,-mkmk,-abvm,-blwm,-curs";

}  // namespace

Command ReferenceCommand(const char *program, const std::filesystem::path &font, Shaping shaping) {
  // Not the shaper of Graphite, which some fonts have tables for as well; and no language, which would choose among
  // the forms of a letter.
  Command command{program, "--shapers=ot", "--language=und", "--font-file", font};
  if (shaping == Shaping::kNoChoices) command.push_back(kNoFeatures);
  if (shaping == Shaping::kMarks) command.push_back(kOnlyMarks);
  return command;
}

std::vector<std::vector<ReferenceGlyph>> ReferenceShapes(const std::filesystem::path &font,
                                                         const std::vector<std::string> &texts, Shaping shaping) {
  const TemporaryFolder folder;
  std::string lines;
  for (const std::string &text : texts) lines += text + '\n';
  WriteFile(folder / "texts", lines);
  Command command = ReferenceCommand("hb-shape", font, shaping);
  command.insert(command.end(), {"--no-glyph-names", "--output-format=json", "--text-file", folder / "texts"});
  const ProcessResult result = RunProcess(command);
  EXPECT_EQ(result.exitStatus, 0) << result.errors;
  std::vector<std::vector<ReferenceGlyph>> shapes;
  std::istringstream output(result.output);
  for (std::string line; std::getline(output, line);) {
    std::vector<ReferenceGlyph> glyphs;
    for (const nlohmann::json &item : nlohmann::json::parse(line))
      glyphs.push_back({item.at("g"), item.at("ax"), item.at("dx"), item.at("dy")});
    shapes.push_back(std::move(glyphs));
  }
  EXPECT_EQ(shapes.size(), texts.size());
  shapes.resize(texts.size());
  return shapes;
}

std::string ReasonForNoReference() {
  try {
    return RunProcess({"hb-shape", "--version"}).exitStatus == 0 ? "" : "needs hb-shape of Debian's libharfbuzz-bin";
  } catch (const std::runtime_error &) {
    return "needs hb-shape of Debian's libharfbuzz-bin";
  }
}

}  // namespace quillbar::test
