// SPDX-License-Identifier: MIT
// A function of the engine is defined once: by libharu or by us. What is called is found by its name, by readers and by
// debuggers, in the library that ships and in the files that it is linked from.
#include <gmock/gmock.h>

#include <filesystem>
#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <string>

#include "tests/support/process.h"

namespace quillbar {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

struct Function {
  std::string file;  // the object that it is in; empty in a linked library
  std::string name;  // without namespaces and parameters
  bool isOurs;       // C++; all C is libharu's
};

// "quillbar::engine::(anonymous namespace)::Free(_HPDF_Dict_Rec*)" is called Free.
std::string PlainName(std::string name) {
  static const std::regex anonymous(R"(\(anonymous namespace\)::)"), suffix(R"(\[.*|\(.*|<.*)"), scope(".*::");
  name = std::regex_replace(name, anonymous, "");
  name = std::regex_replace(name, suffix, "");
  return std::regex_replace(name, scope, "");
}

// The functions that a library or an archive defines. Parts that the compiler cut off a function go under another name,
// with a point.
std::vector<Function> FunctionsIn(const char *file) {
  const test::ProcessResult nm = test::RunProcess({QUILLBAR_NM, "-A", "--defined-only", std::filesystem::path(file)});
  const test::ProcessResult plain =
      test::RunProcess({QUILLBAR_NM, "-A", "-C", "--defined-only", std::filesystem::path(file)});
  EXPECT_EQ(nm.exitStatus, 0) << nm.errors;
  EXPECT_EQ(plain.exitStatus, 0) << plain.errors;
  static const std::regex line(R"((?:.*:)?([^:]*):[0-9a-f]+ [tTwW] (.*))");
  std::vector<Function> functions;
  std::istringstream mangled(nm.output), demangled(plain.output);
  for (std::string first, second; std::getline(mangled, first) && std::getline(demangled, second);) {
    std::smatch symbol, shown;
    if (!std::regex_match(first, symbol, line) || !std::regex_match(second, shown, line)) continue;
    const std::string name = symbol[2];
    if (name.find('.') != std::string::npos) continue;
    functions.push_back({symbol[1], PlainName(shown[2]), name.starts_with("_Z")});
  }
  return functions;
}

TEST(EngineSymbols, ArePlainNames) {
  EXPECT_EQ(PlainName("quillbar::engine::(anonymous namespace)::Free(_HPDF_Dict_Rec*)"), "Free");
  EXPECT_EQ(PlainName("HPDF_Page_New"), "HPDF_Page_New");
  EXPECT_EQ(PlainName("void quillbar::Call<int>(int) [clone .cold]"), "Call");
}

TEST(EngineSymbols, LibraryDefinesEachOfLibharusFunctionsOnce) {
  std::map<std::string, int> definitions;
  int ours = 0;
  for (const Function &function : FunctionsIn(QUILLBAR_PLUGIN_FILE)) {
    if (function.isOurs) {
      ++ours;
    } else {
      ++definitions[function.name];
    }
  }
  EXPECT_GT(ours, 100) << "the library is stripped";
  EXPECT_GT(definitions["HPDF_Page_MoveTo"], 0);
  std::vector<std::string> renamed, twice;
  for (const auto &[name, count] : definitions) {
    if (name.starts_with("Libharu_")) renamed.push_back(name);
    if (count > 1) twice.push_back(name);
  }
  EXPECT_THAT(renamed, IsEmpty());
  EXPECT_THAT(twice, IsEmpty());
}

TEST(EngineSymbols, OursHaveOtherNamesThanLibharus) {
  std::map<std::string, std::set<std::string>> libharus;
  const std::vector<Function> functions = FunctionsIn(QUILLBAR_ENGINE_ARCHIVE);
  for (const Function &function : functions) {
    if (function.file.ends_with(".c.o")) libharus[function.name].insert(function.file);
  }
  EXPECT_FALSE(libharus.empty());
  std::vector<std::string> shared;
  for (const Function &function : functions) {
    const auto same = libharus.find(function.name);
    if (!function.file.ends_with(".c.o") && same != libharus.end()) {
      shared.push_back(function.name + " in " + function.file + " and " + *same->second.begin());
    }
  }
  for (const auto &[name, files] : libharus) {
    if (files.size() > 1) shared.push_back(name + " in " + *files.begin() + " and " + *files.rbegin());
  }
  EXPECT_THAT(shared, IsEmpty());
}

}  // namespace
}  // namespace quillbar
