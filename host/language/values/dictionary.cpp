// SPDX-License-Identifier: MIT
// Entries lie in the order of their keys, and a table of eight bytes for each says where one is: a look-up reads one
// place of the table and the entry, where a map of nodes goes through three places of memory.
#include "host/language/values/dictionary.h"

#include <algorithm>
#include <bit>
#include <new>

namespace quillbar::language {

using host::Value;

std::uint32_t DictionaryEntries::HashOf(const Value &key) {
  const std::uint64_t hash = variant::Hash(key);
  return static_cast<std::uint32_t>(hash ^ hash >> 32);
}

std::uint32_t DictionaryEntries::SlotOf(const Value &key, std::uint32_t hash) const {
  if (marks_.empty()) return kNone;
  const std::size_t mask = marks_.size() - 1;
  for (std::size_t place = hash & mask; marks_[place].slot != kNone; place = (place + 1) & mask) {
    const Mark mark = marks_[place];
    if (mark.hash != hash) continue;
    const Value &found = slots_[mark.slot].key;
    if (!found.IsNone() && variant::AreSameKey(found, key, isCaseSensitive_)) return mark.slot;
  }
  return kNone;
}

DictionaryEntries::Mark &DictionaryEntries::EmptyMark(std::uint32_t hash) {
  const std::size_t mask = marks_.size() - 1;
  std::size_t place = hash & mask;
  while (marks_[place].slot != kNone) place = (place + 1) & mask;
  return marks_[place];
}

void DictionaryEntries::Remark(std::size_t slots) {
  std::vector<Mark> marks(std::bit_ceil(std::max<std::size_t>(slots + slots / 2 + 1, 8)));
  marks_.swap(marks);
  for (std::uint32_t slot = 0; slot < slots_.size(); ++slot) EmptyMark(slots_[slot].hash) = {slots_[slot].hash, slot};
}

const Value *DictionaryEntries::Find(const Value &key) const {
  const std::uint32_t slot = SlotOf(key, HashOf(key));
  return slot == kNone ? nullptr : &slots_[slot].value;
}

void DictionaryEntries::Set(const Value &key, Value value) {
  const std::uint32_t hash = HashOf(key);
  const std::uint32_t slot = SlotOf(key, hash);
  if (slot != kNone) {
    // The old value goes last: destroying its object may run a destructor that uses this dictionary.
    std::swap(slots_[slot].value, value);
    return;
  }
  if (slots_.size() == kNone) throw std::bad_alloc();
  if (3 * (slots_.size() + 1) > 2 * marks_.size()) Remark(slots_.size() + 1);
  slots_.push_back({key, std::move(value), hash});
  EmptyMark(hash) = {hash, static_cast<std::uint32_t>(slots_.size() - 1)};
  ++count_;
}

bool DictionaryEntries::Remove(const Value &key) {
  const std::uint32_t place = SlotOf(key, HashOf(key));
  if (place == kNone) return false;
  const Slot removed = std::exchange(slots_[place], {Value(), Value(), slots_[place].hash});
  --count_;
  if (slots_.size() > 2 * count_ + 8) CloseGaps();
  return true;
}

void DictionaryEntries::Clear() {
  // What the values destroy may use this dictionary, which is empty then.
  const std::vector<Slot> slots = std::exchange(slots_, {});
  marks_.clear();
  count_ = 0;
}

DictionaryEntries::Entry DictionaryEntries::At(std::size_t place) {
  if (slots_.size() != count_) CloseGaps();
  return {slots_[place].key, slots_[place].value};
}

std::vector<DictionaryEntries::Entry> DictionaryEntries::Copy() const {
  std::vector<Entry> entries;
  entries.reserve(count_);
  for (const Slot &slot : slots_) {
    if (!slot.key.IsNone()) entries.push_back({slot.key, slot.value});
  }
  return entries;
}

DictionaryEntries DictionaryEntries::Clone() const {
  DictionaryEntries clone(isCaseSensitive_);
  for (const Slot &slot : slots_) {
    if (!slot.key.IsNone()) clone.Set(slot.key, slot.value);
  }
  return clone;
}

void DictionaryEntries::SetBucketCount(std::size_t count) {
  if (count > marks_.size()) Remark(count / 3 * 2);
}

void DictionaryEntries::CloseGaps() {
  std::erase_if(slots_, [](const Slot &slot) { return slot.key.IsNone(); });
  Remark(slots_.size());
}

}  // namespace quillbar::language
