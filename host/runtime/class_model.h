// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/runtime/type.h"
#include "host/runtime/value.h"
#include "interface/declaration.h"
#include "interface/records.h"

/// What the host knows of modules, classes and their members. All of it is learned from registered records; the host's
/// own classes (MemoryBlock, FolderItem) are registered by records too, so scripts, the checker and
/// `quillbar describe` share one model.
///
/// Names are compared without regard to letter case everywhere. Everything lives as long as the Host.
namespace quillbar::host {

class Registry;

/// A parameter of a method, an event or a function, wherever it comes from.
struct ParameterInfo {
  std::string name;
  Type type;
  bool byRef = false;
  bool optional = false;
  bool isList = false;      // ParamArray: any number of arguments of the array's element type
  bool isAny = false;       // every number, String, Boolean, Color, enumeration
  Value defaultValue;       // what a call that leaves it out passes
  std::string defaultText;  // the same as a declaration writes it
};

/// The value that a declaration gives a parameter as its default: a number, a text in quotes, True, False or Nil, or
/// nothing for the type's zero. Throws HostError (kPlugin) for anything else.
Value ReadDefault(std::string_view text, Type type);

/// What a script declares: the script language derives its procedures and classes from this.
struct MemberCode {};

/// From where a member may be used. Those of C++ classes are public.
enum class Access : std::uint8_t { kPublic, kProtected, kPrivate };

class EventInfo;

/// A method of a class or, without an owner, of a module.
class MethodInfo {
 public:
  std::string name;
  std::string declaration;  // letter for letter as registered
  std::vector<ParameterInfo> parameters;
  Type result;  // kNone for a Sub
  const ClassInfo *owner = nullptr;
  FunctionAddress function = nullptr;
  /// For methods that scripts may also assign to, as in `block.Byte(3) = 7`: takes the arguments and
  /// then the new value, which has the type of the result.
  FunctionAddress setter = nullptr;
  const MemberCode *code = nullptr;  // of a method that a script declares; it has no function
  std::uint32_t flags = 0;
  bool isShared = false;  // takes no object: a shared method, or one of a module
  Access access = Access::kPublic;
  bool isExtension = false;           // its first parameter is the value before the dot
  bool isAssignment = false;          // its last parameter is the value after "="
  const EventInfo *raises = nullptr;  // of a script's class: a call raises this event
  bool isInvocation = false;          // of a delegate: a call runs the method that it holds
  std::size_t slot = 0;  // of a script's method: its place in the dispatch tables of its class and their subclasses

  /// Whether scripts can't call the method: it is registered with `kPrivateConstructorFlags`.
  bool IsPrivate() const { return (flags & kPrivateConstructorFlags & ~kMethodFlags) != 0; }
  bool IsConstructor() const;
  /// "Page.MoveTo(x as Single,y as Single)", for messages.
  std::string FullName() const;
};

/// A property of a class, or, without an owner, of a module.
class PropertyInfo {
 public:
  std::string name;
  std::string typeName;  // as registered
  Type type;
  const ClassInfo *owner = nullptr;
  FunctionAddress getter = nullptr;
  FunctionAddress setter = nullptr;
  std::int32_t parameter = 0;
  std::uint32_t flags = 0;
  bool isShared = false;
  Access access = Access::kPublic;

  // Of a script's class: a field, with its place among those of its class or, when shared, among the script's global
  // variables; or the methods that compute the property.
  bool isField = false;
  std::size_t slot = 0;
  const MethodInfo *computes = nullptr;
  const MethodInfo *accepts = nullptr;

  bool IsReadOnly() const { return setter == nullptr && !isField && accepts == nullptr; }
  bool IsWriteOnly() const { return getter == nullptr && !isField && computes == nullptr; }
  std::string FullName() const;
};

/// An event of a class.
class EventInfo {
 public:
  std::string name;
  std::string declaration;
  std::vector<ParameterInfo> parameters;
  Type result;
  const ClassInfo *owner = nullptr;
  std::intptr_t slot = 0;  // of a script's class: the place of its handler in dispatch tables

  std::string FullName() const;
};

/// A member of an enumeration: a name and its value.
struct EnumerationMemberInfo {
  std::string name;
  std::int64_t value = 0;
};

/// An enumeration of a class or module.
class EnumerationInfo {
 public:
  std::string name;
  std::string qualifiedName;  // "Page.PageSizeEnum", without the module
  std::string underlyingName;
  TypeKind underlying = kIntegerKind;
  const ClassInfo *owner = nullptr;
  std::vector<EnumerationMemberInfo> members;  // in order of registration

  /// The member of this name; null when there is none.
  const EnumerationMemberInfo *Find(std::string_view memberName) const;
  /// The first member with this value; null when there is none.
  const EnumerationMemberInfo *FindValue(std::int64_t value) const;
};

class ModuleInfo;

/// A class. A class that is only mentioned in a declaration, because its plugin isn't loaded, exists too, with
/// `isRegistered` false, so that the declaration can be understood.
class ClassInfo {
 public:
  std::string name;
  const ModuleInfo *module = nullptr;
  const ClassInfo *superclass = nullptr;
  bool isRegistered = false;
  bool isBuiltIn = false;                     // one of the host's own
  bool isRoot = false;                        // `Object`, of which every other class is a subclass
  bool isInterface = false;                   // which a script declares
  std::vector<const ClassInfo *> interfaces;  // that a script's class implements, or an interface extends
  std::uint32_t flags = 0;

