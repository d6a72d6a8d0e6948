// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <utility>

#include "binding/contained.h"
#include "binding/declared_type.h"
#include "interface/records.h"

/// Typed lines for the tables that a class is registered with:
///
///     using PageMethods = Methods<Method<"LineTo(x as Single,y as Single)", LineTo>, …>;
///     using PageProperties = Properties<Property<"Height", "Single", GetHeight, SetHeight>, …>;
///
/// The compiler parses each declaration and checks it against the signature of the function beside it. A declaration
/// that disagrees with its function doesn't compile; the message says what disagrees, and the instantiation trace
/// under it names the declaration and the parameter's number. The tables are static data: loading a plugin runs no
/// code for them. No exception leaves a registered function, see contained.h.
namespace quillbar {

namespace binding {

/// Fails to compile unless parameter `Index` of the declaration is what a C++ parameter of type `T` takes.
template <FixedString Text, std::size_t Index, class T>
struct ParameterAgrees {
  static_assert(Takes<T>(ReadDeclaration(Text.View()).declaration.parameters[Index]),
                "declaration and function disagree in the type of a parameter");
  static constexpr bool value = true;
};

/// Checks a declaration against a C++ signature without the instance.
template <FixedString Text, class Result, class... Arguments>
struct SignatureAgrees {
  static constexpr DeclarationResult kRead = ReadDeclaration(Text.View());
  static_assert(kRead.ok(), "the declaration can't be read");
  static_assert(!kRead.ok() || kRead.declaration.parameterCount == sizeof...(Arguments),
                "declaration and function disagree in the number of parameters");
  static_assert(!kRead.ok() || Gives<Result>(kRead.declaration),
                "declaration and function disagree in the type of the result");

