// SPDX-License-Identifier: MIT
#include "host/runtime/host.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <stdexcept>

#include "host/runtime/array_store.h"
#include "host/runtime/builtin/builtin_classes.h"
#include "host/runtime/conversion.h"
#include "host/runtime/event_binding.h"
#include "host/runtime/internals.h"
#include "host/runtime/overload.h"
#include "host/runtime/platform/file_system.h"
#include "host/runtime/plugin_call.h"
#include "host/runtime/services.h"
#include "host/runtime/string_pool.h"
#include "interface/services.h"

namespace quillbar::host {
namespace {

constexpr const char *kEntryPoint = "REALPluginMain";

void *ResolveForPlugin(const char *name) {
  return name == nullptr || Host::Current() == nullptr ? nullptr : Host::Current()->Resolve(name);
}

std::string TypeList(std::span<const Type> types) {
  std::string text;
  for (const Type &type : types) {
    if (!text.empty()) text += ", ";
    text += type.Name();
  }
  return "(" + text + ")";
}

std::vector<Type> TypesOf(std::span<const Value> values) {
  std::vector<Type> types;
  for (const Value &value : values) types.push_back(value.type());
  return types;
}

const ClassInfo &ClassOfOrThrow(const ObjectHandle &object, std::string_view member) {
  if (object.IsNil()) {
    throw HostError(ErrorKind::kNilObject, fmt::format("\"{}\" was used on Nil", member));
  }
  return object.Class();
}

/// The function of a member's part, made with `parameters()` on first use.
template <class Parameters>
const ForeignFunction &Prepared(Internals &internals, RunningMember member, FunctionAddress address, bool hasInstance,
                                Parameters parameters, Type result) {
  const std::uintptr_t key = reinterpret_cast<std::uintptr_t>(member.info) + static_cast<std::uintptr_t>(member.part);
  const auto found = internals.functions.find(key);
  if (found != internals.functions.end()) return found->second;
  return internals.functions.try_emplace(key, member, address, hasInstance, parameters(), result).first->second;
}

ParameterInfo Parameter(std::string_view name, Type type) {
  ParameterInfo parameter;
  parameter.name = name;
  parameter.type = type;
  return parameter;
}

void CheckInstance(const ClassInfo *owner, const ObjectHandle &object, std::string_view member) {
  const ClassInfo &info = ClassOfOrThrow(object, member);
  if (owner != nullptr && !info.IsSubclassOf(*owner)) {
    throw HostError(ErrorKind::kTypeMismatch,
                    fmt::format("\"{}\" belongs to class {}, not to {}", member, owner->name, info.name));
  }
}

/// Converts the arguments to the parameters' types and adds those that were left out.
std::vector<Value> Fit(const MethodInfo &method, std::span<const Value> arguments) {
  if (arguments.size() > method.parameters.size()) {
    throw HostError(ErrorKind::kArguments, fmt::format("{} takes {} arguments, {} were given", method.FullName(),
                                                       method.parameters.size(), arguments.size()));
  }
  std::vector<Value> fitted;
  fitted.reserve(method.parameters.size() + 1);
  for (std::size_t i = 0; i < method.parameters.size(); ++i) {
    const ParameterInfo &parameter = method.parameters[i];
    if (i < arguments.size()) {
      fitted.push_back(arguments[i].ConvertedTo(parameter.type));
    } else if (parameter.optional) {
      fitted.push_back(parameter.defaultValue);
    } else {
      throw HostError(ErrorKind::kArguments,
                      fmt::format("{} needs the argument \"{}\"", method.FullName(), parameter.name));
    }
  }
  return fitted;
}

const PropertyInfo &PropertyOrThrow(const ObjectHandle &object, std::string_view name) {
  const ClassInfo &info = ClassOfOrThrow(object, name);
  if (const PropertyInfo *property = info.FindProperty(name)) return *property;
  throw HostError(ErrorKind::kUnknownName, fmt::format("class {} has no property \"{}\"", info.name, name));
}

std::vector<const MethodInfo *> MethodsOrThrow(const ObjectHandle &object, std::string_view name) {
  const ClassInfo &info = ClassOfOrThrow(object, name);
  std::vector<const MethodInfo *> methods = info.FindMethods(name);
  if (methods.empty()) {
    throw HostError(ErrorKind::kUnknownName, fmt::format("class {} has no method \"{}\"", info.name, name));
  }
  return methods;
}

/// A misspelt name would switch nothing off, and a test that relies on it would prove nothing.
void CheckIsOffered(const Registry &registry, const std::string &name) {
  if (FindService(name) != nullptr || FindGlobalMethod(name) != nullptr) return;
  for (const ClassInfo *info : registry.Classes()) {
    if (std::ranges::find(info->methods, name, &MethodInfo::declaration) != info->methods.end()) return;
  }
  throw HostError(ErrorKind::kUnknownName, fmt::format("\"{}\" can't be missing: no host offers it", name));
}

}  // namespace

Host::Host(HostOptions options) : options_(std::move(options)), internals_(std::make_unique<Internals>()) {
  if (current_ != nullptr) throw std::logic_error("a process has one host at a time, and there is one already");
  current_ = this;
  try {
    RegisterBuiltInClasses(*this);
    Link();
    for (const std::string &name : options_.missing) CheckIsOffered(registry_, name);
  } catch (...) {
    current_ = nullptr;
    throw;
  }
}

Host::~Host() {
  internals_->objects.DestroyAll();
  internals_->ledger.ReleaseEverything();
  internals_.reset();
  current_ = nullptr;
}

// -- Plugins --------------------------------------------------------------------------------------

void Host::LoadPlugin(const std::filesystem::path &file, bool mayStayInert) {
  const auto fail = [&](const std::string &reason) {
    throw HostError(ErrorKind::kPlugin, fmt::format("the plugin \"{}\" {}", platform::Utf8Path(file), reason));
  };
  std::error_code error;
  const std::filesystem::path whole = platform::CanonicalPath(file, error);
  if (error) fail(fmt::format("can't be found ({}); give the path of its library file", platform::ErrorText(error)));
  if (platform::KindOf(whole) == platform::FileKind::kFolder) fail("is a folder; give the path of its library file");
  for (const LoadedPlugin &plugin : internals_->plugins) {
    if (plugin.file == whole) fail("is loaded already");
  }
  const std::size_t before = internals_->registrations;
  try {
    internals_->plugins.push_back({whole, platform::SharedLibrary(whole)});
  } catch (const std::runtime_error &problem) {
    fail(fmt::format("can't be loaded: {}", problem.what()));
  }
  const auto enter = reinterpret_cast<void (*)(Resolver)>(internals_->plugins.back().library.Symbol(kEntryPoint));
  if (enter == nullptr) {
    internals_->plugins.pop_back();
    fail(fmt::format("exports no {}, so it is not a plugin for this host", kEntryPoint));
  }
  {
    const ReferenceLedger::Frame frame(internals_->ledger, {RunningMember::Part::kEntry, nullptr});
    enter(&ResolveForPlugin);
  }
  try {
    internals_->RethrowPending();
    Link();
  } catch (const HostError &problem) {
    fail(fmt::format("registers something invalid: {}", problem.what()));
  }
  if (internals_->registrations == before && !mayStayInert) {
    fail(fmt::format("registered no class for a host of version {:.2f}; it may need a newer one", options_.version));
  }
}

void Host::Register(ClassRecord &record, bool isBuiltIn) {
  registry_.Register(record, isBuiltIn);
  ++internals_->registrations;
}

void Host::Register(ModuleRecord &record) {
  registry_.Register(record);
  ++internals_->registrations;
}

void Host::Link() {
  registry_.Link();
  internals_->functions.clear();
}

void *Host::Resolve(const char *service) const {
  return options_.missing.contains(std::string_view(service)) ? nullptr : FindService(service);
}

// -- Objects --------------------------------------------------------------------------------------

ObjectHandle Host::Create(std::string_view className, std::initializer_list<Value> arguments) {
  std::vector<Value> values(arguments);
  return Create(Class(className), values);
}

ObjectHandle Host::Create(const ClassInfo &info, std::span<Value> arguments) {
  const std::vector<const MethodInfo *> constructors = info.FindMethods("Constructor");
  if (constructors.empty()) {
    if (arguments.empty()) return Create(info, nullptr, arguments);
    throw HostError(ErrorKind::kArguments, fmt::format("class {} has no constructor with arguments", info.name));
  }
  return Create(info, &ChooseOverload(constructors, TypesOf(arguments)), arguments);
}

ObjectHandle Host::Create(const ClassInfo &info, const MethodInfo *constructor, std::span<Value> arguments) {
  if (constructor != nullptr && constructor->IsPrivate()) {
    throw HostError(
        ErrorKind::kNotAccessible,
        fmt::format("class {} has a private constructor: its objects are made by methods of other classes", info.name));
  }
  if (!info.isRegistered) {
    throw HostError(
        ErrorKind::kUnknownName,
        fmt::format("class {} is only mentioned in declarations; no plugin that is loaded has it", info.name));
  }
  ObjectHandle object = ObjectHandle::Adopt(internals_->objects.Create(info));
  internals_->RethrowPending();
  if (constructor != nullptr) Invoke(*constructor, object, arguments);
  return object;
}

Value Host::Call(const ObjectHandle &object, std::string_view method, std::initializer_list<Value> arguments) {
  std::vector<Value> values(arguments);
  return CallByRef(object, method, values);
}

Value Host::CallByRef(const ObjectHandle &object, std::string_view method, std::span<Value> arguments) {
  return Invoke(ChooseOverload(MethodsOrThrow(object, method), TypesOf(arguments)), object, arguments);
}

Value Host::Invoke(const MethodInfo &method, const ObjectHandle &object, std::span<Value> arguments) {
  if (!method.isShared) CheckInstance(method.owner, object, method.name);
  std::vector<Value> fitted = Fit(method, arguments);
  Value result = CallPlugin(*this, Prepare(method), object, fitted);
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    if (method.parameters[i].byRef) arguments[i] = std::move(fitted[i]);
  }
  return result;
}

