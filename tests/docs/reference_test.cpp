// SPDX-License-Identifier: MIT
// The reference names every member that the plugin registers, as it is registered.
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>

#include "host/runtime/host.h"

namespace quillbar {
namespace {

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

}  // namespace
}  // namespace quillbar
