// SPDX-License-Identifier: MIT
// A plugin that deliberately does what plugins must not do. Each member breaks one rule.
#include <cstring>

#include "tests/host/plugins/plugin_services.h"

namespace {

using namespace quillbar;
using test_plugin::Address;
using test_plugin::Get;
using test_plugin::Method;

constexpr auto kUtf8 = static_cast<std::uint32_t>(TextEncoding::kUtf8);

struct CulpritData {
  char bytes[24];
  bool locksWhileDying;
};

extern ClassRecord culpritClass;

CulpritData &Of(Object self) {
  return *reinterpret_cast<CulpritData *>(reinterpret_cast<char *>(self) + culpritClass.classDataOffset);
}

Object keptObject;
String keptString;
Array keptArray;
StringDataRecord keptData;

String Build() { return Get<service::BuildStringWithEncoding>()("stolen goods", 12, kUtf8); }
void Unlock(String string) { Get<service::UnlockString>()(string); }
Integer Length(String string) {
  void *address = Get<service::LoadGlobalMethod>()(nullptr, global_method::Len::kDeclaration.CString());
  return reinterpret_cast<global_method::Len::Function>(address)(string);
}
Object Create(const char *name) { return Get<service::CreateInstance>()(Get<service::ObjectType>()(name)); }

void Construct(Object) {}
void Destroy(Object self) {
  if (Of(self).locksWhileDying) Get<service::LockObject>()(self);
}

// Strings
void LeakString(Object) { Build(); }
void ReleaseStringTwice(Object) {
  const String string = Build();
  Unlock(string);
  Unlock(string);
}
void ReleaseBorrowedString(Object, String text) { Unlock(text); }
void ReleaseNil(Object) { Unlock(nullptr); }
void ReleaseNonsense(Object) {
  static int nothing;
  Unlock(reinterpret_cast<String>(&nothing));
}
void UseReleasedString(Object) {
  const String string = Build();
  Unlock(string);
  Length(string);
}
void KeepBorrowedString(Object, String text) { keptString = text; }
Integer UseKeptString(Object) { return Length(keptString); }
String ReturnBorrowedString(Object, String text) { return text; }
String ReturnReleasedString(Object) {
  const String string = Build();
  Unlock(string);
  return string;
}

// String data
void LeakData(Object, String text) { Get<service::GetStringData>()(text, kUtf8, &keptData); }
void DisposeTwice(Object, String text) {
  Get<service::GetStringData>()(text, kUtf8, &keptData);
  Get<service::DisposeStringData>()(&keptData);
  Get<service::DisposeStringData>()(&keptData);
}
void DisposeNothing(Object) {
  StringDataRecord record{};
  Get<service::DisposeStringData>()(&record);
}
void DisposeAltered(Object, String text) {
  Get<service::GetStringData>()(text, kUtf8, &keptData);
  StringDataRecord altered = keptData;
  altered.hostPointer = &altered;
  Get<service::DisposeStringData>()(&altered);
  Get<service::DisposeStringData>()(&keptData);
}

// Objects
void LeakObject(Object) { Create("Culprit"); }
void LeakLock(Object self) { Get<service::LockObject>()(self); }
void UnlockOnceTooOften(Object self) {
  Get<service::LockObject>()(self);
  Get<service::UnlockObject>()(self);
  Get<service::UnlockObject>()(self);
}
void UnlockBorrowed(Object, Object other) { Get<service::UnlockObject>()(other); }
void UnlockNil(Object) { Get<service::UnlockObject>()(nullptr); }
void UnlockNonsense(Object) {
  static HostObject nothing;
  Get<service::UnlockObject>()(&nothing);
}
void UseDestroyedObject(Object) {
  const Object object = Create("Culprit");
  Get<service::UnlockObject>()(object);
  Get<service::LockObject>()(object);
}
void UnlockDestroyedObject(Object) {
  const Object object = Create("Culprit");
  Get<service::UnlockObject>()(object);
  Get<service::UnlockObject>()(object);
}
Object ReturnBorrowedObject(Object, Object other) { return other; }
void KeepBorrowedObject(Object, Object other) { keptObject = other; }
void UseKeptObject(Object) { Get<service::LockObject>()(keptObject); }
void LockWhileDying(Object self) { Of(self).locksWhileDying = true; }
Object ReturnWrongClass(Object) {
  const Object block = Create("MemoryBlock");
  return block;
}

// Memory
void WritePastData(Object self) { std::memset(&Of(self), 1, sizeof(CulpritData) + 1); }
void KeepSelf(Object self) { keptObject = self; }
void WriteIntoDestroyed(Object) { Of(keptObject).bytes[3] = 7; }

// Arguments
void AskUnknownSlot(Object self) { Get<service::GetEventInstance>()(self, 12345); }
void AskClassOfNothing(Object self) {
  static int nothing;
  Get<service::GetPluginData>()(self, reinterpret_cast<ClassRef>(&nothing));
}
void BuildNegative(Object) { Get<service::BuildStringWithEncoding>()("x", -1, kUtf8); }
void ConvertToNowhere(Object, String text) { Get<service::ConvertString>()(text, 4711); }
void ReadOutside(Object, Array numbers) {
  const auto element = reinterpret_cast<UInt16ElementGetter>(Get<service::UInt16ArrayGetter>()(numbers));
  element(numbers, -1);
  element(numbers, Get<service::UBound>()(numbers) + 1);
}
void ReadAsUInt16(Object, Array numbers) { Get<service::UInt16ArrayGetter>()(numbers); }
void KeepArray(Object, Array numbers) { keptArray = numbers; }
Integer UseKeptArray(Object) { return Get<service::UBound>()(keptArray); }
void RaiseForAnother(Object self, Object other);

EventRecord events[] = {{"Asked()", 0, 0, nullptr}};

void RaiseForAnother(Object self, Object other) {
  void *handler = Get<service::GetEventInstance>()(self, events[0].slot);
  reinterpret_cast<void (*)(Object)>(handler)(other);
}

const MethodRecord methods[] = {
    Method("Constructor()", &Construct),
    Method("LeakString()", &LeakString),
    Method("ReleaseStringTwice()", &ReleaseStringTwice),
    Method("ReleaseBorrowedString(text as String)", &ReleaseBorrowedString),
    Method("ReleaseNil()", &ReleaseNil),
    Method("ReleaseNonsense()", &ReleaseNonsense),
    Method("UseReleasedString()", &UseReleasedString),
    Method("KeepBorrowedString(text as String)", &KeepBorrowedString),
    Method("UseKeptString() as Integer", &UseKeptString),
    Method("ReturnBorrowedString(text as String) as String", &ReturnBorrowedString),
    Method("ReturnReleasedString() as String", &ReturnReleasedString),
    Method("LeakData(text as String)", &LeakData),
    Method("DisposeTwice(text as String)", &DisposeTwice),
    Method("DisposeNothing()", &DisposeNothing),
    Method("DisposeAltered(text as String)", &DisposeAltered),
    Method("LeakObject()", &LeakObject),
    Method("LeakLock()", &LeakLock),
    Method("UnlockOnceTooOften()", &UnlockOnceTooOften),
    Method("UnlockBorrowed(other as Culprit)", &UnlockBorrowed),
    Method("UnlockNil()", &UnlockNil),
    Method("UnlockNonsense()", &UnlockNonsense),
    Method("UseDestroyedObject()", &UseDestroyedObject),
    Method("UnlockDestroyedObject()", &UnlockDestroyedObject),
    Method("ReturnBorrowedObject(other as Culprit) as Culprit", &ReturnBorrowedObject),
    Method("KeepBorrowedObject(other as Culprit)", &KeepBorrowedObject),
    Method("UseKeptObject()", &UseKeptObject),
    Method("LockWhileDying()", &LockWhileDying),
    Method("ReturnWrongClass() as Culprit", &ReturnWrongClass),
    Method("WritePastData()", &WritePastData),
    Method("KeepSelf()", &KeepSelf),
    Method("WriteIntoDestroyed()", &WriteIntoDestroyed),
    Method("AskUnknownSlot()", &AskUnknownSlot),
    Method("AskClassOfNothing()", &AskClassOfNothing),
    Method("BuildNegative()", &BuildNegative),
    Method("ConvertToNowhere(text as String)", &ConvertToNowhere),
    Method("ReadOutside(numbers() as UInt16)", &ReadOutside),
    Method("ReadAsUInt16(numbers() as Int32)", &ReadAsUInt16),
    Method("KeepArray(numbers() as UInt16)", &KeepArray),
    Method("UseKeptArray() as Integer", &UseKeptArray),
    Method("RaiseForAnother(other as Culprit)", &RaiseForAnother),
};

ClassRecord culpritClass{
    .version = kInterfaceVersion,
    .name = "Culprit",
    .dataSize = sizeof(CulpritData),
    .destructor = &Destroy,
    .methods = methods,
    .methodCount = std::size(methods),
    .events = events,
    .eventCount = std::size(events),
    .interfaces = "",
    .flags = kClassFlags,
};

}  // namespace

QUILLBAR_EXPORT void REALPluginMain(quillbar::Resolver resolver) {
  test_plugin::resolver = resolver;
  Get<service::RegisterClass>()(&culpritClass);
}
