// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <string_view>
#include <vector>

#include "host/runtime/running_member.h"
#include "host/runtime/text_buffer.h"
#include "interface/values.h"

namespace quillbar::host {

/// What the host knows of a string besides its bytes.
struct StringState {
  enum class State : std::uint8_t { kFree, kLive, kReleased };
  enum class Form : std::uint8_t { kUnknown, kValid, kInvalid };

  TextEncoding encoding = TextEncoding::kUtf8;
  State state = State::kFree;
  bool isAscii = false;        // all bytes below 0x80, in an encoding where that means ASCII
  Form form = Form::kUnknown;  // of UTF-8: whether it is well-formed
  bool wasGiven = false;       // a plugin has owned a reference to it at some time
  std::uint32_t hostReferences = 0;
  std::uint32_t given = 0;        // references that plugins own
  std::uint32_t loans = 0;        // arguments of calls in progress
  std::uint32_t dataRecords = 0;  // string-data records that point into the bytes
  RunningMember giver;

  std::uint64_t number = 0;      // unique in the process
  std::uint64_t losslessOf = 0;  // the number of a string known to have the same characters; 0: none is known

  // Finding a character means walking from the start; remembering the last position makes a walk through the text
  // linear.
  std::int64_t length = -1;  // in characters; -1: not counted yet
  std::int64_t cursorCharacter = 0;
  std::size_t cursorByte = 0;
};

}  // namespace quillbar::host

namespace quillbar {

/// A string of the host. Plugins see it as the opaque `String`. Its bytes never change while more than one reference or
/// a plugin knows it.
struct HostString : host::StringState {
  host::TextBuffer bytes;

  std::string_view View() const { return bytes.View(); }
  /// Whether a plugin has a reference, a loan or string data of this string.
  bool PluginMayUse() const { return given + loans + dataRecords > 0; }
  /// Makes it empty, but keeps memory that the next string can use.
  void Clear() {
    static_cast<StringState &>(*this) = {};
    bytes.Recycle();
  }
};

}  // namespace quillbar

namespace quillbar::host {

/// Where all strings of the process are kept. A released string stays as a tombstone until many others have been
/// released after it, so that a plugin which uses it again is caught instead of crashing.
class StringPool {
 public:
  /// The pool of this process.
  static StringPool &Instance();

  /// A live string without any reference; the caller takes the first one. `bytes` must not be empty.
  HostString *Create(std::string_view bytes, TextEncoding encoding);
  /// A live string of at most `room` bytes, which `fill` writes to the address that it is given; `fill` returns how
  /// many it has written, at least one. It must not create strings.
  template <class Fill>
  HostString *Create(std::size_t room, TextEncoding encoding, Fill &&fill) {
    if (free_.empty()) AddSlab();
    HostString *string = free_.back();
    string->bytes.Finish(fill(string->bytes.Prepare(room)));
    free_.pop_back();
    string->number = ++lastNumber_;
    string->encoding = encoding;
    string->state = HostString::State::kLive;
    return string;
  }
  /// Adds bytes to a string that has one reference alone. It counts as another string from then on.
  void Append(HostString &string, std::string_view more) {
    string.bytes.Append(more);
    string.number = ++lastNumber_;
    string.losslessOf = 0;
    string.length = -1;
    string.form = HostString::Form::kUnknown;
  }
  /// Releases the string if neither the host nor a plugin has a claim on it any more.
  void ReleaseIfUnused(HostString *string) {
    if (string->hostReferences == 0 && !string->PluginMayUse()) Bury(string);
  }

  /// Whether this is the address of a string of the pool, live or released.
  bool Owns(const void *address) const {
    const Slab *&hint = SlabHint(address);
    if (hint != nullptr && IsIn(*hint, address)) return true;
    hint = SlabAround(address);
    return hint != nullptr && IsIn(*hint, address);
  }

  /// Calls `visit` with each live string.
  template <class Visitor>
  void ForEachLive(Visitor &&visit) {
    for (const std::unique_ptr<Slab> &slab : slabs_) {
      for (HostString &string : slab->strings) {
        if (string.state == HostString::State::kLive) visit(string);
      }
    }
  }

 private:
  static constexpr std::size_t kSlabStrings = 512;
  // Enough to catch a plugin's mistakes, and few enough to stay in the processor's cache: waiting for memory would
  // take longer than everything else that is done for a short string. Where memory is checked, time matters less.
  static constexpr std::size_t kTombstones = kChecksMemory ? 8192 : 1024;
  static constexpr std::size_t kTombstoneBytes = std::size_t{kChecksMemory ? 16 : 1} << 20;

  struct Slab {
    std::array<HostString, kSlabStrings> strings;
  };

  /// Whether a string of the slab has this address.
  static bool IsIn(const Slab &slab, const void *address) {
    const std::uintptr_t distance =
        reinterpret_cast<std::uintptr_t>(address) - reinterpret_cast<std::uintptr_t>(slab.strings.data());
    return distance < sizeof slab.strings && distance % sizeof(HostString) == 0;
  }
  /// The last slab before this address; null when there is none.
  const Slab *SlabAround(const void *address) const;
  /// A cache of the slab found last for addresses like this one. Slabs are never freed.
  const Slab *&SlabHint(const void *address) const {
    return slabHints_[reinterpret_cast<std::uintptr_t>(address) / sizeof(Slab) % slabHints_.size()];
  }

  void AddSlab();
  void Bury(HostString *string);

  std::vector<std::unique_ptr<Slab>> slabs_;  // sorted by address
  mutable std::array<const Slab *, 64> slabHints_{};
  std::vector<HostString *> free_;
  std::deque<HostString *> tombstones_;
  std::size_t tombstoneBytes_ = 0;
  std::size_t emptyTombstones_ = 0;  // the oldest ones, which had too many bytes to keep
  std::uint64_t lastNumber_ = 0;
};

}  // namespace quillbar::host