void Host::InvokeSetter(const MethodInfo &method, const ObjectHandle &object, std::span<Value> arguments,
                        const Value &value) {
  const ForeignFunction &setter = PrepareSetter(method);
  if (!method.isShared) CheckInstance(method.owner, object, method.name);
  std::vector<Value> fitted = Fit(method, arguments);
  fitted.push_back(value.ConvertedTo(method.result));
  CallPlugin(*this, setter, object, fitted);
}

const ForeignFunction &Host::Prepare(const MethodInfo &method) {
  return Prepared(
      *internals_, {RunningMember::Part::kMethod, &method}, method.function, !method.isShared,
      [&] { return method.parameters; }, method.result);
}

const ForeignFunction &Host::PrepareSetter(const MethodInfo &method) {
  if (method.setter == nullptr) {
    throw HostError(ErrorKind::kNotAccessible, fmt::format("{} can't be assigned to", method.FullName()));
  }
  const auto parameters = [&] {
    std::vector<ParameterInfo> taken = method.parameters;
    taken.push_back(Parameter("value", method.result));
    return taken;
  };
  return Prepared(*internals_, {RunningMember::Part::kMethodSetter, &method}, method.setter, !method.isShared,
                  parameters, {});
}

const ForeignFunction &Host::PrepareGetter(const PropertyInfo &property) {
  if (property.IsWriteOnly()) {
    throw HostError(ErrorKind::kNotAccessible, fmt::format("the property {} can only be written", property.FullName()));
  }
  return Prepared(
      *internals_, {RunningMember::Part::kGetter, &property}, property.getter, !property.isShared,
      [] { return std::vector<ParameterInfo>(); }, property.type);
}

