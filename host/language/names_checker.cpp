// SPDX-License-Identifier: MIT
// What names stand for: the part of ExpressionChecker that looks them up.

#include <fmt/format.h>

#include <string>
#include <utility>

#include "host/language/expression_checker.h"
#include "host/language/literals.h"
#include "host/language/members.h"
#include "host/language/names.h"

namespace quillbar::language {
namespace {

using host::Type;
using host::TypeKind;

constexpr std::string_view kNamespaces[] = {"System", "Encodings", "Bitwise"};

/// The owners under which the library lists methods for values of this type, best first.
std::vector<std::string_view> LibraryOwners(Type type) {
  if (type.IsArray()) return {"Array"};
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
    case TypeKind::kUInt64:
      return {"UInt64"};
    default:
      break;
  }
  if (host::IsInteger(type.kind())) return {"Integer"};
  return {};
}

/// "Integer" for every type of whole numbers, and so on: where shared functions of a built-in type are
/// listed.
std::string_view SharedOwner(Type type) {
  const std::vector<std::string_view> owners = LibraryOwners(type);
  if (type.kind() == TypeKind::kUInt64) return "Integer";
  if (type.kind() == TypeKind::kSingle) return "Double";
  return owners.empty() ? std::string_view() : owners.front();
}

ExpressionPointer MakeMember(const host::EnumerationInfo &info, const host::EnumerationMemberInfo &member, Span span) {
  return std::make_unique<IntegerConstant>(Type::Enumeration(info), span, member.value);
}

}  // namespace

Meaning ExpressionChecker::Resolve(const syntax::Expression &expression) {
  if (expression.kind == syntax::ExpressionKind::kName) {
    return ResolveName(static_cast<const syntax::Name &>(expression).name, expression.span);
  }
  if (expression.kind == syntax::ExpressionKind::kMember) {
    return ResolveMember(static_cast<const syntax::Member &>(expression));
  }
  Meaning meaning;
  meaning.span = expression.span;
  meaning.value = CheckValue(expression);
  return meaning;
}

Meaning ExpressionChecker::ResolveName(std::string_view name, Span span) {
  Meaning meaning;
  meaning.span = span;
  meaning.name = name;
  if (FindValueName(name, span, meaning) || FindCallableName(name, meaning) || FindTypeName(name, meaning)) {
    return meaning;
  }
  FailUnknownName(name, span);
}

bool ExpressionChecker::FindValueName(std::string_view name, Span span, Meaning &meaning) {
  const Symbol *symbol = FindSymbol(name);
  if (symbol == nullptr) return false;
  meaning.kind = Meaning::Kind::kValue;
  switch (symbol->kind) {
    case Symbol::Kind::kBroken:
      Fail(span, {});
    case Symbol::Kind::kConstant:
      meaning.value = MakeConstant(symbol->constant, span);
      return true;
    default:
      break;
  }
  if (!symbol->isDeclared && IsInMain()) {
    // A function or type may have the same name; the variable isn't there yet.
    Meaning other;
    if (FindCallableName(name, other) || FindTypeName(name, other)) return false;
    Fail(span, fmt::format("\"{}\" is used before its declaration in line {}", symbol->name,
                           source_.Locate(symbol->span.begin).line));
  }
  meaning.value = MakeVariable(*symbol, span);
  return true;
}

bool ExpressionChecker::FindCallableName(std::string_view name, Meaning &meaning) {
  for (const ScriptProcedure &procedure : scriptProcedures_) {
    if (SameName(procedure.name, name)) meaning.callables.push_back(MakeCallable(procedure));
  }
  if (!meaning.callables.empty()) {
    meaning.kind = Meaning::Kind::kProcedures;
    return true;
  }
  meaning.kind = Meaning::Kind::kCallables;
  for (const LibraryFunction *function : FindLibraryFunctions(name, LibraryFunction::Form::kFunction)) {
    meaning.callables.push_back(MakeCallable(*function, {}, TypeKind::kNil, Registry()));
  }
  if (!meaning.callables.empty()) return true;
  for (const host::ModuleInfo *module : Registry().Modules()) {
    for (const host::MethodInfo &method : module->methods) {
      if (SameName(method.name, name)) meaning.callables.push_back(MakeCallable(method));
    }
  }
  return !meaning.callables.empty();
}

