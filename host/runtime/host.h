// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <initializer_list>
#include <memory>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/runtime/class_model.h"
#include "host/runtime/handles.h"
#include "host/runtime/host_error.h"
#include "host/runtime/ledger_report.h"
#include "host/runtime/value.h"

namespace quillbar::host {

struct ForeignFunction;
struct Internals;

/// What a host pretends to be.
struct HostOptions {
  /// What `REALGetRBVersion` reports: year and release, for example 2025.02.
  double version = 2025.02;
  /// Services, global methods and MemoryBlock methods that this host pretends not to have, by service name
  /// ("REALLockObject") or declaration ("Len(str as String) as Integer"). The constructor throws HostError
  /// (kUnknownName) for a name that no host offers.
  std::set<std::string, std::less<>> missing{};
  /// Called while a plugin saves a document, with the number of parts that are written and of those that there are, and
  /// with 0 and 0 when the plugin has returned, however far it came. It must not throw.
  std::function<void(std::uint32_t done, std::uint32_t total)> progress{};
  /// Called with the path of every FolderItem about whose file something is asked: whether it exists, what is in it, or
  /// its path, which is what plugins open. It must not throw.
  std::function<void(const std::filesystem::path &path)> usesFile{};
};

/// What a script attached to an event: it is called with the object that raises the event and the arguments, and
/// returns the event's result. ByRef arguments are changed in place. A HostError or other exception thrown here
/// bypasses the plugin and leaves the member call that raised the event.
using EventHandler = std::function<Value(const ObjectHandle &sender, std::span<Value> arguments)>;

/// A host for plugins: loads them, gives them the services, and drives the objects of their classes.
///
/// The services are plain C functions without a context argument, so a process has one current host at a time:
/// constructing a second one while the first lives throws std::logic_error. Destroying the host destroys the objects
/// that are left and unloads the plugins. A host is used from one thread only.
class Host {
 public:
  explicit Host(HostOptions options = {});
  ~Host();
  Host(const Host &) = delete;
  Host &operator=(const Host &) = delete;

  /// The host that exists; null when there is none.
  static Host *Current() { return current_; }

  const HostOptions &options() const { return options_; }
  const Registry &registry() const { return registry_; }

  /// A class for a script to declare; see `Registry::AddScriptClass`.
  ClassInfo &AddScriptClass() { return registry_.AddScriptClass(); }
  /// What releases the references that objects of a class of the host's own hold; see `ClearScriptObjects`.
  void ClearWith(std::string_view name, std::function<void(Object)> clear) {
    registry_.ClearWith(name, std::move(clear));
  }
  /// Releases what the fields of all objects of scripts' classes hold, and the host's own containers, so that those which refer
  /// to each other go.
  void ClearScriptObjects();

  // -- Plugins ------------------------------------------------------------------------------------

  /// Loads a plugin and calls its entry point. Throws HostError (kPlugin) with cause and remedy when the file is
  /// missing, can't be loaded, has no entry point, was loaded before, or registers nothing. A plugin that registers
  /// nothing for this host's version is kept, and reported the same way unless `mayStayInert`.
  void LoadPlugin(const std::filesystem::path &file, bool mayStayInert = false);

  /// The version that the plugin loaded last announced with `RegisterPluginVersion`; 0 if it announced none.
  int announcedVersion() const { return announcedVersion_; }

  // -- Objects ------------------------------------------------------------------------------------

  /// Creates an object, as `New className(arguments)` does. Private constructors are refused with HostError
  /// (kNotAccessible).
  ObjectHandle Create(std::string_view className, std::initializer_list<Value> arguments = {});
  ObjectHandle Create(const ClassInfo &info, std::span<Value> arguments);
  /// Creates an object with the overload chosen already; null when the class has no constructor method.
  ObjectHandle Create(const ClassInfo &info, const MethodInfo *constructor, std::span<Value> arguments);

  /// Calls the method of this name whose parameters fit best. Throws HostError for Nil, an unknown
  /// name or arguments that no overload takes.
  Value Call(const ObjectHandle &object, std::string_view method, std::initializer_list<Value> arguments = {});
  /// Calls a method as above; ByRef arguments come back in `arguments`.
  Value CallByRef(const ObjectHandle &object, std::string_view method, std::span<Value> arguments);
  /// Calls exactly this method, of a class, or, with a Nil object, shared or of a module. Arguments are converted to
  /// the parameter types; ByRef results are written back with the parameter's type.
  Value Invoke(const MethodInfo &method, const ObjectHandle &object, std::span<Value> arguments);

