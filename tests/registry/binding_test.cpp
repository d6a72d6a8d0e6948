// SPDX-License-Identifier: MIT
// How a plugin reaches its host: slots that are resolved when they are first used, and owners of what the host lends
// or gives. Every case runs in a process of its own, so each begins with empty slots.
#include <gmock/gmock.h>

#include <new>
#include <string>
#include <vector>

#include "binding/class_data.h"
#include "binding/class_reference.h"
#include "binding/members.h"
#include "binding/owned.h"
#include "binding/service.h"
#include "tests/registry/sparse_host.h"

namespace quillbar {

using Throwing = Instance<"Throwing">;

int shortages = 0;
template <>
struct MemoryShortage<Throwing> {
  static void Report(Throwing *) noexcept { ++shortages; }
};

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

// Members of a class that run out of memory, each in its way.
Integer Count(Throwing *, Integer) { throw std::bad_alloc(); }
void SetCount(Throwing *, Integer, Integer) { throw 5; }
void Make(Object) { throw std::bad_alloc(); }
void End(Object) { throw std::bad_alloc(); }
Single GetHeight(Throwing *) { throw std::bad_alloc(); }
void SetHeight(Throwing *, std::intptr_t, Single) { throw std::bad_alloc(); }
String Shared() { throw std::bad_alloc(); }
// Gives a string back when it is unwound.
String Leave(Throwing *, String text) {
  const OwnedString owned(text);
  throw std::bad_alloc();
}

using ThrowingLines = Members<
    Methods<AssignableMethod<"Count(index as Integer) as Integer", Count, SetCount>,
            Method<"Leave(text as String) as String", Leave>>,
    Properties<Property<"Height", "Single", GetHeight, SetHeight>, ReadOnlyProperty<"Top", "Single", GetHeight>>,
    Events<>, Enumerations<>, SharedMethods<SharedMethod<"Shared() as String", Shared>>>;

TEST_F(Owners, NoExceptionLeavesARegisteredFunction) {
  const ClassRecord record = DescribeClass<ThrowingLines, Make, End>("Throwing", nullptr, 0);
  auto *const instance = reinterpret_cast<Throwing *>(&something);
  shortages = 0;
  record.constructor(instance);
  record.destructor(instance);
  EXPECT_EQ(shortages, 0) << "an object that is made or ends has nobody to tell";
  EXPECT_EQ(reinterpret_cast<decltype(&Count)>(record.methods[0].function)(instance, 3), 0);
  reinterpret_cast<decltype(&SetCount)>(record.methods[0].setter)(instance, 3, 4);
  EXPECT_EQ(reinterpret_cast<decltype(&GetHeight)>(record.properties[0].getter)(instance), 0.0F);
  reinterpret_cast<decltype(&SetHeight)>(record.properties[0].setter)(instance, 0, 1.0F);
  EXPECT_EQ(shortages, 4);
  EXPECT_EQ(reinterpret_cast<decltype(&Leave)>(record.methods[1].function)(instance, kString), nullptr);
  EXPECT_THAT(calls, ElementsAre("unlock string"));
  EXPECT_EQ(reinterpret_cast<decltype(&Shared)>(record.sharedMethods[0].function)(), nullptr);
  EXPECT_EQ(shortages, 5);
  EXPECT_EQ(record.methods[1].setter, nullptr);
  EXPECT_EQ(record.properties[1].setter, nullptr);
  EXPECT_EQ(DescribeClass<ThrowingLines>("Throwing", nullptr, 0).constructor, nullptr);
}

}  // namespace
}  // namespace quillbar
