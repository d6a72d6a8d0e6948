// SPDX-License-Identifier: MIT
#include <algorithm>
#include <nlohmann/json.hpp>

#include "host/program/describe.h"

namespace quillbar::program {
namespace {

using host::ClassInfo;
using host::EnumerationInfo;
using host::EventInfo;
using host::MethodInfo;
using host::ModuleInfo;
using host::ParameterInfo;
using host::PropertyInfo;
// Members stay in the order in which they are written.
using Json = nlohmann::ordered_json;

template <class Infos, class Describe>
Json ListOf(const Infos &infos, Describe describe) {
  Json list = Json::array();
  for (const auto &info : infos) list.push_back(describe(info));
  return list;
}

Json TypeName(host::Type type) { return type.IsNone() ? Json(nullptr) : Json(type.Name()); }

Json DescribeParameter(const ParameterInfo &info) {
  return {{"name", info.name},
          {"type", TypeName(info.type)},
          {"byRef", info.byRef},
          {"optional", info.optional},
          {"default", info.defaultText.empty() ? Json(nullptr) : Json(info.defaultText)}};
}

Json DescribeProperty(const PropertyInfo &info) {
  return {{"name", info.name},
          {"type", info.typeName},
          {"readable", !info.IsWriteOnly()},
          {"writable", !info.IsReadOnly()},
          {"shared", info.isShared}};
}

Json DescribeMethod(const MethodInfo &info) {
  return {{"name", info.name},
          {"declaration", info.declaration},
          {"parameters", ListOf(info.parameters, DescribeParameter)},
          {"result", TypeName(info.result)},
          {"assignable", info.setter != nullptr},
          {"shared", info.owner != nullptr && info.isShared}};
}

Json DescribeEvent(const EventInfo &info) {
  return {{"name", info.name},
          {"declaration", info.declaration},
          {"parameters", ListOf(info.parameters, DescribeParameter)},
          {"result", TypeName(info.result)}};
}

Json DescribeEnumeration(const EnumerationInfo &info) {
  return {{"name", info.name},
          {"qualifiedName", info.qualifiedName},
          {"type", info.underlyingName},
          {"members", ListOf(info.members, [](const host::EnumerationMemberInfo &member) {
             return Json{{"name", member.name}, {"value", member.value}};
           })}};
}

Json DescribeClass(const ClassInfo &info) {
  Json constructors = Json::array();
  Json methods = Json::array();
  for (const MethodInfo &method : info.methods) {
    if (method.IsConstructor()) {
      if (!method.IsPrivate()) constructors.push_back(DescribeMethod(method));
    } else {
      methods.push_back(DescribeMethod(method));
    }
  }
  return {{"name", info.name},
          {"qualifiedName", info.QualifiedName()},
          {"superclass", info.superclass == nullptr ? Json(nullptr) : Json(info.superclass->QualifiedName())},
          {"creatable", IsCreatable(info)},
          {"properties", ListOf(info.properties, DescribeProperty)},
          {"constructors", std::move(constructors)},
          {"methods", std::move(methods)},
          {"events", ListOf(info.events, DescribeEvent)},
          {"enumerations", ListOf(info.enumerations, DescribeEnumeration)}};
}

Json DescribeModule(const ModuleInfo &info) {
  return {{"name", info.name},
          {"methods", ListOf(info.methods, DescribeMethod)},
          {"enumerations", ListOf(info.enumerations, DescribeEnumeration)},
          {"classes", ListOf(info.classes, [](const ClassInfo *member) { return DescribeClass(*member); })}};
}

}  // namespace

std::string DescribeAsJson(const host::Registry &registry) {
  const Json description{
      {"modules", ListOf(registry.Modules(), [](const ModuleInfo *info) { return DescribeModule(*info); })},
      {"classes",
       ListOf(ClassesOutsideOfModules(registry), [](const ClassInfo *info) { return DescribeClass(*info); })}};
  // Declarations are a plugin's bytes; what isn't UTF-8 in them becomes U+FFFD.
  return description.dump(2, ' ', false, Json::error_handler_t::replace) + '\n';
}

}  // namespace quillbar::program