bool ExpressionChecker::FindTypeName(std::string_view name, Meaning &meaning) {
  meaning.type = FindType(name);
  if (!meaning.type.IsNone()) {
    meaning.kind = Meaning::Kind::kType;
    return true;
  }
  meaning.module = Registry().FindModule(name);
  if (meaning.module != nullptr) {
    meaning.kind = Meaning::Kind::kModule;
    return true;
  }
  for (const std::string_view candidate : kNamespaces) {
    if (!SameName(candidate, name)) continue;
    meaning.kind = Meaning::Kind::kNamespace;
    meaning.name = candidate;
    return true;
  }
  return false;
}

void ExpressionChecker::FailUnknownName(std::string_view name, Span span) {
  std::vector<std::string_view> candidates;
  for (const Scope &scope : scopes_) scope.AppendNames(candidates);
  globals_.AppendNames(candidates);
  for (const ScriptProcedure &procedure : scriptProcedures_) candidates.push_back(procedure.name);
  for (const host::ClassInfo *info : Registry().Classes()) candidates.push_back(info->name);
  for (const std::string_view function : LibraryNames(LibraryFunction::Form::kFunction)) candidates.push_back(function);
  Fail(span, fmt::format("\"{}\" is not known{}", name, Suggestion(name, candidates)));
}

// -- Members ---------------------------------------------------------------------------------------------

Meaning ExpressionChecker::ResolveMember(const syntax::Member &member) {
  Meaning base = Resolve(*member.base);
  Meaning meaning;
  meaning.span = member.span;
  meaning.name = member.name;
  switch (base.kind) {
    case Meaning::Kind::kType:
      if (FindMemberOfType(base, meaning)) return meaning;
      FailUnknownMember(base, member, base.type);
    case Meaning::Kind::kModule:
      if (FindMemberOfModule(base, meaning)) return meaning;
      FailUnknownMember(base, member, {});
    case Meaning::Kind::kNamespace:
      if (FindMemberOfNamespace(base, meaning)) return meaning;
      FailUnknownMember(base, member, {});
    default:
      break;
  }
  // `Page.PageSizeEnum` where a variable is called "page" too.
  if (member.base->kind == syntax::ExpressionKind::kName) {
    Meaning type;
    type.span = base.span;
    if (FindTypeName(static_cast<const syntax::Name &>(*member.base).name, type) && type.kind == Meaning::Kind::kType &&
        type.type.IsObject() && type.type.objectClass()->FindEnumeration(member.name) != nullptr) {
      FindMemberOfType(type, meaning);
      return meaning;
    }
  }
  Meaning receiver;
  receiver.span = base.span;
  receiver.value = ToValue(std::move(base));
  const Type type = receiver.value->type;
  if (type.IsNone()) Fail(receiver.span, "this is the call of a Sub, which has no value");
  if (FindMemberOfValue(receiver, meaning)) return meaning;
  FailUnknownMember(receiver, member, type);
}

bool ExpressionChecker::FindMemberOfType(const Meaning &base, Meaning &meaning) {
  if (const host::EnumerationInfo *info = base.type.enumeration()) {
    const host::EnumerationMemberInfo *member = info->Find(meaning.name);
    if (member == nullptr) return false;
    meaning.value = MakeMember(*info, *member, meaning.span);
    return true;
  }
  meaning.kind = Meaning::Kind::kCallables;
  if (const host::ClassInfo *info = base.type.objectClass()) {
    if (const host::EnumerationInfo *enumeration = info->FindEnumeration(meaning.name)) {
      meaning.kind = Meaning::Kind::kType;
      meaning.type = Type::Enumeration(*enumeration);
      return true;
    }
    const host::PropertyInfo *property = info->FindProperty(meaning.name);
    if (property != nullptr && property->isShared) {
      meaning.kind = Meaning::Kind::kValue;
      meaning.value = std::make_unique<PropertyPlace>(meaning.span, *property, nullptr);
      return true;
    }
    for (const host::MethodInfo *method : info->FindMethods(meaning.name)) {
      if (method->isShared) meaning.callables.push_back(MakeCallable(*method));
    }
  }
  const std::string_view owner = SharedOwner(base.type);
  if (owner.empty()) return !meaning.callables.empty();
  for (const LibraryFunction *function : FindLibraryFunctions(meaning.name, LibraryFunction::Form::kShared, owner)) {
    meaning.callables.push_back(MakeCallable(*function, {}, TypeKind::kNil, Registry()));
  }
  return !meaning.callables.empty();
}

