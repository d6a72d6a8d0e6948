// SPDX-License-Identifier: MIT
// How a plugin reaches its host: slots that are resolved when they are first used, and owners of what the host lends
// or gives. Every case runs in a process of its own, so each begins with empty slots.
#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "binding/class_data.h"
#include "binding/class_reference.h"
#include "binding/owned.h"
#include "binding/service.h"
#include "tests/registry/sparse_host.h"

namespace quillbar {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using namespace sparse_host;

std::vector<std::string> calls;

class Binding : public testing::Test {
 protected:
  void SetUp() override {
    offered.clear();
    asked.clear();
    calls.clear();
    hostResolver = Resolve;
  }
};

class Slot : public Binding {};

TEST_F(Slot, IsResolvedOnFirstUseAndKept) {
  Offer<service::GetRBVersion>([] { return 2024.1; });
  EXPECT_THAT(asked, IsEmpty());
  EXPECT_EQ(CallHost<service::GetRBVersion>(), 2024.1);
  EXPECT_EQ(CallHost<service::GetRBVersion>(), 2024.1);
  EXPECT_THAT(asked, ElementsAre("REALGetRBVersion"));
}

TEST_F(Slot, MissingServiceGivesTheEmptyResultAndIsAskedForAgain) {
  EXPECT_EQ(CallHost<service::UBound>(nullptr), 0);
  EXPECT_EQ(CallHost<service::ConvertString>(nullptr, std::uint32_t{0}), nullptr);
  EXPECT_EQ(CallHost<service::UBound>(nullptr), 0);
  EXPECT_THAT(asked, ElementsAre("RuntimeUBound", "REALConvertString", "RuntimeUBound"));

  Offer<service::UBound>([](Array) -> std::intptr_t { return 7; });
  EXPECT_EQ(CallHost<service::UBound>(nullptr), 7);
}

TEST_F(Slot, BeforeEntryNothingIsCalled) {
  hostResolver = nullptr;
  EXPECT_EQ(CallHost<service::UBound>(nullptr), 0);
  EXPECT_THAT(asked, IsEmpty());
}

TEST_F(Slot, FunctionOfTheLanguageIsFoundByItsDeclarationUntilItIsCleared) {
  Offer<service::LoadGlobalMethod>([](const char *module, const char *declaration) -> void * {
    calls.push_back(std::string(module == nullptr ? "" : "module ") + declaration);
    const auto length = [](String) -> std::intptr_t { return 5; };
    return reinterpret_cast<void *>(static_cast<std::intptr_t (*)(String)>(length));
  });
  EXPECT_EQ(CallHost<global_method::Len>(nullptr), 5);
  EXPECT_EQ(CallHost<global_method::Len>(nullptr), 5);
  EXPECT_THAT(calls, ElementsAre("Len(str as String) as Integer"));
  HostSlot<global_method::Len>::Clear();
  EXPECT_EQ(CallHost<global_method::Len>(nullptr), 5);
  EXPECT_EQ(calls.size(), 2U);
}

TEST_F(Slot, FunctionOfTheLanguageThatIsMissingGivesTheEmptyResult) {
  EXPECT_EQ(CallHost<global_method::Asc>(nullptr), 0);
  EXPECT_THAT(asked, ElementsAre("REALLoadGlobalMethod"));
}

TEST_F(Slot, KeepsWhatIsOfferedUnderTheOtherName) {
  using Getter = HostSlot<service::UInt16ArrayGetter>;
  EXPECT_EQ(Getter::ResolveEither<service::ArrayDirectGetter>(), nullptr);
  EXPECT_THAT(asked, ElementsAre("PluginUInt16ArrayGetProc", "RuntimeArrayDirectGetGetProc"));
  asked.clear();
  Offer<service::ArrayDirectGetter>([](Array) -> void * { return nullptr; });
  const auto found = Getter::ResolveEither<service::ArrayDirectGetter>();
  EXPECT_EQ(reinterpret_cast<void *>(found), offered.at("RuntimeArrayDirectGetGetProc"));
  EXPECT_EQ(Getter::ResolveEither<service::ArrayDirectGetter>(), found);
  EXPECT_THAT(asked, ElementsAre("PluginUInt16ArrayGetProc", "RuntimeArrayDirectGetGetProc"));
}

class Classes : public Binding {};

TEST_F(Classes, AreLookedUpOnceAndAgainAfterClearing) {
  static int token;
  Offer<service::ObjectType>([](const char *name) {
    calls.emplace_back(name);
    return reinterpret_cast<ClassRef>(&token);
  });
  using Page = ClassReference<"Demo.Page">;
  EXPECT_EQ(Page::Get(), reinterpret_cast<ClassRef>(&token));
  Page::Get();
  EXPECT_THAT(calls, ElementsAre("Demo.Page"));
  Page::Clear();
  Page::Get();
  EXPECT_EQ(calls.size(), 2U);
}

TEST_F(Classes, UnknownClassMakesNoInstanceAndIsAskedForAgain) {
  Offer<service::ObjectType>([](const char *name) -> ClassRef {
    calls.emplace_back(name);
    return nullptr;
  });
  Offer<service::CreateInstance>([](ClassRef) -> Object {
    calls.emplace_back("CreateInstance");
    return nullptr;
  });
  EXPECT_EQ(CreateInstance<"Demo.Font">(), nullptr);
  EXPECT_EQ(CreateInstance<"Demo.Font">(), nullptr);
  EXPECT_THAT(calls, ElementsAre("Demo.Font", "Demo.Font"));
}

struct SampleData {
  int number;
  static ClassRecord definition;
};
ClassRecord SampleData::definition{};

TEST_F(Classes, DataBlocksLieAsFarApartAsTheirInstances) {
  alignas(16) char memory[128] = {};
  SampleData::definition.classDataOffset = 24;
  const auto at = [&](std::size_t offset) { return reinterpret_cast<Object>(memory + offset); };
  EXPECT_EQ(reinterpret_cast<char *>(ClassData<SampleData>(at(0))), memory + 24);
  EXPECT_EQ(
      reinterpret_cast<char *>(ClassData<SampleData>(at(64))) - reinterpret_cast<char *>(ClassData<SampleData>(at(0))),
      64);
  EXPECT_THAT(asked, IsEmpty());
}

// Any address serves as a string or an object here, since only the services of this file see it.
int something;
const auto kString = reinterpret_cast<String>(&something);
const auto kObject = reinterpret_cast<Instance<"Page"> *>(&something);

class Owners : public Binding {
 protected:
  void SetUp() override {
    Binding::SetUp();
    Offer<service::GetStringData>([](String, std::uint32_t encoding, StringDataRecord *record) -> Boolean {
      calls.push_back("get " + std::to_string(encoding));
      if (encoding != 0x08000100) return 0;
      record->data = "text";
      record->byteLength = 4;
      return 1;
    });
    Offer<service::DisposeStringData>([](StringDataRecord *) { calls.emplace_back("dispose"); });
    Offer<service::UnlockString>([](String) { calls.emplace_back("unlock string"); });
    Offer<service::UnlockObject>([](Object) { calls.emplace_back("unlock object"); });
  }
};

TEST_F(Owners, StringDataIsDisposedOfOnce) {
  {
    const StringData text(kString, TextEncoding::kUtf8);
    ASSERT_TRUE(text);
    EXPECT_STREQ(text.bytes(), "text");
    EXPECT_EQ(text.byteLength(), 4U);
  }
  EXPECT_THAT(calls, ElementsAre("get 134217984", "dispose"));
}

TEST_F(Owners, StringDataThatCouldNotBeHadIsNotDisposedOf) {
  EXPECT_FALSE(StringData(kString, TextEncoding::kUtf16));
  EXPECT_THAT(calls, ElementsAre("get 256"));
}

TEST_F(Owners, NilStringHasNoData) {
  EXPECT_FALSE(StringData(nullptr, TextEncoding::kUtf8));
  EXPECT_THAT(calls, IsEmpty());
}

TEST_F(Owners, StringIsReleasedOnceWhereverItIsMoved) {
  {
    OwnedString first(kString);
    OwnedString second(std::move(first));
    OwnedString third;
    third = std::move(second);
    EXPECT_EQ(third.get(), kString);
  }
  EXPECT_THAT(calls, ElementsAre("unlock string"));
}

TEST_F(Owners, ObjectIsReleasedOnceUnlessItIsHandedOn) {
  { const ObjectRef<Instance<"Page">> kept(kObject); }
  EXPECT_THAT(calls, ElementsAre("unlock object"));
  calls.clear();
  {
    ObjectRef<Instance<"Page">> handedOn(kObject);
    EXPECT_EQ(handedOn.release(), kObject);
    const ObjectRef<Instance<"Page">> none;
  }
  EXPECT_THAT(calls, IsEmpty());
}

}  // namespace
}  // namespace quillbar
