// SPDX-License-Identifier: MIT
#include "tests/registry/recording_host.h"

#include <algorithm>
#include <cassert>

#include "tests/support/service_names.h"

namespace quillbar {
namespace {

RecordingHost *host = nullptr;

void Note(const std::string &service, const std::string &argument = "") {
  host->calls.push_back(argument.empty() ? service : service + " " + argument);
}

void RegisterPluginVersion(int version) { Note("RegisterPluginVersion", std::to_string(version)); }

double GetRBVersion() {
  Note("REALGetRBVersion");
  return host->version;
}

void RegisterModule(ModuleRecord *module) {
  Note("PluginRegisterModule", module->name);
  host->module = module;
}

void RegisterClass(ClassRecord *definition) {
  Note("PluginRegisterClass", definition->name);
  host->classes.push_back(definition);
}

ClassRef ObjectType(const char *name) {
  Note("pluginObjectType", name);
  return nullptr;
}

// Serves as every service that must not be called at entry.
void *Uncalled() {
  Note("a service that entry doesn't need");
  return nullptr;
}

template <class Service>
void *Address(typename Service::Function function) {
  return reinterpret_cast<void *>(function);
}

void *Resolve(const char *name) {
  const std::string service = name;
  if (std::ranges::find(test::ServiceNames(), service) == test::ServiceNames().end()) {
    host->unknownNames.push_back(service);
    return nullptr;
  }
  if (host->missing.contains(service)) return nullptr;
  if (service == "RegisterPluginVersion") return Address<service::RegisterPluginVersion>(RegisterPluginVersion);
  if (service == "REALGetRBVersion") return Address<service::GetRBVersion>(GetRBVersion);
  if (service == "PluginRegisterModule") return Address<service::RegisterModule>(RegisterModule);
  if (service == "PluginRegisterClass") return Address<service::RegisterClass>(RegisterClass);
  if (service == "pluginObjectType") return Address<service::ObjectType>(ObjectType);
  return reinterpret_cast<void *>(Uncalled);
}

}  // namespace

RecordingHost::RecordingHost() {
  assert(host == nullptr);
  host = this;
}

RecordingHost::~RecordingHost() { host = nullptr; }

Resolver RecordingHost::resolver() const { return Resolve; }

std::vector<ClassRecord *> RecordingHost::AllClasses() const {
  if (module == nullptr) return classes;
  return {module->classes, module->classes + module->classCount};
}

}  // namespace quillbar
