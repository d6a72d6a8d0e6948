// SPDX-License-Identifier: MIT
// The input is a text that a script reads as JSON.
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/demand.h"
#include "host/language/library/classes/language_classes.h"
#include "host/language/run/exceptions.h"
#include "host/language/values/json.h"
#include "host/runtime/host.h"

namespace {

using namespace quillbar;
namespace json = language::json;
using host::Value;

host::Host &HostWithClasses() {
  static host::Host *const host = [] {
    auto *made = new host::Host;
    language::RegisterLanguageClasses(*made);
    return made;
  }();
  return *host;
}

Value Read(std::string_view text) {
  const json::Containers containers{[](language::DictionaryEntries members) {
                                      return Value(language::MakeDictionary(HostWithClasses(), std::move(members)));
                                    },
                                    [](std::vector<Value> elements) {
                                      host::ArrayHandle list = host::ArrayHandle::Create(host::TypeKind::kVariant);
                                      for (const Value &element : elements) list.Append(element);
                                      return Value(std::move(list));
                                    }};
  return json::Read(text, containers);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char *>(data), size);
  HostWithClasses();
  std::string written;
  json::Style style;
  style.isExpanded = size % 2 != 0;
  try {
    written = json::Write(Read(text), style);
  } catch (const language::LibraryError &error) {
    fuzz::Demand(error.kind == language::ExceptionKind::kJson && !error.message.empty(), "a refusal says why");
    return 0;
  }
  try {
    fuzz::Demand(json::Write(Read(written), style) == written, "what was written reads the same");
  } catch (const language::LibraryError &) {
    fuzz::Demand(false, "what was written can be read");
  }
  return 0;
}
