// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
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

  explicit DictionaryEntries(bool isCaseSensitive = false) : isCaseSensitive_(isCaseSensitive) {}

  std::size_t Count() const { return count_; }
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

  /// A dictionary of its own with the same entries and rules.
  DictionaryEntries Clone() const;
  DictionaryEntries(const DictionaryEntries &) = delete;
  DictionaryEntries &operator=(const DictionaryEntries &) = delete;
  DictionaryEntries(DictionaryEntries &&) = default;
  DictionaryEntries &operator=(DictionaryEntries &&) = default;

  /// How many hash buckets there are; a greater number makes room.
  std::size_t BucketCount() const { return marks_.size(); }
  void SetBucketCount(std::size_t count);

 private:
  struct Slot {
    host::Value key;  // no value: removed
    host::Value value;
    std::uint32_t hash;
  };
  // Where a slot is. Marks are searched from that of the key's hash on, to the first empty one.
  struct Mark {
    std::uint32_t hash = 0;
    std::uint32_t slot = kNone;
  };
  static constexpr std::uint32_t kNone = UINT32_MAX;

  static std::uint32_t HashOf(const host::Value &key);
  // The slot of a key; kNone when there is none.
  std::uint32_t SlotOf(const host::Value &key, std::uint32_t hash) const;
  // The mark that is empty for a new slot. There must be one.
  Mark &EmptyMark(std::uint32_t hash);
  // Marks for so many slots at least, in place of those that there are.
  void Remark(std::size_t slots);
  void CloseGaps();

  bool isCaseSensitive_;
  std::size_t count_ = 0;
  std::vector<Slot> slots_;  // in the order of keys
  std::vector<Mark> marks_;  // a power of two, at most two thirds in use
};

/// A new Dictionary with these entries, and the entries of one.
host::ObjectHandle MakeDictionary(host::Host &host, DictionaryEntries entries = DictionaryEntries());
DictionaryEntries &EntriesOf(const host::ObjectHandle &dictionary);
/// Whether the value is a Dictionary.
bool IsDictionary(const host::Value &value);

}  // namespace quillbar::language
