// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <exception>
#include <new>
#include <vector>

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

/// The address of a C++ function as records hold it. What the function throws reaches the script as an error.
template <auto Function>
FunctionAddress Address() {
  return reinterpret_cast<FunctionAddress>(&Catching<Function>::Call);
}

}  // namespace native

/// Builds the record of a class whose objects each hold one `Data`, and knows where that data is. Make one in static
/// storage, then register its record with every new host.
template <class Data>
class NativeClass {
 public:
  /// `define` is called with this object and adds the members.
  template <class Define>
  NativeClass(const char *name, Define define) {
    record_.version = kInterfaceVersion;
    record_.name = name;
    record_.interfaces = "";
    record_.dataSize = sizeof(Data);
    record_.flags = kClassFlags;
    static_assert(alignof(Data) <= 16, "class data is aligned to 16 bytes");
    instance_ = this;
    record_.constructor = [](Object object) { new (DataAddress(object)) Data; };
    record_.destructor = [](Object object) { Of(object).~Data(); };
    define(*this);
  }
  NativeClass(const NativeClass &) = delete;
  NativeClass &operator=(const NativeClass &) = delete;

  /// The data of an object of this class.
  static Data &Of(Object object) { return *std::launder(reinterpret_cast<Data *>(DataAddress(object))); }

  /// Adds a method. The function takes the object, then the declared parameters.
  template <auto Function>
  NativeClass &Method(const char *declaration) {
    methods_.push_back({native::Address<Function>(), nullptr, declaration, kMethodFlags, 0, nullptr});
    return *this;
  }
  /// A method that can be assigned to: the setter takes the same arguments, then the value.
  template <auto Function, auto Setter>
  NativeClass &AssignableMethod(const char *declaration) {
    methods_.push_back({native::Address<Function>(), native::Address<Setter>(), declaration, kMethodFlags, 0, nullptr});
    return *this;
  }
  /// Adds a shared method. The function takes the declared parameters.
  template <auto Function>
  NativeClass &SharedMethod(const char *declaration) {
    sharedMethods_.push_back({native::Address<Function>(), nullptr, declaration, kMethodFlags, 0, nullptr});
    return *this;
  }
  /// Adds a property that scripts can only read.
  template <auto Getter>
  NativeClass &Property(const char *name, const char *type) {
    return Add(name, type, native::Address<Getter>(), nullptr);
  }
  /// Adds a property that scripts can read and write. The setter takes the object, the property's parameter word and
  /// the value.
  template <auto Getter, auto Setter>
  NativeClass &Property(const char *name, const char *type) {
    return Add(name, type, native::Address<Getter>(), native::Address<Setter>());
  }

  /// The finished record. It points into this object.
  ClassRecord &record() {
    record_.properties = properties_.data();
    record_.propertyCount = properties_.size();
    record_.methods = methods_.data();
    record_.methodCount = methods_.size();
    record_.sharedMethods = sharedMethods_.data();
    record_.sharedMethodCount = sharedMethods_.size();
    return record_;
  }

 private:
  static void *DataAddress(Object object) {
    return reinterpret_cast<char *>(object) + instance_->record_.classDataOffset;
  }

  NativeClass &Add(const char *name, const char *type, FunctionAddress getter, FunctionAddress setter) {
    PropertyRecord &property = properties_.emplace_back();
    property.name = name;
    property.type = type;
    property.flags = kPropertyFlags;
    property.getter = getter;
    property.setter = setter;
    return *this;
  }

  static inline NativeClass *instance_ = nullptr;
  ClassRecord record_{};
  std::vector<PropertyRecord> properties_;
  std::vector<MethodRecord> methods_;
  std::vector<MethodRecord> sharedMethods_;
};

}  // namespace quillbar::host
