// SPDX-License-Identifier: MIT
#pragma once

#include <type_traits>

#include "interface/services.h"

/// How a plugin calls its host: every service and host-language function is a typed slot that is
/// resolved by name on first use and kept for the life of the process.
///
///     CallHost<service::LockObject>(document);
///     CallHost<global_method::Len>(text);
///
/// A host may lack any of them. The call then returns the empty result (0, null, false) and nothing is
/// called; since a failed resolution is not remembered, a service that appears later is found.
namespace quillbar {

/// The host's resolver, stored by the plugin's entry point. Every loaded plugin has its own.
inline Resolver hostResolver = nullptr;

template <class Type>
class HostSlot;

/// A slot for a service.
template <FixedString Name, class Result, class... Arguments>
class HostSlot<ServiceType<Name, Result(Arguments...)>> {
 public:
  using Function = Result (*)(Arguments...);

  /// The service's address; null when the host doesn't offer it.
  static Function Resolve() {
    if (address_ == nullptr && hostResolver != nullptr) {
      address_ = reinterpret_cast<Function>(hostResolver(Name.CString()));
    }
    return address_;
  }

  /// The service's address under either of two names, because hosts differ: the name of `Other` is asked for when the
  /// first is missing. What is found is kept in this slot.
  template <class Other>
  static Function ResolveEither() {
    static_assert(std::is_same_v<Function, typename Other::Function>);
    if (Resolve() == nullptr && hostResolver != nullptr) {
      address_ = reinterpret_cast<Function>(hostResolver(Other::kName.CString()));
    }
    return address_;
  }

  /// Calls the service; without it, returns the empty result.
  static Result Call(Arguments... arguments) {
    const Function function = Resolve();
    return function != nullptr ? function(arguments...) : Result();
  }

 private:
  inline static Function address_ = nullptr;
};

/// A slot for a function of the host language, which the host finds by its declaration.
template <FixedString Declaration, class Result, class... Arguments>
class HostSlot<GlobalMethodType<Declaration, Result(Arguments...)>> {
 public:
  using Function = Result (*)(Arguments...);

  /// The function's address; null when the host doesn't offer it.
  static Function Resolve() {
    if (address_ == nullptr) {
      address_ = reinterpret_cast<Function>(HostSlot<service::LoadGlobalMethod>::Call(nullptr, Declaration.CString()));
    }
    return address_;
  }

  /// Calls the function; without it, returns the empty result.
  static Result Call(Arguments... arguments) {
    const Function function = Resolve();
    return function != nullptr ? function(arguments...) : Result();
  }

  /// Forgets the address, so that the next call resolves it again.
  static void Clear() { address_ = nullptr; }

 private:
  inline static Function address_ = nullptr;
};

namespace detail {

template <class Type>
struct HostCall {
  template <class... Arguments>
  auto operator()(Arguments... arguments) const {
    return HostSlot<Type>::Call(arguments...);
  }
};

}  // namespace detail

/// Calls a service or a function of the host language; see the head of this file.
template <class Type>
inline constexpr detail::HostCall<Type> CallHost{};

}  // namespace quillbar
