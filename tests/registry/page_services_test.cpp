// SPDX-License-Identifier: MIT
// Which services a page calls, and in which order, on a host that records every name and call.
#include <gmock/gmock.h>

#include <cstring>
#include <string>

#include "tests/registry/loaded_plugin.h"
#include "tests/registry/sparse_host.h"

namespace quillbar {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using namespace sparse_host;

std::vector<Object> unlocked;
ModuleRecord *module = nullptr;

class PageServices : public testing::Test {
 protected:
  void SetUp() override {
    offered.clear();
    unlocked.clear();
    Offer<service::RegisterPluginVersion>([](int) {});
    Offer<service::GetRBVersion>([] { return 2024.1; });
    Offer<service::RegisterModule>([](ModuleRecord *record) { module = record; });
    Offer<service::UnlockObject>([](Object object) { unlocked.push_back(object); });
    plugin_.Enter(Resolve);
    for (std::size_t index = 0; index < module->classCount; ++index) {
      if (std::strcmp(module->classes[index]->name, "Page") == 0) page_ = module->classes[index];
    }
    ASSERT_NE(page_, nullptr);
    page_->classDataOffset = 0;
    ASSERT_LE(page_->dataSize, sizeof instance_);
    page_->constructor(instance());
    asked.clear();
  }

  Object instance() { return reinterpret_cast<Object>(instance_); }

  template <class Function>
  Function Method(const std::string &declaration) const {
    for (std::size_t index = 0; index < page_->methodCount; ++index) {
      if (page_->methods[index].declaration == declaration)
        return reinterpret_cast<Function>(page_->methods[index].function);
    }
    throw std::runtime_error("no method " + declaration);
  }

  LoadedPlugin plugin_;
  ClassRecord *page_ = nullptr;
  // The data block of a page that no document made: words, the fourth and fifth of which are its document and its
  // font.
  void *instance_[16] = {};
};

TEST_F(PageServices, LetsTheDocumentGoBeforeTheFont) {
  int document = 0;
  int font = 0;
  instance_[3] = &document;
  instance_[4] = &font;
  page_->destructor(instance());
  EXPECT_THAT(unlocked, ElementsAre(reinterpret_cast<Object>(&document), reinterpret_cast<Object>(&font)));
}

TEST_F(PageServices, LetsNothingGoThatItNeverHad) {
  page_->destructor(instance());
  EXPECT_THAT(unlocked, IsEmpty());
}

TEST_F(PageServices, AskForTheGetterOfDashArraysOnceUnderWhicheverName) {
  Offer<service::UBound>([](Array) -> std::intptr_t { return 0; });
  Offer<service::ArrayDirectGetter>([](Array) -> void * {
    return reinterpret_cast<void *>(UInt16ElementGetter([](Array, std::intptr_t) -> std::uint16_t { return 3; }));
  });
  using SetDashPattern = void (*)(Object, void *array, std::uint32_t phase);
  const auto setDashPattern = Method<SetDashPattern>("SetDashPattern(dashPattern() as UInt16,phase as UInt32)");
  int array = 0;
  for (int call = 0; call < 3; ++call) setDashPattern(instance(), &array, 0);
  EXPECT_THAT(asked, ElementsAre("RuntimeUBound", "PluginUInt16ArrayGetProc", "RuntimeArrayDirectGetGetProc"));
}

}  // namespace
}  // namespace quillbar
