// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <string>
#include <vector>

#include "interface/services.h"

/// A host that offers only what a test gives it, and records what it is asked for.
namespace quillbar::sparse_host {

/// The addresses of what is offered, by name.
inline std::map<std::string, void *> offered;
/// Every name that was asked for, in order.
inline std::vector<std::string> asked;

/// The resolver to hand to the plugin.
inline void *Resolve(const char *name) {
  asked.emplace_back(name);
  const auto found = offered.find(name);
  return found != offered.end() ? found->second : nullptr;
}

template <class Service>
void Offer(typename Service::Function function) {
  offered[Service::kName.CString()] = reinterpret_cast<void *>(function);
}

}  // namespace quillbar::sparse_host
