// SPDX-License-Identifier: MIT
#include "host/language/check/names_checker.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>
#include <utility>

#include "host/language/check/call_checker.h"
#include "host/language/check/class_checker.h"
#include "host/language/check/expression_checker.h"
#include "host/language/syntax/environment_names.h"
#include "host/language/syntax/names.h"
#include "host/language/tree/literals.h"
#include "host/language/tree/objects.h"

namespace quillbar::language {
namespace {

using host::Type;
using host::TypeKind;

constexpr std::string_view kColorHint = "; a color is written &cFF0000 or Color.RGB(255, 0, 0)";

constexpr std::string_view kNamespaces[] = {"System", "Encodings", "Bitwise", "SpecialFolder"};

/// The owners under which the library lists methods for values of this type, best first.
std::vector<std::string_view> LibraryOwners(Type type) {
  if (type.Rank() == 1) return {"Array"};
  if (type.Rank() == 2) return {"Array2", "Grid"};
  if (type.Rank() == 3) return {"Array3", "Grid"};
  if (type.IsObject()) {
    std::vector<std::string_view> owners;
    for (const host::ClassInfo *info = type.objectClass(); info != nullptr; info = info->superclass) {
      owners.push_back(info->name);
    }
    return owners;
  }
  if (type.IsString()) return {"String"};
  switch (type.kind()) {
    case TypeKind::kBoolean:
      return {"Boolean"};
    case TypeKind::kColor:
      return {"Color"};
    case TypeKind::kSingle:
      return {"Single"};
    case TypeKind::kDouble:
      return {"Double"};
    case TypeKind::kCurrency:
      return {"Currency"};
    case TypeKind::kUInt64:
      return {"UInt64"};
    case TypeKind::kVariant:
      return {"Variant"};
    default:
      break;
  }
  if (host::IsInteger(type.kind())) return {"Integer"};
  return {};
}

/// The name under which shared functions of a built-in type are listed: "Integer" for every integer type, and so on.
std::string_view SharedOwner(Type type) {
  const std::vector<std::string_view> owners = LibraryOwners(type);
  if (type.kind() == TypeKind::kUInt64) return "Integer";
  if (type.kind() == TypeKind::kSingle) return "Double";
  return owners.empty() ? std::string_view() : owners.front();
}

ExpressionPointer MakeMember(const host::EnumerationInfo &info, const host::EnumerationMemberInfo &member, Span span) {
  return std::make_unique<IntegerConstant>(Type::Enumeration(info), span, member.value);
}

bool FindProcedureName(Checker &checker, std::string_view name, Resolution &resolution) {
  const auto found = checker.procedures.find(name);
  if (found == checker.procedures.end()) return false;
  resolution.kind = Resolution::Kind::kCallables;
  for (const host::MethodInfo *method : found->second) resolution.callables.push_back(MakeCallable(*method));
  return true;
}

bool FindCallableName(Checker &checker, std::string_view name, Resolution &resolution) {
  if (FindProcedureName(checker, name, resolution)) return true;
  resolution.kind = Resolution::Kind::kCallables;
  for (const LibraryFunction *function : FindLibraryFunctions(name, LibraryFunction::Form::kFunction)) {
    resolution.callables.push_back(MakeCallable(*function, {}, TypeKind::kNil, checker.Registry()));
  }
  if (!resolution.callables.empty()) return true;
  for (const host::ModuleInfo *module : checker.Registry().Modules()) {
    for (const host::MethodInfo &method : module->methods) {
      if (SameName(method.name, name)) resolution.callables.push_back(MakeCallable(method));
    }
  }
  return !resolution.callables.empty();
}

/// A module of the script is a class whose members are all shared.
Resolution::Kind KindOf(Type type) {
  return IsModule(type.objectClass()) ? Resolution::Kind::kModule : Resolution::Kind::kType;
}

bool FindTypeName(Checker &checker, std::string_view name, Resolution &resolution) {
  resolution.type = checker.FindType(name);
  if (!resolution.type.IsNone()) {
    resolution.kind = KindOf(resolution.type);
    return true;
  }
  resolution.module = checker.Registry().FindModule(name);
  if (resolution.module != nullptr) {
    resolution.kind = Resolution::Kind::kModule;
    return true;
  }
  for (const std::string_view candidate : kNamespaces) {
    if (!SameName(candidate, name)) continue;
    resolution.kind = Resolution::Kind::kNamespace;
    resolution.name = candidate;
    return true;
  }
  return false;
}

bool FindValueName(Checker &checker, std::string_view name, Span span, Resolution &resolution) {
  const Symbol *symbol = checker.FindSymbol(name);
  if (symbol == nullptr) return false;
  resolution.kind = Resolution::Kind::kValue;
  switch (symbol->kind) {
    case Symbol::Kind::kBroken:
      checker.Fail(span, {});
    case Symbol::Kind::kConstant:
      resolution.value = MakeConstant(symbol->constant, span);
      return true;
    default:
      break;
  }
  if (!symbol->isDeclared && checker.IsInMain()) {
    // A function or type may have the same name; the variable isn't declared yet.
    Resolution other;
    if (!checker.ModulesWith(name).empty() || FindCallableName(checker, name, other) ||
        FindTypeName(checker, name, other))
      return false;
    checker.Fail(span, fmt::format("\"{}\" is used before its declaration in line {}", symbol->name,
                                   checker.source.Locate(symbol->span.begin).line));
  }
  resolution.value = checker.MakeVariable(*symbol, span);
  return true;
}

/// How the member of an enumeration is written that has this name: one of the class's own, or, without a class, one of
/// the script's or any class's. Empty when there is none.
std::string EnumerationMemberNamed(const Checker &checker, std::string_view name, const host::ClassInfo *owner) {
  const auto found = [&](const host::EnumerationInfo &info) { return info.Find(name) != nullptr; };
  const auto written = [&](const host::EnumerationInfo &info) {
    return fmt::format("{}.{}", info.qualifiedName, info.Find(name)->name);
  };
  for (const host::ClassInfo *info = owner; info != nullptr; info = info->superclass) {
    for (const host::EnumerationInfo &enumeration : info->enumerations) {
      if (found(enumeration)) return written(enumeration);
    }
  }
  if (owner != nullptr) return {};
  for (const host::EnumerationInfo &enumeration : checker.program.enumerations) {
    if (found(enumeration)) return written(enumeration);
  }
  for (const host::ClassInfo *info : checker.Registry().Classes()) {
    for (const host::EnumerationInfo &enumeration : info->enumerations) {
      if (found(enumeration)) return written(enumeration);
    }
  }
  return {};
}

[[noreturn]] void FailUnknownName(Checker &checker, std::string_view name, Span span) {
  if (SameName(name, "Self") || SameName(name, "Me") || SameName(name, "Super")) {
    checker.Fail(span, fmt::format("\"{}\" is only known in the methods of classes", name));
  }
  if (IsNameOfTheEnvironment(name)) checker.Fail(span, NotPartOfThisHost(name));
  if (const std::string member = EnumerationMemberNamed(checker, name, nullptr); !member.empty()) {
    checker.Fail(span, fmt::format("\"{}\" is not known alone; did you mean \"{}\"?", name, member));
  }
  std::vector<std::string_view> candidates;
  for (const Scope &scope : checker.scopes) scope.AppendNames(candidates);
  checker.globals.AppendNames(candidates);
  for (const auto &[procedure, overloads] : checker.procedures) candidates.push_back(procedure);
  for (const auto &[member, modules] : checker.moduleMembers) {
    if (SameName(member, name)) {
      checker.Fail(span, fmt::format("\"{0}\" is protected in the module {1}; write {1}.{0}, or \"Using {1}\"", name,
                                     modules.front().module->name));
    }
    candidates.push_back(member);
  }
  for (const auto &[type, of] : checker.types) candidates.push_back(type);
  for (const host::ClassInfo *info : checker.Registry().Classes()) candidates.push_back(info->name);
  for (const std::string_view function : LibraryNames(LibraryFunction::Form::kFunction)) candidates.push_back(function);
  checker.Fail(span, fmt::format("\"{}\" is not known{}", name, Suggestion(name, candidates)));
}

// -- Members --------------------------------------------------------------------------------------

/// A constant of a script's class or its superclasses.
bool FindConstant(Checker &checker, const host::ClassInfo &info, Resolution &resolution) {
  for (const host::ClassInfo *level = &info; level != nullptr; level = level->superclass) {
    EnterConstantOf(checker, *level, resolution.name, resolution.span);
    const auto found = checker.classConstants.find(level);
    const Symbol *symbol = found == checker.classConstants.end() ? nullptr : found->second.Find(resolution.name);
    if (symbol == nullptr) continue;
    if (symbol->kind != Symbol::Kind::kConstant) checker.Fail(resolution.span, {});
    RequireAccess(checker, symbol->access, level, symbol->name, resolution.span);
    resolution.kind = Resolution::Kind::kValue;
    resolution.value = MakeConstant(symbol->constant, resolution.span);
    return true;
  }
  return false;
}

/// A Sub or Function whose first parameter `Extends` values of this type.
bool FindExtension(Checker &checker, Resolution &base, Resolution &resolution) {
  const auto add = [&](const host::MethodInfo &method) {
    if (!method.isExtension || method.parameters.empty()) return;
    if (Cost(*base.value, method.parameters.front().type)) resolution.callables.push_back(MakeCallable(method));
  };
  if (const auto found = checker.procedures.find(resolution.name); found != checker.procedures.end()) {
    for (const host::MethodInfo *method : found->second) add(*method);
  }
  for (const host::ClassInfo *module : checker.ModulesWith(resolution.name)) {
    for (const host::MethodInfo *method : module->FindMethods(resolution.name)) add(*method);
  }
  for (const host::ClassInfo *around = checker.selfClass; around != nullptr; around = ScriptPartOf(around)->container) {
    if (!IsModule(around) || !resolution.callables.empty()) continue;
    for (const host::MethodInfo *method : around->FindMethods(resolution.name)) add(*method);
  }
  if (resolution.callables.empty()) return false;
  resolution.kind = Resolution::Kind::kCallables;
  resolution.value = std::move(base.value);
  return true;
}

bool FindMemberOfType(Checker &checker, const Resolution &base, Resolution &resolution) {
  if (const host::EnumerationInfo *info = base.type.enumeration()) {
    const host::EnumerationMemberInfo *member = info->Find(resolution.name);
    if (member == nullptr) return false;
    resolution.value = MakeMember(*info, *member, resolution.span);
    return true;
  }
  resolution.kind = Resolution::Kind::kCallables;
  if (const host::ClassInfo *info = base.type.objectClass()) {
    if (const host::EnumerationInfo *enumeration = info->FindEnumeration(resolution.name)) {
      resolution.kind = Resolution::Kind::kType;
      resolution.type = Type::Enumeration(*enumeration);
      return true;
    }
    const host::PropertyInfo *property = info->FindProperty(resolution.name);
    if (property != nullptr && property->isShared) {
      resolution.kind = Resolution::Kind::kValue;
      RequireAccess(checker, property->access, property->owner, property->name, resolution.span);
      resolution.value = MakeProperty(resolution.span, *property, nullptr);
      return true;
    }
    if (FindConstant(checker, *info, resolution)) return true;
    for (const host::MethodInfo *method : info->FindMethods(resolution.name)) {
      if (method->isShared) resolution.callables.push_back(MakeCallable(*method));
    }
    if (!resolution.callables.empty()) return true;
    for (const host::ClassInfo *level = info; ScriptPartOf(level) != nullptr; level = level->superclass) {
      resolution.type = checker.FindTypeIn(*level, resolution.name);
      if (resolution.type.IsNone()) continue;
      resolution.kind = KindOf(resolution.type);
      if (const ScriptClass *part = ScriptPartOf(resolution.type.objectClass())) {
        RequireAccess(checker, part->access, level, resolution.name, resolution.span);
      }
      return true;
    }
  }
  const std::string_view owner = SharedOwner(base.type);
  if (owner.empty()) return !resolution.callables.empty();
  for (const LibraryFunction *function : FindLibraryFunctions(resolution.name, LibraryFunction::Form::kShared, owner)) {
    resolution.callables.push_back(MakeCallable(*function, {}, TypeKind::kNil, checker.Registry()));
  }
  return !resolution.callables.empty();
}

bool FindMemberOfModule(const Resolution &base, Resolution &resolution) {
  const host::ModuleInfo &module = *base.module;
  for (const host::ClassInfo *info : module.classes) {
    if (!SameName(info->name, resolution.name)) continue;
    resolution.kind = Resolution::Kind::kType;
    resolution.type = Type::Class(*info);
    return true;
  }
  for (const host::EnumerationInfo &enumeration : module.enumerations) {
    if (!SameName(enumeration.name, resolution.name)) continue;
    resolution.kind = Resolution::Kind::kType;
    resolution.type = Type::Enumeration(enumeration);
    return true;
  }
  for (const host::PropertyInfo &property : module.properties) {
    if (!SameName(property.name, resolution.name)) continue;
    resolution.kind = Resolution::Kind::kValue;
    resolution.value = std::make_unique<PropertyLvalue>(resolution.span, property, nullptr);
    return true;
  }
  resolution.kind = Resolution::Kind::kCallables;
  for (const host::MethodInfo &method : module.methods) {
    if (SameName(method.name, resolution.name)) resolution.callables.push_back(MakeCallable(method));
  }
  return !resolution.callables.empty();
}

bool FindMemberOfNamespace(Checker &checker, const Resolution &base, Resolution &resolution) {
  if (SameName(base.name, "Encodings")) {
    const host::EnumerationMemberInfo *member = TextEncodingType().Find(resolution.name);
    if (member == nullptr) return false;
    resolution.value = MakeMember(TextEncodingType(), *member, resolution.span);
    return true;
  }
  for (const LibraryFunction *function :
       FindLibraryFunctions(resolution.name, LibraryFunction::Form::kShared, base.name)) {
    resolution.callables.push_back(MakeCallable(*function, {}, TypeKind::kNil, checker.Registry()));
  }
  if (resolution.callables.empty()) return false;
  resolution.kind = Resolution::Kind::kCallables;
  return true;
}

bool FindLibraryMethod(Checker &checker, Type receiver, Resolution &resolution) {
  const Type element = receiver.IsArray() ? receiver.Element() : Type();
  for (const std::string_view owner : LibraryOwners(receiver)) {
    for (const LibraryFunction *function :
         FindLibraryFunctions(resolution.name, LibraryFunction::Form::kMethod, owner)) {
      resolution.callables.push_back(MakeCallable(*function, receiver, element, checker.Registry()));
    }
  }
  if (resolution.callables.empty()) return false;
  resolution.kind = Resolution::Kind::kCallables;
  return true;
}

bool FindMemberOfValue(Checker &checker, Resolution &base, Resolution &resolution) {
  const Type type = base.value->type;
  if (!type.IsObject()) {
    if (FindExtension(checker, base, resolution)) return true;
    if (!FindLibraryMethod(checker, type, resolution)) return false;
    resolution.value = std::move(base.value);
    return true;
  }
  const host::ClassInfo &info = *type.objectClass();
  if (const host::PropertyInfo *property = info.FindProperty(resolution.name)) {
    RequireAccess(checker, property->access, property->owner, property->name, resolution.span);
    resolution.value = MakeProperty(resolution.span, *property, std::move(base.value));
    return true;
  }
  if (FindConstant(checker, info, resolution)) return true;
  for (const host::MethodInfo *method : info.FindMethods(resolution.name)) {
    if (base.isSuper || !method->IsConstructor()) resolution.callables.push_back(MakeCallable(*method));
  }
  if (!resolution.callables.empty()) {
    resolution.kind = Resolution::Kind::kCallables;
    resolution.value = std::move(base.value);
    resolution.isSuper = base.isSuper;
    return true;
  }
  if (FindExtension(checker, base, resolution)) return true;
  if (FindLibraryMethod(checker, type, resolution)) {
    resolution.value = std::move(base.value);
    return true;
  }
  if (const host::EnumerationInfo *enumeration = info.FindEnumeration(resolution.name)) {
    resolution.kind = Resolution::Kind::kType;
    resolution.type = Type::Enumeration(*enumeration);
    return true;
  }
  return false;
}

[[noreturn]] void FailUnknownMember(Checker &checker, const Resolution &base, const syntax::Member &member,
                                    Type receiver) {
  std::vector<std::string_view> candidates;
  std::string owner = receiver.IsNone() ? base.name : Named(receiver);
  if (receiver.IsEnumeration()) {
    for (const host::EnumerationMemberInfo &value : receiver.enumeration()->members) candidates.push_back(value.name);
  } else if (receiver.IsObject()) {
    if (const std::string value = EnumerationMemberNamed(checker, member.name, receiver.objectClass());
        !value.empty()) {
      checker.Fail(member.nameSpan,
                   fmt::format("{} has no member \"{}\"; did you mean \"{}\"?", owner, member.name, value));
    }
    for (const host::ClassInfo *info = receiver.objectClass(); info != nullptr; info = info->superclass) {
      if (info->FindEvent(member.name) != nullptr) {
        checker.Fail(member.nameSpan,
                     fmt::format("\"{}\" is an event of {}; AddHandler attaches a method to it", member.name, owner));
      }
      for (const auto &property : info->properties) candidates.push_back(property.name);
      for (const auto &method : info->methods) candidates.push_back(method.name);
      for (const auto &enumeration : info->enumerations) candidates.push_back(enumeration.name);
    }
    for (const std::string_view name : LibraryOwners(receiver)) {
      for (const std::string_view method : LibraryNames(LibraryFunction::Form::kMethod, name))
        candidates.push_back(method);
    }
    if (!receiver.objectClass()->isRegistered) {
      checker.Fail(member.span, fmt::format("the class {} comes from a plugin that isn't loaded", owner));
    }
  } else {
    for (const std::string_view name : LibraryOwners(receiver)) {
      for (const std::string_view method : LibraryNames(LibraryFunction::Form::kMethod, name))
        candidates.push_back(method);
    }
    if (base.kind == Resolution::Kind::kNamespace) {
      for (const std::string_view shared : LibraryNames(LibraryFunction::Form::kShared, base.name))
        candidates.push_back(shared);
      if (SameName(base.name, "Encodings")) {
        for (const host::EnumerationMemberInfo &value : TextEncodingType().members) candidates.push_back(value.name);
      }
    }
    if (base.module != nullptr) {
      for (const host::ClassInfo *info : base.module->classes) candidates.push_back(info->name);
    }
  }
  const bool isType = base.kind == Resolution::Kind::kType;
  const bool isOfValues =
      std::ranges::any_of(candidates, [&](std::string_view candidate) { return SameName(candidate, member.name); });
  if (isType && isOfValues) {
    checker.Fail(member.nameSpan,
                 fmt::format("\"{0}\" is a member of values, not of the type {1}: write value.{0}{2}", member.name,
                             owner, receiver.kind() == TypeKind::kColor ? kColorHint : ""));
  }
  std::string hint = Suggestion(member.name, candidates);
  const bool isOfPlugin =
      base.module != nullptr || (receiver.IsObject() && !receiver.objectClass()->isBuiltIn) || receiver.IsEnumeration();
  if (hint.empty() && receiver.kind() == TypeKind::kColor && isType) hint = kColorHint;
  if (hint.empty() && !isOfPlugin) hint = "; docs/language.md lists what it has in this host";
  checker.Fail(member.nameSpan, fmt::format("{} has no member \"{}\"{}", owner, member.name, hint));
}

ExpressionPointer MakeSelf(const host::ClassInfo &info, Span span) {
  return std::make_unique<SelfValue>(Type::Class(info), span);
}

bool IsSelf(std::string_view name) { return SameName(name, "Self") || SameName(name, "Me"); }

/// The event that the class declares whose code is being checked: only that class raises it.
bool FindRaisedEvent(Checker &checker, std::string_view name, Resolution &resolution) {
  const auto event = std::ranges::find_if(checker.selfClass->events,
                                          [&](const host::EventInfo &info) { return SameName(info.name, name); });
  if (event == checker.selfClass->events.end()) return false;
  resolution.kind = Resolution::Kind::kCallables;
  resolution.value = MakeSelf(*checker.selfClass, resolution.span);
  resolution.callables.push_back(MakeCallable(*checker.raisers.at(&*event)));
  return true;
}

Resolution ResolveRaiseEvent(Checker &checker, const syntax::RaiseEvent &raised) {
  Resolution resolution;
  resolution.span = raised.span;
  resolution.name = raised.name;
  if (!checker.hasSelf) checker.Fail(raised.span, "an event is raised by the methods of the class that declares it");
  if (FindRaisedEvent(checker, raised.name, resolution)) return resolution;
  const host::EventInfo *inherited = checker.selfClass->FindEvent(raised.name);
  if (inherited != nullptr) {
    checker.Fail(raised.span, fmt::format("the event \"{}\" is raised by the class {} alone, which declares it",
                                          inherited->name, inherited->owner->name));
  }
  std::vector<std::string_view> candidates;
  for (const host::EventInfo &event : checker.selfClass->events) candidates.push_back(event.name);
  checker.Fail(raised.span, fmt::format("the class {} declares no event \"{}\"{}", checker.selfClass->name, raised.name,
                                        Suggestion(raised.name, candidates)));
}

/// What a name means in a method because its class has a member of that name.
bool FindOwnMember(Checker &checker, std::string_view name, Resolution &resolution) {
  if (checker.selfClass == nullptr) return false;
  Resolution base;
  base.span = resolution.span;
  if (checker.hasSelf) {
    base.value = MakeSelf(*checker.selfClass, resolution.span);
    if (IsSelf(name)) {
      resolution.value = std::move(base.value);
      return true;
    }
    if (FindMemberOfValue(checker, base, resolution)) return true;
    if (FindRaisedEvent(checker, name, resolution)) return true;
  } else {
    if (IsSelf(name)) checker.Fail(resolution.span, "a shared method has no object, so there is no Self");
    base.kind = Resolution::Kind::kType;
    base.type = Type::Class(*checker.selfClass);
    if (FindMemberOfType(checker, base, resolution)) return true;
  }
  for (const host::ClassInfo *around = ScriptPartOf(checker.selfClass)->container; around != nullptr;
       around = ScriptPartOf(around)->container) {
    base.type = Type::Class(*around);
    if (FindMemberOfType(checker, base, resolution)) return true;
  }
  resolution.kind = Resolution::Kind::kValue;
  return false;
}

/// What a name means because modules have a member of that name which is known without theirs.
bool FindModuleMember(Checker &checker, std::string_view name, Resolution &resolution) {
  const host::ClassInfo *first = nullptr;
  for (const host::ClassInfo *module : checker.ModulesWith(name)) {
    Resolution base;
    base.type = Type::Class(*module);
    Resolution found;
    found.span = resolution.span;
    found.name = name;
    if (!FindMemberOfType(checker, base, found)) continue;
    if (first == nullptr) {
      first = module;
      resolution = std::move(found);
    } else if (resolution.kind == Resolution::Kind::kCallables && found.kind == Resolution::Kind::kCallables) {
      for (Callable &callable : found.callables) resolution.callables.push_back(std::move(callable));
    } else {
      checker.Fail(resolution.span, fmt::format("\"{0}\" is in several modules; write {1}.{0} or {2}.{0}", name,
                                                first->name, module->name));
    }
  }
  return first != nullptr;
}

/// `Super.name`: the member that the class inherits, even where it has one of its own.
Resolution ResolveSuper(Checker &checker, const syntax::Member &member) {
  if (!checker.hasSelf) checker.Fail(member.base->span, "\"Super\" is only known in the methods of objects");
  const host::ClassInfo *superclass = checker.selfClass->superclass;
  if (superclass == nullptr) {
    checker.Fail(member.base->span, fmt::format("the class {} inherits from no other", checker.selfClass->name));
  }
  Resolution base;
  base.span = member.base->span;
  base.isSuper = true;
  base.value = MakeSelf(*superclass, base.span);
  Resolution resolution;
  resolution.span = member.span;
  resolution.name = member.name;
  if (FindMemberOfValue(checker, base, resolution)) return resolution;
  FailUnknownMember(checker, base, member, Type::Class(*superclass));
}

/// `EndOfLine.Windows`: what the library lists under the name of one of its functions.
bool FindMemberOfFunction(Checker &checker, const Resolution &base, Resolution &resolution) {
  if (base.kind != Resolution::Kind::kCallables || base.value || base.callables.front().Library() == nullptr) {
    return false;
  }
  return FindMemberOfNamespace(checker, base, resolution);
}

Resolution ResolveMember(Checker &checker, const syntax::Member &member) {
  if (checker.selfClass != nullptr && member.base->kind == syntax::ExpressionKind::kName &&
      SameName(static_cast<const syntax::Name &>(*member.base).name, "Super")) {
    return ResolveSuper(checker, member);
  }
  Resolution base = Resolve(checker, *member.base);
  Resolution resolution;
  resolution.span = member.span;
  resolution.name = member.name;
  switch (base.kind) {
    case Resolution::Kind::kType:
      if (FindMemberOfType(checker, base, resolution)) return resolution;
      FailUnknownMember(checker, base, member, base.type);
    case Resolution::Kind::kModule:
      if (base.module == nullptr ? FindMemberOfType(checker, base, resolution) : FindMemberOfModule(base, resolution)) {
        return resolution;
      }
      FailUnknownMember(checker, base, member, base.type);
    case Resolution::Kind::kNamespace:
      if (FindMemberOfNamespace(checker, base, resolution)) return resolution;
      FailUnknownMember(checker, base, member, {});
    default:
      break;
  }
  if (FindMemberOfFunction(checker, base, resolution)) return resolution;
  // `Page.PageSizeEnum` where a variable is called "page" too.
  if (member.base->kind == syntax::ExpressionKind::kName) {
    Resolution type;
    type.span = base.span;
    if (FindTypeName(checker, static_cast<const syntax::Name &>(*member.base).name, type) &&
        type.kind == Resolution::Kind::kType && type.type.IsObject() &&
        type.type.objectClass()->FindEnumeration(member.name) != nullptr) {
      FindMemberOfType(checker, type, resolution);
      return resolution;
    }
  }
  Resolution receiver;
  receiver.span = base.span;
  receiver.value = ToValue(checker, std::move(base));
  const Type type = receiver.value->type;
  if (type.IsNone()) checker.Fail(receiver.span, "this is the call of a Sub, which has no value");
  if (FindMemberOfValue(checker, receiver, resolution)) return resolution;
  FailUnknownMember(checker, receiver, member, type);
}

}  // namespace

Resolution Resolve(Checker &checker, const syntax::Expression &expression) {
  if (expression.kind == syntax::ExpressionKind::kName) {
    return ResolveName(checker, static_cast<const syntax::Name &>(expression).name, expression.span);
  }
  if (expression.kind == syntax::ExpressionKind::kMember) {
    return ResolveMember(checker, static_cast<const syntax::Member &>(expression));
  }
  if (expression.kind == syntax::ExpressionKind::kRaiseEvent) {
    return ResolveRaiseEvent(checker, static_cast<const syntax::RaiseEvent &>(expression));
  }
  Resolution resolution;
  resolution.span = expression.span;
  resolution.value = CheckValue(checker, expression);
  return resolution;
}

Resolution ResolveName(Checker &checker, std::string_view name, Span span) {
  Resolution resolution;
  resolution.span = span;
  resolution.name = name;
  if (checker.FindLocal(name) == nullptr && FindOwnMember(checker, name, resolution)) return resolution;
  if (FindValueName(checker, name, span, resolution) || FindProcedureName(checker, name, resolution) ||
      FindModuleMember(checker, name, resolution) || FindCallableName(checker, name, resolution) ||
      FindTypeName(checker, name, resolution)) {
    return resolution;
  }
  FailUnknownName(checker, name, span);
}

}  // namespace quillbar::language
