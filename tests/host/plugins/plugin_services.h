// SPDX-License-Identifier: MIT
#pragma once

#include "binding/export.h"
#include "interface/services.h"

/// The services as the plugins of these tests call them: looked up anew at every call, without any of the care that a
/// real plugin takes.
namespace test_plugin {

inline quillbar::Resolver resolver = nullptr;

/// The service, looked up anew.
template <class Service>
typename Service::Function Get() {
  return reinterpret_cast<typename Service::Function>(resolver(Service::kName.CString()));
}

template <class Function>
quillbar::FunctionAddress Address(Function *function) {
  return reinterpret_cast<quillbar::FunctionAddress>(function);
}

template <class Function>
quillbar::MethodRecord Method(const char *declaration, Function *function,
                              std::uint32_t flags = quillbar::kMethodFlags) {
  return {Address(function), nullptr, declaration, flags, 0, nullptr};
}

inline quillbar::PropertyRecord Property(const char *name, const char *type, quillbar::FunctionAddress getter,
                                         quillbar::FunctionAddress setter = nullptr, std::int32_t parameter = 0) {
  return {nullptr, name, type, quillbar::kPropertyFlags, getter, setter, parameter, nullptr, 0, nullptr, 0, nullptr};
}

}  // namespace test_plugin
