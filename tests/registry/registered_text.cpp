// SPDX-License-Identifier: MIT
#include "tests/registry/registered_text.h"

#include <span>

namespace quillbar {
namespace {

using std::string;

std::vector<string> ClassText(const ClassRecord &definition) {
  std::vector<string> lines;
  string head = string("class ") + definition.name;
  if (definition.superclass != nullptr) head += string(" of ") + definition.superclass;
  if (definition.constructor != nullptr) head += " with constructor";
  if (definition.destructor != nullptr) head += " and destructor";
  lines.push_back(head);

  for (const PropertyRecord &property : std::span(definition.properties, definition.propertyCount)) {
    lines.push_back(string("  property ") + property.name + " as " + property.type +
                    (property.setter != nullptr ? ", read-write" : ", read-only") + ", flags " +
                    std::to_string(property.flags));
  }
  for (const MethodRecord &method : std::span(definition.methods, definition.methodCount)) {
    lines.push_back(string("  method ") + method.declaration + ", flags " + std::to_string(method.flags));
  }
  for (const EventRecord &event : std::span(definition.events, definition.eventCount)) {
    lines.push_back(string("  event ") + event.declaration);
  }
  for (const EnumerationRecord &enumeration : std::span(definition.enumerations, definition.enumerationCount)) {
    lines.push_back(string("  enumeration ") + enumeration.name + " as " + enumeration.type + ", flags " +
                    std::to_string(enumeration.flags));
    for (const char *member : std::span(enumeration.members, enumeration.memberCount)) {
      lines.push_back(string("    ") + member);
    }
  }
  return lines;
}

/// Collects what is wrong in one class.
class FaultList {
 public:
  FaultList(const ClassRecord &definition, std::vector<string> &faults) : name_(definition.name), faults_(faults) {}

  void Expect(bool holds, const string &member, const char *field) {
    if (!holds) faults_.push_back(name_ + ", " + member + ": " + field);
  }

 private:
  string name_;
  std::vector<string> &faults_;
};

void CheckMembers(const ClassRecord &definition, FaultList &faults) {
  for (const PropertyRecord &p : std::span(definition.properties, definition.propertyCount)) {
    faults.Expect(p.getter != nullptr, p.name, "getter");
    faults.Expect(p.group == nullptr, p.name, "group");
    faults.Expect(p.parameter == 0, p.name, "parameter word");
    faults.Expect(p.editor == nullptr, p.name, "editor");
    faults.Expect(p.enumerationEntryCount == 0 && p.enumerationEntries == nullptr, p.name, "entries");
    faults.Expect(p.attributeCount == 0 && p.attributes == nullptr, p.name, "attributes");
  }
  for (const MethodRecord &m : std::span(definition.methods, definition.methodCount)) {
    faults.Expect(m.function != nullptr, m.declaration, "function");
    faults.Expect(m.setter == nullptr, m.declaration, "setter");
    faults.Expect(m.attributeCount == 0 && m.attributes == nullptr, m.declaration, "attributes");
  }
  for (const EventRecord &e : std::span(definition.events, definition.eventCount)) {
    faults.Expect(e.attributeCount == 0 && e.attributes == nullptr, e.declaration, "attributes");
  }
  for (const EnumerationRecord &e : std::span(definition.enumerations, definition.enumerationCount)) {
    faults.Expect(e.attributeCount == 0 && e.attributes == nullptr, e.name, "attributes");
  }
}

void CheckClass(const ClassRecord &definition, FaultList &faults) {
  const string record = "class record";
  faults.Expect(definition.version == 13, record, "version");
  faults.Expect(definition.eventInstances == nullptr && definition.eventInstanceCount == 0, record, "event instances");
  faults.Expect(definition.interfaces != nullptr && *definition.interfaces == '\0', record, "interfaces");
  faults.Expect(definition.bindings == nullptr && definition.bindingCount == 0, record, "bindings");
  faults.Expect(definition.constants == nullptr && definition.constantCount == 0, record, "constants");
  faults.Expect(definition.sharedProperties == nullptr && definition.sharedPropertyCount == 0, record,
                "shared properties");
  faults.Expect(definition.sharedMethods == nullptr && definition.sharedMethodCount == 0, record, "shared methods");
  faults.Expect(definition.delegates == nullptr && definition.delegateCount == 0, record, "delegates");
}

}  // namespace

std::vector<string> RegisteredText(const std::vector<ClassRecord *> &classes) {
  std::vector<string> lines;
  for (const ClassRecord *definition : classes) {
    for (string &line : ClassText(*definition)) lines.push_back(std::move(line));
  }
  return lines;
}

std::vector<string> RecordFaults(const std::vector<ClassRecord *> &classes) {
  std::vector<string> texts;
  for (const ClassRecord *definition : classes) {
    FaultList faults(*definition, texts);
    CheckClass(*definition, faults);
    CheckMembers(*definition, faults);
  }
  return texts;
}

}  // namespace quillbar