  template <std::size_t... Index>
  static constexpr bool Check(std::index_sequence<Index...>) {
    return (ParameterAgrees<Text, Index, Arguments>::value && ... && true);
  }
  static constexpr bool value = Check(std::index_sequence_for<Arguments...>());
};

template <class>
inline constexpr bool kNever = false;

template <FixedString Text, class Function>
struct MethodAgrees {
  static_assert(kNever<Function>, "a function gets the instance of its class first");
  static constexpr bool value = true;
  using Owner = void;
};
template <FixedString Text, class Result, FixedString Class, class... Arguments>
struct MethodAgrees<Text, Result (*)(Instance<Class> *, Arguments...)> : SignatureAgrees<Text, Result, Arguments...> {
  using Owner = Instance<Class>;
};

template <FixedString Text, class Function>
struct SharedAgrees;
template <FixedString Text, class Result, class... Arguments>
struct SharedAgrees<Text, Result (*)(Arguments...)> : SignatureAgrees<Text, Result, Arguments...> {};

/// The type of the setter that fits a method: it takes the method's parameters and then a value of its result's type.
template <class Get>
struct MethodSetter;
template <class Result, class... Arguments>
struct MethodSetter<Result (*)(Arguments...)> {
  using Type = void (*)(Arguments..., Result);
};

template <class Function>
struct Getter {
  static_assert(kNever<Function>, "a getter gets the instance and gives the value");
  using Type = void;
  using Owner = void;
};
template <class Value, FixedString Class>
struct Getter<Value (*)(Instance<Class> *)> {
  using Type = Value;
  using Owner = Instance<Class>;
};

template <class Function>
struct Setter {
  static_assert(kNever<Function>, "a setter gets the instance, the parameter word and the value");
  using Type = void;
  using Owner = void;
};
template <FixedString Class, class Value>
struct Setter<void (*)(Instance<Class> *, std::intptr_t, Value)> {
  using Type = Value;
  using Owner = Instance<Class>;
};

/// Whether the functions of all these lines take instances of one class.
template <class... Lines>
inline constexpr bool kOneOwner = true;
template <class First, class... Others>
inline constexpr bool kOneOwner<First, Others...> = (std::is_same_v<typename First::Owner, typename Others::Owner> &&
                                                     ...);

}  // namespace binding

/// A line for a method. `Function` takes the instance, then the declared parameters. The flags are `kMethodFlags`, or
/// `kPrivateConstructorFlags` for a constructor that scripts can't use.
template <FixedString Declaration, auto Function, std::uint32_t Flags = kMethodFlags>
struct Method {
  using Agreement = binding::MethodAgrees<Declaration, decltype(+Function)>;
  static_assert(Agreement::value);
  using Owner = typename Agreement::Owner;
  static constexpr auto kDeclaration = Declaration;
  static constexpr auto kFunction = +Function;
  static constexpr FunctionAddress kSetter = nullptr;
  static constexpr std::uint32_t kFlags = Flags;
};

/// A line for a method that scripts can also assign to: `block.Byte(3) = 7`. `Set` takes what the method takes and then
/// the value, which has the type of the result.
template <FixedString Declaration, auto Get, auto Set>
struct AssignableMethod : Method<Declaration, Get> {
  static_assert(std::is_same_v<decltype(+Set), typename binding::MethodSetter<decltype(+Get)>::Type>,
                "the setter of a method takes its parameters and then a value of its result's type");
  static constexpr auto kSetter = +Set;
};

/// A line for a method without an instance. `Function` takes the declared parameters.
template <FixedString Declaration, auto Function>
struct SharedMethod {
  static_assert(binding::SharedAgrees<Declaration, decltype(+Function)>::value);
  static constexpr auto kDeclaration = Declaration;
  static constexpr auto kFunction = +Function;
};

/// A line for a property that scripts can read and write. The setter takes the instance, the property's parameter word
/// (always 0) and the value.
template <FixedString Name, FixedString Type, auto Get, auto Set>
struct Property {
  using Value = typename binding::Getter<decltype(+Get)>::Type;
  using Owner = typename binding::Getter<decltype(+Get)>::Owner;
  static_assert(binding::IsDeclaredAs<Value>(Type.View()), "property and getter disagree in the type");
  static_assert(std::is_same_v<Value, typename binding::Setter<decltype(+Set)>::Type>,
                "getter and setter disagree in the type");
  static_assert(std::is_same_v<Owner, typename binding::Setter<decltype(+Set)>::Owner>,
                "getter and setter get instances of different classes");
  static constexpr auto kName = Name;
  static constexpr auto kType = Type;
  static constexpr auto kGetter = +Get;
  static constexpr auto kSetter = +Set;
};

/// A line for a property that scripts can only read.
template <FixedString Name, FixedString Type, auto Get>
struct ReadOnlyProperty {
  using Value = typename binding::Getter<decltype(+Get)>::Type;
  using Owner = typename binding::Getter<decltype(+Get)>::Owner;
  static_assert(binding::IsDeclaredAs<Value>(Type.View()), "property and getter disagree in the type");
  static constexpr auto kName = Name;
  static constexpr auto kType = Type;
  static constexpr auto kGetter = +Get;
  static constexpr FunctionAddress kSetter = nullptr;
};

/// A line for an event. `Function` is the C++ function type of its handlers: the instance, then the
/// declared parameters.
template <FixedString Declaration, class Function>
struct Event {
  static_assert(binding::MethodAgrees<Declaration, Function *>::value);
  using Handler = Function *;
  static constexpr auto kDeclaration = Declaration;
};

/// A line for an enumeration with its members, checked against the C++ enumeration that mirrors it: the registered
/// type is its underlying type, and every text reads as "NAME = value".
template <class Enumerators, FixedString Name, FixedString Type, FixedString... Members>
struct Enumeration {
  static_assert(binding::Names(kEnumerationName<Enumerators>.View(), Name.View()),
                "the enumeration mirrors another one");
  static_assert(binding::IsDeclaredAs<std::underlying_type_t<Enumerators>>(Type.View()),
                "the enumeration has another underlying type");
  static_assert((ReadEnumerationMember(Members.View()).has_value() && ...),
                "a member doesn't read as \"NAME = value\"");
  static constexpr auto kName = Name;
  static constexpr auto kType = Type;
  static constexpr const char *kMembers[] = {Members.CString()...};
  static constexpr std::size_t kMemberCount = sizeof...(Members);
};

/// The methods of a class, as the records with which they are registered.
template <class... Lines>
struct Methods {
  static_assert(binding::kOneOwner<Lines...>, "the functions of a table get instances of different classes");
  static constexpr std::size_t count = sizeof...(Lines);
  inline static const MethodRecord records[] = {{reinterpret_cast<FunctionAddress>(Containing<Lines::kFunction>()),
                                                 reinterpret_cast<FunctionAddress>(Containing<Lines::kSetter>()),
                                                 Lines::kDeclaration.CString(), Lines::kFlags, 0, nullptr}...};
};

/// The shared methods of a class.
template <class... Lines>
struct SharedMethods {
  static constexpr std::size_t count = sizeof...(Lines);
  inline static const MethodRecord records[] = {{reinterpret_cast<FunctionAddress>(Containing<Lines::kFunction>()),
                                                 nullptr, Lines::kDeclaration.CString(), kMethodFlags, 0, nullptr}...};
};
template <>
struct SharedMethods<> {
  static constexpr std::size_t count = 0;
  static constexpr const MethodRecord *records = nullptr;
};

/// The properties of a class, as the records with which they are registered.
template <class... Lines>
struct Properties {
  static_assert(binding::kOneOwner<Lines...>, "the functions of a table get instances of different classes");
  static constexpr std::size_t count = sizeof...(Lines);
  inline static const PropertyRecord records[] = {
      {nullptr, Lines::kName.CString(), Lines::kType.CString(), kPropertyFlags,
       reinterpret_cast<FunctionAddress>(Containing<Lines::kGetter>()),
       reinterpret_cast<FunctionAddress>(Containing<Lines::kSetter>()), 0, nullptr, 0, nullptr, 0, nullptr}...};
};
template <>
struct Properties<> {
  static constexpr std::size_t count = 0;
  static constexpr const PropertyRecord *records = nullptr;
};

/// The events of a class. Unlike the other tables this one is written to: the host numbers the slots.
template <class... Lines>
struct Events {
  static constexpr std::size_t count = sizeof...(Lines);
  inline static EventRecord records[] = {{Lines::kDeclaration.CString(), 0, 0, nullptr}...};

