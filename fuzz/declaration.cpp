// SPDX-License-Identifier: MIT
// The input is what a plugin registers, line by line: a class's name, its superclass, then members. A
// member's line begins with its kind: "m" a method, "s" a shared one, "e" an event, "p" a property ("name as
// type"), "n" an enumeration ("name as type"), "=" a member of the last enumeration.
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/demand.h"
#include "host/runtime/host.h"
#include "interface/declaration.h"
#include "interface/records.h"

namespace {

using namespace quillbar;

bool IsInside(std::string_view part, std::string_view text) {
  return part.empty() || (part.data() >= text.data() && part.data() + part.size() <= text.data() + text.size());
}

/// A declaration, written from what the reader found in it.
std::string Written(const Declaration &declaration) {
  std::string text(declaration.name);
  text += '(';
  for (const ParameterDeclaration &parameter : declaration) {
    if (&parameter != declaration.begin()) text += ", ";
    if (parameter.optional && parameter.defaultValue.empty()) text += "Optional ";
    text += parameter.byRef ? "ByRef " : "ByVal ";
    text += parameter.name;
    if (parameter.isArray) text += "()";
    text.append(" as ").append(parameter.type);
    if (!parameter.defaultValue.empty()) text.append(" = ").append(parameter.defaultValue);
  }
  text += ')';
  if (!declaration.resultType.empty()) text.append(" as ").append(declaration.resultType);
  if (declaration.resultIsArray) text += "()";
  return text;
}

void ReadTwice(std::string_view text) {
  const DeclarationResult result = ReadDeclaration(text);
  if (!result.ok()) {
    fuzz::Demand(result.error.offset <= text.size(), "an error points into the declaration");
    return;
  }
  const Declaration &declaration = result.declaration;
  fuzz::Demand(IsInside(declaration.name, text) && IsInside(declaration.resultType, text),
               "parts of a declaration lie inside it");
  const std::string written = Written(declaration);
  const DeclarationResult again = ReadDeclaration(written);
  fuzz::Demand(again.ok() && Written(again.declaration) == written, "a declaration written anew reads the same");
}

std::vector<std::string> LinesOf(std::string_view text) {
  std::vector<std::string> lines;
  for (;;) {
    const std::size_t end = text.find('\n');
    // A line ends at a nul, as a plugin's text would.
    lines.emplace_back(std::string(text.substr(0, end)).c_str());
    if (end == std::string_view::npos) return lines;
    text.remove_prefix(end + 1);
  }
}

/// The parts of "name as type"; the type is empty without an "as".
struct Typed {
  std::string name, type;
};
Typed TypedOf(const std::string &line) {
  const std::size_t mark = line.find(" as ");
  return mark == std::string::npos ? Typed{line, {}} : Typed{line.substr(0, mark), line.substr(mark + 4)};
}

struct Enumeration {
  Typed words;
  std::vector<const char *> members;
};

void DoNothing() {}

void Register(const std::vector<std::string> &lines) {
  std::vector<MethodRecord> methods, shared;
  std::vector<EventRecord> events;
  std::vector<Typed> properties;
  std::vector<Enumeration> enumerations;
  for (std::size_t i = 2; i < lines.size(); ++i) {
    if (lines[i].empty()) continue;
    const char *rest = lines[i].c_str() + 1;
    ReadTwice(rest);
    switch (lines[i][0]) {
      case 'm':
        methods.push_back({DoNothing, nullptr, rest, kMethodFlags, 0, nullptr});
        break;
      case 's':
        shared.push_back({DoNothing, nullptr, rest, kMethodFlags, 0, nullptr});
        break;
      case 'e':
        events.push_back({rest, 0, 0, nullptr});
        break;
      case 'p':
        properties.push_back(TypedOf(rest));
        break;
      case 'n':
        enumerations.push_back({TypedOf(rest), {}});
        break;
      case '=':
        if (!enumerations.empty()) enumerations.back().members.push_back(rest);
        break;
      default:
        break;
    }
  }
  std::vector<PropertyRecord> propertyRecords;
  for (const Typed &property : properties) {
    PropertyRecord &record = propertyRecords.emplace_back();
    record.name = property.name.c_str();
    record.type = property.type.c_str();
    record.flags = kPropertyFlags;
    record.getter = DoNothing;
  }
  std::vector<EnumerationRecord> enumerationRecords;
  for (const Enumeration &enumeration : enumerations) {
    enumerationRecords.push_back({enumeration.words.name.c_str(), enumeration.words.type.c_str(), kEnumerationFlags,
                                  enumeration.members.data(), enumeration.members.size(), 0, nullptr});
  }
  ClassRecord record{};
  record.version = kInterfaceVersion;
  record.name = lines[0].c_str();
  record.superclass = lines.size() > 1 ? lines[1].c_str() : nullptr;
  record.dataSize = sizeof(void *);
  record.flags = kClassFlags;
  record.methods = methods.data();
  record.methodCount = methods.size();
  record.sharedMethods = shared.data();
  record.sharedMethodCount = shared.size();
  record.events = events.data();
  record.eventCount = events.size();
  record.properties = propertyRecords.data();
  record.propertyCount = propertyRecords.size();
  record.enumerations = enumerationRecords.data();
  record.enumerationCount = enumerationRecords.size();

  host::Host host;
  try {
    host.Register(record);
    host.Link();
    host.Create(host.Class(record.name), {});
  } catch (const host::HostError &) {
    // The plugin's author would be told what is wrong with the records.
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char *>(data), size);
  ReadTwice(text);
  if (const auto member = ReadEnumerationMember(text))
    fuzz::Demand(IsInside(member->name, text), "the name of a member is inside its text");
  Register(LinesOf(text));
  return 0;
}
