// SPDX-License-Identifier: MIT
#pragma once

#include <exception>
#include <filesystem>
#include <memory>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "host/runtime/host.h"
#include "host/runtime/object_store.h"
#include "host/runtime/platform/shared_library.h"
#include "host/runtime/plugin_call.h"
#include "host/runtime/reference_ledger.h"

namespace quillbar::host {

struct LoadedPlugin {
  std::filesystem::path file;
  platform::SharedLibrary library;
};

/// What a host is made of. Only the runtime's own sources include this file.
struct Internals {
  ReferenceLedger ledger;
  ObjectStore objects{ledger};
  std::vector<LoadedPlugin> plugins;
  /// An error from script code that a plugin called; thrown again when the plugin has returned.
  std::exception_ptr pending;
  std::unordered_map<std::uintptr_t, ForeignFunction> functions;  // by part and record of the member
  std::size_t registrations = 0;
  /// Whether a plugin has reported progress since its member was called.
  bool showsProgress = false;

  /// Ends the display of a member's progress, however far it came.
  void EndProgress(const HostOptions &options) {
    if (std::exchange(showsProgress, false)) options.progress(0, 0);
  }

  static Internals &Of(Host &host) { return *host.internals_; }
  /// Of the host that exists.
  static Internals &Current() { return Of(*Host::Current()); }

  void RethrowPending() {
    if (pending != nullptr) std::rethrow_exception(std::exchange(pending, nullptr));
  }
};

}  // namespace quillbar::host
