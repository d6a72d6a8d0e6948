// SPDX-License-Identifier: MIT
#pragma once

#include <ffi.h>

#include <memory>

#include "host/runtime/class_model.h"
#include "host/runtime/foreign_call.h"
#include "host/runtime/host.h"

namespace quillbar::host {

/// A handler attached to one event of one object. Its address is a C function with the event's signature, made by
/// libffi at run time; plugins get it from `GetEventInstance` and call it.
class EventBinding : public std::enable_shared_from_this<EventBinding> {
 public:
  EventBinding(Host &host, Object object, const EventInfo &event, EventHandler handler);
  EventBinding(const EventBinding &) = delete;
  EventBinding &operator=(const EventBinding &) = delete;
  ~EventBinding();

  const EventInfo &event() const { return event_; }
  void *address() const { return address_; }
  const EventHandler &handler() const { return handler_; }

 private:
  static void Enter(ffi_cif *cif, void *result, void **arguments, void *binding);
  void Raise(void *result, void **arguments);
  Value ReadArgument(const ParameterInfo &parameter, const void *place);
  void WriteResult(const Value &value, void *result);

  Host &host_;
  Object object_;  // not owned: the object owns the binding
  const EventInfo &event_;
  EventHandler handler_;
  CallInterface interface_;
  ffi_closure *closure_ = nullptr;
  void *address_ = nullptr;
};

}  // namespace quillbar::host