  // The class's own members, in order of registration. In deques, because others hold their addresses.
  std::deque<PropertyInfo> properties;
  std::deque<MethodInfo> methods;
  std::deque<EventInfo> events;
  std::deque<EnumerationInfo> enumerations;

  // The instance block: where this class's data starts and where the data of the whole chain ends.
  ClassRecord *record = nullptr;
  std::size_t dataSize = 0;
  std::size_t dataOffset = 0;
  std::size_t instanceSize = 0;

  // Of a class that a script declares.
  const MemberCode *code = nullptr;
  std::vector<const MemberCode *> dispatch;  // the procedures of its methods and those it inherits, by slot
  std::function<void(Object)> finalize;      // before an object is destroyed; it may be kept alive here
  std::function<void(Object)> clear;         // releases what the fields of this class hold

  /// "QuillbarPDFWriter.Page", or the plain name for a class outside a module.
  std::string QualifiedName() const;
  /// The steps from this class to a superclass or an interface; 0 for the class itself, negative for an unrelated one.
  int DistanceTo(const ClassInfo &other) const;
  bool IsSubclassOf(const ClassInfo &other) const { return DistanceTo(other) >= 0; }

  /// Every overload of this name, the class's own first, then its superclasses'. An overload whose parameters a
  /// subclass repeats is hidden. Constructors are those of the nearest class that has any. An interface has the methods
  /// of those that it extends.
  std::vector<const MethodInfo *> FindMethods(std::string_view methodName) const;
  const PropertyInfo *FindProperty(std::string_view propertyName) const;
  const EventInfo *FindEvent(std::string_view eventName) const;
  const EnumerationInfo *FindEnumeration(std::string_view enumerationName) const;
};

/// A module.
class ModuleInfo {
 public:
  std::string name;
  std::deque<MethodInfo> methods;
  std::deque<PropertyInfo> properties;
  std::deque<EnumerationInfo> enumerations;
  std::vector<const ClassInfo *> classes;  // in order of registration
};

/// All modules and classes. Filled by the services that register, read by everyone else.
class Registry {
 public:
  Registry();
  ~Registry();
  Registry(const Registry &) = delete;
  Registry &operator=(const Registry &) = delete;

  /// A registered class by its plain or qualified name; null when unknown. A plain name that several modules use means
  /// the class registered first. A qualified name whose module is not known finds a class that was registered on its
  /// own, as plugins do on hosts without modules.
  const ClassInfo *FindClass(std::string_view name) const;
  const ModuleInfo *FindModule(std::string_view name) const;
  /// "Page.PageSizeEnum" or "QuillbarPDFWriter.Page.PageSizeEnum"; null when unknown.
  const EnumerationInfo *FindEnumeration(std::string_view name) const;

  /// The type with this name; kNone when unknown. Pass `context` for a name used inside a class: its own enumerations
  /// can then be named alone, and its module's classes come first.
  Type FindType(std::string_view name, const ClassInfo *context = nullptr) const;

  /// Registered classes, the host's own first, then in order of registration.
  const std::vector<const ClassInfo *> &Classes() const { return classes_; }
  const std::vector<const ModuleInfo *> &Modules() const { return modules_; }

  /// Adds the records of a plugin, and writes offsets and slots into them at once. Throws HostError (kPlugin) with the
  /// declaration and the position in it when one can't be read.
  void Register(ModuleRecord &record);
  void Register(ClassRecord &record, bool isBuiltIn = false);
  /// Resolves the types in all declarations whose classes are known by now.
  void Link();

  /// A class for a script to declare, which lives as long as the registry but isn't found by its name.
  ClassInfo &AddScriptClass() { return scriptClasses_.emplace_back(); }
  /// What releases the references that objects of a class of the host's own hold to others.
  void ClearWith(std::string_view name, std::function<void(Object)> clear);
  /// Computes where the data of a class starts and ends. Its superclass must have been laid out.
  static void LayOut(ClassInfo &info);

 private:
  struct Pending;

  ClassInfo &AddClass(ClassRecord &record, ModuleInfo *module, bool isBuiltIn);
  void AddEnumeration(EnumerationInfo &info, const EnumerationRecord &record, const std::string &owner);
  void AddMethod(MethodInfo &info, const MethodRecord &record, const ClassInfo *owner, const std::string &ownerName);
  void AddSignature(const Declaration &declaration, std::string &name, std::vector<ParameterInfo> &parameters,
                    Type &result, const ClassInfo *context);
  ClassInfo *Find(std::string_view name, const ModuleInfo *preferred) const;
  Type ResolveOrMention(std::string_view name, const ClassInfo *context);
  std::deque<ClassInfo> classStorage_;
  std::deque<ClassInfo> scriptClasses_;
  std::deque<ModuleInfo> moduleStorage_;
  std::vector<const ClassInfo *> classes_;
  std::vector<const ModuleInfo *> modules_;
  std::unique_ptr<Pending> pending_;
  std::intptr_t nextSlot_ = 1;
};

}  // namespace quillbar::host