bool ExpressionChecker::FindMemberOfModule(const Meaning &base, Meaning &meaning) {
  const host::ModuleInfo &module = *base.module;
  for (const host::ClassInfo *info : module.classes) {
    if (!SameName(info->name, meaning.name)) continue;
    meaning.kind = Meaning::Kind::kType;
    meaning.type = Type::Class(*info);
    return true;
  }
  for (const host::EnumerationInfo &enumeration : module.enumerations) {
    if (!SameName(enumeration.name, meaning.name)) continue;
    meaning.kind = Meaning::Kind::kType;
    meaning.type = Type::Enumeration(enumeration);
    return true;
  }
  for (const host::PropertyInfo &property : module.properties) {
    if (!SameName(property.name, meaning.name)) continue;
    meaning.kind = Meaning::Kind::kValue;
    meaning.value = std::make_unique<PropertyPlace>(meaning.span, property, nullptr);
    return true;
  }
  meaning.kind = Meaning::Kind::kCallables;
  for (const host::MethodInfo &method : module.methods) {
    if (SameName(method.name, meaning.name)) meaning.callables.push_back(MakeCallable(method));
  }
  return !meaning.callables.empty();
}

bool ExpressionChecker::FindMemberOfNamespace(const Meaning &base, Meaning &meaning) {
  if (SameName(base.name, "Encodings")) {
    const host::EnumerationMemberInfo *member = TextEncodingType().Find(meaning.name);
    if (member == nullptr) return false;
    meaning.value = MakeMember(TextEncodingType(), *member, meaning.span);
    return true;
  }
  meaning.kind = Meaning::Kind::kCallables;
  for (const LibraryFunction *function :
       FindLibraryFunctions(meaning.name, LibraryFunction::Form::kShared, base.name)) {
    meaning.callables.push_back(MakeCallable(*function, {}, TypeKind::kNil, Registry()));
  }
  return !meaning.callables.empty();
}

bool ExpressionChecker::FindMemberOfValue(Meaning &base, Meaning &meaning) {
  const Type type = base.value->type;
  if (!type.IsObject()) {
    if (!FindLibraryMethod(type, meaning)) return false;
    meaning.value = std::move(base.value);
    return true;
  }
  const host::ClassInfo &info = *type.objectClass();
  if (const host::PropertyInfo *property = info.FindProperty(meaning.name)) {
    meaning.value =
        std::make_unique<PropertyPlace>(meaning.span, *property, property->isShared ? nullptr : std::move(base.value));
    return true;
  }
  for (const host::MethodInfo *method : info.FindMethods(meaning.name)) {
    if (!method->IsConstructor()) meaning.callables.push_back(MakeCallable(*method));
  }
  if (!meaning.callables.empty()) {
    meaning.kind = Meaning::Kind::kCallables;
    meaning.value = std::move(base.value);
    return true;
  }
  if (FindLibraryMethod(type, meaning)) {
    meaning.value = std::move(base.value);
    return true;
  }
  if (const host::EnumerationInfo *enumeration = info.FindEnumeration(meaning.name)) {
    meaning.kind = Meaning::Kind::kType;
    meaning.type = Type::Enumeration(*enumeration);
    return true;
  }
  return false;
}

bool ExpressionChecker::FindLibraryMethod(Type receiver, Meaning &meaning) const {
  const Type element = receiver.IsArray() ? receiver.Element() : Type();
  for (const std::string_view owner : LibraryOwners(receiver)) {
    for (const LibraryFunction *function : FindLibraryFunctions(meaning.name, LibraryFunction::Form::kMethod, owner)) {
      meaning.callables.push_back(MakeCallable(*function, receiver, element, Registry()));
    }
  }
  if (meaning.callables.empty()) return false;
  meaning.kind = Meaning::Kind::kCallables;
  return true;
}

void ExpressionChecker::FailUnknownMember(const Meaning &base, const syntax::Member &member, Type receiver) {
  std::vector<std::string_view> candidates;
  std::string owner = receiver.IsNone() ? base.name : Named(receiver);
  if (receiver.IsEnumeration()) {
    for (const host::EnumerationMemberInfo &value : receiver.enumeration()->members) candidates.push_back(value.name);
  } else if (receiver.IsObject()) {
    for (const host::ClassInfo *info = receiver.objectClass(); info != nullptr; info = info->superclass) {
      if (info->FindEvent(member.name) != nullptr) {
        Fail(member.nameSpan,
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
      Fail(member.span, fmt::format("the class {} comes from a plugin that isn't loaded", owner));
    }
  } else {
    for (const std::string_view name : LibraryOwners(receiver)) {
      for (const std::string_view method : LibraryNames(LibraryFunction::Form::kMethod, name))
        candidates.push_back(method);
    }
    if (base.kind == Meaning::Kind::kNamespace) {
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
  Fail(member.nameSpan,
       fmt::format("{} has no member \"{}\"{}", owner, member.name, Suggestion(member.name, candidates)));
}

}  // namespace quillbar::language
