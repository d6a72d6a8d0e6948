// SPDX-License-Identifier: MIT
#include "host/runtime/object_store.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstring>
#include <new>

#include "host/runtime/event_binding.h"
#include "host/runtime/handles.h"
#include "host/runtime/memory_poison.h"

namespace quillbar::host {
namespace {

constexpr unsigned char kDeadByte = 0xDD;
constexpr unsigned char kGuardByte = 0xFD;
constexpr std::size_t kGuardSize = 16;
constexpr std::size_t kTombstones = 4096;
constexpr std::size_t kTombstoneBytes = std::size_t{16} << 20;

unsigned char *Block(Object object) { return reinterpret_cast<unsigned char *>(object); }

/// Each byte is compared with its neighbour: the C library does that many at a time, also in builds that aren't
/// optimized, and every inspection of the ledger reads all tombstones.
bool IsFilledWith(const unsigned char *bytes, std::size_t size, unsigned char value) {
  return size == 0 || (bytes[0] == value && std::memcmp(bytes, bytes + 1, size - 1) == 0);
}

std::size_t BlockSize(const ClassInfo &info) { return info.instanceSize + kGuardSize; }

std::string Describe(Object object) { return "an object of class " + ObjectStore::ClassOf(object).name; }

}  // namespace

ObjectStore::~ObjectStore() {
  DestroyAll();
  for (const Object object : tombstones_) {
    CheckTombstone(object);
    Free(object);
  }
}

Object ObjectStore::Create(const ClassInfo &info) {
  auto *block = static_cast<unsigned char *>(::operator new (BlockSize(info), std::align_val_t{kDataAlignment}));
  auto *instance = new (block) Instance;
  std::memset(block + kInstanceHeader, 0, info.instanceSize - kInstanceHeader);
  std::memset(block + info.instanceSize, kGuardByte, kGuardSize);
  instance->info = &info;
  instance->hostReferences = 1;
  instance->number = ++created_;
  known_.insert(instance);
  ++ledger_.counters.objectsCreated;

  std::vector<const ClassInfo *> chain;
  for (const ClassInfo *level = &info; level != nullptr; level = level->superclass) chain.push_back(level);
  Lend(instance);
  for (auto level = chain.rbegin(); level != chain.rend(); ++level) {
    if ((*level)->record == nullptr || (*level)->record->constructor == nullptr) continue;
    const ReferenceLedger::Frame frame(ledger_, {RunningMember::Part::kConstructor, *level});
    (*level)->record->constructor(instance);
  }
  EndLoan(instance);
  return instance;
}

bool ObjectStore::MayUse(Object object, std::string_view operation) {
  if (object == nullptr) {
    ledger_.Note(ViolationKind::kBadArgument, fmt::format("{} got Nil", operation));
    return false;
  }
  if (!known_.contains(object)) {
    ledger_.Note(ViolationKind::kBadArgument,
                 fmt::format("{} got an address that is not an object of this host", operation));
    return false;
  }
  const Instance &instance = InstanceOf(object);
  if (instance.state == Instance::State::kDead) {
    ledger_.Note(ViolationKind::kUseAfterRelease,
                 fmt::format("{} got {} that has been destroyed", operation, Describe(object)));
    return false;
  }
  if (!instance.givers.empty() || instance.loans > 0) return true;
  ledger_.Note(ViolationKind::kUseAfterRelease,
               fmt::format("{} got {} to which the plugin no longer has a reference", operation, Describe(object)));
  return false;
}

Object ObjectStore::Give(Object object) {
  if (object == nullptr) return nullptr;
  Instance &instance = InstanceOf(object);
  instance.givers.push_back(ledger_.current());
  instance.wasGiven = true;
  ++ledger_.counters.referencesGiven;
  return object;
}

bool ObjectStore::TakeBack(Object object, std::string_view operation) {
  if (object == nullptr || !known_.contains(object)) {
    ledger_.Note(ViolationKind::kNeverGiven,
                 fmt::format("{} got {}", operation,
                             object == nullptr ? "Nil: there is nothing to release"
                                               : "an address that is not an object of this host"));
    return false;
  }
  Instance &instance = InstanceOf(object);
  if (instance.state == Instance::State::kDead || (instance.givers.empty() && instance.wasGiven)) {
    ledger_.Note(ViolationKind::kDoubleRelease,
                 fmt::format("{} got {} that the plugin has released before", operation, Describe(object)));
    return false;
  }
  if (instance.givers.empty()) {
    ledger_.Note(ViolationKind::kNeverGiven,
                 fmt::format("{} got {} that the plugin only borrows", operation, Describe(object)));
    return false;
  }
  instance.givers.pop_back();
  ++ledger_.counters.referencesReturned;
  DestroyIfUnused(object);
  return true;
}

void ObjectStore::Lend(Object object) {
  if (object != nullptr) ++InstanceOf(object).loans;
}

void ObjectStore::EndLoan(Object object) {
  if (object != nullptr) --InstanceOf(object).loans;
}

bool ObjectStore::IsAlive(Object object) const {
  return object != nullptr && known_.contains(object) && InstanceOf(object).state == Instance::State::kLive;
}

void ObjectStore::DestroyIfUnused(Object object) {
  const Instance &instance = InstanceOf(object);
  const bool unused = instance.hostReferences == 0 && instance.givers.empty();
  if (!unused || instance.state != Instance::State::kLive) return;
  // Long chains of objects would need as much of the machine's stack.
  constexpr std::size_t kMostNested = 100;
  if (depth_ >= kMostNested) {
    doomed_.push_back(object);
    return;
  }
  ++depth_;
  Destroy(object);
  --depth_;
  while (depth_ == 0 && !doomed_.empty()) {
    const Object next = doomed_.back();
    doomed_.pop_back();
    DestroyIfUnused(next);
  }
}

void ObjectStore::Destroy(Object object) {
  Instance &instance = InstanceOf(object);
  if (instance.info->finalize && !instance.isFinalized) {
    instance.isFinalized = true;
    Retain(object);
    instance.info->finalize(object);
    if (--instance.hostReferences > 0 || !instance.givers.empty()) return;
  }
  instance.state = Instance::State::kDying;
  Lend(object);
  for (const ClassInfo *level = instance.info; level != nullptr; level = level->superclass) {
    if (level->clear) level->clear(object);
  }
  for (const ClassInfo *level = instance.info; level != nullptr; level = level->superclass) {
    if (level->record == nullptr || level->record->destructor == nullptr) continue;
    const ReferenceLedger::Frame frame(ledger_, {RunningMember::Part::kDestructor, level});
    level->record->destructor(object);
  }
  EndLoan(object);
  if (!IsFilledWith(Block(object) + instance.info->instanceSize, kGuardSize, kGuardByte)) {
    ledger_.Note(ViolationKind::kMemoryOverrun,
                 fmt::format("something was written past the class data of {}", Describe(object)));
  }
  ++ledger_.counters.objectsDestroyed;
  Bury(object);
}

void ObjectStore::Bury(Object object) {
  Instance &instance = InstanceOf(object);
  instance.state = Instance::State::kDead;
  const auto handlers = std::move(instance.handlers);  // they may hold references of their own
  instance.handlers.clear();
  const std::size_t dataSize = instance.info->instanceSize - kInstanceHeader;
  std::memset(Block(object) + kInstanceHeader, kDeadByte, dataSize);
  PoisonMemory(Block(object) + kInstanceHeader, dataSize);
  tombstones_.push_back(object);
  tombstoneBytes_ += BlockSize(*instance.info);
  while (tombstones_.size() > kTombstones || tombstoneBytes_ > kTombstoneBytes) {
    const Object oldest = tombstones_.front();
    tombstones_.pop_front();
    tombstoneBytes_ -= BlockSize(ClassOf(oldest));
    CheckTombstone(oldest);
    known_.erase(oldest);
    Free(oldest);
  }
}

void ObjectStore::CheckTombstone(Object object) {
  const ClassInfo &info = ClassOf(object);
  const std::size_t dataSize = info.instanceSize - kInstanceHeader;
  unsigned char *data = Block(object) + kInstanceHeader;
  UnpoisonMemory(data, dataSize);
  MarkAsSet(data, dataSize);
  if (!IsFilledWith(data, dataSize, kDeadByte)) {
    ledger_.Note(ViolationKind::kMemoryOverrun,
                 fmt::format("something was written into {} after it was destroyed", Describe(object)));
    std::memset(data, kDeadByte, dataSize);
  }
  PoisonMemory(data, dataSize);
}

void ObjectStore::Free(Object object) {
  Instance &instance = InstanceOf(object);
  UnpoisonMemory(Block(object) + kInstanceHeader, instance.info->instanceSize - kInstanceHeader);
  instance.~Instance();
  ::operator delete (Block(object), std::align_val_t{kDataAlignment});
}

void ObjectStore::ClearScriptObjects() {
  std::vector<ObjectHandle> kept;
  for (const Object object : known_) {
    Instance &instance = InstanceOf(object);
    const bool holdsOthers = instance.info->code != nullptr || instance.info->clear != nullptr;
    if (instance.state != Instance::State::kLive || !holdsOthers) continue;
    instance.isFinalized = true;
    kept.emplace_back(object);
  }
  for (const ObjectHandle &object : kept) {
    for (const ClassInfo *level = &object.Class(); level != nullptr; level = level->superclass) {
      if (level->clear) level->clear(object.Get());
    }
  }
}

void ObjectStore::DestroyAll() {
  std::vector<Object> left;
  for (const Object object : known_) {
    if (InstanceOf(object).state == Instance::State::kLive) left.push_back(object);
  }
  std::ranges::sort(left, std::greater<>(), [](Object object) { return InstanceOf(object).number; });
  for (const Object object : left) {
    // The destructor of a newer object may have released this one meanwhile.
    if (IsAlive(object)) Destroy(object);
  }
}

void ObjectStore::Inspect() {
  for (const Object object : tombstones_) CheckTombstone(object);
}

void ObjectStore::AppendTo(LedgerReport &report) const {
  std::vector<Object> alive;
  for (const Object object : known_) {
    if (InstanceOf(object).state != Instance::State::kDead) alive.push_back(object);
  }
  std::ranges::sort(alive, std::less<>(), [](Object object) { return InstanceOf(object).number; });
  for (const Object object : alive) {
    const Instance &instance = InstanceOf(object);
    for (const RunningMember &giver : instance.givers) {
      AddOutstanding(report, Resource::kObject, instance.info->name, giver.Name());
    }
    if (instance.givers.empty()) report.heldByScript.push_back(instance.info->name);
  }
}

}  // namespace quillbar::host