const ForeignFunction &Host::PrepareSetter(const PropertyInfo &property) {
  if (property.IsReadOnly()) {
    throw HostError(ErrorKind::kNotAccessible, fmt::format("the property {} is read-only", property.FullName()));
  }
  const auto parameters = [&] {
    return std::vector<ParameterInfo>{Parameter("parameter", Type::Integer()), Parameter("value", property.type)};
  };
  return Prepared(*internals_, {RunningMember::Part::kSetter, &property}, property.setter, !property.isShared,
                  parameters, {});
}

const MethodInfo &Host::ChooseOverload(std::span<const MethodInfo *const> overloads, std::span<const Type> types) {
  const auto choice = ChooseCheapest(overloads, [&](const MethodInfo *method) {
    return CallCost(method->parameters, types.size(), [&](std::size_t index, const ParameterInfo &parameter) {
      return ConversionCost(types[index], parameter.type, Conversions::kCodes);
    });
  });
  if (choice.best != nullptr && !choice.isAmbiguous) return **choice.best;
  std::string candidates;
  for (const MethodInfo *method : overloads) candidates += "\n  " + method->FullName();
  throw HostError(ErrorKind::kArguments,
                  fmt::format("{} arguments {}; there is{}{}",
                              choice.isAmbiguous ? "more than one method takes the" : "no method takes the",
                              TypeList(types), overloads.size() == 1 ? "" : " a choice of", candidates));
}

Value Host::Get(const ObjectHandle &object, std::string_view property) {
  return Get(object, PropertyOrThrow(object, property));
}

Value Host::Get(const ObjectHandle &object, const PropertyInfo &property) {
  if (!property.isShared) CheckInstance(property.owner, object, property.name);
  return CallPlugin(*this, PrepareGetter(property), object, {});
}

void Host::Set(const ObjectHandle &object, std::string_view property, const Value &value) {
  Set(object, PropertyOrThrow(object, property), value);
}

void Host::Set(const ObjectHandle &object, const PropertyInfo &property, const Value &value) {
  if (!property.isShared) CheckInstance(property.owner, object, property.name);
  const ForeignFunction &setter = PrepareSetter(property);
  std::array<Value, 2> arguments{Value::OfInteger(Type::Integer(), property.parameter),
                                 value.ConvertedTo(property.type)};
  CallPlugin(*this, setter, object, arguments);
}

