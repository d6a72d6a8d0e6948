// SPDX-License-Identifier: MIT
// The reference names every member that the plugin registers, as it is registered.
#include <gtest/gtest.h>

#include <cctype>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <set>
#include <string>

#include "host/runtime/host.h"
#include "tests/docs/code_blocks.h"

namespace quillbar {
namespace {

using test::CodeBlock;
using test::CodeBlocksOf;

/// Adds the names that occur in a script, words in texts and comments too.
void AddNames(const std::string &code, std::set<std::string> &names) {
  std::string name;
  for (const char character : code + " ") {
    if (std::isalnum(static_cast<unsigned char>(character)) != 0 || character == '_') {
      name += character;
    } else if (!name.empty()) {
      names.insert(name);
      name.clear();
    }
  }
}

class Reference : public ::testing::Test {
 protected:
  Reference() {
    host_.LoadPlugin(QUILLBAR_PLUGIN);
    std::ifstream file(QUILLBAR_REFERENCE);
    page_.assign(std::istreambuf_iterator<char>(file), {});
  }

  /// Whether the page has this text, as code, in the section of a class.
  bool Documents(const host::ClassInfo &info, const std::string &text) const {
    std::size_t begin = page_.find("\n## " + info.name + "\n");
    if (begin == std::string::npos) begin = page_.find("\n## Annotation,");
    const std::size_t end = page_.find("\n## ", begin + 1);
    return page_.substr(begin, end - begin).find("`" + text) != std::string::npos;
  }

  template <class Check>
  void ForEachClass(Check check) {
    ASSERT_FALSE(page_.empty());
    ASSERT_EQ(host_.registry().Modules().size(), 1u);
    const auto &classes = host_.registry().Modules().front()->classes;
    ASSERT_EQ(classes.size(), 11u);
    for (const host::ClassInfo *info : classes) check(*info);
  }

  host::Host host_;
  std::string page_;
};

TEST_F(Reference, NamesEveryPublicMethodAndEventByItsDeclaration) {
  ForEachClass([this](const host::ClassInfo &info) {
    for (const auto &method : info.methods) {
      if (!method.IsPrivate()) {
        EXPECT_TRUE(Documents(info, method.declaration + "`") || Documents(info, "event " + method.declaration))
            << info.name << ": " << method.declaration;
      }
    }
    for (const auto &event : info.events) {
      EXPECT_TRUE(Documents(info, event.declaration + "`")) << info.name << ": " << event.declaration;
    }
  });
}

TEST_F(Reference, NamesEveryProperty) {
  ForEachClass([this](const host::ClassInfo &info) {
    for (const auto &property : info.properties) {
      EXPECT_TRUE(Documents(info, property.name + "`")) << property.FullName();
    }
  });
}

TEST_F(Reference, NamesEveryMemberOfEveryEnumeration) {
  ForEachClass([this](const host::ClassInfo &info) {
    for (const auto &enumeration : info.enumerations) {
      for (const auto &member : enumeration.members) {
        EXPECT_TRUE(Documents(info, member.name + "`")) << enumeration.qualifiedName << "." << member.name;
      }
    }
  });
}

TEST_F(Reference, ShowsEveryMemberInAScript) {
  std::set<std::string> used;
  for (const auto &entry : std::filesystem::directory_iterator(QUILLBAR_DOCS)) {
    if (entry.path().extension() != ".md") continue;
    for (const CodeBlock &block : CodeBlocksOf(entry.path())) AddNames(block.code, used);
  }
  const auto expectUse = [&used](const std::string &owner, const std::string &name) {
    EXPECT_TRUE(used.contains(name)) << "no script of the documentation uses " << owner << "." << name;
  };
  ForEachClass([&](const host::ClassInfo &info) {
    for (const auto &method : info.methods) {
      const std::string name = method.declaration.substr(0, method.declaration.find('('));
      if (!method.IsPrivate() && name != "Constructor") expectUse(info.name, name);
    }
    for (const auto &property : info.properties) expectUse(info.name, property.name);
    for (const auto &event : info.events)
      expectUse(info.name, event.declaration.substr(0, event.declaration.find('(')));
    for (const auto &enumeration : info.enumerations) {
      const std::string &name = enumeration.qualifiedName;
      expectUse(info.name, name.substr(name.rfind('.') + 1));
    }
  });
}

TEST(ErrorNumbers, OfEveryPageAreInTheTableOfErrors) {
  const std::filesystem::path docs = QUILLBAR_DOCS;
  const auto read = [](const std::filesystem::path &page) {
    std::ifstream file(page);
    return std::string(std::istreambuf_iterator<char>(file), {});
  };
  const std::string table = read(docs / "errors.md");
  const std::regex number("\\b4[12][0-9]{2}\\b");
  std::size_t found = 0;
  for (const char *page : {"reference.md", "text.md", "images.md", "navigation.md", "protection.md", "install.md"}) {
    const std::string text = read(docs / page);
    for (std::sregex_iterator match(text.begin(), text.end(), number), end; match != end; ++match, ++found) {
      EXPECT_NE(table.find("\n| " + match->str() + " |"), std::string::npos) << page << " has " << match->str();
    }
  }
  EXPECT_GT(found, 20u);
}

TEST(ErrorNumbers, OfTheTableAreMadeToHappen) {
  std::ifstream file(QUILLBAR_DOCS "/errors.md");
  const std::string page(std::istreambuf_iterator<char>(file), {});
  const std::regex row("\n\\| (4[0-9]{3}) \\|");
  std::size_t rows = 0;
  for (std::sregex_iterator match(page.begin(), page.end(), row), end; match != end; ++match, ++rows) {
    const std::string number = (*match)[1];
    // Memory, disks and compressors that fail have tests of their own.
    if (number == "4117" || number == "4118" || number == "4198") continue;
    EXPECT_NE(page.find("\n" + number + "\n"), std::string::npos) << number;
  }
  EXPECT_GT(rows, 20u);
}

}  // namespace
}  // namespace quillbar