  /// The record of one of these events.
  template <class Line>
  static const EventRecord &RecordOf() {
    static_assert((std::is_same_v<Line, Lines> || ...), "the class has no such event");
    std::size_t index = 0;
    static_cast<void>(((std::is_same_v<Line, Lines> || (++index, false)) || ...));
    return records[index];
  }
};
template <>
struct Events<> {
  static constexpr std::size_t count = 0;
  static constexpr EventRecord *records = nullptr;
};

/// The enumerations of a class, as the records with which they are registered.
template <class... Lines>
struct Enumerations {
  static constexpr std::size_t count = sizeof...(Lines);
  inline static const EnumerationRecord records[] = {{Lines::kName.CString(), Lines::kType.CString(), kEnumerationFlags,
                                                      Lines::kMembers, Lines::kMemberCount, 0, nullptr}...};
};
template <>
struct Enumerations<> {
  static constexpr std::size_t count = 0;
  static constexpr const EnumerationRecord *records = nullptr;
};

/// The lines of a class. Each list has its own type, so a list that is left out can't be mistaken for another one.
template <class MethodLines, class PropertyLines = Properties<>, class EventLines = Events<>,
          class EnumerationLines = Enumerations<>, class SharedMethodLines = SharedMethods<>>
struct Members {
  using MethodTable = MethodLines;
  using PropertyTable = PropertyLines;
  using EventTable = EventLines;
  using EnumerationTable = EnumerationLines;
  using SharedMethodTable = SharedMethodLines;
};

/// The record with which a class is registered.
///
/// `dataSize` is the size of its private data block in bytes; the host calls `Constructor` and `Destructor`, of type
/// `void (*)(Object)`, with the instance, and either may be left out. `superclass` is null for a class without one.
template <class Lines, void (*Constructor)(Object) = nullptr, void (*Destructor)(Object) = nullptr>
constexpr ClassRecord DescribeClass(const char *name, const char *superclass, std::size_t dataSize) {
  return {.version = kInterfaceVersion,
          .name = name,
          .superclass = superclass,
          .dataSize = dataSize,
          .classDataOffset = 0,
          .constructor = Containing<Constructor>(),
          .destructor = Containing<Destructor>(),
          .properties = Lines::PropertyTable::records,
          .propertyCount = Lines::PropertyTable::count,
          .methods = Lines::MethodTable::records,
          .methodCount = Lines::MethodTable::count,
          .events = Lines::EventTable::records,
          .eventCount = Lines::EventTable::count,
          .eventInstances = nullptr,
          .eventInstanceCount = 0,
          .interfaces = "",
          .bindings = nullptr,
          .bindingCount = 0,
          .constants = nullptr,
          .constantCount = 0,
          .flags = 0,
          .sharedProperties = nullptr,
          .sharedPropertyCount = 0,
          .sharedMethods = Lines::SharedMethodTable::records,
          .sharedMethodCount = Lines::SharedMethodTable::count,
          .delegates = nullptr,
          .delegateCount = 0,
          .enumerations = Lines::EnumerationTable::records,
          .enumerationCount = Lines::EnumerationTable::count};
}

}  // namespace quillbar
