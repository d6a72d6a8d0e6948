// SPDX-License-Identifier: MIT
#pragma once

#include "interface/records.h"
#include "interface/values.h"

/// The services that a host offers through its resolver, each with its name and its C signature in one place: the
/// plugin calls them and the host provides them under the same type, so the two sides can't drift apart.
///
/// Ownership: arguments are borrowed. A string or object that a service returns belongs to the
/// receiver, who gives it back once (`REALUnlockString`, `REALUnlockObject`).
namespace quillbar {

/// Returns the address of the service with this nul-terminated ASCII name, or null.
using Resolver = void *(*)(const char *name);

/// A service: its name, and its C signature as a function type.
template <FixedString Name, class Signature>
struct ServiceType;

template <FixedString Name, class Result, class... Arguments>
struct ServiceType<Name, Result(Arguments...)> {
  static constexpr auto kName = Name;
  using Function = Result (*)(Arguments...);
};

/// A function of the host language, found by its declaration through `REALLoadGlobalMethod` (with a
/// null module). The declarations must match to the letter.
template <FixedString Declaration, class Signature>
struct GlobalMethodType;

template <FixedString Declaration, class Result, class... Arguments>
struct GlobalMethodType<Declaration, Result(Arguments...)> {
  static constexpr auto kDeclaration = Declaration;
  using Function = Result (*)(Arguments...);
};

/// Reads element `index`, counted from 0, of an array of UInt16.
using UInt16ElementGetter = std::uint16_t (*)(Array, std::intptr_t index);

namespace service {

using RegisterPluginVersion = ServiceType<"RegisterPluginVersion", void(int)>;
using GetRBVersion = ServiceType<"REALGetRBVersion", double()>;
using RegisterModule = ServiceType<"PluginRegisterModule", void(ModuleRecord *)>;
using RegisterClass = ServiceType<"PluginRegisterClass", void(ClassRecord *)>;

/// The class with this fully qualified name; null when unknown.
using ObjectType = ServiceType<"pluginObjectType", ClassRef(const char *)>;
using CreateInstance = ServiceType<"CreateInstance", Object(ClassRef)>;
using LockObject = ServiceType<"REALLockObject", void(Object)>;
using UnlockObject = ServiceType<"REALUnlockObject", void(Object)>;
using UnlockString = ServiceType<"REALUnlockString", void(String)>;

/// The private data block of an object of another plugin's class; null when the object is not of that class.
using GetPluginData = ServiceType<"PluginGetPluginData", void *(Object, ClassRef)>;

/// The handler that a script attached to an event of this object; null when there is none.
using GetEventInstance = ServiceType<"GetEventInstance", void *(Object, std::intptr_t)>;
using LoadGlobalMethod = ServiceType<"REALLoadGlobalMethod", void *(const char *, const char *)>;
using LoadObjectMethod = ServiceType<"REALLoadObjectMethod", void *(Object, const char *)>;
using GetPropValueString = ServiceType<"REALGetPropValueString", Boolean(Object, const char *, String *)>;
using GetPropValueBool = ServiceType<"REALGetPropValueBool", Boolean(Object, const char *, Boolean *)>;

using GetStringData = ServiceType<"PluginGetStringData", Boolean(String, std::uint32_t, StringDataRecord *)>;
using DisposeStringData = ServiceType<"PluginDisposeStringData", void(StringDataRecord *)>;
using StringGetCString = ServiceType<"StringGetCString", const char *(String)>;
using BuildStringWithEncoding = ServiceType<"REALBuildStringWithEncoding", String(const char *, int, std::uint32_t)>;
using ConvertString = ServiceType<"REALConvertString", String(String, std::uint32_t)>;
using StringCompare = ServiceType<"RuntimeStringCompare", std::intptr_t(String, String)>;

/// The upper bound of an array: its length less one, -1 when it is empty.
using UBound = ServiceType<"RuntimeUBound", std::intptr_t(Array)>;

/// Returns a `UInt16ElementGetter` for the array. Hosts offer it under one of two names.
using UInt16ArrayGetter = ServiceType<"PluginUInt16ArrayGetProc", void *(Array)>;
using ArrayDirectGetter = ServiceType<"RuntimeArrayDirectGetGetProc", void *(Array)>;

/// Tells how much of a long piece of work is done, and how much there is in all; 1 when the user wants it to be given
/// up. Only the host of this project offers it.
using ReportProgress = ServiceType<"QuillbarReportProgress", Boolean(std::uint32_t, std::uint32_t)>;

}  // namespace service

namespace global_method {

using LenB = GlobalMethodType<"LenB( s as string ) as integer", std::intptr_t(String)>;
using Len = GlobalMethodType<"Len(str as String) as Integer", std::intptr_t(String)>;
using Asc = GlobalMethodType<"Asc(str as String) as Integer", std::intptr_t(String)>;

/// `start` is counted from 1.
using Mid = GlobalMethodType<"Mid(src as String, start as Integer, length as Integer) as String",
                             String(String, std::intptr_t, std::intptr_t)>;
using Left = GlobalMethodType<"Left(str as String,count as Integer) as String", String(String, std::intptr_t)>;
using StrComp = GlobalMethodType<"StrComp(a as String, b as String,compareMode as Integer) as Integer",
                                 std::intptr_t(String, String, std::intptr_t)>;

}  // namespace global_method

/// The two methods of the host's `MemoryBlock` that plugins call, found through `REALLoadObjectMethod`.
namespace memory_block {

inline constexpr const char *kConstructor = "Constructor(bytes as Integer)";
using Constructor = void (*)(Object, std::intptr_t byteCount);

inline constexpr const char *kOperatorConvert = "Operator_Convert() As Ptr";
using OperatorConvert = void *(*)(Object);

}  // namespace memory_block

}  // namespace quillbar
