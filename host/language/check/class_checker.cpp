// SPDX-License-Identifier: MIT
#include "host/language/check/class_checker.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <set>
#include <utility>

#include "host/language/check/call_checker.h"
#include "host/language/check/interface_checker.h"
#include "host/language/check/procedure_checker.h"
#include "host/language/check/statement_checker.h"
#include "host/language/tree/objects.h"

namespace quillbar::language {
namespace {

/// Over how many levels a class can inherit.
constexpr std::size_t kMaxLevels = 500;

host::Access AccessOf(const syntax::Modifiers &modifiers) {
  switch (modifiers.access) {
    case syntax::Access::kPrivate:
      return host::Access::kPrivate;
    case syntax::Access::kProtected:
      return host::Access::kProtected;
    default:
      return host::Access::kPublic;
  }
}

/// Makes names resolve as they do inside a class or module while it lives.
class Inside {
 public:
  Inside(Checker &checker, const host::ClassInfo &info) : checker_(checker), outer_(checker.selfClass) {
    checker.selfClass = &info;
  }
  ~Inside() { checker_.selfClass = outer_; }
  Inside(const Inside &) = delete;
  Inside &operator=(const Inside &) = delete;

 private:
  Checker &checker_;
  const host::ClassInfo *outer_;
};

void EnterSuperclass(Checker &checker, const syntax::Class &written, host::ClassInfo &info) {
  if (!written.superclass) return;
  const Inside inside(checker, info);
  const host::Type type = checker.ResolveType(*written.superclass);
  const host::ClassInfo *superclass = type.objectClass();
  if (superclass == nullptr) {
    checker.Fail(written.superclass->span, fmt::format("{} is not a class to inherit from", type.Name()));
  }
  if (superclass->isInterface) {
    checker.Fail(written.superclass->span,
                 fmt::format("{} is an interface; a class \"Implements\" it", superclass->name));
  }
  if (!superclass->isRegistered) {
    checker.Fail(written.superclass->span,
                 fmt::format("the class {} comes from a plugin that isn't loaded", superclass->name));
  }
  info.superclass = superclass;
}

/// The steps from a class to the last of its superclasses, or to itself again; at most one more than are allowed.
std::size_t CountLevels(const host::ClassInfo &info, bool &isCircle) {
  std::size_t count = 0;
  isCircle = false;
  for (const host::ClassInfo *level = info.superclass; level != nullptr && count <= kMaxLevels; ++count) {
    if (level == &info) {
      isCircle = true;
      break;
    }
    level = level->superclass;
  }
  return count;
}

/// No class inherits from itself or over too many levels, also in files that were written to harm.
void RefuseCircles(Checker &checker, const syntax::Script &script) {
  bool isCircle = false;
  for (const bool areLevels : {false, true}) {
    for (const auto &written : script.classes) {
      host::ClassInfo &info = *checker.parts.at(written.get())->info;
      const std::size_t levels = CountLevels(info, isCircle);
      if (areLevels ? levels <= kMaxLevels : !isCircle) continue;
      info.superclass = nullptr;
      checker.Report(written->superclass->span,
                     isCircle
                         ? fmt::format("the class {} would inherit from itself", info.name)
                         : fmt::format("the class {} would inherit over more than {} levels", info.name, kMaxLevels));
    }
  }
}

void RefuseTaken(Checker &checker, const host::ClassInfo &info, std::string_view name, Span span) {
  const auto sameName = [&](const auto &member) { return SameName(member.name, name); };
  const auto constants = checker.classConstants.find(&info);
  const bool isConstant = constants != checker.classConstants.end() && constants->second.Find(name) != nullptr;
  if (isConstant || std::ranges::any_of(info.properties, sameName) || std::ranges::any_of(info.methods, sameName)) {
    checker.Fail(span, fmt::format("the class {} has a member \"{}\" already", info.name, name));
  }
}

void EnterConstant(Checker &checker, const syntax::Class::Constant &written, const host::ClassInfo &info) {
  // Entered into a scope of its own, from where the class takes it over.
  const Checker::BlockScope scope(checker);
  const auto &constant = static_cast<const syntax::Constant &>(*written.constant);
  const Inside inside(checker, info);
  CheckConstant(checker, constant);
  Symbol symbol = *checker.scopes.back().Find(constant.name);
  symbol.access = AccessOf(written.modifiers);
  RefuseTaken(checker, info, constant.name, constant.nameSpan);
  checker.classConstants[&info].Add(std::move(symbol));
}

const host::MethodInfo *EnterAccessor(Checker &checker, const syntax::Procedure *written, const ScriptClass &part,
                                      bool isShared) {
  if (written == nullptr) return nullptr;
  host::MethodInfo &head = checker.program.methods.emplace_back();
  head.owner = part.info;
  head.isShared = isShared;
  EnterHead(checker, *written, head);
  return &head;
}

void EnterProperty(Checker &checker, const syntax::Class::Property &written, ScriptClass &part) {
  RefuseTaken(checker, *part.info, written.variable.name, written.variable.span);
  const host::Type type = checker.ResolveType(written.type);
  host::PropertyInfo &property = part.info->properties.emplace_back();
  property.name = written.variable.name;
  property.type = written.variable.rank > 0 ? type.ArrayOf(written.variable.rank) : type;
  property.typeName = property.type.Name();
  property.owner = part.info;
  property.isShared = written.modifiers.isShared || part.isModule;
  property.access = AccessOf(written.modifiers);
  property.isField = !written.getter && !written.setter;
  if (!property.isField) {
    property.computes = EnterAccessor(checker, written.getter.get(), part, property.isShared);
    property.accepts = EnterAccessor(checker, written.setter.get(), part, property.isShared);
    if (written.initial) {
      checker.Fail(written.initial->span, "a property with Get or Set stores nothing, so it has no first value");
    }
  } else if (property.isShared) {
    property.slot = checker.NewGlobal(property.type);
  } else {
    property.slot = part.fields.size();
    part.fields.push_back(RepresentationOf(property.type));
  }
}

/// Whether the method handles an event of a superclass, whose name it has.
bool EnterHandler(Checker &checker, const host::MethodInfo &head, ScriptClass &part, Span span) {
  const host::EventInfo *event =
      part.info->superclass == nullptr ? nullptr : part.info->superclass->FindEvent(head.name);
  if (event == nullptr) return false;
  const bool fits = !head.isShared && HasSignature(head, event->parameters, event->result);
  if (!fits) {
    checker.Fail(span, fmt::format("the handler of the event {} must be declared as: {}", event->name,
                                   DescribeSignature(head.name, event->parameters, event->result)));
  }
  if (event->owner->code != nullptr) {
    part.info->dispatch[static_cast<std::size_t>(event->slot)] = head.code;
  } else {
    part.handlers.push_back({event, &head});
  }
  return true;
}

/// The method takes the place of the one that it overrides, or a new one.
void EnterDispatch(host::MethodInfo &head, host::ClassInfo &info) {
  if (head.isShared) return;
  head.slot = info.dispatch.size();
  const host::ClassInfo *superclass = info.superclass;
  const std::vector<const host::MethodInfo *> inherited = superclass == nullptr || head.IsConstructor()
                                                              ? std::vector<const host::MethodInfo *>()
                                                              : superclass->FindMethods(head.name);
  for (const host::MethodInfo *other : inherited) {
    const bool isSame =
        other->code != nullptr && !other->isShared && other->access != host::Access::kPrivate &&
        std::ranges::equal(other->parameters, head.parameters, {}, &ParameterInfo::type, &ParameterInfo::type);
    if (isSame) head.slot = other->slot;
  }
  if (head.slot == info.dispatch.size()) info.dispatch.emplace_back();
  info.dispatch[head.slot] = head.code;
}

void EnterMethod(Checker &checker, const syntax::Class::Method &written, ScriptClass &part) {
  host::ClassInfo &info = *part.info;
  const syntax::Procedure &procedure = *written.procedure;
  std::vector<const host::MethodInfo *> others;
  for (const host::MethodInfo &other : info.methods) {
    if (SameName(other.name, procedure.name)) others.push_back(&other);
  }
  host::MethodInfo &head = info.methods.emplace_back();
  head.owner = &info;
  head.isShared = written.modifiers.isShared || part.isModule;
  head.access = AccessOf(written.modifiers);
  EnterHead(checker, procedure, head);
  head.declaration = DescribeSignature(head.name, head.parameters, head.result);
  RefuseSameSignature(checker, head, others);
  if (others.empty() && std::ranges::any_of(info.properties, [&](const host::PropertyInfo &property) {
        return SameName(property.name, head.name);
      })) {
    checker.Fail(procedure.nameSpan, fmt::format("the class {} has a member \"{}\" already", info.name, head.name));
  }
  const bool isDestructor = SameName(head.name, "Destructor") && !part.isModule;
  if (isDestructor || head.IsConstructor()) {
    if (!head.result.IsNone() || head.isShared || (isDestructor && !head.parameters.empty())) {
      checker.Fail(procedure.nameSpan,
                   fmt::format("a {0} is declared as: Sub {0}({1})", head.name, isDestructor ? "" : "…"));
    }
  }
  if (isDestructor) part.destructor = &CodeOf(head);
  const bool isHandler = EnterHandler(checker, head, part, procedure.nameSpan);
  if (written.modifiers.isHandler && !isHandler) {
    checker.Fail(procedure.nameSpan, fmt::format("the class {} inherits no event \"{}\"", info.name, head.name));
  }
  EnterDispatch(head, info);
}

/// An event that objects of the class raise. Its handler has a place of its own in dispatch tables.
void EnterEvent(Checker &checker, const syntax::Procedure &written, host::ClassInfo &info) {
  RefuseTaken(checker, info, written.name, written.nameSpan);
  if (info.FindEvent(written.name) != nullptr) {
    checker.Fail(written.nameSpan, fmt::format("the class {} has an event \"{}\" already", info.name, written.name));
  }
  host::MethodInfo &raise = checker.program.methods.emplace_back();
  raise.owner = &info;
  EnterHead(checker, written, raise);
  host::EventInfo &event = info.events.emplace_back();
  event.name = written.name;
  event.declaration = DescribeSignature(raise.name, raise.parameters, raise.result);
  event.parameters = raise.parameters;
  event.result = raise.result;
  event.owner = &info;
  raise.declaration = event.declaration;
  raise.slot = info.dispatch.size();
  event.slot = static_cast<std::intptr_t>(raise.slot);
  info.dispatch.emplace_back();
  raise.raises = &event;
  checker.raisers[&event] = &raise;
}

void EnterMembers(Checker &checker, const syntax::Class &written, ScriptClass &part) {
  host::ClassInfo &info = *part.info;
  const Inside inside(checker, info);
  if (info.superclass != nullptr) info.dispatch = info.superclass->dispatch;
  if (info.dispatch.empty()) info.dispatch.resize(checker.interfaceSlots);
  for (const syntax::Class::Constant &constant : written.constants) {
    const auto &declared = static_cast<const syntax::Constant &>(*constant.constant);
    EnterConstantOf(checker, info, declared.name, declared.nameSpan);
  }
  for (const syntax::Class::Property &property : written.properties) {
    checker.Recover([&] { EnterProperty(checker, property, part); });
  }
  for (const auto &event : written.events) {
    checker.Recover([&] { EnterEvent(checker, *event, info); });
  }
  for (const syntax::Class::Method &method : written.methods) {
    checker.Recover([&] { EnterMethod(checker, method, part); });
  }
  CheckImplementations(checker, written, info);
  info.dataSize = part.fields.size() * sizeof(Cell);
  host::Registry::LayOut(info);
}

/// The statement that gives a property its first value, in the class's initializer or, for a shared one, the script's.
void CheckFirstValue(Checker &checker, const syntax::Class::Property &written, ScriptClass &part) {
  const host::PropertyInfo *property = part.info->FindProperty(written.variable.name);
  if (property == nullptr || property->owner != part.info || !property->isField) return;
  const Span span = written.variable.span;
  checker.procedure = property->isShared ? &checker.program.initializer : &part.initializer;
  checker.selfClass = part.info;
  checker.hasSelf = !property->isShared;
  const Checker::BlockScope scope(checker);
  const auto target = [&] {
    return MakeProperty(span, *property, std::make_unique<SelfValue>(host::Type::Class(*part.info), span));
  };
  checker.Recover([&] {
    if (!written.variable.upperBounds.empty()) {
      checker.procedure->body.Add(
          std::make_unique<ResizeStatement>(target(), CheckBounds(checker, written.variable.upperBounds)));
    }
    if (written.initial) {
      ExpressionPointer value =
          CheckValue(checker, *written.initial, property->type, fmt::format("the property \"{}\"", property->name));
      checker.procedure->body.Add(MakeAssignment(target(), std::move(value)));
    }
  });
}

/// Makes a class known by its name, also inside the modules that contain it.
void EnterName(Checker &checker, const ScriptClass &part, Span span) {
  const std::string &name = part.info->name;
  const bool isTaken = part.container == nullptr &&
                       (!checker.Registry().FindType(name).IsNone() || checker.Registry().FindModule(name) != nullptr);
  const bool isNew = checker.types.emplace(part.qualifiedName, host::Type::Class(*part.info)).second;
  if (isTaken || !isNew) {
    checker.Fail(span, fmt::format("there is a type \"{}\" already", name));
  }
}

/// Notes which names the members of a module have.
void EnterModuleMembers(Checker &checker, const syntax::Class &written, const host::ClassInfo &info) {
  const auto enter = [&](const std::string &name, host::Access access) {
    if (access != host::Access::kPrivate) checker.moduleMembers[name].push_back({&info, access});
  };
  for (const auto &property : written.properties) enter(property.variable.name, AccessOf(property.modifiers));
  for (const auto &method : written.methods) enter(method.procedure->name, AccessOf(method.modifiers));
  for (const auto &constant : written.constants) {
    enter(static_cast<const syntax::Constant &>(*constant.constant).name, AccessOf(constant.modifiers));
  }
  for (const auto &enumeration : written.enumerations) {
    enter(enumeration->name, AccessOf({enumeration->access, false, false}));
  }
}

/// Makes a delegate known by its name.
void EnterDelegate(Checker &checker, const syntax::Delegate &written) {
  ScriptClass &part = checker.program.classes.emplace_back();
  part.info = &checker.host.AddScriptClass();
  part.info->name = part.qualifiedName = written.head->name;
  part.info->isRegistered = true;
  part.info->code = &part;
  part.isDelegate = true;
  part.access = AccessOf({written.access, false, false});
  part.fields = {Representation::kObject, Representation::kInteger};
  part.info->dataSize = part.fields.size() * sizeof(Cell);
  host::Registry::LayOut(*part.info);
  if (written.container != nullptr) {
    const ScriptClass &container = *checker.parts.at(written.container);
    part.container = container.info;
    part.qualifiedName = fmt::format("{}.{}", container.qualifiedName, part.info->name);
    if (container.isModule && part.access != host::Access::kPrivate) {
      checker.moduleMembers[part.info->name].push_back({container.info, part.access});
    }
  }
  EnterName(checker, part, written.head->nameSpan);
}

/// The method `Invoke` of a delegate, which has the parameters and the result of the methods that it takes.
void EnterInvoke(Checker &checker, const syntax::Delegate &written, ScriptClass &part) {
  const Inside inside(checker, *part.info);
  host::MethodInfo &invoke = part.info->methods.emplace_back();
  invoke.owner = part.info;
  EnterHead(checker, *written.head, invoke);
  invoke.name = "Invoke";
  invoke.declaration = DescribeSignature(invoke.name, invoke.parameters, invoke.result);
  invoke.isInvocation = true;
}

}  // namespace

void EnterUsing(Checker &checker, const syntax::Using &written) {
  const std::string name = fmt::format("{}", fmt::join(written.module.parts, "."));
  if (checker.Registry().FindModule(name) != nullptr) return;
  const host::ClassInfo *module = checker.FindType(name).objectClass();
  if (!IsModule(module)) checker.Fail(written.module.span, fmt::format("there is no module \"{}\"", name));
  checker.usedModules.push_back(module);
}

void EnterConstantOf(Checker &checker, const host::ClassInfo &info, std::string_view name, Span span) {
  const auto pending = checker.pendingConstants.find(&info);
  if (pending == checker.pendingConstants.end()) return;
  const auto found = pending->second.find(name);
  if (found == pending->second.end()) return;
  const syntax::Class::Constant *const constant = std::exchange(found->second, nullptr);
  if (constant == nullptr) checker.Fail(span, fmt::format("the constant \"{}\" depends on itself", name));
  checker.Recover([&] { EnterConstant(checker, *constant, info); });
  pending->second.erase(found);
}

void EnterClasses(Checker &checker, const syntax::Script &script) {
  checker.program.initializer.name = "the script";
  checker.program.initializer.isScript = true;
  for (const auto &written : script.classes) {
    ScriptClass &part = checker.program.classes.emplace_back();
    checker.parts[written.get()] = &part;
    part.info = &checker.host.AddScriptClass();
    part.info->name = part.qualifiedName = written->name;
    part.info->isRegistered = true;
    part.info->isInterface = written->kind == syntax::ClassKind::kInterface;
    part.info->code = &part;
    part.isModule = written->kind == syntax::ClassKind::kModule;
    part.access = AccessOf(written->modifiers);
    if (written->container != nullptr) {
      const ScriptClass &container = *checker.parts.at(written->container);
      part.container = container.info;
      part.qualifiedName = fmt::format("{}.{}", container.qualifiedName, written->name);
      if (part.access != host::Access::kPrivate) {
        checker.moduleMembers[written->name].push_back({container.info, part.access});
      }
    }
    checker.Recover([&] { EnterName(checker, part, written->nameSpan); });
    if (part.isModule) EnterModuleMembers(checker, *written, *part.info);
    for (const syntax::Class::Constant &constant : written->constants) {
      const auto &declared = static_cast<const syntax::Constant &>(*constant.constant);
      if (!checker.pendingConstants[part.info].emplace(declared.name, &constant).second) {
        checker.Report(declared.nameSpan,
                       fmt::format("the class {} has a member \"{}\" already", written->name, declared.name));
      }
    }
    part.initializer.name = written->name;
    part.initializer.span = written->span;
    part.initializer.firstParameter = part.initializer.cellCount = 2;
    part.initializer.owningCells.push_back({1, Representation::kObject});
  }
  for (const auto &written : script.delegates) {
    checker.Recover([&] { EnterDelegate(checker, *written); });
  }
  for (const auto &written : script.usings) {
    checker.Recover([&] { EnterUsing(checker, *written); });
  }
}

void EnterClassMembers(Checker &checker, const syntax::Script &script) {
  for (const auto &written : script.classes) {
    host::ClassInfo &info = *checker.parts.at(written.get())->info;
    checker.Recover([&] { EnterSuperclass(checker, *written, info); });
  }
  RefuseCircles(checker, script);
  EnterInterfaces(checker, script);
  for (std::size_t i = 0; i < script.delegates.size(); ++i) {
    EnterInvoke(checker, *script.delegates[i], checker.program.classes[script.classes.size() + i]);
  }
  for (const auto &written : script.classes) {
    if (written->kind != syntax::ClassKind::kInterface) continue;
    host::ClassInfo &info = *checker.parts.at(written.get())->info;
    const Inside inside(checker, info);
    EnterInterfaceMethods(checker, *written, info);
  }
  std::set<const host::ClassInfo *> entered;
  std::map<const host::ClassInfo *, std::size_t> indices;
  for (std::size_t index = 0; index < script.classes.size(); ++index) {
    indices[checker.program.classes[index].info] = index;
  }
  const auto enter = [&](const auto &self, std::size_t index) -> void {
    ScriptClass &part = checker.program.classes[index];
    if (part.info->isInterface || !entered.insert(part.info).second) return;
    if (const auto superclass = indices.find(part.info->superclass); superclass != indices.end()) {
      self(self, superclass->second);
    }
    EnterMembers(checker, *script.classes[index], part);
  };
  for (std::size_t index = 0; index < script.classes.size(); ++index) enter(enter, index);
}

void CheckClasses(Checker &checker, const syntax::Script &script) {
  for (const auto &written : script.classes) {
    ScriptClass &part = *checker.parts.at(written.get());
    if (part.info->isInterface) continue;
    for (const syntax::Class::Property &property : written->properties) CheckFirstValue(checker, property, part);
    checker.procedure = &checker.program.main;
    checker.selfClass = nullptr;
    checker.hasSelf = false;
    for (const syntax::Class::Property &property : written->properties) {
      const host::PropertyInfo *info = part.info->FindProperty(property.variable.name);
      if (info == nullptr || info->owner != part.info) continue;
      if (info->computes != nullptr) CheckBody(checker, *property.getter, *info->computes);
      if (info->accepts != nullptr) CheckBody(checker, *property.setter, *info->accepts);
    }
    // A method with an error in its head was left where it is, so the two lists agree.
    for (std::size_t i = 0; i < written->methods.size() && i < part.info->methods.size(); ++i) {
      CheckBody(checker, *written->methods[i].procedure, part.info->methods[i]);
    }
  }
}

}  // namespace quillbar::language
