// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <exception>
#include <memory>
#include <new>

#include "binding/members.h"
#include "host/runtime/handles.h"
#include "host/runtime/host.h"
#include "interface/records.h"

/// Classes written in C++ inside the host. They are registered through the same records as those of
/// plugins, with plain C functions, so one class model and one way of calling serves both.
namespace quillbar::host {

namespace native {

/// Keeps an error until the call that led here has returned to the host.
void Postpone(std::exception_ptr error);

/// Gives the plugin that called a reference to a result, which it then owns.
String Give(const StringHandle &string);
Object Give(const ObjectHandle &object);
Variant Give(Value value);
template <class Self>
Self *Give(const ObjectHandle &object) {
  return static_cast<Self *>(Give(object));
}

/// What a Variant argument holds; valid during the call.
inline const Value &ValueOf(Variant variant) { return *reinterpret_cast<const Value *>(variant); }
/// Takes over what `Give` gave; Nil for null.
Value TakeVariant(Variant variant);

template <auto Function>
struct Catching;

template <class Result, class... Arguments, Result (*Function)(Arguments...)>
struct Catching<Function> {
  static Result Call(Arguments... arguments) {
    try {
      return Function(arguments...);
    } catch (...) {
      Postpone(std::current_exception());
      return Result();
    }
  }
};

/// A function as records hold it: what `Function` throws reaches the script as an error.
template <auto Function>
inline constexpr auto kCatching = &Catching<+Function>::Call;

// The lines of binding/members.h, for functions that may throw.
template <FixedString Declaration, auto Function>
using Method = quillbar::Method<Declaration, kCatching<Function>>;
template <FixedString Declaration, auto Get, auto Set>
using AssignableMethod = quillbar::AssignableMethod<Declaration, kCatching<Get>, kCatching<Set>>;
template <FixedString Declaration, auto Function>
using SharedMethod = quillbar::SharedMethod<Declaration, kCatching<Function>>;
template <FixedString Name, FixedString Type, auto Get, auto Set>
using Property = quillbar::Property<Name, Type, kCatching<Get>, kCatching<Set>>;
template <FixedString Name, FixedString Type, auto Get>
using ReadOnlyProperty = quillbar::ReadOnlyProperty<Name, Type, kCatching<Get>>;

}  // namespace native

/// A class whose objects each hold one `Data`.
template <class Data>
class NativeClass {
 public:
  /// The data of an object of this class.
  static Data &Of(Object object) { return *std::launder(reinterpret_cast<Data *>(DataAddress(object))); }

  /// The record of the class, with the members that `Lines` lists. Register it with every new host.
  template <class Lines>
  static ClassRecord &Record(const char *name) {
    static_assert(alignof(Data) <= 16, "class data is aligned to 16 bytes");
    record_ = DescribeClass<Lines, &Make, &Destroy>(name, nullptr, sizeof(Data));
    record_.flags = kClassFlags;
    return record_;
  }

 private:
  static void Make(Object object) { new (DataAddress(object)) Data; }
  static void Destroy(Object object) { Of(object).~Data(); }
  static void *DataAddress(Object object) { return reinterpret_cast<char *>(object) + record_.classDataOffset; }

  static inline ClassRecord record_{};
};

}  // namespace quillbar::host
