// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "host/runtime/host.h"
#include "tests/differential/call.h"
#include "tests/differential/library_page.h"
#include "tests/differential/observation.h"

namespace quillbar::differential {

/// The plugin's side: a page of a new document, used through a host as scripts use it.
class PluginPage {
 public:
  PluginPage(host::Host &host, const Sequence &sequence);

  /// Texts are passed in the encoding with this host code.
  Observation Make(const Call &call, std::uint32_t textEncoding);
  /// The whole file.
  std::string Saved();

 private:
  void Dispatch(const Call &call, std::uint32_t textEncoding);
  /// Calls a method; notes its result, if it has one, and the arguments from `firstByRef` on.
  void CallMethod(const char *name, std::vector<host::Value> arguments, std::size_t firstByRef);
  void ReadGetters();

  host::Host &host_;
  host::ObjectHandle document_;
  host::ObjectHandle page_;
  std::array<host::ObjectHandle, 3> fonts_;
  std::array<const host::PropertyInfo *, kGetterCount> properties_{};
  std::shared_ptr<std::vector<Event>> events_ = std::make_shared<std::vector<Event>>();
  Observation observation_;
};

/// The widths of all bytes of a font, measured one by one.
Widths MeasureWidths(host::Host &host, const FontChoice &font);

}  // namespace quillbar::differential
