// SPDX-License-Identifier: MIT
// A host that all inputs share, and its accounts. Loading plugins for each input would take most of the time.
#pragma once

#include "fuzz/demand.h"
#include "host/runtime/host.h"
#include "host/runtime/string_pool.h"

namespace quillbar::fuzz {

/// The host with both plugins.
inline host::Host &HostWithPlugins() {
  static host::Host *const host = [] {
    auto *made = new host::Host;
    made->LoadPlugin(QUILLBAR_COMPANION_FILE);
    made->LoadPlugin(QUILLBAR_PLUGIN_FILE);
    return made;
  }();
  return *host;
}

inline int CountLiveStrings() {
  int count = 0;
  host::StringPool::Instance().ForEachLive([&](const HostString &) { ++count; });
  return count;
}

/// Everything that an input made, or that plugins were given for it, is gone; `strings` is the number that there were
/// before.
inline void DemandBalance(int strings) {
  Demand(CountLiveStrings() == strings, "an input's strings go with it");
  const host::LedgerReport report = HostWithPlugins().InspectLedger();
  if (!report.IsBalanced()) Demand(false, report.Text().c_str());
}

}  // namespace quillbar::fuzz