  /// Assigns through a method that has a setter: `value` is converted to its result type.
  void InvokeSetter(const MethodInfo &method, const ObjectHandle &object, std::span<Value> arguments,
                    const Value &value);

  // Members as functions for a MemberCall (plugin_call.h). They stay valid until the next plugin is loaded. Each throws
  // HostError (kNotAccessible) for a member that can't be used so.

  const ForeignFunction &Prepare(const MethodInfo &method);
  /// Takes the method's arguments and then the new value.
  const ForeignFunction &PrepareSetter(const MethodInfo &method);
  const ForeignFunction &PrepareGetter(const PropertyInfo &property);
  /// Takes the property's parameter and then the new value.
  const ForeignFunction &PrepareSetter(const PropertyInfo &property);

  /// The overload that fits these argument types best. Throws HostError (kArguments) naming the
  /// candidates when none or more than one fits best.
  static const MethodInfo &ChooseOverload(std::span<const MethodInfo *const> overloads, std::span<const Type> types);

  /// Reads a property. A write-only property is refused with HostError (kNotAccessible).
  Value Get(const ObjectHandle &object, std::string_view property);
  Value Get(const ObjectHandle &object, const PropertyInfo &property);
  /// Reads or writes a property. Writing a read-only property is refused with HostError (kNotAccessible).
  void Set(const ObjectHandle &object, std::string_view property, const Value &value);
  void Set(const ObjectHandle &object, const PropertyInfo &property, const Value &value);

  /// Attaches a handler; an empty one detaches. An object has at most one handler for each event.
  void SetEventHandler(const ObjectHandle &object, std::string_view event, EventHandler handler);
  void SetEventHandler(const ObjectHandle &object, const EventInfo &event, EventHandler handler);
  /// The handler that is attached to the event of the object; empty when there is none.
  EventHandler EventHandlerOf(const ObjectHandle &object, const EventInfo &event) const;

  // -- Names --------------------------------------------------------------------------------------

  /// The class of this name. Throws HostError (kUnknownName) when there is none.
  const ClassInfo &Class(std::string_view name) const;
  /// A member of an enumeration, for example "Page.PageSizeEnum.A4", as a value of that enumeration.
  Value Constant(std::string_view name) const;

  // -- Borders ------------------------------------------------------------------------------------
  // For callers that reach members by address, as benchmarks do, instead of through Invoke.

  /// Lends this string or object to plugins, which may use it as an argument while the loan lives.
  class Loan {
   public:
    Loan(Host &host, const StringHandle &string);
    Loan(Host &host, const ObjectHandle &object);
    Loan(const Loan &) = delete;
    Loan &operator=(const Loan &) = delete;
    ~Loan();

   private:
    Host &host_;
    StringHandle string_;
    ObjectHandle object_;
  };

  /// Takes over the reference that a member called by address returned.
  ObjectHandle TakeResult(Object result);
  StringHandle TakeResult(String result);

  /// The data block of an object's class or superclass, as plugins get it; null for an unrelated class.
  void *ClassData(const ObjectHandle &object, const ClassInfo &info) const;

  /// The address of a service as the resolver gives it; null when it is missing.
  void *Resolve(const char *service) const;

  /// Registers records outside of a plugin's entry point: the host's own classes and those of its script language. The
  /// records must live as long as the host; call `Link` after the last one.
  void Register(ClassRecord &record, bool isBuiltIn = false);
  void Register(ModuleRecord &record);
  void Link();
  /// What `RegisterPluginVersion` does.
  void Announce(int version) { announcedVersion_ = version; }

  // -- The reference ledger -----------------------------------------------------------------------

  /// What the reference ledger says now. Destroyed objects are first inspected for later writes into them.
  LedgerReport InspectLedger() const;
  /// Forgets the violations noted so far: for tests that provoke them.
  void ClearViolations();

 private:
  friend struct Internals;

  inline static Host *current_ = nullptr;

  HostOptions options_;
  Registry registry_;
  int announcedVersion_ = 0;
  std::unique_ptr<Internals> internals_;
};

}  // namespace quillbar::host
