// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "host/runtime/class_model.h"
#include "host/runtime/reference_ledger.h"
#include "interface/values.h"

namespace quillbar::host {

class EventBinding;

/// The header before the class data in an object's block of memory.
struct Instance : HostObject {
  enum class State : std::uint8_t { kLive, kDying, kDead };

  const ClassInfo *info = nullptr;
  State state = State::kLive;
  bool wasGiven = false;
  bool isFinalized = false;
  std::uint32_t hostReferences = 0;
  std::uint32_t loans = 0;
  std::uint64_t number = 0;           // in order of creation
  std::vector<RunningMember> givers;  // one for each reference that plugins own
  std::vector<std::shared_ptr<EventBinding>> handlers;
};

/// Class data starts after the header, at a multiple of 16.
inline constexpr std::size_t kDataAlignment = 16;
/// `size` rounded up to where the next class's data may start.
constexpr std::size_t AlignData(std::size_t size) {
  return (size + kDataAlignment - 1) / kDataAlignment * kDataAlignment;
}
inline constexpr std::size_t kInstanceHeader = AlignData(sizeof(Instance));

/// The objects of one host: their memory, their two reference counts (the host's own and the plugins'), and their
/// destruction. The memory of a destroyed object is filled with a pattern and kept for a while, so that later use is
/// noticed; guard bytes after the data catch writes past its end.
class ObjectStore {
 public:
  explicit ObjectStore(ReferenceLedger &ledger) : ledger_(ledger) {}
  ~ObjectStore();
  ObjectStore(const ObjectStore &) = delete;
  ObjectStore &operator=(const ObjectStore &) = delete;

  static Instance &InstanceOf(Object object) { return *static_cast<Instance *>(object); }
  static const ClassInfo &ClassOf(Object object) { return *InstanceOf(object).info; }
  /// Adds one of the host's references.
  static void Retain(Object object) { ++InstanceOf(object).hostReferences; }

  /// Creates an object with one reference of the host's. Its class constructors have run, superclass first.
  Object Create(const ClassInfo &info);
  void Release(Object object) {
    if (--InstanceOf(object).hostReferences == 0) DestroyIfUnused(object);
  }

  /// Whether a plugin may pass this object as an argument; notes a violation if not.
  bool MayUse(Object object, std::string_view operation);
  /// Gives the plugin a reference, which it must release. Null stays null.
  Object Give(Object object);
  /// Strikes out a reference that the plugin releases or returns. The object may be destroyed by this.
  bool TakeBack(Object object, std::string_view operation);
  void Lend(Object object);
  void EndLoan(Object object);

  /// Whether this is a live object of this store.
  bool IsAlive(Object object) const;

  /// Clears the fields of all live objects of scripts' classes, and the host's own containers, without running their destructors.
  void ClearScriptObjects();
  /// Destroys what is left, newest first, whoever holds references.
  void DestroyAll();
  /// Appends plugins' references, and the objects that only the host's side holds, to `report`.
  void AppendTo(LedgerReport &report) const;
  /// Notes writes into the memory of destroyed objects.
  void Inspect();

 private:
  void Destroy(Object object);
  void DestroyIfUnused(Object object);
  void Bury(Object object);
  void CheckTombstone(Object object);
  static void Free(Object object);

  ReferenceLedger &ledger_;
  std::unordered_set<Object> known_;  // live or destroyed
  std::deque<Object> tombstones_;
  std::size_t tombstoneBytes_ = 0;
  std::uint64_t created_ = 0;
  std::size_t depth_ = 0;       // of objects that are destroyed because another one is
  std::vector<Object> doomed_;  // unused objects that wait until the depth is less
};

}  // namespace quillbar::host
