// SPDX-License-Identifier: MIT
#include "host/language/check/interface_checker.h"

#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "host/language/check/call_checker.h"
#include "host/language/check/procedure_checker.h"

namespace quillbar::language {
namespace {

/// The most interfaces that a class can implement, or an interface extend, also through others.
constexpr std::size_t kMaxInterfaces = 1000;

struct NamedInterface {
  const host::ClassInfo *info;
  Span span;
};
using NamedInterfaces = std::map<const host::ClassInfo *, std::vector<NamedInterface>>;

/// The interfaces that are named where a class or an interface is declared.
std::vector<NamedInterface> FindNamed(Checker &checker, const syntax::Class &written) {
  std::vector<NamedInterface> named;
  for (const syntax::TypeName &name : written.interfaces) {
    checker.Recover([&] {
      const host::ClassInfo *asked = checker.ResolveType(name).objectClass();
      if (asked == nullptr || !asked->isInterface) {
        checker.Fail(name.span, fmt::format("{} is not an interface{}", name.parts.back(),
                                            asked == nullptr ? "" : "; a class \"Inherits\" from another"));
      }
      named.push_back({asked, name.span});
    });
  }
  return named;
}

/// All interfaces that a class implements, or an interface extends, itself or through others; the nearer ones first.
void Collect(Checker &checker, const NamedInterfaces &named, host::ClassInfo &info) {
  const std::vector<NamedInterface> &first = named.at(&info);
  std::set<const host::ClassInfo *> known;
  std::vector<const host::ClassInfo *> all;
  const auto add = [&](const host::ClassInfo *asked) {
    if (known.insert(asked).second) all.push_back(asked);
  };
  for (const NamedInterface &asked : first) add(asked.info);
  for (std::size_t i = 0; i < all.size(); ++i) {
    if (all[i] == &info)
      checker.Fail(first.front().span, fmt::format("the interface {} would extend itself", info.name));
    if (all.size() > kMaxInterfaces) {
      checker.Fail(first.front().span, fmt::format("{} would have more than {} interfaces", info.name, kMaxInterfaces));
    }
    for (const NamedInterface &extended : named.at(all[i])) add(extended.info);
  }
  info.interfaces = std::move(all);
}

std::string Describe(const host::MethodInfo &method) {
  return DescribeSignature(method.name, method.parameters, method.result);
}

/// The method of the class that an interface asks for; null when there is none that fits.
const host::MethodInfo *FindImplementation(const host::ClassInfo &info, const host::MethodInfo &wanted) {
  for (const host::MethodInfo *method : info.FindMethods(wanted.name)) {
    const bool fits =
        method->code != nullptr && !method->isShared && HasSignature(*method, wanted.parameters, wanted.result);
    if (fits) return method;
  }
  return nullptr;
}

/// What the class has in place of a missing method, as a hint.
std::string Instead(const host::ClassInfo &info, const host::MethodInfo &wanted) {
  const std::vector<const host::MethodInfo *> others = info.FindMethods(wanted.name);
  if (others.empty()) return {};
  const host::MethodInfo &other = *others.front();
  if (other.isShared) return ", not a shared one";
  return other.code == nullptr ? ", declared in the class itself" : fmt::format(", not {}", Describe(other));
}

}  // namespace

void EnterInterfaces(Checker &checker, const syntax::Script &script) {
  NamedInterfaces named;
  for (const auto &written : script.classes) {
    const host::ClassInfo &info = *checker.parts.at(written.get())->info;
    checker.selfClass = &info;
    named[&info] = FindNamed(checker, *written);
    checker.selfClass = nullptr;
  }
  for (const auto &written : script.classes) {
    host::ClassInfo &info = *checker.parts.at(written.get())->info;
    checker.Recover([&] { Collect(checker, named, info); });
  }
}

void EnterInterfaceMethods(Checker &checker, const syntax::Class &written, host::ClassInfo &info) {
  for (const syntax::Class::Method &method : written.methods) {
    checker.Recover([&] {
      std::vector<const host::MethodInfo *> others;
      for (const host::MethodInfo &other : info.methods) {
        if (SameName(other.name, method.procedure->name)) others.push_back(&other);
      }
      host::MethodInfo &head = info.methods.emplace_back();
      head.owner = &info;
      EnterHead(checker, *method.procedure, head);
      head.declaration = Describe(head);
      head.slot = checker.interfaceSlots++;
      RefuseSameSignature(checker, head, others);
      if (head.IsConstructor() || SameName(head.name, "Destructor") || method.modifiers.isShared) {
        checker.Fail(method.procedure->nameSpan, "an interface has the methods of objects alone");
      }
    });
  }
}

void CheckImplementations(Checker &checker, const syntax::Class &written, host::ClassInfo &info) {
  const std::vector<const host::ClassInfo *> &own = info.interfaces;
  std::vector<const host::ClassInfo *> all = own;
  for (const host::ClassInfo *level = info.superclass; level != nullptr; level = level->superclass) {
    for (const host::ClassInfo *asked : level->interfaces) {
      if (std::ranges::find(all, asked) == all.end()) all.push_back(asked);
    }
  }
  std::string missing;
  std::string names;
  for (const host::ClassInfo *asked : all) {
    bool isComplete = true;
    for (const host::MethodInfo &wanted : asked->methods) {
      if (const host::MethodInfo *method = FindImplementation(info, wanted)) {
        info.dispatch[wanted.slot] = info.dispatch[method->slot];
      } else if (std::ranges::find(own, asked) != own.end()) {
        isComplete = false;
        missing += fmt::format("\n  {}{}", Describe(wanted), Instead(info, wanted));
      }
    }
    if (!isComplete) names += fmt::format("{}{}", names.empty() ? "" : " and ", asked->name);
  }
  if (missing.empty()) return;
  checker.Report(written.nameSpan, fmt::format("the class {} doesn't have all methods of the interface {}; missing:{}",
                                               info.name, names, missing));
}

}  // namespace quillbar::language
