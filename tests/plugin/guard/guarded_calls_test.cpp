// SPDX-License-Identifier: MIT
// The plugin calls the engine through the guard: its sources hold no other call.
#include <gmock/gmock.h>

#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "tests/support/pattern.h"
#include "tests/support/temporary_folder.h"

namespace quillbar {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// What needs no guard: there is no document yet, it can't fail and only reads, or it tells of a failure itself.
const std::set<std::string> kUnguarded{"engine::NewDocument", "engine::DeviceColorSpace", "engine::ModeOf",
                                       "engine::RunningHandlers", "engine::ReportShortage"};

/// The functions of the engine that a source calls directly. `Call<FUNCTION>(…)` only names one.
std::vector<std::string> DirectCalls(const std::string &source) {
  std::vector<std::string> calls;
  for (const test::PatternMatch &call : test::MatchesIn(source, R"((^|[^<\w:])(HPDF_[A-Z]\w*|engine::[A-Z]\w*)\()")) {
    if (!kUnguarded.contains(call[2])) calls.push_back(call[2]);
  }
  return calls;
}

TEST(GuardedCalls, AreAllThatThePluginMakes) {
  const std::filesystem::path root = std::filesystem::path(QUILLBAR_SOURCE_DIR) / "plugin";
  int files = 0;
  for (const auto &entry : std::filesystem::recursive_directory_iterator(root)) {
    const std::string file = entry.path().lexically_relative(root).generic_string();
    if (!entry.is_regular_file() || file.starts_with("engine/") || file.starts_with("guard/")) continue;
    EXPECT_THAT(DirectCalls(test::ReadFile(entry.path())), IsEmpty()) << file;
    ++files;
  }
  EXPECT_GT(files, 50);
}

TEST(GuardedCalls, ADirectCallIsFound) {
  EXPECT_THAT(DirectCalls("  HPDF_Free(document);\n  if (engine::SaveToMemory(document)) return;"),
              ElementsAre("HPDF_Free", "engine::SaveToMemory"));
  EXPECT_THAT(DirectCalls("Call<HPDF_Free>(document); Call<engine::SaveToFile>(d, p); engine::NewDocument(h, d);"),
              IsEmpty());
}

}  // namespace
}  // namespace quillbar
