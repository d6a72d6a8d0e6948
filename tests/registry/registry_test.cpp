// SPDX-License-Identifier: MIT
// The registered records, compared with a transcription of the interface that shares nothing with the plugin.
#include <gmock/gmock.h>

#include <fstream>
#include <map>

#include "tests/registry/loaded_plugin.h"
#include "tests/registry/recording_host.h"
#include "tests/registry/registered_text.h"

namespace quillbar {
namespace {

using testing::ElementsAreArray;
using testing::IsEmpty;

class Registry : public testing::Test {
 protected:
  void SetUp() override {
    plugin_.Enter(host_.resolver());
    ASSERT_NE(host_.module, nullptr);
  }

  const ClassRecord &Class(const std::string &name) const {
    for (const ClassRecord *definition : host_.AllClasses()) {
      if (definition->name == name) return *definition;
    }
    throw std::runtime_error("no class " + name);
  }

  RecordingHost host_;
  LoadedPlugin plugin_;
};

std::vector<std::string> LinesOf(const std::string &path) {
  std::vector<std::string> lines;
  std::ifstream file(path);
  for (std::string line; std::getline(file, line);) lines.push_back(line);
  return lines;
}

TEST_F(Registry, EveryMemberIsWhereTheInterfacePutsItToTheByte) {
  const std::vector<std::string> expected = LinesOf(QUILLBAR_INTERFACE_FILE);
  ASSERT_EQ(expected.size(), 234U) << QUILLBAR_INTERFACE_FILE;
  const std::vector<std::string> registered = RegisteredText(host_.AllClasses());
  for (std::size_t i = 0; i < std::min(expected.size(), registered.size()); ++i) {
    ASSERT_EQ(registered[i], expected[i]) << "line " << i + 1;
  }
  EXPECT_EQ(registered.size(), expected.size());
}

TEST_F(Registry, FieldsThatNoMemberUsesAreEmpty) { EXPECT_THAT(RecordDifferences(host_.AllClasses()), IsEmpty()); }

TEST_F(Registry, OldHostsGetTheSameClassesAsTheModuleHolds) {
  const std::vector<std::string> inModule = RegisteredText(host_.AllClasses());
  host_.module = nullptr;
  host_.version = 100.0;
  plugin_.Enter(host_.resolver());
  EXPECT_THAT(RegisteredText(host_.AllClasses()), ElementsAreArray(inModule));
}

TEST_F(Registry, ModuleHoldsClassesAndNothingElse) {
  const ModuleRecord &module = *host_.module;
  EXPECT_EQ(module.version, 13U);
  EXPECT_STREQ(module.name, "QuillbarPDFWriter");
  EXPECT_EQ(module.classCount, 11U);
  EXPECT_EQ(module.methodCount + module.constantCount + module.propertyCount + module.structureCount +
                module.enumerationCount + module.attributeCount + module.delegateCount + module.interfaceCount +
                module.moduleCount + module.controlCount,
            0U);
}

TEST_F(Registry, OnlyDocumentsCanBeMadeByScripts) {
  for (const ClassRecord *definition : host_.AllClasses()) {
    for (std::size_t i = 0; i < definition->methodCount; ++i) {
      const MethodRecord &method = definition->methods[i];
      if (!std::string_view(method.declaration).starts_with("Constructor(")) continue;
      EXPECT_EQ(method.flags, std::string_view(definition->name) == "PDFDocument" ? 4U : 132U) << definition->name;
    }
  }
}

TEST_F(Registry, DataBlocksHaveTheirSize) {
  constexpr bool kWide = sizeof(void *) == 8;
  const std::map<std::string, std::size_t> sizes = {
      {"PDFDocument", kWide ? 32 : 20}, {"Page", kWide ? 56 : 32},        {"Font", kWide ? 96 : 64},
      {"Image", kWide ? 24 : 12},       {"Annotation", kWide ? 40 : 20},  {"ExtendedGraphicsState", kWide ? 24 : 12},
      {"Outline", kWide ? 24 : 12},     {"Destination", kWide ? 24 : 12},
  };
  for (const auto &[name, size] : sizes) EXPECT_EQ(Class(name).dataSize, size) << name;
}

}  // namespace
}  // namespace quillbar
