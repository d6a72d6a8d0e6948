// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>

#include "interface/values.h"

/// The records that describe a plugin's module to the host, and the string-data record that the host fills in. Both
/// sides read the same memory, so the order and the width of every field are fixed: fields have their natural C
/// alignment, lists are a pointer followed by a count. Only in attribute lists the count comes first.
///
/// Names end in "Record"; all text is nul-terminated and static. The registering plugin owns the
/// records and keeps them as long as it is loaded. The host writes exactly two fields,
/// `ClassRecord::classDataOffset` and `EventRecord::slot`.
namespace quillbar {

/// The plugin-interface version that records carry and that a plugin announces at entry.
inline constexpr std::uint32_t kInterfaceVersion = 13;

/// Flag words, as the host reads them.
inline constexpr std::uint32_t kPropertyFlags = 4;
inline constexpr std::uint32_t kMethodFlags = 4;
inline constexpr std::uint32_t kPrivateConstructorFlags = 132;  // scripts can't call it with `New`
inline constexpr std::uint32_t kEnumerationFlags = 0x20;
inline constexpr std::uint32_t kClassFlags = 4;  // or-ed into every class at entry

/// A function of a plugin's, whatever its signature; the declaration beside it says how it is called.
using FunctionAddress = void (*)();

/// An attribute: a name with a value.
struct AttributeRecord {
  const char *name;
  const char *value;
};

/// A method. A constructor is a method with the name "Constructor".
struct MethodRecord {
  FunctionAddress function;
  FunctionAddress setter;
  const char *declaration;
  std::uint32_t flags;
  std::size_t attributeCount;
  const AttributeRecord *attributes;
};

/// A property: the getter takes the instance, the setter the instance, `parameter` and the value.
struct PropertyRecord {
  const char *group;
  const char *name;
  const char *type;
  std::uint32_t flags;
  FunctionAddress getter;
  FunctionAddress setter;  // null: read-only
  std::int32_t parameter;
  FunctionAddress editor;
  std::size_t enumerationEntryCount;
  const char *const *enumerationEntries;
  std::size_t attributeCount;
  const AttributeRecord *attributes;
};

/// An event that objects of a class raise.
struct EventRecord {
  const char *declaration;
  std::intptr_t slot;  // written by the host at registration
  std::size_t attributeCount;
  const AttributeRecord *attributes;
};

/// An enumeration. `members` are texts of the form "NAME = value".
struct EnumerationRecord {
  const char *name;
  const char *type;
  std::uint32_t flags;
  const char *const *members;  // "NAME = value"
  std::size_t memberCount;
  std::size_t attributeCount;
  const AttributeRecord *attributes;
};

struct ConstantRecord;
struct DelegateRecord;
struct EventInstanceRecord;
struct InterfaceRecord;
struct StructureRecord;
struct ControlRecord;

/// A class.
struct ClassRecord {
  std::uint32_t version;
  const char *name;
  const char *superclass;
  std::size_t dataSize;
  std::intptr_t classDataOffset;  // written by the host at registration
  void (*constructor)(Object);
  void (*destructor)(Object);
  const PropertyRecord *properties;
  std::size_t propertyCount;
  const MethodRecord *methods;
  std::size_t methodCount;
  EventRecord *events;
  std::size_t eventCount;
  const EventInstanceRecord *eventInstances;
  std::size_t eventInstanceCount;
  const char *interfaces;
  const AttributeRecord *bindings;
  std::size_t bindingCount;
  const ConstantRecord *constants;
  std::size_t constantCount;
  std::uint32_t flags;
  const PropertyRecord *sharedProperties;
  std::size_t sharedPropertyCount;
  const MethodRecord *sharedMethods;
  std::size_t sharedMethodCount;
  const DelegateRecord *delegates;
  std::size_t delegateCount;
  const EnumerationRecord *enumerations;
  std::size_t enumerationCount;
};

/// A module with its classes.
struct ModuleRecord {
  std::uint32_t version;
  const char *name;
  const MethodRecord *methods;
  std::size_t methodCount;
  const ConstantRecord *constants;
  std::size_t constantCount;
  const PropertyRecord *properties;
  std::size_t propertyCount;
  const StructureRecord *structures;
  std::size_t structureCount;
  const EnumerationRecord *enumerations;
  std::size_t enumerationCount;
  const AttributeRecord *attributes;
  std::size_t attributeCount;
  const DelegateRecord *delegates;
  std::size_t delegateCount;
  ClassRecord *const *classes;
  std::size_t classCount;
  const InterfaceRecord *interfaces;
  std::size_t interfaceCount;
  const ModuleRecord *modules;
  std::size_t moduleCount;
  const ControlRecord *controls;
  std::size_t controlCount;
};

/// Bytes of a string in one encoding, nul-terminated. Valid from a successful `PluginGetStringData` until the record
/// is passed to `PluginDisposeStringData`; every success must be paired with a dispose.
struct StringDataRecord {
  const char *data;
  std::size_t byteLength;
  std::uint32_t encoding;
  void *hostPointer;       // private to the host
  std::uint32_t hostWord;  // private to the host
};

// The layouts in numbers, for both pointer widths: (size on 32 bits, size on 64 bits).
namespace layout {

inline constexpr bool kWide = sizeof(void *) == 8;
constexpr std::size_t Pick(std::size_t on32, std::size_t on64) { return kWide ? on64 : on32; }

static_assert(sizeof(void *) == 4 || sizeof(void *) == 8);
static_assert(sizeof(std::size_t) == sizeof(void *) && sizeof(FunctionAddress) == sizeof(void *));

static_assert(sizeof(AttributeRecord) == Pick(8, 16));

static_assert(sizeof(MethodRecord) == Pick(24, 48));
static_assert(offsetof(MethodRecord, declaration) == Pick(8, 16));
static_assert(offsetof(MethodRecord, flags) == Pick(12, 24));
static_assert(offsetof(MethodRecord, attributeCount) == Pick(16, 32));

static_assert(sizeof(PropertyRecord) == Pick(48, 96));
static_assert(offsetof(PropertyRecord, flags) == Pick(12, 24));
static_assert(offsetof(PropertyRecord, getter) == Pick(16, 32));
static_assert(offsetof(PropertyRecord, parameter) == Pick(24, 48));
static_assert(offsetof(PropertyRecord, editor) == Pick(28, 56));
static_assert(offsetof(PropertyRecord, attributeCount) == Pick(40, 80));

static_assert(sizeof(EventRecord) == Pick(16, 32));
static_assert(offsetof(EventRecord, slot) == Pick(4, 8));

static_assert(sizeof(EnumerationRecord) == Pick(28, 56));
static_assert(offsetof(EnumerationRecord, members) == Pick(12, 24));
static_assert(offsetof(EnumerationRecord, attributeCount) == Pick(20, 40));

static_assert(sizeof(ClassRecord) == Pick(116, 232));
static_assert(offsetof(ClassRecord, classDataOffset) == Pick(16, 32));
static_assert(offsetof(ClassRecord, constructor) == Pick(20, 40));
static_assert(offsetof(ClassRecord, properties) == Pick(28, 56));
static_assert(offsetof(ClassRecord, methods) == Pick(36, 72));
static_assert(offsetof(ClassRecord, events) == Pick(44, 88));
static_assert(offsetof(ClassRecord, interfaces) == Pick(60, 120));
static_assert(offsetof(ClassRecord, flags) == Pick(80, 160));
static_assert(offsetof(ClassRecord, sharedProperties) == Pick(84, 168));
static_assert(offsetof(ClassRecord, enumerations) == Pick(108, 216));

static_assert(sizeof(ModuleRecord) == Pick(96, 192));
static_assert(offsetof(ModuleRecord, methods) == Pick(8, 16));
static_assert(offsetof(ModuleRecord, attributes) == Pick(48, 96));
static_assert(offsetof(ModuleRecord, classes) == Pick(64, 128));
static_assert(offsetof(ModuleRecord, controls) == Pick(88, 176));

static_assert(sizeof(StringDataRecord) == Pick(20, 40));
static_assert(offsetof(StringDataRecord, encoding) == Pick(8, 16));
static_assert(offsetof(StringDataRecord, hostPointer) == Pick(12, 24));

}  // namespace layout
}  // namespace quillbar
