// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

/// What the reference ledger reports about plugins' use of the host. Every reference that a plugin was given is
/// entered with the member in progress, and struck out when the plugin gives it back.
namespace quillbar::host {

/// The kinds of things that a plugin must give back.
enum class Resource { kString, kStringData, kObject };

/// A plugin's mistake, noted when it happens. The host ignores the wrong call and goes on.
enum class ViolationKind {
  kDoubleRelease,    // given back more often than it was given
  kNeverGiven,       // a release of nothing, or of something that the host never gave
  kUseAfterRelease,  // an argument that the plugin no longer has a right to
  kWrongCount,       // a result that carries no reference, or a count changed for an object being destroyed
  kBadArgument,      // wrong class, unknown slot, index out of bounds, negative length ...
  kMemoryOverrun,    // bytes written past the end of the class data, or into a destroyed object
};

/// A mistake of a plugin's.
struct Violation {
  ViolationKind kind;
  std::string message;  // what happened to which thing
  std::string member;   // the member in progress: "Page.MoveTo(x as Single,y as Single)"
};

/// References that were not given back, by the member to which they were given.
struct Outstanding {
  Resource resource;
  std::size_t count = 0;
  std::string what;    // the class of an object, the text of a string
  std::string member;  // the member in progress when the reference was given
};

/// The ledger at one moment. It balances when everything has been given back, the script holds no object, and no
/// plugin made a mistake.
struct LedgerReport {
  std::uint64_t stringsGiven = 0;
  std::uint64_t stringsReturned = 0;
  std::uint64_t stringDataGiven = 0;
  std::uint64_t stringDataReturned = 0;
  std::uint64_t referencesGiven = 0;  // to objects: created, locked or received from a handler
  std::uint64_t referencesReturned = 0;
  std::uint64_t objectsCreated = 0;
  std::uint64_t objectsDestroyed = 0;
  std::uint64_t eventsRaised = 0;
  std::vector<Outstanding> outstanding;
  std::vector<std::string> heldByScript;  // classes of objects to which only the host's side has references
  std::vector<Violation> violations;

  bool IsBalanced() const { return outstanding.empty() && heldByScript.empty() && violations.empty(); }
  /// The report for a reader: a table of the numbers, then one line for each thing that is wrong.
  std::string Text() const;
};

}  // namespace quillbar::host
