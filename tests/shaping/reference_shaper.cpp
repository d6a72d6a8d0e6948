// SPDX-License-Identifier: MIT
#include "tests/shaping/reference_shaper.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <sstream>
#include <stdexcept>

#include "tests/support/process.h"
#include "tests/support/temporary_folder.h"

namespace quillbar::test {
namespace {

constexpr char kOnlyMarks[] = "--features=-kern,-liga,-clig,-calt";
constexpr char kNoFeatures[] =
    "--features=-kern,-dist,-liga,-clig,-dlig,-rlig,-calt,-rclt,-ccmp,-locl,-mark,-mkmk,-abvm,-blwm,-curs";

// What hb-shape prints of a text: "[GLYPH@X,Y+ADVANCE|GLYPH+ADVANCE]", with an offset where there is one.
std::vector<ReferenceGlyph> GlyphsIn(const std::string &line) {
  std::vector<ReferenceGlyph> glyphs;
  char *at = const_cast<char *>(line.c_str());
  // The number after a sign, if that is the next character.
  const auto numberAfter = [&at](char sign) {
    return *at == sign ? static_cast<double>(std::strtol(at + 1, &at, 10)) : 0;
  };
  while ((*at == '[' || *at == '|') && at[1] != ']') {
    ReferenceGlyph &glyph = glyphs.emplace_back();
    glyph.glyph = static_cast<std::uint32_t>(numberAfter(*at));
    glyph.x = numberAfter('@');
    glyph.y = numberAfter(',');
    glyph.advance = numberAfter('+');
  }
  EXPECT_TRUE(line == "[]" || (!glyphs.empty() && std::string(at) == "]")) << line;
  return glyphs;
}

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
  command.insert(command.end(), {"--no-glyph-names", "--no-clusters", "--text-file", folder / "texts"});
  const ProcessResult result = RunProcess(command);
  EXPECT_EQ(result.exitStatus, 0) << result.errors;
  std::vector<std::vector<ReferenceGlyph>> shapes;
  std::istringstream output(result.output);
  for (std::string line; std::getline(output, line);) shapes.push_back(GlyphsIn(line));
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
