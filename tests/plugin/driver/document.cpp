// SPDX-License-Identifier: MIT
#include "tests/plugin/driver/document.h"

#include <ostream>

namespace quillbar::test {

std::ostream &operator<<(std::ostream &stream, const Failure &failure) {
  return stream << "error 0x" << std::hex << failure.number << std::dec << ", detail " << failure.detail;
}

Document::Document(host::Host &host, host::ObjectHandle handle) : ScriptObject(host, std::move(handle)) {
  host.SetEventHandler(handle_, "ErrorLog",
                       [failures = failures_](const host::ObjectHandle &, std::span<host::Value> arguments) {
                         failures->push_back({static_cast<std::uint32_t>(arguments[0].AsInteger()),
                                              static_cast<std::uint32_t>(arguments[1].AsInteger())});
                         return host::Value();
                       });
}

ScriptObject Document::GetFont(const char *name, std::int64_t encoding) const {
  return CallObject("GetFont", name, host::Value(encoding));
}

Failure Document::LastFailure() const {
  return {static_cast<std::uint32_t>(GetInteger("LastErrorNumber")),
          static_cast<std::uint32_t>(GetInteger("LastErrorDetailNumber"))};
}

}  // namespace quillbar::test
