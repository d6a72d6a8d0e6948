// SPDX-License-Identifier: MIT
#pragma once

#include <type_traits>

#include "interface/values.h"

/// No exception may leave a function that a host calls: hosts are other programs, built by other compilers, and what
/// would unwind their stack ends the application. Every function that becomes a registered address goes through here.
namespace quillbar {

/// What remains to be done for an instance one of whose functions ran out of memory, beside giving the empty result:
/// nothing, unless the instance's plugin specializes this.
template <class Owner>
struct MemoryShortage {
  static void Report(Owner *) noexcept {}
};

namespace binding {

template <class... Arguments>
void ReportShortage(Arguments...) noexcept {}
template <FixedString Class, class... Arguments>
void ReportShortage(Instance<Class> *instance, Arguments...) noexcept {
  MemoryShortage<Instance<Class>>::Report(instance);
}

// Told by the type: compilers warn when a function is compared with null.
template <auto Function>
inline constexpr bool kIsNull = std::is_same_v<std::integral_constant<decltype(Function), Function>,
                                               std::integral_constant<decltype(Function), nullptr>>;

template <auto Function>
struct Contained;

template <class Result, class... Arguments, Result (*Function)(Arguments...)>
struct Contained<Function> {
  static Result Call(Arguments... arguments) noexcept {
    try {
      return Function(arguments...);
    } catch (...) {
      ReportShortage(arguments...);
      return Result();
    }
  }
};

}  // namespace binding

/// Throws an exception and catches it. To be called when a plugin is entered: the C++ library and the unwinder ask for
/// memory of their own at the first exception of a thread, and end the process when there is none.
inline void PrepareForExceptions() {
  try {
    throw 0;
  } catch (int) {
  }
}

/// `Function`, a pointer to a function, as a host may call it: what it throws ends it as a shortage of memory, with the
/// empty result (Nil, 0, false). A null pointer stays null.
template <auto Function>
constexpr decltype(Function) Containing() {
  if constexpr (binding::kIsNull<Function>) {
    return nullptr;
  } else {
    return &binding::Contained<Function>::Call;
  }
}

}  // namespace quillbar
