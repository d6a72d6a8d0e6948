// SPDX-License-Identifier: MIT
#include "host/runtime/string_pool.h"

#include <algorithm>
#include <functional>

#include "host/runtime/character_io.h"
#include "host/runtime/text_encoding.h"

namespace quillbar::host {

StringPool &StringPool::Instance() {
  // Never destroyed: handles in static storage may be destroyed after anything else.
  static StringPool *const pool = new StringPool;
  return *pool;
}

HostString *StringPool::Create(std::string_view bytes, TextEncoding encoding) {
  HostString *string = Create(bytes.size(), encoding, [bytes](char *room) {
    std::memcpy(room, bytes.data(), bytes.size());
    return bytes.size();
  });
  string->isAscii = IsAsciiCompatible(encoding) && AsciiPrefix(bytes) == bytes.size();
  return string;
}

const StringPool::Slab *StringPool::SlabAround(const void *address) const {
  // std::less orders any addresses, also those outside of the pool.
  const std::less<const void *> before;
  const auto after = std::upper_bound(slabs_.begin(), slabs_.end(), address,
                                      [&](const void *a, const auto &slab) { return before(a, slab.get()); });
  return after == slabs_.begin() ? nullptr : std::prev(after)->get();
}

void StringPool::AddSlab() {
  auto slab = std::make_unique<Slab>();
  for (HostString &string : slab->strings) free_.push_back(&string);
  const auto place = std::upper_bound(slabs_.begin(), slabs_.end(), slab);
  slabs_.insert(place, std::move(slab));
}

void StringPool::Bury(HostString *string) {
  string->state = HostString::State::kReleased;
  string->bytes.Spoil();
  tombstones_.push_back(string);
  tombstoneBytes_ += string->bytes.capacity();
  for (; tombstoneBytes_ > kTombstoneBytes; ++emptyTombstones_) {
    TextBuffer &bytes = tombstones_[emptyTombstones_]->bytes;
    tombstoneBytes_ -= bytes.capacity();
    bytes.Free();
  }
  if (tombstones_.size() <= kTombstones) return;
  HostString *oldest = tombstones_.front();
  tombstones_.pop_front();
  if (emptyTombstones_ > 0) --emptyTombstones_;
  tombstoneBytes_ -= oldest->bytes.capacity();
  oldest->Clear();
  free_.push_back(oldest);
}

}  // namespace quillbar::host
