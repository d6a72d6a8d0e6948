// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <utility>
#include <vector>

#include "host/runtime/class_model.h"
#include "host/runtime/foreign_slot.h"
#include "host/runtime/handles.h"
#include "host/runtime/running_member.h"
#include "host/runtime/value.h"
#include "interface/declaration.h"
#include "interface/records.h"

namespace quillbar::host {

class CallInterface;
class Host;
union ForeignResult;

/// A member of a plugin, or of the host's own classes, as a C function that can be called. The host prepares it once,
/// from the class model, and keeps it until plugins are loaded the next time.
struct ForeignFunction {
  ForeignFunction(RunningMember called, FunctionAddress at, bool takesInstance, std::vector<ParameterInfo> taken,
                  Type given);
  ~ForeignFunction();
  ForeignFunction(const ForeignFunction &) = delete;
  ForeignFunction &operator=(const ForeignFunction &) = delete;

  RunningMember member;
  FunctionAddress address;
  bool hasInstance;
  std::vector<ParameterInfo> parameters;
  std::vector<ForeignForm> forms;  // of the parameters
  bool hasByRef = false;
  Type result;
  /// A shorter way than through `interface`; null when there is none.
  void (*direct)(FunctionAddress address, Object instance, const ForeignSlot *slots, ForeignResult &result) = nullptr;
  std::unique_ptr<CallInterface> interface;
};

/// One call of a member: its arguments in their C form, without memory from the heap. It holds a reference to each
/// string, object and array, because script code that runs meanwhile may change the variable that the argument came
/// from, and lends them to the plugin while the call runs.
class MemberCall {
 public:
  explicit MemberCall(const ForeignFunction &function) : function_(function) {}
  ~MemberCall() {
    if (references_ != 0) ReleaseReferences();
  }
  MemberCall(const MemberCall &) = delete;
  MemberCall &operator=(const MemberCall &) = delete;

  // Each adds the next argument, which must have exactly the parameter's type, in the representation of that type.

  void AddInteger(std::int64_t number) { slots_[count_].PutInteger(NextForm(), number), ++count_; }
  void AddReal(double number) { slots_[count_].PutReal(NextForm(), number), ++count_; }
  void Add(StringHandle string) { AddReference(string.Detach()); }
  void Add(ObjectHandle object) { AddReference(object.Detach()); }
  void Add(ArrayHandle array) { AddReference(array.Detach()); }
  void AddVariant(Value value);
  /// Adds any of them.
  void Add(const Value &value);

  /// Calls the member once, takes over its result, and throws what script code threw meanwhile. The new values of ByRef
  /// arguments are stored in `changed`, which has an element for each parameter, unless it is empty. A member of a class
  /// needs the object.
  Value Run(Host &host, const ObjectHandle &object, std::span<Value> changed = {});

 private:
  /// A value can follow the parameters, for methods that scripts assign to.
  static constexpr std::size_t kMostArguments = Declaration::kMaxParameters + 1;
  static_assert(kMostArguments <= 32, "each argument has a bit in `references_`");

  ForeignForm NextForm() const { return function_.forms[count_]; }
  void AddReference(void *owned) {
    slots_[count_].pointer = owned;
    owned_[count_] = owned;
    references_ |= 1U << count_;
    ++count_;
  }
  /// The call as libffi puts it together.
  void RunThroughLibrary(Object self, ForeignResult &result);
  void TakeChanged(Host &host, std::span<Value> changed);
  template <class Visitor>
  void ForEachReference(Visitor visit) const;
  void ReleaseReferences() const;

  const ForeignFunction &function_;
  std::size_t count_ = 0;
  std::uint32_t references_ = 0;  // a bit for each argument that is one
  std::array<ForeignSlot, kMostArguments> slots_;
  std::array<void *, kMostArguments> owned_;  // only those of the references are set
};

/// Calls a member with values, which must already have the parameters' types; ByRef arguments are changed in place.
Value CallPlugin(Host &host, const ForeignFunction &function, const ObjectHandle &object, std::span<Value> arguments);

}  // namespace quillbar::host
