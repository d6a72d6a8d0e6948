// SPDX-License-Identifier: MIT
#include "host/runtime/class_model.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>

#include "host/runtime/host_error.h"
#include "interface/declaration.h"

namespace quillbar::host {
namespace {

template <class Infos>
auto FindByName(const Infos &infos, std::string_view name) -> decltype(&*infos.begin()) {
  const auto found = std::ranges::find_if(infos, [name](const auto &info) { return SameName(info.name, name); });
  return found == infos.end() ? nullptr : &*found;
}

std::string WithOwner(const ClassInfo *owner, const std::string &member) {
  return owner == nullptr ? member : owner->name + "." + member;
}

bool SameParameters(const MethodInfo &a, const MethodInfo &b) {
  return std::ranges::equal(a.parameters, b.parameters, [](const ParameterInfo &left, const ParameterInfo &right) {
    return left.type == right.type && left.byRef == right.byRef;
  });
}

}  // namespace

Value ReadDefault(std::string_view text, Type type) {
  if (text.empty() || SameName(text, "Nil")) return Value::Zero(type);
  if (SameName(text, "True") || SameName(text, "False")) return Value(SameName(text, "True")).ConvertedTo(type);
  if (text.size() >= 2 && text.front() == '"' && text.back() == '"') {
    return Value(text.substr(1, text.size() - 2)).ConvertedTo(type);
  }
  if (const auto member = ReadEnumerationMember(fmt::format("value = {}", text))) {
    return Value(member->value).ConvertedTo(type);
  }
  double number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error == std::errc() && end == text.data() + text.size()) return Value(number).ConvertedTo(type);
  throw HostError(ErrorKind::kPlugin, fmt::format("the default value \"{}\" can't be read", text));
}

bool MethodInfo::IsConstructor() const { return !isShared && SameName(name, "Constructor"); }

std::string MethodInfo::FullName() const { return WithOwner(owner, declaration); }
std::string PropertyInfo::FullName() const { return WithOwner(owner, name); }
std::string EventInfo::FullName() const { return WithOwner(owner, declaration); }

const EnumerationMemberInfo *EnumerationInfo::Find(std::string_view memberName) const {
  return FindByName(members, memberName);
}

const EnumerationMemberInfo *EnumerationInfo::FindValue(std::int64_t value) const {
  const auto found = std::ranges::find(members, value, &EnumerationMemberInfo::value);
  return found == members.end() ? nullptr : &*found;
}

std::string ClassInfo::QualifiedName() const { return module == nullptr ? name : module->name + "." + name; }

int ClassInfo::DistanceTo(const ClassInfo &other) const {
  int distance = 0;
  for (const ClassInfo *level = this; level != nullptr; level = level->superclass, ++distance) {
    if (level == &other) return distance;
    if (!other.isInterface) continue;
    // The nearer ones come first.
    const auto found = std::ranges::find(level->interfaces, &other);
    if (found != level->interfaces.end()) return distance + 1 + static_cast<int>(found - level->interfaces.begin());
  }
  return other.isRoot ? distance : -1;
}

std::vector<const MethodInfo *> ClassInfo::FindMethods(std::string_view methodName) const {
  const bool constructors = SameName(methodName, "Constructor");
  // Conversions take nothing: it is their results that tell them apart. A class of a script has only one.
  const bool conversions = SameName(methodName, "Operator_Convert");
  std::vector<const MethodInfo *> found;
  const auto add = [&](const MethodInfo &method) {
    const bool hidden = std::ranges::any_of(found, [&](const MethodInfo *nearer) {
      const bool areRegistered = nearer->code == nullptr && method.code == nullptr;
      return SameParameters(*nearer, method) && !(conversions && areRegistered && nearer->result != method.result);
    });
    if (!hidden) found.push_back(&method);
  };
  for (const ClassInfo *level = this; level != nullptr; level = level->superclass) {
    for (const MethodInfo &method : level->methods) {
      if (SameName(method.name, methodName)) add(method);
    }
    if (constructors && !found.empty()) break;
  }
  if (isInterface) {
    for (const ClassInfo *extended : interfaces) {
      for (const MethodInfo &method : extended->methods) {
        if (SameName(method.name, methodName)) add(method);
      }
    }
  }
  return found;
}

const PropertyInfo *ClassInfo::FindProperty(std::string_view propertyName) const {
  for (const ClassInfo *level = this; level != nullptr; level = level->superclass) {
    if (const PropertyInfo *property = FindByName(level->properties, propertyName)) return property;
  }
  return nullptr;
}

const EventInfo *ClassInfo::FindEvent(std::string_view eventName) const {
  for (const ClassInfo *level = this; level != nullptr; level = level->superclass) {
    if (const EventInfo *event = FindByName(level->events, eventName)) return event;
  }
  return nullptr;
}

const EnumerationInfo *ClassInfo::FindEnumeration(std::string_view enumerationName) const {
  for (const ClassInfo *level = this; level != nullptr; level = level->superclass) {
    if (const EnumerationInfo *info = FindByName(level->enumerations, enumerationName)) return info;
  }
  return nullptr;
}

}  // namespace quillbar::host
