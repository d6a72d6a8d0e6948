// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

/// What the host writes down about plugins' use of it. Every reference that a plugin was given is
/// entered with the member call in progress and struck out when the plugin gives it back.
namespace quillbar::host {

/// The kinds of things that a plugin must give back.
enum class Resource { kString, kStringData, kObject };

/// A plugin's mistake, noted when it happens. The host ignores the wrong call and goes on.
enum class ViolationKind {
  kDoubleRelease,    // given back more often than it was given
  kNeverGiven,       // a release of nothing, or of something that the host never handed out
  kUseAfterRelease,  // an argument that the plugin no longer has a right to
  kWrongCount,       // a result that carries no reference, or a count changed for a dying object
  kBadArgument,      // wrong class, unknown slot, index outside, negative length ...
  kMemoryOverrun,    // bytes written behind the class data or into a released object
};

struct Violation {
  ViolationKind kind;
  std::string message;  // what happened to which thing
  std::string member;   // the member call in progress: "Page.MoveTo(x as Single,y as Single)"
};

/// Things that are still out, by who asked for them.
struct Outstanding {
  Resource resource;
  std::size_t count = 0;
  std::string what;    // the class of an object, the text of a string
  std::string member;  // the member call in which the reference was given
};

/// The state of the books. Even when nothing is out, nothing is held by the script and no plugin
/// made a mistake.
struct Balance {
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
  std::vector<std::string> heldByScript;  // classes of objects that only the host's side still holds
  std::vector<Violation> violations;

  bool IsEven() const { return outstanding.empty() && heldByScript.empty() && violations.empty(); }
  /// A table and one line for each thing that is wrong, for people.
  std::string Report() const;
};

}  // namespace quillbar::host
