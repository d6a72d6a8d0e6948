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

/// Collects the differences in one class.
class DifferenceList {
 public:
  DifferenceList(const ClassRecord &definition, std::vector<string> &differences)
      : name_(definition.name), differences_(differences) {}

  void Expect(bool holds, const string &member, const char *field) {
    if (!holds) differences_.push_back(name_ + ", " + member + ": " + field);
  }

 private:
  string name_;
  std::vector<string> &differences_;
};

void CheckMembers(const ClassRecord &definition, DifferenceList &differences) {
  for (const PropertyRecord &p : std::span(definition.properties, definition.propertyCount)) {
    differences.Expect(p.getter != nullptr, p.name, "getter");
    differences.Expect(p.group == nullptr, p.name, "group");
    differences.Expect(p.parameter == 0, p.name, "parameter word");
    differences.Expect(p.editor == nullptr, p.name, "editor");
    differences.Expect(p.enumerationEntryCount == 0 && p.enumerationEntries == nullptr, p.name, "entries");
    differences.Expect(p.attributeCount == 0 && p.attributes == nullptr, p.name, "attributes");
  }
  for (const MethodRecord &m : std::span(definition.methods, definition.methodCount)) {
    differences.Expect(m.function != nullptr, m.declaration, "function");
    differences.Expect(m.setter == nullptr, m.declaration, "setter");
    differences.Expect(m.attributeCount == 0 && m.attributes == nullptr, m.declaration, "attributes");
  }
  for (const EventRecord &e : std::span(definition.events, definition.eventCount)) {
    differences.Expect(e.attributeCount == 0 && e.attributes == nullptr, e.declaration, "attributes");
  }
  for (const EnumerationRecord &e : std::span(definition.enumerations, definition.enumerationCount)) {
    differences.Expect(e.attributeCount == 0 && e.attributes == nullptr, e.name, "attributes");
  }
}

void CheckClass(const ClassRecord &definition, DifferenceList &differences) {
  const string record = "class record";
  differences.Expect(definition.version == 13, record, "version");
  differences.Expect(definition.eventInstances == nullptr && definition.eventInstanceCount == 0, record,
                     "event instances");
  differences.Expect(definition.interfaces != nullptr && *definition.interfaces == '\0', record, "interfaces");
  differences.Expect(definition.bindings == nullptr && definition.bindingCount == 0, record, "bindings");
  differences.Expect(definition.constants == nullptr && definition.constantCount == 0, record, "constants");
  differences.Expect(definition.sharedProperties == nullptr && definition.sharedPropertyCount == 0, record,
                     "shared properties");
  differences.Expect(definition.sharedMethods == nullptr && definition.sharedMethodCount == 0, record,
                     "shared methods");
  differences.Expect(definition.delegates == nullptr && definition.delegateCount == 0, record, "delegates");
}

}  // namespace

std::vector<string> RegisteredText(const std::vector<ClassRecord *> &classes) {
  std::vector<string> lines;
  for (const ClassRecord *definition : classes) {
    for (string &line : ClassText(*definition)) lines.push_back(std::move(line));
  }
  return lines;
}

std::vector<string> RecordDifferences(const std::vector<ClassRecord *> &classes) {
  std::vector<string> texts;
  for (const ClassRecord *definition : classes) {
    DifferenceList differences(*definition, texts);
    CheckClass(*definition, differences);
    CheckMembers(*definition, differences);
  }
  return texts;
}

}  // namespace quillbar
