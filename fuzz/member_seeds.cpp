// SPDX-License-Identifier: MIT
#include "fuzz/member_seeds.h"

#include <map>
#include <vector>

#include "host/language/library/classes/language_classes.h"
#include "host/runtime/host.h"

namespace quillbar::fuzz {

namespace {

using host::ClassInfo;
using host::MethodInfo;
using host::Type;
using host::TypeKind;

bool TakesFile(const MethodInfo &method) { return method.declaration.find("FolderItem") != std::string::npos; }

class ScriptWriter {
 public:
  /// Makes an object of each class that can be made without files: with `New`, or by a member of another object.
  explicit ScriptWriter(const host::Registry &registry) {
    for (const ClassInfo *info : registry.Classes()) {
      if (info->name == "FolderItem" || info->IsSubclassOf(*registry.FindClass("RuntimeException"))) continue;
      const MethodInfo *chosen = nullptr;
      for (const MethodInfo *constructor : info->FindMethods("Constructor")) {
        if (constructor->IsPrivate() || TakesFile(*constructor)) continue;
        // What is made from nothing is often empty.
        const bool isBetter =
            chosen == nullptr || chosen->parameters.empty() ||
            (!constructor->parameters.empty() && constructor->parameters.size() < chosen->parameters.size());
        if (isBetter) chosen = constructor;
      }
      if (chosen != nullptr) AddObject(*info, "New " + Call(info->name, *chosen));
    }
    // One object leads to the next: a document to a page, and that to an annotation.
    for (int round = 0; round < 3; ++round) {
      for (const ClassInfo *info : registry.Classes()) {
        for (const MethodInfo &method : info->methods) {
          const ClassInfo *result = method.result.IsObject() ? method.result.objectClass() : nullptr;
          if (result == nullptr || TakesFile(method) || (!method.isShared && !objects_.contains(info))) continue;
          AddObject(*result, Call(Owner(*info, method.isShared) + "." + method.name, method));
        }
      }
    }
    preamble_ = std::move(script_);
  }

  std::string ScriptFor(const ClassInfo &info) {
    script_ = preamble_;
    for (const MethodInfo &method : info.methods) {
      if (method.IsConstructor() || TakesFile(method) || (!method.isShared && !objects_.contains(&info))) continue;
      const std::string call = Call(Owner(info, method.isShared) + "." + method.name, method);
      script_ += (method.result.IsNone() ? call : "Call " + call) + "\n";
    }
    for (const host::PropertyInfo &property : info.properties) {
      if (!property.isShared && !objects_.contains(&info)) continue;
      const std::string place = Owner(info, property.isShared) + "." + property.name;
      if (!property.IsReadOnly()) script_ += place + " = " + Argument(property.type) + "\n";
      if (!property.IsWriteOnly() && !property.type.IsObject()) script_ += "Print(" + place + ")\n";
    }
    return script_;
  }

 private:
  void AddObject(const ClassInfo &info, const std::string &expression) {
    const std::string name = "object" + std::to_string(objects_.size() + 1);
    if (!objects_.try_emplace(&info, name).second) return;
    script_ += "Dim " + name + " As " + info.name + " = " + expression + "\n";
  }

  std::string Owner(const ClassInfo &info, bool isShared) const { return isShared ? info.name : objects_.at(&info); }

  /// A call with a plausible argument for each parameter.
  std::string Call(const std::string &callee, const MethodInfo &method) {
    std::string arguments;
    for (const host::ParameterInfo &parameter : method.parameters) {
      if (!arguments.empty()) arguments += ", ";
      arguments += parameter.byRef ? Variable(parameter.type) : Argument(parameter.type);
    }
    return callee + "(" + arguments + ")";
  }

  std::string Variable(Type type) {
    const std::string name = "variable" + std::to_string(++variables_);
    script_ += "Dim " + name + (type.IsArray() ? "(2) As " : " As ") + type.Element().Name() + "\n";
    return name;
  }

  std::string Argument(Type type) {
    if (type.IsArray()) return Variable(type);
    if (const host::EnumerationInfo *info = type.enumeration()) {
      return info->qualifiedName + "." + info->members.front().name;
    }
    switch (type.kind()) {
      case TypeKind::kBoolean:
        return "True";
      case TypeKind::kString:
        return "\"Helvetica\"";  // as a text as good as any, and the name of a font
      case TypeKind::kColor:
        return "&c102030";
      case TypeKind::kObject: {
        const auto known = objects_.find(type.objectClass());
        return known == objects_.end() ? "Nil" : known->second;
      }
      default:
        return host::IsNumeric(type.kind()) ? "2" : "Nil";
    }
  }

  std::map<const ClassInfo *, std::string> objects_;  // the variable that has one of the class
  std::string preamble_;
  std::string script_;
  int variables_ = 0;
};

}  // namespace

void ForEachMemberSeed(const std::function<void(const std::string &name, std::string_view script)> &take) {
  host::Host host;
  host.LoadPlugin(QUILLBAR_COMPANION_FILE);
  host.LoadPlugin(QUILLBAR_PLUGIN_FILE);
  language::RegisterLanguageClasses(host);
  ScriptWriter writer(host.registry());
  for (const ClassInfo *info : host.registry().Classes()) take(info->name, writer.ScriptFor(*info));
}

}  // namespace quillbar::fuzz
