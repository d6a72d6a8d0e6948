// SPDX-License-Identifier: MIT
// A well-behaved plugin that has a member of every shape that the host must be able to call.
#include <array>
#include <cstring>
#include <string>
#include <utility>

#include "tests/host/plugins/plugin_services.h"

namespace {

using namespace quillbar;
using test_plugin::Address;
using test_plugin::Get;
using test_plugin::Method;
using test_plugin::Property;

std::string journal;  // constructors and destructors, in the order they ran

struct ProbeData {
  Integer number;
  Object kept;
  std::array<unsigned char, 37> zeroes;
};

struct LoudData {
  double number;
};

extern ClassRecord probeClass;
extern ClassRecord loudClass;

template <class Data>
Data &DataOf(Object self, const ClassRecord &record) {
  return *reinterpret_cast<Data *>(reinterpret_cast<char *>(self) + record.classDataOffset);
}

ProbeData &Of(Object self) { return DataOf<ProbeData>(self, probeClass); }

String Build(const std::string &text) {
  return Get<service::BuildStringWithEncoding>()(text.data(), static_cast<int>(text.size()),
                                                 static_cast<std::uint32_t>(TextEncoding::kUtf8));
}

void ConstructProbe(Object self) {
  journal += "+Probe";
  for (const unsigned char byte : Of(self).zeroes) {
    if (byte != 0) journal += "!";
  }
}
void DestroyProbe(Object self) {
  journal += "-Probe";
  if (Of(self).kept != nullptr) Get<service::UnlockObject>()(Of(self).kept);
}
void ConstructLoud(Object self) {
  journal += "+Loud";
  DataOf<LoudData>(self, loudClass).number = 1.5;
}
void DestroyLoud(Object) { journal += "-Loud"; }

void Construct(Object) {}
void ConstructNumbered(Object self, Integer number) { Of(self).number = number; }
String TakeJournal(Object) { return Build(std::exchange(journal, "")); }

template <class T>
T Echo(Object, T value) {
  return value;
}

String EchoString(Object, String value) {
  if (value == nullptr) return nullptr;
  StringDataRecord data{};
  if (Get<service::GetStringData>()(value, static_cast<std::uint32_t>(TextEncoding::kUtf8), &data) == 0) return nullptr;
  const String copy = Build(std::string(data.data, data.byteLength));
  Get<service::DisposeStringData>()(&data);
  return copy;
}

Object EchoObject(Object, Object value) {
  if (value != nullptr) Get<service::LockObject>()(value);
  return value;
}

/// Parameters of every width next to every other, so that a wrong width shifts the rest.
double Mixed(Object, Boolean a, std::int16_t b, float c, std::uint32_t d, double e, std::uint8_t f, Integer g, float h,
             float i, float j, float k, float l, float m, float n) {
  return static_cast<double>(a) + b + static_cast<double>(c) + d + e + f + static_cast<double>(g) +
         static_cast<double>(h + i + j + k + l + m + n);
}

template <class T>
void Double(Object, T *value) {
  *value = static_cast<T>(*value + *value);
}
void Negate(Object, Boolean *value) { *value = *value == 0 ? 1 : 0; }
void Greet(Object, String *value) {
  const bool wasEmpty = *value == nullptr;
  *value = Build(wasEmpty ? "hello nobody" : "hello somebody");
}
void Replace(Object self, Object *value) {
  Get<service::LockObject>()(self);
  *value = self;
}

Integer Sum(Object, Array numbers) {
  const Integer bound = Get<service::UBound>()(numbers);
  if (bound < 0) return 0;
  void *(*find)(Array) = Get<service::UInt16ArrayGetter>();
  if (find == nullptr) find = Get<service::ArrayDirectGetter>();
  const auto element = reinterpret_cast<UInt16ElementGetter>(find(numbers));
  Integer sum = 0;
  for (Integer i = 0; i <= bound; ++i) sum += element(numbers, i);
  return sum;
}

void Keep(Object self, Object other) {
  if (other != nullptr) Get<service::LockObject>()(other);
  if (Of(self).kept != nullptr) Get<service::UnlockObject>()(Of(self).kept);
  Of(self).kept = other;
}

Object MakeSealed(Object) { return Get<service::CreateInstance>()(Get<service::ObjectType>()("ProbeModule.Sealed")); }

Object MakeBlock(Object, Integer size) {
  const Object block = Get<service::CreateInstance>()(Get<service::ObjectType>()("MemoryBlock"));
  const auto load = Get<service::LoadObjectMethod>();
  reinterpret_cast<memory_block::Constructor>(load(block, memory_block::kConstructor))(block, size);
  const auto convert = reinterpret_cast<memory_block::OperatorConvert>(load(block, memory_block::kOperatorConvert));
  std::memset(convert(block), 'x', static_cast<std::size_t>(size));
  return block;
}

Integer DataDistance(Object self, Object other) {
  return reinterpret_cast<char *>(&Of(other)) - reinterpret_cast<char *>(&Of(self));
}

Boolean HasLoudData(Object, Object other) {
  const ClassRef loud = Get<service::ObjectType>()("LoudProbe");
  return Get<service::GetPropValueBool>() != nullptr && Get<service::GetPluginData>()(other, loud) != nullptr ? 1 : 0;
}

String PathOf(Object, Object item) {
  String path = nullptr;
  return Get<service::GetPropValueString>()(item, "NativePath", &path) != 0 ? path : nullptr;
}

Boolean FlagOf(Object, Object item, String name) {
  StringDataRecord data{};
  if (Get<service::GetStringData>()(name, static_cast<std::uint32_t>(TextEncoding::kUtf8), &data) == 0) return 0;
  Boolean flag = 0;
  const bool found = Get<service::GetPropValueBool>()(item, data.data, &flag) != 0;
  Get<service::DisposeStringData>()(&data);
  return found ? flag : Boolean{-1};
}

Integer WithDefaults(Object, Integer a, Integer b, Boolean c) { return a + b + (c != 0 ? 1000 : 0); }

Integer NumberOf(Object self) { return Of(self).number; }
void SetNumber(Object self, std::intptr_t parameter, Integer value) { Of(self).number = value + parameter; }
float Ratio(Object) { return 0.1F; }

EventRecord events[] = {
    {"Numbers(a as Boolean, b as Int16, c as Single, d as Double, e as UInt32, f as Probe.Small) as Double", 0, 0,
     nullptr},
    {"Words(text as String, sender as Probe) as String", 0, 0, nullptr},
    {"Change(ByRef number as Integer) as Boolean", 0, 0, nullptr},
    {"Pick(one as Probe) as Probe", 0, 0, nullptr},
};

template <class Function>
Function *Handler(Object self, std::size_t event) {
  return reinterpret_cast<Function *>(Get<service::GetEventInstance>()(self, events[event].slot));
}

double RaiseNumbers(Object self) {
  const auto handler =
      Handler<double(Object, Boolean, std::int16_t, float, double, std::uint32_t, std::uint8_t)>(self, 0);
  return handler == nullptr ? -1 : handler(self, 1, -2, 0.5F, 0.25, 4000000000U, 200);
}
String RaiseWords(Object self, String text) {
  const auto handler = Handler<String(Object, String, Object)>(self, 1);
  return handler == nullptr ? nullptr : handler(self, text, self);
}
Integer RaiseChange(Object self, Integer number) {
  const auto handler = Handler<Boolean(Object, Integer *)>(self, 2);
  if (handler != nullptr && handler(self, &number) == 0) return -1;
  return number;
}
Object RaisePick(Object self) {
  const auto handler = Handler<Object(Object, Object)>(self, 3);
  return handler == nullptr ? nullptr : handler(self, self);
}

const char *const modes[] = {"FIRST = 0", "SECOND = 1", "LAST = &hFF", "BELOW = -5"};
const char *const smalls[] = {"TINY = 1", "HUGE = 200"};
const EnumerationRecord enumerations[] = {
    {"Mode", "Integer", kEnumerationFlags, modes, 4, 0, nullptr},
    {"Small", "UInt8", kEnumerationFlags, smalls, 2, 0, nullptr},
};

const PropertyRecord properties[] = {
    Property("Number", "Integer", Address(&NumberOf), Address(&SetNumber), 3),
    Property("Ratio", "Single", Address(&Ratio)),
};

const MethodRecord methods[] = {
    Method("Constructor()", &Construct),
    Method("Constructor(number as Integer)", &ConstructNumbered),
    Method("TakeJournal() as String", &TakeJournal),
    Method("EchoBoolean(value as Boolean) as Boolean", &Echo<Boolean>),
    Method("EchoInt8(value as Int8) as Int8", &Echo<std::int8_t>),
    Method("EchoInt16(value as Int16) as Int16", &Echo<std::int16_t>),
    Method("EchoInt32(value as Int32) as Int32", &Echo<std::int32_t>),
    Method("EchoInt64(value as Int64) as Int64", &Echo<std::int64_t>),
    Method("EchoUInt8(value as UInt8) as UInt8", &Echo<std::uint8_t>),
    Method("EchoUInt16(value as UInt16) as UInt16", &Echo<std::uint16_t>),
    Method("EchoUInt32(value as UInt32) as UInt32", &Echo<std::uint32_t>),
    Method("EchoUInt64(value as UInt64) as UInt64", &Echo<std::uint64_t>),
    Method("EchoInteger(value as Integer) as Integer", &Echo<Integer>),
    Method("EchoSingle(value as Single) as Single", &Echo<float>),
    Method("EchoDouble(value as Double) as Double", &Echo<double>),
    Method("EchoColor(value as Color) as Color", &Echo<std::uint32_t>),
    Method("EchoPtr(value as Ptr) as Ptr", &Echo<void *>),
    Method("EchoMode(value as Probe.Mode) as Probe.Mode", &Echo<Integer>),
    Method("EchoSmall(value as ProbeModule.Probe.Small) as Small", &Echo<std::uint8_t>),
    Method("EchoString(value as String) as String", &EchoString),
    Method("EchoObject(value as Probe) as Probe", &EchoObject),
    Method("Mixed(a as Boolean,b as Int16, c as Single,d as UInt32,e as Double,f as UInt8,g as Integer,h as "
           "Single,"
           "i as Single,j as Single,k as Single,l as Single,m as Single,n as Single) as Double",
           &Mixed),
    Method("DoubleInt16(ByRef value as Int16)", &Double<std::int16_t>),
    Method("DoubleInteger(byref value as Integer)", &Double<Integer>),
    Method("DoubleSingle(Byref value as Single)", &Double<float>),
    Method("DoubleDouble(ByRef value as Double)", &Double<double>),
    Method("Negate(ByRef value as Boolean)", &Negate),
    Method("Greet(ByRef value as String)", &Greet),
    Method("Replace(ByRef value as Probe)", &Replace),
    Method("Sum(numbers() as UInt16) as Integer", &Sum),
    Method("Keep(other as Probe)", &Keep),
    Method("MakeSealed() as Sealed", &MakeSealed),
    Method("MakeBlock(size as Integer) as MemoryBlock", &MakeBlock),
    Method("DataDistance(other as Probe) as Integer", &DataDistance),
    Method("HasLoudData(other as Probe) as Boolean", &HasLoudData),
    Method("PathOf(item as FolderItem) as String", &PathOf),
    Method("FlagOf(item as FolderItem, name as String) as Int8", &FlagOf),
    Method("WithDefaults(a as Integer, b as Integer = 20, Optional c as Boolean = True) as Integer", &WithDefaults),
    Method("RaiseNumbers() as Double", &RaiseNumbers),
    Method("RaiseWords(text as String) as String", &RaiseWords),
    Method("RaiseChange(number as Integer) as Integer", &RaiseChange),
    Method("RaisePick() as Probe", &RaisePick),
    Method("NeedsAbsentClass(value as ClassOfAnotherPlugin) as Boolean", &Echo<Boolean>),
};

const MethodRecord loudMethods[] = {
    Method("Constructor()", &Construct),
    Method(
        "EchoInt8(value as Int8) as Int8", +[](Object, std::int8_t) -> std::int8_t { return 99; }),
};

const MethodRecord sealedMethods[] = {Method("Constructor()", &Construct, kPrivateConstructorFlags)};

ClassRecord probeClass{
    .version = kInterfaceVersion,
    .name = "Probe",
    .dataSize = sizeof(ProbeData),
    .constructor = &ConstructProbe,
    .destructor = &DestroyProbe,
    .properties = properties,
    .propertyCount = std::size(properties),
    .methods = methods,
    .methodCount = std::size(methods),
    .events = events,
    .eventCount = std::size(events),
    .interfaces = "",
    .flags = kClassFlags,
    .enumerations = enumerations,
    .enumerationCount = std::size(enumerations),
};
ClassRecord loudClass{
    .version = kInterfaceVersion,
    .name = "LoudProbe",
    .superclass = "Probe",
    .dataSize = sizeof(LoudData),
    .constructor = &ConstructLoud,
    .destructor = &DestroyLoud,
    .methods = loudMethods,
    .methodCount = std::size(loudMethods),
    .interfaces = "",
    .flags = kClassFlags,
};
// Registered before its superclass, and without anything of its own.
ClassRecord quietClass{.version = kInterfaceVersion,
                       .name = "QuietProbe",
                       .superclass = "LoudProbe",
                       .interfaces = "",
                       .flags = kClassFlags};
ClassRecord sealedClass{
    .version = kInterfaceVersion,
    .name = "Sealed",
    .dataSize = 8,
    .methods = sealedMethods,
    .methodCount = std::size(sealedMethods),
    .interfaces = "",
    .flags = kClassFlags,
};

ClassRecord *const classes[] = {&quietClass, &probeClass, &loudClass, &sealedClass};
ModuleRecord module{
    .version = kInterfaceVersion, .name = "ProbeModule", .classes = classes, .classCount = std::size(classes)};

}  // namespace

QUILLBAR_EXPORT void REALPluginMain(quillbar::Resolver resolver) {
  test_plugin::resolver = resolver;
  Get<service::RegisterPluginVersion>()(static_cast<int>(kInterfaceVersion));
  const auto version = Get<service::GetRBVersion>();
  if (version != nullptr && version() < 2013.1) return;
  Get<service::RegisterModule>()(&module);
}