void Host::SetEventHandler(const ObjectHandle &object, std::string_view event, EventHandler handler) {
  const ClassInfo &info = ClassOfOrThrow(object, event);
  const EventInfo *found = info.FindEvent(event);
  if (found == nullptr) {
    throw HostError(ErrorKind::kUnknownName, fmt::format("class {} has no event \"{}\"", info.name, event));
  }
  SetEventHandler(object, *found, std::move(handler));
}

void Host::SetEventHandler(const ObjectHandle &object, const EventInfo &event, EventHandler handler) {
  CheckInstance(event.owner, object, event.name);
  auto &handlers = ObjectStore::InstanceOf(object.Get()).handlers;
  std::erase_if(handlers, [&](const auto &binding) { return &binding->event() == &event; });
  if (handler) handlers.push_back(std::make_shared<EventBinding>(*this, object.Get(), event, std::move(handler)));
}

EventHandler Host::EventHandlerOf(const ObjectHandle &object, const EventInfo &event) const {
  for (const auto &binding : ObjectStore::InstanceOf(object.Get()).handlers) {
    if (&binding->event() == &event) return binding->handler();
  }
  return {};
}

void Host::ClearScriptObjects() {
  internals_->objects.ClearScriptObjects();
  ClearVariantArrays();
}

// -- Names ----------------------------------------------------------------------------------------

const ClassInfo &Host::Class(std::string_view name) const {
  if (const ClassInfo *info = registry_.FindClass(name)) return *info;
  throw HostError(ErrorKind::kUnknownName, fmt::format("there is no class \"{}\"", name));
}

Value Host::Constant(std::string_view name) const {
  const std::size_t dot = name.rfind('.');
  const EnumerationInfo *info =
      dot == std::string_view::npos ? nullptr : registry_.FindEnumeration(name.substr(0, dot));
  const EnumerationMemberInfo *member = info == nullptr ? nullptr : info->Find(name.substr(dot + 1));
  if (member == nullptr) throw HostError(ErrorKind::kUnknownName, fmt::format("there is no constant \"{}\"", name));
  return Value::OfInteger(Type::Enumeration(*info), member->value);
}

// -- Borders --------------------------------------------------------------------------------------

Host::Loan::Loan(Host &host, const StringHandle &string) : host_(host), string_(string) {
  Internals::Of(host_).ledger.Lend(string_.Get());
}

Host::Loan::Loan(Host &host, const ObjectHandle &object) : host_(host), object_(object) {
  Internals::Of(host_).objects.Lend(object_.Get());
}

Host::Loan::~Loan() {
  Internals::Of(host_).ledger.EndLoan(string_.Get());
  Internals::Of(host_).objects.EndLoan(object_.Get());
}

ObjectHandle Host::TakeResult(Object result) {
  if (result == nullptr) return {};
  ObjectStore &objects = internals_->objects;
  if (!objects.IsAlive(result)) {
    internals_->ledger.Note(ViolationKind::kWrongCount, "an address that is not a live object was returned");
    return {};
  }
  ObjectHandle handle(result);
  if (ObjectStore::InstanceOf(result).givers.empty()) {
    internals_->ledger.Note(
        ViolationKind::kWrongCount,
        fmt::format("an object of class {} was returned without a reference of its own", handle.Class().name));
    return handle;
  }
  objects.TakeBack(result, "returning");
  return handle;
}

StringHandle Host::TakeResult(String result) {
  if (result == nullptr) return {};
  const StringPool &pool = StringPool::Instance();
  if (!pool.Owns(result) || result->state != HostString::State::kLive) {
    internals_->ledger.Note(ViolationKind::kWrongCount, "an address that is not a live string was returned");
    return {};
  }
  StringHandle handle(result);
  if (result->given == 0) {
    internals_->ledger.Note(
        ViolationKind::kWrongCount,
        fmt::format("the string {} was returned without a reference of its own", Quote(handle.Utf8())));
    return handle;
  }
  internals_->ledger.TakeBack(result, "returning");
  return handle;
}

void *Host::ClassData(const ObjectHandle &object, const ClassInfo &info) const {
  if (object.IsNil() || !object.Class().IsSubclassOf(info)) return nullptr;
  return reinterpret_cast<char *>(object.Get()) + info.dataOffset;
}

// -- The reference ledger -------------------------------------------------------------------------

LedgerReport Host::InspectLedger() const {
  internals_->objects.Inspect();
  LedgerReport report = internals_->ledger.counters;
  internals_->ledger.AppendTo(report);
  internals_->objects.AppendTo(report);
  return report;
}

void Host::ClearViolations() { internals_->ledger.ClearViolations(); }

}  // namespace quillbar::host
