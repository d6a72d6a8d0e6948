// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <functional>
#include <unordered_map>
#include <utility>
#include <vector>

#include "host/language/values/variant.h"
#include "host/runtime/host.h"
#include "host/runtime/value.h"

namespace quillbar::language {

/// What an object of the class Dictionary holds: values by key, in the order in which the keys were first set. Keys are
/// the same as `variant::AreSameKey` says, or, where case counts, only texts of the same letters are.
class DictionaryEntries {
 public:
  struct Entry {
    host::Value key;
    host::Value value;
  };

  explicit DictionaryEntries(bool isCaseSensitive = false) : places_(0, Hash(), Same{isCaseSensitive}) {}

  std::size_t Count() const { return places_.size(); }
  /// The value of a key; null when there is none. Valid until the next change.
  const host::Value *Find(const host::Value &key) const;
  void Set(const host::Value &key, host::Value value);
  /// Removes a key; false when there is none.
  bool Remove(const host::Value &key);
  void Clear();

  /// The entry at a place from 0 to `Count` - 1. In constant time, unless keys were removed since the last call.
  Entry At(std::size_t place);
  /// A copy of all entries, which stays the same whatever happens to the dictionary.
  std::vector<Entry> Copy() const;

  /// A dictionary of its own with the same entries and rules. Copying isn't offered: slots refer to the map's keys.
  DictionaryEntries Clone() const;
  DictionaryEntries(const DictionaryEntries &) = delete;
  DictionaryEntries &operator=(const DictionaryEntries &) = delete;
  DictionaryEntries(DictionaryEntries &&) = default;
  DictionaryEntries &operator=(DictionaryEntries &&) = default;

  /// How many hash buckets there are; a greater number makes room.
  std::size_t BucketCount() const { return places_.bucket_count(); }
  void SetBucketCount(std::size_t count) { places_.rehash(count); }

 private:
  struct Hash {
    std::size_t operator()(const host::Value &key) const { return variant::Hash(key); }
  };
  struct Same {
    bool isCaseSensitive;
    bool operator()(const host::Value &one, const host::Value &other) const {
      return variant::AreSameKey(one, other, isCaseSensitive);
    }
  };
  struct Slot {
    const host::Value *key;  // in the map; null: removed
    host::Value value;
  };

  void CloseGaps();

  using Places = std::unordered_map<host::Value, std::size_t, Hash, Same>;

  Places places_;  // in `slots_`
  std::vector<Slot> slots_;
};

/// A new Dictionary with these entries, and the entries of one.
host::ObjectHandle MakeDictionary(host::Host &host, DictionaryEntries entries = DictionaryEntries());
DictionaryEntries &EntriesOf(const host::ObjectHandle &dictionary);
/// Whether the value is a Dictionary.
bool IsDictionary(const host::Value &value);

}  // namespace quillbar::language
