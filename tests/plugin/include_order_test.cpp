// SPDX-License-Identifier: MIT
// The order of the plugin's folders: which may include which.
#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>
#include <string>

#include "tests/support/pattern.h"
#include "tests/support/temporary_folder.h"

namespace quillbar {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// A folder and those that its files may include from. Each stands above all that it names, so there is no way round in
/// a circle; a new arrow wants a reason.
const std::map<std::string, std::set<std::string>> kArrows{
    {"plugin/bridge",
     {"binding", "interface", "plugin/document", "plugin/page", "plugin/text", "plugin/image", "plugin/navigation",
      "plugin/script", "plugin/guard", "plugin/engine"}},
    // What a document, a text, a picture or a link does to a page.
    {"plugin/document", {"binding", "interface", "plugin/page", "plugin/script", "plugin/guard", "plugin/engine"}},
    {"plugin/text", {"binding", "interface", "plugin/page", "plugin/script", "plugin/guard", "plugin/engine"}},
    {"plugin/image", {"binding", "interface", "plugin/page", "plugin/script", "plugin/guard", "plugin/engine"}},
    {"plugin/navigation", {"binding", "interface", "plugin/page", "plugin/script", "plugin/guard", "plugin/engine"}},
    {"plugin/page", {"binding", "interface", "plugin/script", "plugin/guard", "plugin/engine"}},
    {"plugin/script", {"binding", "interface", "plugin/guard", "plugin/engine"}},
    {"plugin/guard", {"plugin/engine"}},
    // The engine knows nothing of scripts.
    {"plugin/engine/document",
     {"plugin/engine/pages", "plugin/engine/images", "plugin/engine/fonts", "plugin/engine/navigation",
      "plugin/engine/security", "plugin/engine/streams", "plugin/engine/objects", "plugin/engine/errors"}},
    {"plugin/engine/text",
     {"plugin/engine/pages", "plugin/engine/fonts", "plugin/engine/layout", "plugin/engine/streams",
      "plugin/engine/objects", "plugin/engine/errors"}},
    {"plugin/engine/pages",
     {"plugin/engine/images", "plugin/engine/fonts", "plugin/engine/streams", "plugin/engine/objects",
      "plugin/engine/errors"}},
    {"plugin/engine/navigation", {"plugin/engine/streams", "plugin/engine/objects", "plugin/engine/errors"}},
    {"plugin/engine/images", {"plugin/engine/streams", "plugin/engine/objects", "plugin/engine/errors"}},
    {"plugin/engine/fonts",
     {"plugin/engine/layout", "plugin/engine/streams", "plugin/engine/objects", "plugin/engine/memory",
      "plugin/engine/errors"}},
    {"plugin/engine/layout", {}},
    {"plugin/engine/security", {"platform", "plugin/engine/streams", "plugin/engine/objects", "plugin/engine/errors"}},
    {"plugin/engine/objects", {"plugin/engine/streams", "plugin/engine/errors"}},
    {"plugin/engine/streams", {"platform", "plugin/engine/memory", "plugin/engine/errors"}},
    {"plugin/engine/memory", {"platform", "plugin/engine/errors"}},
    {"plugin/engine/errors", {}},
};

/// The folder of the table that a file lies in: "plugin/page", "plugin/engine/fonts", or a top one.
std::string FolderOf(const std::string &file) {
  std::string folder;
  int depth = 0;
  for (const std::filesystem::path &part : std::filesystem::path(file).parent_path()) {
    if (depth == 0 || (depth == 1 && folder == "plugin") || (depth == 2 && folder == "plugin/engine")) {
      folder += (depth == 0 ? "" : "/") + part.string();
    }
    ++depth;
  }
  return folder;
}

bool MayInclude(const std::string &from, const std::string &to) {
  const auto arrows = kArrows.find(from);
  if (from == to) return true;
  if (arrows == kArrows.end()) return false;
  for (const std::string &allowed : arrows->second) {
    if (to == allowed || to.starts_with(allowed + "/")) return true;
  }
  return false;
}

/// The lines of a source that include from where its folder may not, as "FILE includes FILE".
std::vector<std::string> WrongIncludes(const std::string &file, const std::string &source) {
  std::vector<std::string> wrong;
  for (const test::PatternMatch &found : test::MatchesIn(source, "(?:^|\n)[ \t]*#[ \t]*include[ \t]*\"([^\"]*)\"")) {
    const std::string &included = found[1];
    if (!MayInclude(FolderOf(file), FolderOf(included))) wrong.push_back(file + " includes " + included);
  }
  return wrong;
}

TEST(IncludeOrder, HoldsInEveryFileOfThePlugin) {
  const std::filesystem::path root = QUILLBAR_SOURCE_DIR;
  int files = 0;
  std::vector<std::string> wrong;
  for (const auto &entry : std::filesystem::recursive_directory_iterator(root / "plugin")) {
    const std::string extension = entry.path().extension().string();
    if (extension != ".cpp" && extension != ".h") continue;
    const std::string file = entry.path().lexically_relative(root).generic_string();
    for (const std::string &line : WrongIncludes(file, test::ReadFile(entry.path()))) wrong.push_back(line);
    ++files;
  }
  EXPECT_GT(files, 100);
  EXPECT_THAT(wrong, IsEmpty());
}

TEST(IncludeOrder, WhatPointsUpOrAsideIsFound) {
  EXPECT_THAT(WrongIncludes("plugin/guard/a.h", "#include \"plugin/page/path.h\"\n"),
              ElementsAre("plugin/guard/a.h includes plugin/page/path.h"));
  EXPECT_THAT(WrongIncludes("plugin/page/a.cpp", "\n  #  include \"plugin/text/leading.h\"\n#include <hpdf.h>\n"),
              ElementsAre("plugin/page/a.cpp includes plugin/text/leading.h"));
  EXPECT_THAT(WrongIncludes("plugin/engine/fonts/type1/a.h",
                            "#include \"plugin/engine/text/line_count.h\"\n"
                            "#include \"plugin/engine/fonts/cid/b.h\"\n"
                            "#include \"binding/owned.h\"\n"),
              ElementsAre("plugin/engine/fonts/type1/a.h includes plugin/engine/text/line_count.h",
                          "plugin/engine/fonts/type1/a.h includes binding/owned.h"));
  EXPECT_THAT(WrongIncludes("plugin/page/a.cpp", "#include \"path.h\"\n"),
              ElementsAre("plugin/page/a.cpp includes path.h"));
  EXPECT_THAT(WrongIncludes("plugin/new/a.cpp", "#include \"plugin/guard/library_call.h\"\n"),
              ElementsAre("plugin/new/a.cpp includes plugin/guard/library_call.h"));
}

// Folders whose arrows are all to ones that were taken away before them can be taken away until none is left.
TEST(IncludeOrder, ArrowsNeverLeadBack) {
  std::map<std::string, std::set<std::string>> left = kArrows;
  left["plugin/engine"] = {"plugin/engine/document", "plugin/engine/text"};
  const auto isFree = [&left](const auto &folder) {
    for (const std::string &below : folder.second) {
      if (left.contains(below)) return false;
    }
    return true;
  };
  while (true) {
    const auto lowest = std::find_if(left.begin(), left.end(), isFree);
    if (lowest == left.end()) break;
    left.erase(lowest);
  }
  EXPECT_THAT(left, IsEmpty());
}

}  // namespace
}  // namespace quillbar
