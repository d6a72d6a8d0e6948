// SPDX-License-Identifier: MIT
// A function of the engine is defined once: by libharu or by us. What is called is found by its name, by readers and by
// debuggers, in the library that ships and in the files that it is linked from.
#include <gmock/gmock.h>

#include <filesystem>
#include <map>
#include <optional>
#include <set>
#include <sstream>
#include <string>
#include <string_view>

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
  constexpr std::string_view kAnonymous = "(anonymous namespace)::";
  for (std::size_t at; (at = name.find(kAnonymous)) != std::string::npos;) name.erase(at, kAnonymous.size());
  name = name.substr(0, name.find_first_of("[(<"));
  const std::size_t scope = name.rfind("::");
  return scope == std::string::npos ? name : name.substr(scope + 2);
}

struct Symbol {
  std::string file, name;
};

// A line of nm's for a function: "library.a:object.o:0000000000000000 T name", without an object in a linked library.
std::optional<Symbol> FunctionOf(const std::string &line) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  for (std::size_t at = line.find(' '); at != std::string::npos; at = line.find(' ', at + 1)) {
    const std::size_t colon = line.find_last_not_of(kDigits, at - 1);
    if (colon == std::string::npos || line[colon] != ':' || colon + 1 == at) continue;
    if (line.size() < at + 3 || std::string_view("tTwW").find(line[at + 1]) == std::string_view::npos) return {};
    const std::size_t before = line.rfind(':', colon - 1);
    return Symbol{before == std::string::npos ? "" : line.substr(before + 1, colon - before - 1), line.substr(at + 3)};
  }
  return {};
}

// The functions that a library or an archive defines. Parts that the compiler cut off a function go under another name,
// with a point.
std::vector<Function> FunctionsIn(const char *file) {
  const test::ProcessResult nm = test::RunProcess({QUILLBAR_NM, "-A", "--defined-only", std::filesystem::path(file)});
  const test::ProcessResult plain =
      test::RunProcess({QUILLBAR_NM, "-A", "-C", "--defined-only", std::filesystem::path(file)});
  EXPECT_EQ(nm.exitStatus, 0) << nm.errors;
  EXPECT_EQ(plain.exitStatus, 0) << plain.errors;
  std::vector<Function> functions;
  std::istringstream mangled(nm.output), demangled(plain.output);
  for (std::string first, second; std::getline(mangled, first) && std::getline(demangled, second);) {
    const std::optional<Symbol> symbol = FunctionOf(first), shown = FunctionOf(second);
    if (!symbol || !shown || symbol->name.find('.') != std::string::npos) continue;
    functions.push_back({symbol->file, PlainName(shown->name), symbol->name.starts_with("_Z")});
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
