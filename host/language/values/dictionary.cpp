// SPDX-License-Identifier: MIT
#include "host/language/values/dictionary.h"

namespace quillbar::language {

using host::Value;

const Value *DictionaryEntries::Find(const Value &key) const {
  const auto place = places_.find(key);
  return place == places_.end() ? nullptr : &slots_[place->second].value;
}

void DictionaryEntries::Set(const Value &key, Value value) {
  const auto [place, isNew] = places_.try_emplace(key, slots_.size());
  if (isNew) {
    slots_.push_back({&place->first, std::move(value)});
  } else {
    // The old value goes last: destroying its object may run a destructor that uses this dictionary.
    std::swap(slots_[place->second].value, value);
  }
}

bool DictionaryEntries::Remove(const Value &key) {
  const auto place = places_.find(key);
  if (place == places_.end()) return false;
  Slot &slot = slots_[place->second];
  const Value removed = std::exchange(slot.value, Value());
  slot.key = nullptr;
  const auto node = places_.extract(place);
  if (slots_.size() > 2 * places_.size() + 8) CloseGaps();
  return true;
}

void DictionaryEntries::Clear() {
  const std::vector<Slot> slots = std::exchange(slots_, {});
  Places places(0, Hash(), places_.key_eq());
  std::swap(places, places_);
}

DictionaryEntries::Entry DictionaryEntries::At(std::size_t place) {
  if (slots_.size() != places_.size()) CloseGaps();
  return {*slots_[place].key, slots_[place].value};
}

std::vector<DictionaryEntries::Entry> DictionaryEntries::Copy() const {
  std::vector<Entry> entries;
  entries.reserve(places_.size());
  for (const Slot &slot : slots_) {
    if (slot.key != nullptr) entries.push_back({*slot.key, slot.value});
  }
  return entries;
}

DictionaryEntries DictionaryEntries::Clone() const {
  DictionaryEntries clone(places_.key_eq().isCaseSensitive);
  for (const Slot &slot : slots_) {
    if (slot.key != nullptr) clone.Set(*slot.key, slot.value);
  }
  return clone;
}

void DictionaryEntries::CloseGaps() {
  std::size_t kept = 0;
  for (Slot &slot : slots_) {
    if (slot.key == nullptr) continue;
    places_.find(*slot.key)->second = kept;
    if (&slot != &slots_[kept]) slots_[kept] = std::move(slot);
    ++kept;
  }
  slots_.resize(kept);
}

}  // namespace quillbar::language
