// SPDX-License-Identifier: MIT
#include "host/program/describe.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>

namespace quillbar::program {
namespace {

using host::ClassInfo;
using host::EnumerationInfo;
using host::EventInfo;
using host::MethodInfo;
using host::ModuleInfo;
using host::PropertyInfo;

class Writer {
 public:
  explicit Writer(std::string &text) : out_(text) {}

  void Heading(int level, std::string_view title) { fmt::format_to(out_, "{:#>{}} {}\n\n", "", level, title); }

  void Module(const ModuleInfo &module) {
    Heading(1, "Module " + module.name);
    Methods("Methods", module.methods, [](const MethodInfo &) { return true; });
    for (const EnumerationInfo &info : module.enumerations) Enumeration(info);
    for (const ClassInfo *info : module.classes) Class(*info);
  }

  void Class(const ClassInfo &info) {
    Heading(2, "Class " + info.name);
    if (info.superclass != nullptr)
      fmt::format_to(out_, "Superclass: {}. Its members are inherited.\n\n", info.superclass->name);
    if (!IsCreatable(info)) fmt::format_to(out_, "Objects of this class are made by methods of other classes.\n\n");
    Properties(info);
    Methods("Constructors", info.methods,
            [](const MethodInfo &method) { return method.IsConstructor() && !method.IsPrivate(); });
    Methods("Methods", info.methods, [](const MethodInfo &method) { return !method.IsConstructor(); });
    Events(info);
    for (const EnumerationInfo &enumeration : info.enumerations) Enumeration(enumeration);
  }

 private:
  void Properties(const ClassInfo &info) {
    if (info.properties.empty()) return;
    Heading(3, "Properties");
    fmt::format_to(out_, "| property | type | access |\n|---|---|---|\n");
    for (const PropertyInfo &property : info.properties) {
      const char *access = property.IsReadOnly() ? "read-only" : property.IsWriteOnly() ? "write-only" : "read-write";
      fmt::format_to(out_, "| `{}` | {} | {}{} |\n", property.name, property.typeName,
                     property.isShared ? "shared, " : "", access);
    }
    fmt::format_to(out_, "\n");
  }

  template <class Infos, class Filter>
  void Methods(std::string_view title, const Infos &methods, Filter filter) {
    if (!std::ranges::any_of(methods, filter)) return;
    Heading(3, title);
    for (const MethodInfo &method : methods) {
      if (filter(method))
        fmt::format_to(out_, "- `{}{}`\n", method.owner != nullptr && method.isShared ? "Shared " : "",
                       method.declaration);
    }
    fmt::format_to(out_, "\n");
  }

  void Events(const ClassInfo &info) {
    if (info.events.empty()) return;
    Heading(3, "Events");
    for (const EventInfo &event : info.events) fmt::format_to(out_, "- `{}`\n", event.declaration);
    fmt::format_to(out_, "\n");
  }

  void Enumeration(const EnumerationInfo &info) {
    Heading(3, fmt::format("Enumeration {} as {}", info.qualifiedName, info.underlyingName));
    fmt::format_to(out_, "| member | value |\n|---|---|\n");
    for (const auto &member : info.members) fmt::format_to(out_, "| `{}` | {} |\n", member.name, member.value);
    fmt::format_to(out_, "\n");
  }

  std::back_insert_iterator<std::string> out_;
};

}  // namespace

bool IsCreatable(const ClassInfo &info) {
  const auto constructors = info.FindMethods("Constructor");
  return constructors.empty() ||
         std::ranges::any_of(constructors, [](const MethodInfo *method) { return !method->IsPrivate(); });
}

std::vector<const ClassInfo *> ClassesOutsideOfModules(const host::Registry &registry) {
  std::vector<const ClassInfo *> classes;
  std::ranges::copy_if(registry.Classes(), std::back_inserter(classes),
                       [](const ClassInfo *info) { return info->module == nullptr && !info->isBuiltIn; });
  return classes;
}

std::string Describe(const host::Registry &registry) {
  std::string text;
  Writer writer(text);
  for (const ModuleInfo *module : registry.Modules()) writer.Module(*module);
  const std::vector<const ClassInfo *> classes = ClassesOutsideOfModules(registry);
  if (!classes.empty()) writer.Heading(1, "Classes outside of modules");
  for (const ClassInfo *info : classes) writer.Class(*info);
  while (text.ends_with("\n\n")) text.pop_back();
  return text;
}

}  // namespace quillbar::program
