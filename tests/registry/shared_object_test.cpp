// SPDX-License-Identifier: MIT
// The plugins' files: what each exports to and needs from the process that loads it.
#include <dlfcn.h>
#include <gmock/gmock.h>
#include <malloc.h>

#include <cstdio>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

namespace quillbar {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsSubsetOf;

/// The output of a command; the test fails when the command does.
std::string OutputOf(const std::string &command) {
  std::string output;
  FILE *pipe = popen(command.c_str(), "r");
  if (pipe == nullptr) {
    ADD_FAILURE() << command;
    return output;
  }
  char chunk[4096];
  while (const std::size_t count = std::fread(chunk, 1, sizeof chunk, pipe)) output.append(chunk, count);
  EXPECT_EQ(pclose(pipe), 0) << command;
  return output;
}

std::vector<std::string> LinesOf(const std::string &text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

class PluginFile : public testing::TestWithParam<const char *> {
 protected:
  void SetUp() override {
#ifdef QUILLBAR_INSTRUMENTED
    GTEST_SKIP() << "a plugin with sanitizers or counters has parts of theirs; this holds for what ships";
#endif
  }

  const std::string file_ = "'" + std::string(GetParam()) + "'";
};

TEST_P(PluginFile, ExportsTheEntryPointAndNothingElse) {
  std::vector<std::string> names;
  for (const std::string &line : LinesOf(OutputOf("nm -D --defined-only --format=posix " + file_))) {
    names.push_back(line.substr(0, line.find(' ')));
  }
  EXPECT_THAT(names, ElementsAre("REALPluginMain"));
}

TEST_P(PluginFile, NeedsOnlyTheLibraryOfC) {
  std::vector<std::string> needed;
  for (const std::string &line : LinesOf(OutputOf("readelf -d " + file_))) {
    if (line.find("(NEEDED)") == std::string::npos) continue;
    const std::size_t start = line.find('[') + 1;
    needed.push_back(line.substr(start, line.find(']') - start));
  }
  EXPECT_THAT(needed, testing::Contains("libc.so.6"));
  EXPECT_THAT(needed, IsSubsetOf({"libc.so.6", "libm.so.6", "ld-linux-x86-64.so.2", "ld-linux.so.2",
                                  "ld-linux-aarch64.so.1", "ld-linux-armhf.so.3"}));
}

TEST_P(PluginFile, LoadsWithTheCLibrariesOfTenYearsAgo) {
#ifdef __aarch64__
  constexpr int kOldest = 17;  // glibc had no version for this processor before
#else
  constexpr int kOldest = 16;
#endif
  int versions = 0;
  for (const std::string &line : LinesOf(OutputOf("readelf --wide --version-info " + file_))) {
    const std::size_t name = line.find("Name: GLIBC_2.");
    if (name == std::string::npos) continue;
    ++versions;
    EXPECT_LE(std::stoi(line.substr(line.find('.', name) + 1)), kOldest) << line;
  }
  EXPECT_GT(versions, 0);
}

TEST_P(PluginFile, NoDirectoryOfTheBuildIsSearchedForLibraries) {
  const std::string dynamic = OutputOf("readelf -d " + file_);
  EXPECT_EQ(dynamic.find("(RPATH)"), std::string::npos);
  EXPECT_EQ(dynamic.find("(RUNPATH)"), std::string::npos);
}

TEST_P(PluginFile, RunsNoCodeOfItsOwnWhenItIsLoaded) {
  // The compiler gathers a file's start-up code in a function of this name, followed by the file's name or
  // its first symbol. The C++ library's own files, linked in, are the ones that end in ".cc".
  std::vector<std::string> startUp;
  for (const std::string &line : LinesOf(OutputOf("nm " + file_))) {
    const std::size_t name = line.find("_GLOBAL__sub_I_");
    if (name != std::string::npos && !line.ends_with(".cc")) startUp.push_back(line.substr(name));
  }
  EXPECT_THAT(startUp, IsEmpty());
}

TEST_P(PluginFile, LetsNothingBeExecutedThatCanBeWritten) {
  bool hasFixedTables = false, hasStack = false;
  for (const std::string &line : LinesOf(OutputOf("readelf --wide --program-headers " + file_))) {
    hasFixedTables |= line.find("GNU_RELRO") != std::string::npos;
    hasStack |= line.find("GNU_STACK") != std::string::npos;
    // Flags stand before the alignment: "RW ", "R E" or "RWE".
    EXPECT_EQ(line.find("RWE"), std::string::npos) << line;
  }
  EXPECT_TRUE(hasFixedTables);
  EXPECT_TRUE(hasStack) << "without this header the stack is executable";
  EXPECT_THAT(OutputOf("readelf -d " + file_), testing::HasSubstr("NOW")) << "tables are filled before they are fixed";
}

TEST_P(PluginFile, GivesAllMemoryBackWhenItIsUnloaded) {
  const auto loadAndUnload = [] {
    void *library = dlopen(GetParam(), RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(library, nullptr) << dlerror();
    ASSERT_EQ(dlclose(library), 0) << dlerror();
    EXPECT_EQ(dlopen(GetParam(), RTLD_NOW | RTLD_NOLOAD), nullptr) << "it is still there";
  };
  loadAndUnload();
  const std::size_t before = mallinfo2().uordblks;
  constexpr std::size_t kTimes = 10;
  for (std::size_t i = 0; i < kTimes; ++i) loadAndUnload();
  // The loader's own notes grow by some bytes.
  EXPECT_LT(mallinfo2().uordblks, before + kTimes * 1024);
}

// The functions that end the process, or check what they are asked before they do it.
TEST_P(PluginFile, ChecksTheStackAndWhatIsCopied) {
  const std::string imported = OutputOf("nm -D --undefined-only " + file_);
  EXPECT_THAT(imported, testing::HasSubstr("__stack_chk_fail"));
#ifdef NDEBUG
  // Which ones are left of them differs from compiler to compiler.
  EXPECT_THAT(imported, testing::ContainsRegex("__[a-z]+_chk@"));
#endif
}

TEST_P(PluginFile, ChecksIndexesIntoContainers) {
  EXPECT_THAT(OutputOf("nm " + file_), testing::HasSubstr("__glibcxx_assert_fail"));
}

// GCC's C++ library would bring it, for the message about an exception that nobody catches.
TEST_P(PluginFile, CarriesNoReaderOfTypeNames) {
  for (const std::string &line : LinesOf(OutputOf("nm " + file_))) {
    EXPECT_EQ(line.find("__cxa_demangle"), std::string::npos) << line;
  }
}

INSTANTIATE_TEST_SUITE_P(, PluginFile, testing::Values(QUILLBAR_PLUGIN_FILE, QUILLBAR_COMPANION_FILE),
                         [](const testing::TestParamInfo<const char *> &file) {
                           return std::filesystem::path(file.param).stem().string();
                         });

}  // namespace
}  // namespace quillbar
