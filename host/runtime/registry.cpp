// SPDX-License-Identifier: MIT
#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <utility>

#include "host/runtime/class_model.h"
#include "host/runtime/host_error.h"
#include "host/runtime/object_store.h"
#include "interface/declaration.h"

namespace quillbar::host {
namespace {

std::string Text(const char *text) { return text == nullptr ? std::string() : std::string(text); }

/// "Module.Class" as its two parts; the first is empty for a plain name.
std::pair<std::string_view, std::string_view> SplitLast(std::string_view name) {
  const std::size_t dot = name.rfind('.');
  if (dot == std::string_view::npos) return {{}, name};
  return {name.substr(0, dot), name.substr(dot + 1)};
}

Declaration ReadOrThrow(const std::string &owner, const char *text) {
  const std::string declaration = Text(text);
  // The views point into the record's own text, which lives as long as its plugin.
  const DeclarationResult result = ReadDeclaration(text == nullptr ? std::string_view() : std::string_view(text));
  if (result.ok()) return result.declaration;
  throw HostError(ErrorKind::kPlugin, fmt::format("{} registers the declaration \"{}\", which can't be read: {} "
                                                  "at character {}",
                                                  owner, declaration, result.error.message, result.error.offset + 1));
}

template <class Record, class Visitor>
void ForEach(const Record *records, std::size_t count, Visitor &&visit) {
  for (std::size_t i = 0; i < count; ++i) visit(records[i]);
}

}  // namespace

// Type names are resolved only once everything is registered, because declarations mention classes that come later.
struct Registry::Pending {
  struct TypeName {
    Type *type;
    std::string name;
    bool isArray;
    const ClassInfo *context;
    ParameterInfo *parameter = nullptr;  // whose type it is, and whose default value waits for it
  };
  std::vector<TypeName> types;
  std::vector<std::pair<ClassInfo *, std::string>> superclasses;
  // Classes that declarations mention but no plugin has registered.
  std::map<std::string, ClassInfo> mentioned;
};

Registry::Registry() : pending_(std::make_unique<Pending>()) {}
Registry::~Registry() = default;

ClassInfo *Registry::Find(std::string_view name, const ModuleInfo *preferred) const {
  const auto [moduleName, className] = SplitLast(name);
  const ClassInfo *found = nullptr;
  for (const ClassInfo *info : classes_) {
    if (!SameName(info->name, className)) continue;
    if (!moduleName.empty() && info->module != nullptr && !SameName(info->module->name, moduleName)) continue;
    if (!moduleName.empty() && info->module == nullptr && FindModule(moduleName) != nullptr) continue;
    if (found == nullptr || (preferred != nullptr && info->module == preferred)) found = info;
  }
  return const_cast<ClassInfo *>(found);
}

const ClassInfo *Registry::FindClass(std::string_view name) const { return Find(name, nullptr); }

const ModuleInfo *Registry::FindModule(std::string_view name) const {
  const auto found = std::ranges::find_if(modules_, [name](const auto *info) { return SameName(info->name, name); });
  return found == modules_.end() ? nullptr : *found;
}

const EnumerationInfo *Registry::FindEnumeration(std::string_view name) const {
  const auto [owner, enumeration] = SplitLast(name);
  if (owner.empty()) return nullptr;
  if (const ClassInfo *info = FindClass(owner)) return info->FindEnumeration(enumeration);
  if (const ModuleInfo *module = FindModule(owner)) {
    for (const EnumerationInfo &info : module->enumerations) {
      if (SameName(info.name, enumeration)) return &info;
    }
  }
  return nullptr;
}

Type Registry::FindType(std::string_view name, const ClassInfo *context) const {
  const TypeKind kind = BuiltInKind(name);
  if (kind != TypeKind::kNone) return kind;
  if (context != nullptr) {
    if (const EnumerationInfo *info = context->FindEnumeration(name)) return Type::Enumeration(*info);
  }
  const ModuleInfo *module = context == nullptr ? nullptr : context->module;
  if (const ClassInfo *info = Find(name, module)) return Type::Class(*info);
  const auto [owner, enumeration] = SplitLast(name);
  if (const ClassInfo *info = owner.empty() ? nullptr : Find(owner, module)) {
    if (const EnumerationInfo *found = info->FindEnumeration(enumeration)) return Type::Enumeration(*found);
  }
  if (const EnumerationInfo *info = FindEnumeration(name)) return Type::Enumeration(*info);
  return {};
}

Type Registry::ResolveOrMention(std::string_view name, const ClassInfo *context) {
  const Type type = FindType(name, context);
  if (!type.IsNone()) return type;
  ClassInfo &info = pending_->mentioned[std::string(name)];
  info.name = name;
  return Type::Class(info);
}

void Registry::ClearWith(std::string_view name, std::function<void(Object)> clear) {
  if (ClassInfo *info = Find(name, nullptr)) info->clear = std::move(clear);
}

void Registry::LayOut(ClassInfo &info) {
  const std::size_t start = info.superclass == nullptr ? kInstanceHeader : info.superclass->instanceSize;
  info.dataOffset = AlignData(start);
  info.instanceSize = info.dataOffset + info.dataSize;
  if (info.record != nullptr) info.record->classDataOffset = static_cast<std::intptr_t>(info.dataOffset);
}

void Registry::Register(ModuleRecord &record) {
  if (record.name == nullptr || *record.name == '\0') {
    throw HostError(ErrorKind::kPlugin, "a module without a name is registered");
  }
  if (FindModule(record.name) != nullptr) {
    throw HostError(ErrorKind::kPlugin, fmt::format("the module {} is registered twice", record.name));
  }
  ModuleInfo &module = moduleStorage_.emplace_back();
  module.name = record.name;
  modules_.push_back(&module);
  ForEach(record.enumerations, record.enumerationCount, [&](const EnumerationRecord &enumeration) {
    EnumerationInfo &info = module.enumerations.emplace_back();
    AddEnumeration(info, enumeration, module.name);
  });
  ForEach(record.methods, record.methodCount,
          [&](const MethodRecord &method) { AddMethod(module.methods.emplace_back(), method, nullptr, module.name); });
  for (MethodInfo &method : module.methods) method.isShared = true;
  ForEach(record.classes, record.classCount, [&](ClassRecord *const pointer) { AddClass(*pointer, &module, false); });
}

void Registry::Register(ClassRecord &record, bool isBuiltIn) { AddClass(record, nullptr, isBuiltIn); }

ClassInfo &Registry::AddClass(ClassRecord &record, ModuleInfo *module, bool isBuiltIn) {
  const std::string name = Text(record.name);
  if (name.empty()) throw HostError(ErrorKind::kPlugin, "a class without a name is registered");
  for (const ClassInfo *other : classes_) {
    if (other->module == module && SameName(other->name, name)) {
      throw HostError(ErrorKind::kPlugin, fmt::format("the class {} is registered twice", other->QualifiedName()));
    }
  }
  ClassInfo &info = classStorage_.emplace_back();
  info.name = name;
  info.module = module;
  info.isRegistered = true;
  info.isBuiltIn = isBuiltIn;
  info.isRoot = isBuiltIn && info.name == "Object";
  info.flags = record.flags;
  info.record = &record;
  info.dataSize = record.dataSize;
  if (record.version != kInterfaceVersion) {
    throw HostError(ErrorKind::kPlugin, fmt::format("the class {} has the record version {}, this host reads {}", name,
                                                    record.version, kInterfaceVersion));
  }
  const std::string superclass = Text(record.superclass);
  if (!superclass.empty()) pending_->superclasses.emplace_back(&info, superclass);

  ForEach(record.enumerations, record.enumerationCount, [&](const EnumerationRecord &enumeration) {
    EnumerationInfo &added = info.enumerations.emplace_back();
    added.owner = &info;
    AddEnumeration(added, enumeration, name);
  });
  const auto addProperties = [&](const PropertyRecord *records, std::size_t count, bool isShared) {
    ForEach(records, count, [&](const PropertyRecord &property) {
      PropertyInfo &added = info.properties.emplace_back();
      added.name = Text(property.name);
      added.typeName = Text(property.type);
      added.owner = &info;
      added.getter = property.getter;
      added.setter = property.setter;
      added.parameter = property.parameter;
      added.flags = property.flags;
      added.isShared = isShared;
      pending_->types.push_back({&added.type, added.typeName, false, &info});
    });
  };
  addProperties(record.properties, record.propertyCount, false);
  addProperties(record.sharedProperties, record.sharedPropertyCount, true);
  const auto addMethods = [&](const MethodRecord *records, std::size_t count, bool isShared) {
    ForEach(records, count, [&](const MethodRecord &method) {
      MethodInfo &added = info.methods.emplace_back();
      added.isShared = isShared;
      AddMethod(added, method, &info, name);
    });
  };
  addMethods(record.methods, record.methodCount, false);
  addMethods(record.sharedMethods, record.sharedMethodCount, true);
  for (std::size_t i = 0; i < record.eventCount; ++i) {
    EventRecord &event = record.events[i];
    const Declaration declaration = ReadOrThrow("the class " + name, event.declaration);
    EventInfo &added = info.events.emplace_back();
    added.declaration = event.declaration;
    added.owner = &info;
    added.slot = event.slot = nextSlot_++;
    AddSignature(declaration, added.name, added.parameters, added.result, &info);
  }
  classes_.push_back(&info);
  if (module != nullptr) module->classes.push_back(&info);
  LayOut(info);
  return info;
}

void Registry::AddEnumeration(EnumerationInfo &info, const EnumerationRecord &record, const std::string &owner) {
  info.name = Text(record.name);
  info.qualifiedName = owner + "." + info.name;
  info.underlyingName = Text(record.type);
  info.underlying = BuiltInKind(info.underlyingName);
  if (!IsInteger(info.underlying)) {
    throw HostError(ErrorKind::kPlugin,
                    fmt::format("the enumeration {} has the underlying type \"{}\", which is not an integer",
                                info.qualifiedName, info.underlyingName));
  }
  ForEach(record.members, record.memberCount, [&](const char *const text) {
    const std::string written = Text(text);
    const std::optional<EnumerationMember> member = ReadEnumerationMember(written);
    if (!member) {
      throw HostError(ErrorKind::kPlugin,
                      fmt::format("the enumeration {} has the member \"{}\"; \"NAME = value\" is expected",
                                  info.qualifiedName, written));
    }
    info.members.push_back({std::string(member->name), member->value});
  });
}

void Registry::AddMethod(MethodInfo &info, const MethodRecord &record, const ClassInfo *owner,
                         const std::string &ownerName) {
  const Declaration declaration = ReadOrThrow(ownerName, record.declaration);
  info.declaration = record.declaration;
  info.owner = owner;
  info.function = record.function;
  info.setter = record.setter;
  info.flags = record.flags;
  if (info.function == nullptr) {
    throw HostError(ErrorKind::kPlugin,
                    fmt::format("{} registers \"{}\" without a function", ownerName, info.declaration));
  }
  AddSignature(declaration, info.name, info.parameters, info.result, owner);
}

void Registry::AddSignature(const Declaration &declaration, std::string &name, std::vector<ParameterInfo> &parameters,
                            Type &result, const ClassInfo *context) {
  name = declaration.name;
  parameters.resize(declaration.parameterCount);
  for (std::size_t i = 0; i < parameters.size(); ++i) {
    const ParameterDeclaration &declared = declaration.parameters[i];
    parameters[i].name = declared.name;
    parameters[i].byRef = declared.byRef;
    parameters[i].optional = declared.optional;
    parameters[i].isList = declared.isList && declared.isArray;
    parameters[i].defaultText = declared.defaultValue;
    pending_->types.push_back(
        {&parameters[i].type, std::string(declared.type), declared.isArray, context, &parameters[i]});
  }
  if (!declaration.resultType.empty()) {
    pending_->types.push_back({&result, std::string(declaration.resultType), declaration.resultIsArray, context});
  }
}

void Registry::Link() {
  // Taken out first: an error in one plugin must not come up again when the next one is linked.
  for (const auto &[info, superclass] : std::exchange(pending_->superclasses, {})) {
    const ClassInfo *found = Find(superclass, info->module);
    if (found == nullptr || found->IsSubclassOf(*info)) {
      throw HostError(ErrorKind::kPlugin,
                      fmt::format("the class {} names the superclass {}, which {}", info->name, superclass,
                                  found == nullptr ? "nobody registered" : "derives from it"));
    }
    info->superclass = found;
  }
  // A superclass may be registered after its subclasses.
  std::vector<const ClassInfo *> laidOut;
  const auto layOut = [&](const auto &self, const ClassInfo &info) -> void {
    if (std::ranges::find(laidOut, &info) != laidOut.end()) return;
    if (info.superclass != nullptr) self(self, *info.superclass);
    LayOut(const_cast<ClassInfo &>(info));
    laidOut.push_back(&info);
  };
  for (const ClassInfo *info : classes_) layOut(layOut, *info);

  std::erase_if(pending_->types, [this](const Pending::TypeName &name) {
    const Type type = ResolveOrMention(name.name, name.context);
    *name.type = name.isArray ? type.ArrayOf() : type;
    if (name.parameter != nullptr) {
      name.parameter->defaultValue = ReadDefault(name.parameter->defaultText, *name.type);
    }
    return type.objectClass() == nullptr || type.objectClass()->isRegistered;
  });
}

}  // namespace quillbar::host
