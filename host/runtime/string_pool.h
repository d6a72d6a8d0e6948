#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/runtime/caller.h"
#include "interface/values.h"

namespace quillbar {

/// A string of the host, behind the opaque `String` that plugins see. The bytes never change.
struct HostString {
  enum class State : std::uint8_t { kFree, kLive, kReleased };

  std::string bytes;  // with one nul at the end; with std::string's own that makes the two UTF-16 needs
  TextEncoding encoding = TextEncoding::kUtf8;
  State state = State::kFree;
  bool isAscii = false;   // all bytes below 0x80, in an encoding where that means ASCII
  bool wasGiven = false;  // a plugin has owned a reference of it at some time
  std::uint32_t hostReferences = 0;
  std::uint32_t given = 0;        // references that plugins own
  std::uint32_t loans = 0;        // arguments of calls in progress
  std::uint32_t dataRecords = 0;  // string-data records that point into `bytes`
  host::Caller giver;

  // Characters are found by walking; remembering the last place makes a walk through the text linear.
  std::int64_t length = -1;  // in characters; -1: not counted yet
  std::int64_t cursorCharacter = 0;
  std::size_t cursorByte = 0;

  std::string_view View() const { return {bytes.data(), bytes.size() - 1}; }
  bool PluginMayUse() const { return given + loans + dataRecords > 0; }
};

}  // namespace quillbar

namespace quillbar::host {

/// Where all strings of the process live. A released string stays as a tombstone until many others have
/// been released after it, so that a plugin which uses it again is caught instead of crashing.
class StringPool {
 public:
  static StringPool &Instance();

  /// A live string without any reference; the caller takes the first one. `bytes` must not be empty.
  HostString *Create(std::string bytes, TextEncoding encoding);
  /// Lets it go if nobody has a claim on it any more.
  void ReleaseIfUnused(HostString *string);

  /// Whether this address is one of ours, live or released.
  bool Owns(const void *address) const;

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
  static constexpr std::size_t kTombstones = 8192;
  static constexpr std::size_t kTombstoneBytes = std::size_t{16} << 20;

  struct Slab {
    std::array<HostString, kSlabStrings> strings;
  };

  HostString *TakeSlot();
  void Bury(HostString *string);

  std::vector<std::unique_ptr<Slab>> slabs_;  // sorted by address
  std::vector<HostString *> free_;
  std::deque<HostString *> tombstones_;
  std::size_t tombstoneBytes_ = 0;
};

}  // namespace quillbar::host
