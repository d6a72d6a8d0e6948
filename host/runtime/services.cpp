// SPDX-License-Identifier: MIT
#include "interface/services.h"

#include <fmt/format.h>

#include <array>

#include "host/runtime/array_store.h"
#include "host/runtime/event_binding.h"
#include "host/runtime/host.h"
#include "host/runtime/internals.h"
#include "host/runtime/interruption.h"
#include "host/runtime/services.h"
#include "host/runtime/string_pool.h"
#include "host/runtime/text.h"
#include "host/runtime/text_encoding.h"

/// The services that plugins get from the resolver: one C function each, of the type that
/// interface/services.h states. They check their arguments against the reference ledger first; a wrong call is
/// noted and answered with the empty result.
namespace quillbar::host {
namespace {

/// The string itself; null when the plugin has no right to it.
String Checked(String string, std::string_view service) {
  return string != nullptr && Internals::Current().ledger.MayUse(string, service) ? string : nullptr;
}

bool Checked(Object object, std::string_view service) { return Internals::Current().objects.MayUse(object, service); }

/// Gives the plugin a reference to a string that the host made.
String Give(const StringHandle &string) { return Internals::Current().ledger.Give(string.Get()); }

void NoteMisuse(std::string message) {
  Internals::Current().ledger.Note(ViolationKind::kBadArgument, std::move(message));
}

// -- Registration ---------------------------------------------------------------------------------

void RegisterPluginVersion(int version) { Host::Current()->Announce(version); }

double GetRBVersion() { return Host::Current()->options().version; }

/// Keeps errors of registration until the entry point has returned: they can't pass through its frames.
template <class Record>
void Register(Record *record) {
  Internals &internals = Internals::Current();
  if (record == nullptr) {
    NoteMisuse("a null record was registered");
    return;
  }
  try {
    Host::Current()->Register(*record);
  } catch (...) {
    if (internals.pending == nullptr) internals.pending = std::current_exception();
  }
}

void RegisterModule(ModuleRecord *record) { Register(record); }
void RegisterClass(ClassRecord *record) { Register(record); }

// -- Objects --------------------------------------------------------------------------------------

ClassRef ObjectType(const char *name) {
  if (name == nullptr) return nullptr;
  const ClassInfo *info = Host::Current()->registry().FindClass(name);
  return reinterpret_cast<ClassRef>(const_cast<ClassInfo *>(info));
}

const ClassInfo *ClassOf(ClassRef reference, std::string_view service) {
  const auto *wanted = reinterpret_cast<const ClassInfo *>(reference);
  for (const ClassInfo *info : Host::Current()->registry().Classes()) {
    if (info == wanted) return info;
  }
  NoteMisuse(fmt::format("{} got an address that is not a class of this host", service));
  return nullptr;
}

Object CreateInstance(ClassRef reference) {
  const ClassInfo *info = ClassOf(reference, service::CreateInstance::kName.View());
  if (info == nullptr) return nullptr;
  ObjectStore &objects = Internals::Current().objects;
  const Object object = objects.Create(*info);
  objects.Give(object);
  objects.Release(object);
  return object;
}

void LockObject(Object object) {
  if (!Checked(object, service::LockObject::kName.View())) return;
  if (ObjectStore::InstanceOf(object).state == Instance::State::kDying) {
    Internals::Current().ledger.Note(ViolationKind::kWrongCount,
                                     fmt::format("REALLockObject got an object of class {} while it is being destroyed",
                                                 ObjectStore::ClassOf(object).name));
    return;
  }
  Internals::Current().objects.Give(object);
}

void UnlockObject(Object object) { Internals::Current().objects.TakeBack(object, service::UnlockObject::kName.View()); }

void *GetPluginData(Object object, ClassRef reference) {
  if (object == nullptr || reference == nullptr) return nullptr;
  const std::string_view name = service::GetPluginData::kName.View();
  const ClassInfo *info = ClassOf(reference, name);
  if (info == nullptr || !Checked(object, name) || !ObjectStore::ClassOf(object).IsSubclassOf(*info)) return nullptr;
  return reinterpret_cast<char *>(object) + info->dataOffset;
}

void *GetEventInstance(Object object, std::intptr_t slot) {
  if (!Checked(object, service::GetEventInstance::kName.View())) return nullptr;
  const Instance &instance = ObjectStore::InstanceOf(object);
  bool hasSlot = false;
  for (const ClassInfo *level = instance.info; level != nullptr && !hasSlot; level = level->superclass) {
    for (const EventInfo &event : level->events) hasSlot = hasSlot || event.slot == slot;
  }
  if (!hasSlot)
    NoteMisuse(fmt::format("GetEventInstance: class {} has no event in slot {}", instance.info->name, slot));
  // An object that is being destroyed is no longer there for its script.
  if (instance.state == Instance::State::kDying) return nullptr;
  for (const auto &binding : instance.handlers) {
    if (binding->event().slot == slot) return binding->address();
  }
  return nullptr;
}

// -- Members by name ------------------------------------------------------------------------------

void *LoadGlobalMethod(const char *module, const char *declaration) {
  if (declaration == nullptr || Host::Current()->options().missing.contains(std::string_view(declaration)))
    return nullptr;
  if (module == nullptr || *module == '\0') return FindGlobalMethod(declaration);
  const ModuleInfo *info = Host::Current()->registry().FindModule(module);
  if (info == nullptr) return nullptr;
  for (const MethodInfo &method : info->methods) {
    if (method.declaration == declaration) return reinterpret_cast<void *>(method.function);
  }
  return nullptr;
}

void *LoadObjectMethod(Object object, const char *declaration) {
  if (declaration == nullptr || Host::Current()->options().missing.contains(std::string_view(declaration)))
    return nullptr;
  if (!Checked(object, service::LoadObjectMethod::kName.View())) return nullptr;
  for (const ClassInfo *level = &ObjectStore::ClassOf(object); level != nullptr; level = level->superclass) {
    for (const MethodInfo &method : level->methods) {
      if (method.declaration == declaration && !method.isShared) return reinterpret_cast<void *>(method.function);
    }
  }
  return nullptr;
}

/// The value of a property of this kind, read as a script would; no value when there is none.
Value ReadProperty(Object object, const char *name, TypeKind kind, std::string_view service) {
  if (name == nullptr || !Checked(object, service)) return {};
  const PropertyInfo *property = ObjectStore::ClassOf(object).FindProperty(name);
  if (property == nullptr || property->type.kind() != kind || property->IsWriteOnly()) return {};
  try {
    return Host::Current()->Get(ObjectHandle(object), *property);
  } catch (...) {
    if (Internals::Current().pending == nullptr) Internals::Current().pending = std::current_exception();
    return {};
  }
}

Boolean GetPropValueString(Object object, const char *name, String *out) {
  const Value value = ReadProperty(object, name, TypeKind::kString, service::GetPropValueString::kName.View());
  if (value.type().IsNone() || out == nullptr) return 0;
  *out = Give(value.AsString());
  return 1;
}

Boolean GetPropValueBool(Object object, const char *name, Boolean *out) {
  const Value value = ReadProperty(object, name, TypeKind::kBoolean, service::GetPropValueBool::kName.View());
  if (value.type().IsNone() || out == nullptr) return 0;
  *out = value.AsBoolean() ? 1 : 0;
  return 1;
}

// -- Strings --------------------------------------------------------------------------------------

void UnlockString(String string) { Internals::Current().ledger.TakeBack(string, service::UnlockString::kName.View()); }

Boolean GetStringData(String string, std::uint32_t encoding, StringDataRecord *record) {
  string = Checked(string, service::GetStringData::kName.View());
  if (string == nullptr || record == nullptr) return 0;
  const TextEncoding target{encoding};
  if (!IsKnownEncoding(target)) {
    NoteMisuse(fmt::format("PluginGetStringData got the unknown encoding {:#x}", encoding));
    return 0;
  }
  const StringHandle converted = text::Convert(StringHandle(string), target);
  Internals::Current().ledger.GiveData(converted.Get(), *record);
  return 1;
}

void DisposeStringData(StringDataRecord *record) {
  if (record == nullptr) {
    Internals::Current().ledger.Note(ViolationKind::kNeverGiven, "PluginDisposeStringData got no record");
    return;
  }
  Internals::Current().ledger.TakeBackData(*record);
}

const char *StringGetCString(String string) {
  string = Checked(string, service::StringGetCString::kName.View());
  return string == nullptr ? nullptr : string->bytes.data();
}

String BuildStringWithEncoding(const char *bytes, int byteCount, std::uint32_t encoding) {
  if (byteCount < 0 || (bytes == nullptr && byteCount > 0)) {
    NoteMisuse(fmt::format("REALBuildStringWithEncoding got {} with the length {}",
                           bytes == nullptr ? "no bytes" : "bytes", byteCount));
    return nullptr;
  }
  TextEncoding tag{encoding};
  if (!IsKnownEncoding(tag)) {
    NoteMisuse(fmt::format("REALBuildStringWithEncoding got the unknown encoding {:#x}", encoding));
    tag = TextEncoding::kRawBytes;
  }
  if (byteCount == 0) return nullptr;
  return Give(StringHandle::FromBytes({bytes, static_cast<std::size_t>(byteCount)}, tag));
}

String ConvertString(String string, std::uint32_t encoding) {
  string = Checked(string, service::ConvertString::kName.View());
  if (string == nullptr) return nullptr;
  const TextEncoding target{encoding};
  if (!IsKnownEncoding(target)) {
    NoteMisuse(fmt::format("REALConvertString got the unknown encoding {:#x}", encoding));
    return nullptr;
  }
  return Give(text::Convert(StringHandle(string), target));
}

/// Compares without regard to letter case, as "=" does in scripts.
std::intptr_t StringCompare(String a, String b) {
  const std::string_view name = service::StringCompare::kName.View();
  return text::Compare(StringHandle(Checked(a, name)), StringHandle(Checked(b, name)), text::Comparison::kIgnoreCase);
}

// -- Arrays ---------------------------------------------------------------------------------------

Array CheckedArray(Array array, std::string_view service) {
  if (array == nullptr) return nullptr;
  if (IsArrayOnLoan(array)) return array;
  Internals::Current().ledger.Note(ViolationKind::kUseAfterRelease,
                                   fmt::format("{} got an array that the plugin has no right to (any more)", service));
  return nullptr;
}

std::intptr_t UBound(Array array) {
  array = CheckedArray(array, service::UBound::kName.View());
  return array == nullptr ? -1 : static_cast<std::intptr_t>(array->values.size()) - 1;
}

template <class Element>
Element ElementAt(Array array, std::intptr_t index) {
  array = CheckedArray(array, "an element getter");
  if (array == nullptr) return {};
  if (index < 0 || static_cast<std::size_t>(index) >= array->values.size()) {
    NoteMisuse(fmt::format("an element getter got the index {} for an array with the upper bound {}", index,
                           static_cast<std::intptr_t>(array->values.size()) - 1));
    return {};
  }
  const Value &value = array->values[static_cast<std::size_t>(index)];
  if constexpr (std::is_same_v<Element, float>) return value.RawSingle();
  if constexpr (std::is_same_v<Element, double>) return value.RawDouble();
  return static_cast<Element>(value.RawInteger());
}

void *UInt16ArrayGetter(Array array) {
  array = CheckedArray(array, service::UInt16ArrayGetter::kName.View());
  if (array == nullptr) return nullptr;
  if (array->element.StorageKind() != TypeKind::kUInt16) {
    NoteMisuse("PluginUInt16ArrayGetProc got an array of " + array->element.Name());
    return nullptr;
  }
  const UInt16ElementGetter getter = &ElementAt<std::uint16_t>;
  return reinterpret_cast<void *>(getter);
}

/// The getter's result is the C type of the array's elements.
void *ArrayDirectGetter(Array array) {
  array = CheckedArray(array, service::ArrayDirectGetter::kName.View());
  if (array == nullptr) return nullptr;
  const auto address = []<class Element>(Element (*getter)(Array, std::intptr_t)) {
    return reinterpret_cast<void *>(getter);
  };
  switch (array->element.StorageKind()) {
    case TypeKind::kBoolean:
    case TypeKind::kInt8:
      return address(&ElementAt<std::int8_t>);
    case TypeKind::kInt16:
      return address(&ElementAt<std::int16_t>);
    case TypeKind::kInt32:
      return address(&ElementAt<std::int32_t>);
    case TypeKind::kInt64:
      return address(&ElementAt<std::int64_t>);
    case TypeKind::kUInt8:
      return address(&ElementAt<std::uint8_t>);
    case TypeKind::kUInt16:
      return address(&ElementAt<std::uint16_t>);
    case TypeKind::kUInt32:
    case TypeKind::kColor:
      return address(&ElementAt<std::uint32_t>);
    case TypeKind::kUInt64:
      return address(&ElementAt<std::uint64_t>);
    case TypeKind::kSingle:
      return address(&ElementAt<float>);
    case TypeKind::kDouble:
      return address(&ElementAt<double>);
    default:
      NoteMisuse("RuntimeArrayDirectGetGetProc got an array of " + array->element.Name());
      return nullptr;
  }
}

// -- Long work ------------------------------------------------------------------------------------

Boolean ReportProgress(std::uint32_t done, std::uint32_t total) {
  const auto &show = Host::Current()->options().progress;
  if (show) show(done, total);
  Internals::Current().showsProgress = static_cast<bool>(show);
  return Interruption::IsRequested() ? 1 : 0;
}

// -- Functions of the host language ---------------------------------------------------------------

std::intptr_t LenB(String s) { return static_cast<std::intptr_t>(text::ByteLength(StringHandle(Checked(s, "LenB")))); }

std::intptr_t Len(String s) { return static_cast<std::intptr_t>(text::Length(StringHandle(Checked(s, "Len")))); }

std::intptr_t Asc(String s) { return static_cast<std::intptr_t>(text::CodePoint(StringHandle(Checked(s, "Asc")))); }

String Mid(String source, std::intptr_t start, std::intptr_t length) {
  if (length < 0) return nullptr;
  return Give(text::Middle(StringHandle(Checked(source, "Mid")), start, length));
}

String Left(String source, std::intptr_t count) {
  return Give(text::Left(StringHandle(Checked(source, "Left")), count));
}

std::intptr_t StrComp(String a, String b, std::intptr_t mode) {
  const auto comparison = mode == 1 ? text::Comparison::kCaseSensitive : text::Comparison::kIgnoreCase;
  return text::Compare(StringHandle(Checked(a, "StrComp")), StringHandle(Checked(b, "StrComp")), comparison);
}

// -- Tables ---------------------------------------------------------------------------------------

struct Entry {
  std::string_view name;
  void *address;
};

/// A table entry whose function has exactly the type with which plugins call it.
template <class Service>
Entry Offer(typename Service::Function function) {
  return {Service::kName.View(), reinterpret_cast<void *>(function)};
}

template <class Method>
Entry OfferGlobal(typename Method::Function function) {
  return {Method::kDeclaration.View(), reinterpret_cast<void *>(function)};
}

template <class Table>
void *Find(const Table &table, std::string_view name) {
  for (const Entry &entry : table) {
    if (entry.name == name) return entry.address;
  }
  return nullptr;
}

const auto &Services() {
  static const std::array table{
      Offer<service::RegisterPluginVersion>(&RegisterPluginVersion),
      Offer<service::GetRBVersion>(&GetRBVersion),
      Offer<service::RegisterModule>(&RegisterModule),
      Offer<service::RegisterClass>(&RegisterClass),
      Offer<service::ObjectType>(&ObjectType),
      Offer<service::CreateInstance>(&CreateInstance),
      Offer<service::LockObject>(&LockObject),
      Offer<service::UnlockObject>(&UnlockObject),
      Offer<service::UnlockString>(&UnlockString),
      Offer<service::GetPluginData>(&GetPluginData),
      Offer<service::GetEventInstance>(&GetEventInstance),
      Offer<service::LoadGlobalMethod>(&LoadGlobalMethod),
      Offer<service::LoadObjectMethod>(&LoadObjectMethod),
      Offer<service::GetPropValueString>(&GetPropValueString),
      Offer<service::GetPropValueBool>(&GetPropValueBool),
      Offer<service::GetStringData>(&GetStringData),
      Offer<service::DisposeStringData>(&DisposeStringData),
      Offer<service::StringGetCString>(&StringGetCString),
      Offer<service::BuildStringWithEncoding>(&BuildStringWithEncoding),
      Offer<service::ConvertString>(&ConvertString),
      Offer<service::StringCompare>(&StringCompare),
      Offer<service::UBound>(&UBound),
      Offer<service::UInt16ArrayGetter>(&UInt16ArrayGetter),
      Offer<service::ArrayDirectGetter>(&ArrayDirectGetter),
      Offer<service::ReportProgress>(&ReportProgress),
  };
  return table;
}

}  // namespace

void *FindService(std::string_view name) { return Find(Services(), name); }

std::vector<std::string_view> ServiceNames() {
  std::vector<std::string_view> names;
  for (const Entry &entry : Services()) names.push_back(entry.name);
  return names;
}

void *FindGlobalMethod(std::string_view declaration) {
  static const std::array table{
      OfferGlobal<global_method::LenB>(&LenB), OfferGlobal<global_method::Len>(&Len),
      OfferGlobal<global_method::Asc>(&Asc),   OfferGlobal<global_method::Mid>(&Mid),
      OfferGlobal<global_method::Left>(&Left), OfferGlobal<global_method::StrComp>(&StrComp),
  };
  return Find(table, declaration);
}

}  // namespace quillbar::host
