// SPDX-License-Identifier: MIT
#pragma once

#include <set>
#include <string>
#include <vector>

#include "interface/services.h"

namespace quillbar {

/// A host that can only accept a plugin's registration, and records what it is asked for. Independent of the real
/// host, so that these tests compare the plugin alone.
///
/// A resolver is a plain function, so there is one such host at a time.
class RecordingHost {
 public:
  RecordingHost();
  ~RecordingHost();

  /// The resolver to hand to the plugin's entry point.
  Resolver resolver() const;

  /// The answer to "REALGetRBVersion".
  double version = 2024.1;

  /// Names of the services that the host doesn't offer.
  std::set<std::string> missing;

  /// The names asked for that no host is known to offer.
  std::vector<std::string> unknownNames;

  /// The calls in order: the service's name and its argument, for example "RegisterPluginVersion 13".
  std::vector<std::string> calls;

  ModuleRecord *module = nullptr;
  std::vector<ClassRecord *> classes;  // registered one by one

  /// Every class that was registered, with the module or by itself.
  std::vector<ClassRecord *> AllClasses() const;
};

}  // namespace quillbar
