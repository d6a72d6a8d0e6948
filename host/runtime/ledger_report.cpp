// SPDX-License-Identifier: MIT
#include "host/runtime/ledger_report.h"

#include <fmt/format.h>

#include <iterator>

namespace quillbar::host {
namespace {

std::string_view ResourceName(Resource resource) {
  switch (resource) {
    case Resource::kString:
      return "string";
    case Resource::kStringData:
      return "string data";
    case Resource::kObject:
      return "reference to an object";
  }
  return {};
}

std::string_view KindName(ViolationKind kind) {
  switch (kind) {
    case ViolationKind::kDoubleRelease:
      return "double release";
    case ViolationKind::kNeverGiven:
      return "release of something never given";
    case ViolationKind::kUseAfterRelease:
      return "use after release";
    case ViolationKind::kWrongCount:
      return "wrong reference count";
    case ViolationKind::kBadArgument:
      return "bad argument";
    case ViolationKind::kMemoryOverrun:
      return "memory overrun";
  }
  return {};
}

}  // namespace

std::string LedgerReport::Text() const {
  std::string text;
  const auto out = std::back_inserter(text);
  const auto line = [&](std::string_view what, std::uint64_t given, std::uint64_t returned) {
    fmt::format_to(out, "  {:<24}{:>12}{:>12}{:>12}\n", what, given, returned,
                   static_cast<std::int64_t>(given - returned));
  };
  fmt::format_to(out, "  {:<24}{:>12}{:>12}{:>12}\n", "Reference ledger", "given", "returned", "out");
  line("strings", stringsGiven, stringsReturned);
  line("string data", stringDataGiven, stringDataReturned);
  line("references to objects", referencesGiven, referencesReturned);
  line("objects", objectsCreated, objectsDestroyed);
  fmt::format_to(out, "  {:<24}{:>12}\n", "events raised", eventsRaised);
  for (const Outstanding &entry : outstanding) {
    fmt::format_to(out, "  not given back: {} x {}, {}, from {}\n", entry.count, ResourceName(entry.resource),
                   entry.what, entry.member);
  }
  for (const std::string &name : heldByScript) {
    fmt::format_to(out, "  still held by the script: an object of class {}\n", name);
  }
  for (const Violation &violation : violations) {
    fmt::format_to(out, "  {}: {} (in {})\n", KindName(violation.kind), violation.message, violation.member);
  }
  fmt::format_to(out, "  {}\n", IsBalanced() ? "The ledger balances." : "The ledger does not balance.");
  return text;
}

}  // namespace quillbar::host
