// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "host/runtime/host.h"

namespace quillbar::test {

/// A script's variable that holds an object: its members are reached by name, as scripts reach them.
class ScriptObject {
 public:
  ScriptObject() = default;
  ScriptObject(host::Host &host, host::ObjectHandle handle) : host_(&host), handle_(std::move(handle)) {}

  bool IsNil() const { return handle_.IsNil(); }
  const host::ObjectHandle &handle() const { return handle_; }
  operator host::Value() const { return handle_; }  // NOLINT: objects are arguments

  template <class... Arguments>
  host::Value Call(std::string_view method, const Arguments &...arguments) const {
    return host_->Call(handle_, method, {host::Value(arguments)...});
  }
  /// The same for a method that returns an object.
  template <class... Arguments>
  ScriptObject CallObject(std::string_view method, const Arguments &...arguments) const {
    return {*host_, Call(method, arguments...).AsObject()};
  }

  host::Value Get(std::string_view property) const { return host_->Get(handle_, property); }
  float GetSingle(std::string_view property) const { return Get(property).AsSingle(); }
  std::int64_t GetInteger(std::string_view property) const { return Get(property).AsInteger(); }
  std::string GetString(std::string_view property) const { return Get(property).Utf8(); }
  void Set(std::string_view property, const host::Value &value) const { host_->Set(handle_, property, value); }

  host::Host &host() const { return *host_; }

 protected:
  host::Host *host_ = nullptr;
  host::ObjectHandle handle_;
};

}  // namespace quillbar::test
